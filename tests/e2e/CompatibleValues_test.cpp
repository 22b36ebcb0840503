// Values in the dialects of the 8080 era: operators, strings, register and
// mnemonic names as values and the wider byte range, each with Compatible
// mode on and off.
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
    const auto result = dir.Run("{prog.asm} --quiet --no-z80-warnings --bin {prog.bin} " + flags);
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

} // namespace
} // namespace trident
