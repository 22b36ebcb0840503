// Values in the dialects of the 8080 era: operators, strings, register and
// mnemonic names as values, the wider byte range, the built-in Z80 library
// and dw's text order, each with Compatible mode on and off.
#include "e2e/ToolDir.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace trident {
namespace {

struct Outcome {
    std::string Bytes; // the binary image as "E6 FB"
    std::string Err;
    int Exit = -1;
};

std::string HexBytes(const std::string& image) {
    std::string text;
    for (const char c : image) {
        char pair[4];
        std::snprintf(pair, sizeof pair, "%02X", static_cast<unsigned char>(c));
        if (!text.empty()) text += ' ';
        text += pair;
    }
    return text;
}

Outcome Assemble(const std::string& source, const std::string& flags,
                 const std::vector<std::pair<std::string, std::string>>& files = {}) {
    testing::ToolDir dir;
    dir.Write("prog.asm", source);
    for (const auto& [name, text] : files) dir.Write(name, text);
    const auto result =
        dir.Run("{prog.asm} --quiet --keep-outputs --no-z80-warnings --bin {prog.bin} " + flags);
    return {HexBytes(dir.Read("prog.bin")), result.Err, result.Exit};
}

struct Case {
    const char* Name;
    const char* Flags;
    const char* Source;
    const char* Bytes;
    // A text standard error must hold; empty: no diagnostic at all.
    const char* Diagnostic;
};

void Check(const Case& c, const std::vector<std::pair<std::string, std::string>>& files = {}) {
    const Outcome out = Assemble(c.Source, c.Flags, files);
    EXPECT_EQ(out.Bytes, c.Bytes) << c.Name << '\n' << out.Err;
    if (std::string_view(c.Diagnostic).empty())
        EXPECT_EQ(out.Err, "") << c.Name;
    else
        EXPECT_NE(out.Err.find(c.Diagnostic), std::string::npos) << c.Name << '\n' << out.Err;
}

constexpr const char* Compatible = "--compatible";
constexpr const char* ZilogCompatible = "--compatible --zilog";
constexpr const char* Default = "";

// `~`, `^` and double-quoted characters.
const Case OperatorCases[] = {
    {"tilde complements", Compatible, " ani ~4\n", "E6 FB", ""},
    {"tilde in Zilog notation", ZilogCompatible, " and ~4\n", "E6 FB", ""},
    {"tilde is no name character", Compatible, "x equ 0f0h\n mvi a,~x\n", "3E 0F", ""},
    {"tilde names stay names by default", Default, "x equ 0f0h\n mvi a,~x\n", "3E 00",
     "Non Existant Variable"},
    {"caret is xor, below plus", Compatible, "z equ 1\n mvi a,'L'+z ^ '='\n", "3E 70", ""},
    {"caret xor of numbers", Compatible, " mvi a,0f0h^0ffh\n", "3E 0F", ""},
    {"double quotes are a character", Compatible, " cpi \"Z\"+1\n", "FE 5B", ""},
    {"double quotes in Zilog notation", ZilogCompatible, " cp \"Z\"+1\n", "FE 5B", ""},
    {"two double-quoted characters", Compatible, " lxi h,\"AB\"\n", "21 42 41", ""},
    {"db keeps its strings", Compatible, " db \"AB\",'C',\"x\"+1\n", "41 42 43 79", ""},
    {"caret stays the power by default", Default, " mvi a,2^3\n", "3E 08", ""},
    {"caret beside a character warns", Default, " mvi a,'A'^1\n", "3E 41",
     "warning: '^' is the power operator; xor is exclusive or"},
    {"caret before a character warns", Default, "z equ 1\n mvi a,z^'='\n", "3E 01",
     "'^' is the power operator"},
    {"no warning in Compatible mode", Compatible, " mvi a,'A'^1\n", "3E 40", ""},
};

TEST(CompatibleValues, Operators) {
    for (const Case& c : OperatorCases) Check(c);
}

// Register names as values, and expressions selecting registers.
const Case RegisterCases[] = {
    {"a register named by a symbol", Compatible,
     "ctrkh equ h\nur equ c\n mov a,ctrkh\n mov ctrkh,m\n inr ur\n", "7C 66 0C", ""},
    {"pairs by value", Compatible, "pr equ h\nrp equ d\n lxi pr,1234h\n push pr\n ldax rp\n",
     "21 34 12 E5 1A", ""},
    {"psw and sp as values", Compatible, " db psw,sp,a,m\n", "06 06 07 06", ""},
    {"a library macro building an opcode", Compatible,
     "ldr macro reg,disp\n db 0ddh,reg*8+46h,disp\n endm\n ldr a,5\n ldr b,2\n",
     "DD 7E 05 DD 46 02", ""},
    {"no register has that value", Compatible, "bad equ 9\n mov a,bad\n", "78", "Bad register"},
    {"no pair has an odd value", Compatible, "bad equ 3\n inx bad\n", "03", "Bad register"},
    {"register symbols are bad by default", Default, "ctrkh equ 4\n mov a,ctrkh\n", "78",
     "Bad register"},
};

TEST(CompatibleValues, Registers) {
    for (const Case& c : RegisterCases) Check(c);
}

// Mnemonics as values; the source's own names win.
const Case MnemonicCases[] = {
    {"opcodes as values", Compatible, " mvi a,NOP\n db CMA\n cpi RET\n", "3E 00 2F FE C9", ""},
    {"a label named like a mnemonic wins", Compatible, " org 100h\nin: db 0\n lxi h,in\n",
     "00 21 00 01", ""},
    {"a later label wins too", Compatible, " org 100h\n lxi h,cm\ncm: db 0\n", "21 03 01 00", ""},
    {"mnemonics are no values by default", Default, " db CMA\n", "00", "Non Existant Variable"},
};

TEST(CompatibleValues, Mnemonics) {
    for (const Case& c : MnemonicCases) Check(c);
}

const Case ByteRangeCases[] = {
    {"not of a byte mask", Compatible, "m equ 0fch\n ani not m\n", "E6 03", ""},
    {"lowest byte", Compatible, " mvi a,-256\n db -129\n", "3E 00 7F", ""},
    {"below the lowest byte", Compatible, " mvi a,-257\n", "3E FF", "Value out of Range"},
    {"displacements keep their range", Compatible, " lxi ix,0\n mov a,-129(ix)\n",
     "DD 21 00 00 DD 7E 7F", "Signed Value out of Range"},
    {"not of a mask by default", Default, "m equ 0fch\n ani not m\n", "E6 03",
     "Value out of Range"},
};

TEST(CompatibleValues, ByteRange) {
    for (const Case& c : ByteRangeCases) Check(c);
}

// `maclib z80` with no such file: the library's mnemonics are built in.
const Case LibraryCases[] = {
    {"indexed loads and stores", Compatible,
     " maclib z80\n ldx a,5\n stx b,-2\n mvix 12h,3\n lxiy 1234h\n",
     "DD 7E 05 DD 70 FE DD 36 03 12 FD 21 34 12", "built in"},
    {"indexed arithmetic", Compatible,
     " maclib z80\n addx 1\n sbby 2\n anax 3\n xray 4\n cmpx 5\n dcry 6\n",
     "DD 86 01 FD 9E 02 DD A6 03 FD AE 04 DD BE 05 FD 35 06", "built in"},
    {"indexed bits and rotates", Compatible,
     " maclib z80\n bitx 3,4\n resy 0,2\n setx 7,1\n rlcx 1\n srly 2\n",
     "DD CB 04 5E FD CB 02 86 DD CB 01 FE DD CB 01 06 FD CB 02 3E", "built in"},
    {"index registers and the f forms", Compatible,
     " maclib z80\n pushix\n popiy\n inxix\n dcxiy\n outpf\n inpf\n",
     "DD E5 FD E1 DD 23 FD 2B ED 71 ED 70", "built in"},
    {"dollar in a jump is the displacement byte", Compatible,
     " maclib z80\n jr $-1\n djnz $\n jrnz $+1\n", "18 FE 10 FF 20 00", "built in"},
    {"jumps to labels", Compatible,
     " maclib z80\nback: jrc back\n jrz ahead\n nop\nahead: jrnc back\n", "38 FE 28 01 00 30 F9",
     "built in"},
    {"a jump out of range", Compatible, " maclib z80\n jr $+200\n", "18 C7", "Bad Range"},
    {"a displacement out of range", Compatible, " maclib z80\n ldx a,128\n", "DD 7E 80",
     "Signed Value out of Range"},
    {"a register number out of range", Compatible, " maclib Z80.LIB\n ldx 8,1\n", "DD 46 01",
     "Value out of Range"},
    {"trident's own jr counts from the opcode", Default, " org 100h\n jr $-1\n", "18 FD", ""},
    {"the library counts from its maclib line", Compatible,
     " org 100h\n jr $-1\n maclib z80\n jr $-1\n", "18 FD 18 FE", "built in"},
    {"no library mnemonics before it", Compatible, " pushix\n maclib z80\n", "",
     "Invalid Directive, Operation or Macro"},
};

TEST(CompatibleValues, BuiltInZ80Library) {
    for (const Case& c : LibraryCases) Check(c);
}

TEST(CompatibleValues, LibraryFileWinsOverTheBuiltInMnemonics) {
    const Case withFile{"library file", Compatible, " maclib z80\n pushix\n", "01 02", ""};
    Check(withFile, {{"z80.lib", "pushix macro\n db 1,2\n endm\n"}});
}

// A library-style macro jump written the era's way: "$" is the start of the
// statement, inside a db list too, so the displacement is counted from it.
TEST(CompatibleValues, LibraryStyleMacroJumps) {
    const char* source = " org 100h\n"
                         "jmpr macro ?n\n db 18h\n db ?n-$-1\n endm\n"
                         "jmpr2 macro ?n\n db 18h,?n-$-2\n endm\n"
                         "here: jmpr here\n jmpr2 here\n jmpr there\n jmpr2 there\n"
                         "there: nop\n";
    for (const char* flags : {Compatible, Default}) {
        const Outcome out = Assemble(source, flags);
        EXPECT_EQ(out.Bytes, "18 FE 18 FC 18 02 18 00 00") << flags << '\n' << out.Err;
        EXPECT_EQ(out.Err, "");
    }
}

const Case WordOrderCases[] = {
    {"value low byte first", Default, " dw 'AB','CD'\n", "42 41 44 43", ""},
    {"text order", "--dw-text-order", " dw 'AB',\"CD\"\n", "41 42 43 44", ""},
    {"text order beside Compatible", "--dw-text-order --compatible", " dw 'AB'\n", "41 42", ""},
    {"one character and numbers", "--dw-text-order", " dw 'A',1234h,'A'+1\n", "41 00 34 12 42 00",
     ""},
    {"a longer string", "--dw-text-order", " dw 'ABC'\n", "43 42", "Value out of Range"},
};

TEST(CompatibleValues, WordStringOrder) {
    for (const Case& c : WordOrderCases) Check(c);
}

// Small programs in the manner of each dialect, each using several of the
// differences at once.
const Case DialectPrograms[] = {
    {"Digital Research-style ASM with the Z80 library", Compatible,
     "; upper-cases a four-letter table through IX\n"
     "        org     100h\n"
     "        maclib  z80\n"
     "count   equ     4\n"
     "start:  lxix    table\n"
     "        mvi     b,count\n"
     "loop:   ldx     a,0\n"
     "        cpi     \"a\"\n"
     "        jrc     skip\n"
     "        ani     not 20h\n"
     "        stx     a,0\n"
     "skip:   inxix\n"
     "        djnz    loop\n"
     "        ret\n"
     "table:  db      'abcd'\n",
     "DD 21 17 01 06 04 DD 7E 00 FE 61 38 05 E6 DF DD 77 00 DD 23 10 F0 C9 61 62 63 64",
     "built in"},
    {"Microsoft-style Z80 source", ZilogCompatible,
     "mask    equ     0fh\n"
     "        ld      a,(hl)\n"
     "        and     ~mask\n"
     "        xor     'L' ^ '='\n"
     "        cp      \"Z\"+1\n"
     "        ld      b,a\n"
     "        ret\n",
     "7E E6 F0 EE 71 FE 5B 47 C9", ""},
    {"ISIS-style source", Compatible,
     "CR      EQU     0DH\n"
     "REG     EQU     H\n"
     "        MVI     A,CR\n"
     "        MOV     REG,A\n"
     "        INR     REG\n"
     "        ANI     NOT 0F8H\n"
     "        CPI     RET\n"
     "        DB      NOP,HLT\n",
     "3E 0D 67 24 E6 07 FE C9 00 76", ""},
    {"Altair-style monitor command table", "--compatible --dw-text-order",
     "cmdtab: dw      'DM'\n"
     "        dw      dump\n"
     "        dw      'GO'\n"
     "        dw      go\n"
     "dump:   mvi     a,'>'\n"
     "        ret\n"
     "go:     pchl\n",
     "44 4D 08 00 47 4F 0B 00 3E 3E C9 E9", ""},
};

TEST(CompatibleValues, DialectPrograms) {
    for (const Case& c : DialectPrograms) Check(c);
}

} // namespace
} // namespace trident
