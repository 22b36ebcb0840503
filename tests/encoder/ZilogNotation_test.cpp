// Zilog notation: every Zilog form gives the bytes and the diagnostics of
// its 8080-style equivalent; forms without one give an error and no bytes.
#include "encoder/EncoderRun.h"

#include <gtest/gtest.h>
#include <set>

namespace trident {
namespace {

using Texts = std::vector<std::string>;

// The Zilog form (false) or the 8080-style one (true) of an equivalence.
std::string Form(std::string_view equivalence, bool intel) {
    const std::size_t bar = equivalence.find('=');
    return std::string(intel ? equivalence.substr(bar + 1) : equivalence.substr(0, bar));
}

// Each Zilog form, then after '=' its 8080-style equivalent.
// clang-format off
const char* const Equivalents[] = {
    // 8080
    "nop=nop", "halt=hlt", "ld a,b=mov a,b", "ld (hl),a=mov m,a", "ld e,( HL )=mov e,m", "LD A,(IX+5)=mov a,5(ix)",
    "ld (iy-3),h=mov -3(iy),h", "ld e,(iy)=mov e,(iy)", "ld l,(ix + 2+3)=mov l,2+3(ix)", "ld a,5=mvi a,5",
    "ld (hl),0FFh=mvi m,0FFh", "ld (iy-2),0=mvi -2(iy),0", "ld (ix+127),-1=mvi 127(ix),-1", "ld bc,1234h=lxi b,1234h",
    "ld de,-1=lxi d,-1", "ld hl,0=lxi h,0", "ld sp,0FFFFh=lxi sp,0FFFFh", "ld ix,1234h=lxi ix,1234h",
    "ld iy,5=lxi iy,5", "ld a,(1234h)=lda 1234h", "ld a,(5)=lda 5", "ld a,(2+1)*2=mvi a,6", "ld (1234h),a=sta 1234h",
    "ld hl,(1234h)=lhld 1234h", "ld (1234h),hl=shld 1234h", "ld a,(bc)=ldax b", "ld a,(de)=ldax d", "ld (bc),a=stax b",
    "ld (de),a=stax d", "ex de,hl=xchg", "ex (sp),hl=xthl", "ld sp,hl=sphl", "jp (hl)=pchl", "add a,c=add c",
    "add c=add c", "add a,(ix+3)=add 3(ix)", "adc a,(hl)=adc m", "adc e=adc e", "sub e=sub e",
    "sub a,(iy-4)=sub -4(iy)", "sbc a,a=sbb a", "sbc (hl)=sbb m", "and (iy-1)=ana -1(iy)", "and a,b=ana b",
    "xor a=xra a", "or (hl)=ora m", "cp (ix+127)=cmp 127(ix)", "cp a,d=cmp d", "add a,1=adi 1", "add 1=adi 1",
    "adc a,2=aci 2", "sub 3=sui 3", "sbc a,4=sbi 4", "and 0Fh=ani 0Fh", "xor -1=xri -1", "or 80h=ori 80h",
    "cp 'A'=cpi 'A'", "inc a=inr a", "inc (ix)=inr (ix)", "dec b=dcr b", "dec (iy-128)=dcr -128(iy)", "inc hl=inx h",
    "inc ix=inx ix", "dec sp=dcx sp", "dec iy=dcx iy", "add hl,bc=dad b", "add hl,de=dad d", "add hl,hl=dad h",
    "add hl,sp=dad sp", "daa=daa", "cpl=cma", "scf=stc", "ccf=cmc", "rlca=rlc", "rrca=rrc", "rla=ral", "rra=rar",
    "push bc=push b", "push af=push psw", "push ix=push ix", "pop de=pop d", "pop hl=pop h", "pop af=pop psw",
    "pop iy=pop iy", "jp 1234h=jmp 1234h", "jp nz,1234h=jnz 1234h", "jp z,1234h=jz 1234h", "jp nc,1234h=jnc 1234h",
    "jp c,1234h=jc 1234h", "jp po,1234h=jpo 1234h", "jp pe,1234h=jpe 1234h", "jp p,1234h=jp 1234h",
    "JP M,1234h=jm 1234h", "call 1234h=call 1234h", "call nz,1=cnz 1", "call z,1=cz 1", "call nc,1=cnc 1",
    "call c,1=cc 1", "call po,1=cpo 1", "call pe,1=cpe 1", "call p,1=cp 1", "call m,1=cm 1", "ret=ret", "ret nz=rnz",
    "ret z=rz", "ret nc=rnc", "ret c=rc", "ret po=rpo", "ret pe=rpe", "ret p=rp", "ret m=rm", "rst 0=rst 0",
    "rst 8=rst 1", "rst 30h=rst 6", "rst 38h=rst 7", "in a,(10h)=in 10h", "out (0FFh),a=out 0FFh", "ei=ei", "di=di",
    // Z80
    "ex af,af'=exaf", "EX AF,AF' ; swap=exaf", "exx=exx", "djnz 12h=djnz 12h", "jr 2=jr 2", "jr nz,0=jrnz 0",
    "jr z,81h=jrz 81h", "jr nc,10=jrnc 10", "jr c,0=jrc 0", "neg=neg", "im 0=im0", "im 1=im1", "im 2=im2", "reti=reti",
    "retn=retn", "ld i,a=stai", "ld r,a=star", "ld a,i=ldai", "ld a,r=ldar", "rld=rld", "rrd=rrd", "ldi=ldi",
    "ldir=ldir", "ldd=ldd", "lddr=lddr", "cpi=cci", "cpir=ccir", "cpd=ccd", "cpdr=ccdr", "ini=ini", "inir=inir",
    "ind=ind", "indr=indr", "outi=outi", "otir=outir", "outd=outd", "otdr=outdr", "in b,(c)=inp b", "in a,(c)=inp a",
    "out (c),c=outp c", "out (c),a=outp a", "adc hl,bc=dadc b", "adc hl,sp=dadc sp", "sbc hl,de=dsbc d",
    "sbc hl,hl=dsbc h", "add ix,bc=dadx b", "add ix,de=dadx d", "add ix,ix=dadx ix", "add ix,sp=dadx sp",
    "add iy,bc=dady b", "add iy,iy=dady iy", "ld bc,(1234h)=lbcd 1234h", "ld (1234h),bc=sbcd 1234h",
    "ld de,(1234h)=lded 1234h", "ld (1234h),de=sded 1234h", "ld sp,(1234h)=lspd 1234h", "ld (1234h),sp=sspd 1234h",
    "ld ix,(1234h)=lixd 1234h", "ld (1234h),ix=sixd 1234h", "ld iy,(1234h)=liyd 1234h", "ld (1234h),iy=siyd 1234h",
    "ld sp,ix=spix", "ld sp,iy=spiy", "jp (ix)=pcix", "jp (iy)=pciy", "ex (sp),ix=xtix", "ex (sp),iy=xtiy",
    "rlc b=rlcr b", "rlc (ix+1)=rlcr 1(ix)", "rrc c=rrcr c", "rrc (iy)=rrcr (iy)", "rl d=ralr d", "rr (hl)=rarr m",
    "sla a=slar a", "sra (iy-5)=srar -5(iy)", "srl h=srlr h", "srl (ix+9)=srlr 9(ix)", "bit 0,a=bit 0,a",
    "bit 7,(iy+4)=bit 7,4(iy)", "set 3,b=set 3,b", "set 0,(ix-1)=set 0,-1(ix)", "res 1,(ix+2)=res 1,2(ix)",
    "res 6,l=res 6,l",
    // Z180
    "in0 a,(10h)=in0 a,10h", "in0 b,(0)=in0 b,0", "out0 (10h),b=out0 10h,b", "out0 (0FFh),a=out0 0FFh,a", "tst b=tst b",
    "tst (hl)=tst m", "tst 0Fh=tsti 0Fh", "tstio 80h=tstio 80h", "mlt bc=mlt b", "mlt sp=mlt sp", "otim=otim",
    "otimr=otimr", "otdm=otdm", "otdmr=otdmr", "slp=slp",
    // The encoder's own diagnostics are those of the 8080-style statement.
    "ld a,(ix+200)=mov a,200(ix)", "ld a,256=mvi a,256", "jr 1000h=jr 1000h", "bit 8,a=bit 8,a",
    "ld a,undefined=mvi a,undefined",
};

const char* const InvalidForms[] = {
    "ld (bc),b", "ld b,(1234h)", "ld (1234h),b", "ld a,(sp)", "ld a,(c)", "ld (hl),(hl)", "ld (ix+1),(iy+1)",
    "ld hl,(ix+1)", "ld i,b", "ld", "jr po,5", "jr m,5", "jp (ix+1)", "jp (5)", "djnz (5)", "push sp", "pop", "inc af",
    "add ix,iy", "add ix,hl", "add hl,ix", "adc ix,bc", "sub (5)", "ex hl,de", "ex af,af", "in b,(5)", "out (5),b",
    "rst 5", "rst 40h", "im 3", "rlc", "cpi 5", "exx a", "tst (ix+1)", "mlt ix", "in0 (hl),(5)",
};
// clang-format on

struct Outcome {
    std::string Bytes;
    Texts Diagnostics;
};

Outcome Assembled(const std::string& statement, bool zilog) {
    testing::EncoderRun run;
    run.Options().ZilogMnemonics = zilog;
    run.Assemble(" " + statement + "\n");
    return {run.Bytes(), run.DiagnosticTexts()};
}

TEST(ZilogNotation, EveryFormAssemblesAsItsIntelEquivalent) {
    std::set<std::string> reached;
    for (const char* equivalence : Equivalents) {
        SCOPED_TRACE(equivalence);
        const std::string form = Form(equivalence, true);
        const Outcome zilog = Assembled(Form(equivalence, false), true);
        const Outcome intel = Assembled(form, false);
        EXPECT_FALSE(intel.Bytes.empty());
        EXPECT_EQ(zilog.Bytes, intel.Bytes);
        // The same diagnostics; a warning about the instruction names it as written.
        ASSERT_EQ(zilog.Diagnostics.size(), intel.Diagnostics.size());
        for (std::size_t i = 0; i < zilog.Diagnostics.size(); ++i) {
            const std::string& said = zilog.Diagnostics[i];
            EXPECT_EQ(said.substr(0, said.find(" ~ ")),
                      intel.Diagnostics[i].substr(0, intel.Diagnostics[i].find(" ~ ")));
            if (said.find("arning") != std::string::npos) {
                // (A comment after the statement is not part of it.)
                EXPECT_EQ(Form(equivalence, false).rfind(said.substr(said.find(" ~ ") + 3), 0), 0u);
            }
        }
        reached.insert(form.substr(0, form.find(' ')));
    }
    // Every row of the shipped table but the alias setb is reached.
    for (const std::string& mnemonic : testing::ShippedMnemonics())
        EXPECT_TRUE(reached.count(mnemonic) || mnemonic == "setb") << mnemonic;
}

TEST(ZilogNotation, FormsWithoutEquivalentReportAndEmitNothing) {
    for (const char* form : InvalidForms) {
        SCOPED_TRACE(form);
        const Outcome zilog = Assembled(form, true);
        EXPECT_EQ(zilog.Bytes, "");
        EXPECT_EQ(zilog.Diagnostics, Texts{std::string("Invalid Zilog operands ~ ") + form});
    }
}

// jp nn is a conditional jump (F2) in 8080 style and an unconditional one
// (C3) in Zilog notation; cpi is compare immediate or the block compare.
// The forward reference makes the assembly take more than one pass, and each
// pass starts again in the option's notation.
TEST(ZilogNotation, TheOptionAndTheDirectivesChooseTheMeaningOfEachLine) {
    // clang-format off
    const std::tuple<bool, const char*, const char*> cases[] = {
        {false, " jp 1234h\n cpi 5\n", "F2 34 12 FE 05"}, {true, " jp 1234h\n cpi\n", "C3 34 12 ED A1"},
        {false, " jp 1\n .zilog\n jp 1\n .intel\n jp 1\n", "F2 01 00 C3 01 00 F2 01 00"},
        {false, " jp later\n .zilog\n jp later\nlater:\n", "F2 06 00 C3 06 00"},
        {true, " jp later\n .intel\n jp later\nlater:\n", "C3 06 00 F2 06 00"},
        {true, "x set 5\n db x\n set 3,a\n", "05 CB DF"}, // directives stay directives
        {true, " mov a,b\n mvi c,1\n", "78 0E 01"}, // 8080-only mnemonics still work
        {true, " rst vector\nvector equ 10h\n", "D7"}};
    // clang-format on
    for (const auto& [option, source, bytes] : cases) {
        testing::EncoderRun run;
        run.Options().ZilogMnemonics = option;
        EXPECT_EQ(run.QuietBytes(source), bytes) << source;
        EXPECT_EQ(run.DiagnosticTexts(), Texts{}) << source;
    }
}

TEST(ZilogNotation, ListingShowsTheStatementAsWritten) {
    testing::EncoderRun run;
    run.Options().ZilogMnemonics = true;
    run.QuietBytes("l: ld a,(ix+5) ; load\n ex af,af' ; swap\n");
    EXPECT_EQ(run.StatementLines(), (Texts{"0000\tDD7E05\tl\tld\ta,(ix+5)\t; load\t",
                                           "0003\t08\t\tex\taf,af'\t; swap\t"}));
}

} // namespace
} // namespace trident
