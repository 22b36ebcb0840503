// Every instruction of the shipped opcode table, assembled at address 0 and
// compared with the bytes of its Zilog equivalent (docs/instructions.md).
#include "encoder/EncoderRun.h"

#include <gtest/gtest.h>
#include <set>

namespace trident {
namespace {

// Each statement, then after '=' its bytes.
// clang-format off
const char* const Instructions[] = {
    // 8080
    "nop=00", "hlt=76", "mov a,b=78", "mov m,a=77", "mov a,(hl)=7E", "MOV A,5(IX)=DD 7E 05", "mov -3(y),h=FD 74 FD",
    "mov e,(iy)=FD 5E 00", "mov l,2+3(x)=DD 6E 05", "mvi a,5=3E 05", "mvi m,0FFh=36 FF", "mvi -2(iy),0=FD 36 FE 00",
    "mvi 127(ix),-1=DD 36 7F FF", "lxi b,1234h=01 34 12", "lxi de,-1=11 FF FF", "lxi h,0=21 00 00",
    "lxi sp,0FFFFh=31 FF FF", "lxi ix,1234h=DD 21 34 12", "lxi y,5=FD 21 05 00", "lda 1234h=3A 34 12",
    "sta 1234h=32 34 12", "lhld 1234h=2A 34 12", "shld 1234h=22 34 12", "ldax b=0A", "ldax de=1A", "stax bc=02",
    "stax d=12", "xchg=EB", "xthl=E3", "sphl=F9", "pchl=E9", "add c=81", "add 3(x)=DD 86 03", "adc m=8E", "sub e=93",
    "sub -4(iy)=FD 96 FC", "sbb a=9F", "ana -1(iy)=FD A6 FF", "xra a=AF", "ora (hl)=B6", "cmp 127(ix)=DD BE 7F",
    "adi 1=C6 01", "aci 2=CE 02", "sui 3=D6 03", "sbi 4=DE 04", "ani 0Fh=E6 0F", "xri -1=EE FF", "ori 80h=F6 80",
    "cpi 'A'=FE 41", "inr a=3C", "inr 0(ix)=DD 34 00", "dcr b=05", "dcr -128(iy)=FD 35 80", "inx h=23", "inx ix=DD 23",
    "dcx sp=3B", "dcx iy=FD 2B", "dad b=09", "dad de=19", "dad sp=39", "dad x=DD 29", "dad y=FD 29", "daa=27", "cma=2F",
    "stc=37", "cmc=3F", "rlc=07", "rrc=0F", "ral=17", "rar=1F", "push b=C5", "push psw=F5", "push a=F5",
    "push ix=DD E5", "pop d=D1", "pop hl=E1", "pop psw=F1", "pop y=FD E1", "jmp 1234h=C3 34 12", "jnz 1234h=C2 34 12",
    "jz 1234h=CA 34 12", "jnc 1234h=D2 34 12", "jc 1234h=DA 34 12", "jpo 1234h=E2 34 12", "jpe 1234h=EA 34 12",
    "jp 1234h=F2 34 12", "jm 1234h=FA 34 12", "call 1234h=CD 34 12", "cnz 1234h=C4 34 12", "cz 1234h=CC 34 12",
    "cnc 1234h=D4 34 12", "cc 1234h=DC 34 12", "cpo 1234h=E4 34 12", "cpe 1234h=EC 34 12", "cp 1234h=F4 34 12",
    "cm 1234h=FC 34 12", "ret=C9", "rnz=C0", "rz=C8", "rnc=D0", "rc=D8", "rpo=E0", "rpe=E8", "rp=F0", "rm=F8",
    "rst 0=C7", "rst 1=CF", "rst 7=FF", "in 10h=DB 10", "out 0FFh=D3 FF", "ei=FB", "di=F3",
    // Z80; relative jumps at address 0 count from address 2.
    "exaf=08", "exx=D9", "djnz 12h=10 10", "jr 2=18 00", "jrnz 0=20 FE", "jrz 81h=28 7F", "jrnc 10=30 08",
    "jrc 0=38 FE", "neg=ED 44", "im0=ED 46", "im1=ED 56", "im2=ED 5E", "reti=ED 4D", "retn=ED 45", "stai=ED 47",
    "star=ED 4F", "ldai=ED 57", "ldar=ED 5F", "rld=ED 6F", "rrd=ED 67", "ldi=ED A0", "ldir=ED B0", "ldd=ED A8",
    "lddr=ED B8", "cci=ED A1", "ccir=ED B1", "ccd=ED A9", "ccdr=ED B9", "ini=ED A2", "inir=ED B2", "ind=ED AA",
    "indr=ED BA", "outi=ED A3", "outir=ED B3", "outd=ED AB", "outdr=ED BB", "inp b=ED 40", "inp a=ED 78",
    "outp c=ED 49", "outp a=ED 79", "dadc b=ED 4A", "dadc sp=ED 7A", "dsbc d=ED 52", "dsbc h=ED 62", "dadx b=DD 09",
    "dadx de=DD 19", "dadx x=DD 29", "dadx ix=DD 29", "dadx sp=DD 39", "dady bc=FD 09", "dady d=FD 19", "dady y=FD 29",
    "dady sp=FD 39", "lbcd 1234h=ED 4B 34 12", "sbcd 1234h=ED 43 34 12", "lded 1234h=ED 5B 34 12",
    "sded 1234h=ED 53 34 12", "lspd 1234h=ED 7B 34 12", "sspd 1234h=ED 73 34 12", "lixd 1234h=DD 2A 34 12",
    "sixd 1234h=DD 22 34 12", "liyd 1234h=FD 2A 34 12", "siyd 1234h=FD 22 34 12", "spix=DD F9", "spiy=FD F9",
    "pcix=DD E9", "pciy=FD E9", "xtix=DD E3", "xtiy=FD E3", "rlcr b=CB 00", "rlcr 1(ix)=DD CB 01 06", "rrcr c=CB 09",
    "rrcr (iy)=FD CB 00 0E", "ralr d=CB 12", "rarr m=CB 1E", "slar a=CB 27", "srar -5(y)=FD CB FB 2E", "srlr h=CB 3C",
    "srlr 9(x)=DD CB 09 3E", "bit 0,a=CB 47", "bit 7,4(iy)=FD CB 04 7E", "set 3,b=CB D8", "set 0,-1(ix)=DD CB FF C6",
    "setb 7,m=CB FE", "res 1,2(x)=DD CB 02 8E", "res 6,l=CB B5",
    // Z180
    "in0 a,10h=ED 38 10", "in0 b,0=ED 00 00", "out0 10h,b=ED 01 10", "out0 0FFh,a=ED 39 FF", "tst b=ED 04",
    "tst m=ED 34", "tst a=ED 3C", "tsti 0Fh=ED 64 0F", "tstio 80h=ED 74 80", "mlt b=ED 4C", "mlt de=ED 5C",
    "mlt h=ED 6C", "mlt sp=ED 7C", "otim=ED 83", "otimr=ED 93", "otdm=ED 8B", "otdmr=ED 9B", "slp=ED 76",
};
// clang-format on

TEST(InstructionSet, EveryRowEncodesAsTheZilogInstruction) {
    std::set<std::string> tested;
    for (const std::string instruction : Instructions) {
        const std::string source = instruction.substr(0, instruction.find('='));
        testing::EncoderRun run;
        EXPECT_EQ(run.QuietBytes(" " + source), instruction.substr(source.size() + 1)) << source;
        EXPECT_EQ(run.DiagnosticTexts(), std::vector<std::string>{}) << source;
        std::string mnemonic = source.substr(0, source.find(' '));
        for (char& letter : mnemonic) letter = static_cast<char>(std::tolower(letter));
        tested.insert(mnemonic);
    }
    // Every row of the shipped table is among them.
    const auto mnemonics = testing::ShippedMnemonics();
    EXPECT_EQ(mnemonics.size(), 158u);
    for (const std::string& mnemonic : mnemonics)
        EXPECT_TRUE(tested.count(mnemonic)) << mnemonic << " has no encoding test";
}

} // namespace
} // namespace trident
