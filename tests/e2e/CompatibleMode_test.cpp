// Compatible mode through the batch tool: small programs in the dialects of
// the CP/M-era assemblers, each checked byte for byte, and the warnings that
// default mode gives where those dialects would read a line otherwise.
#include "e2e/ToolDir.h"

#include <gtest/gtest.h>
#include <ostream>
#include <sstream>
#include <vector>

namespace trident {
namespace {

struct Assembled {
    int Exit = -1;
    std::string Bytes; // the binary image as hex pairs
    std::string Err;
};

std::string HexPairs(const std::string& binary) {
    static constexpr char Digits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : binary) {
        const auto byte = static_cast<unsigned char>(c);
        if (!text.empty()) text += ' ';
        text += Digits[byte >> 4];
        text += Digits[byte & 15];
    }
    return text;
}

Assembled Assemble(testing::ToolDir& dir, const std::string& name, const std::string& source,
                   const std::string& flags) {
    dir.Write(name, source);
    const auto result = dir.Run("{" + name + "} --quiet --keep-outputs --bin {out.bin}" + flags);
    return {result.Exit, HexPairs(dir.Read("out.bin")), result.Err};
}

struct Case {
    const char* Name;
    const char* File;
    const char* Source;
    const char* Bytes;
    const char* Flags = " --compatible";
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.Name;
}

// Each program assembles cleanly to its bytes.
const Case Programs[] = {
    // A Microsoft-style .MAC file: operation words in column 1, .8080,
    // accepted listing and segment words, a .comment block, .phase.
    {"ColumnOneOperations", "prog.mac",
     "\t.8080\n\taseg\n\tname prog\n\ttitle demo\n\tsubttl part\n\tpage\n\teject\n"
     "\t.lall\n\t.sall\n\t.xall\n\t.cref\n\t.xcref\n\t.list\n\t.xlist\n\t.list\n"
     "\t.printx /listing/\n"
     ".comment *\nanything at all ! mov a,b\n*\n"
     "ORG 100H\nDEBUG EQU 1\nZ80 EQU 0\nIF DEBUG\n\tNOP\nENDIF\nIF Z80\n\tHALT\nENDIF\n"
     "START: JMP TEXT\nTEXT DB 'hi'\nEND\n",
     "00 C3 04 01 68 69"},
    {"PhaseCountsFromItsAddress", "copy.mac",
     "\torg 100h\n\tlxi h,code\n\t.phase 8000h\ncode:\tjmp code\n\t.dephase\nafter:\tdw after\n",
     "21 00 80 C3 00 80 06 01"},
    {"RadixOfPlainNumbers", "radix.mac",
     "\t.radix 16\n\tdb 10,0ah,17q\n\tdw 10b\n\t.radix 2\n\tdb 101,11h\n\t.radix 10\n\tdb 10\n",
     "10 0A 0F 0B 01 05 11 0A"},
    {"DsWithFillEmitsData", "fill.mac", "buf:\tds 4,0ffh\n\tds 2\n\tdb 1\n",
     "FF FF FF FF 00 00 01"},
    {"DefmIsPlainText", "text.mac", "\tdefm \"AB\"\n\tdm 'CD'\n\tdc 'EF'\n", "41 42 43 44 45 C6"},
    {"SameValueTwice", "same.mac", "x equ 5\nx equ 5\n\torg 100h\nhere equ 100h\nhere:\tdb x\n",
     "05"},
    // A Digital Research-style .ASM file: indented equ, "!" separators,
    // comments holding "!", "!=", listing controls, a macro library found
    // in another letter case (its warning is checked below).
    {"DigitalResearchStatements", "prog.asm",
     "$-MACRO\n\tmaclib z80\n\torg 100h\n  count equ 3\n\tmvi a,count\n\tcmp b!inx h\n"
     "\tnop ; careful! mov a,b\n; (T!F)\n\tif $ != 105h\n\tdb 1\n\telse\n\tdb 2\n\tendif\n"
     "\tskip2\n",
     "3E 03 B8 23 00 02 00 00"},
    // A library's relative jump as a macro that replaces the instruction
    // from its definition on; "$" is the start of the statement, also in a
    // db list, so the displacement is written both ways.
    {"MacroReplacesInstruction", "jumps.asm",
     "\torg 100h\n\tjr $\njr\tmacro t\n\tdb 18h,t-$-2\n\tendm\njrz\tmacro t\n\tdb 28h\n"
     "\tdb t-$-1\n\tendm\n\tjr there\n\tjrz there\nthere:\tjr $\n",
     "18 FE 18 02 28 00 18 FE"},
    // A forward reference in a condition: false while unknown, then decided
    // with the real value; the code after it moves with it.
    // Microsoft-style conditionals: `if` is "not zero", ife, if2, and the
    // macro argument tests; `=` sets a name.
    {"MicrosoftConditionals", "cond.mac",
     "two = 2\ntwo = two+1\n\tif 2\n\tdb two\n\tendif\n\tife 0\n\tdb 4\n\tendif\n"
     "m\tmacro a,b\n\tifb <a>\n\tdb 0eeh\n\tendif\n\tifnb <a>\n\tdb a\n\tendif\n"
     "\tifidn <a>,<b>\n\tdb 0aah\n\tendif\n\tifdif <a>,<b>\n\tdb 0ddh\n\tendif\n\tendm\n"
     "\tm\n\tm 5,5\n\tm 6,7\n\tif2\n\tdb 22h\n\tendif\n",
     "03 04 EE AA 05 AA 06 DD 22"},
    {"ForwardReferenceInCondition", "fwd.asm",
     "\torg 100h\n\tif last-$ ge 2\n\tdb 1\n\tendif\n\tdw last\nlast:\n", "01 03 01"},
    // Zilog notation in a .Z80 file: the processor word, aseg, ds with fill,
    // plain defm, and the short port forms.
    {"ZilogShortForms", "prog.z80",
     "\t.z80\n\taseg\nORG 100H\n\tout 80h\n\tin 81h\n\tout (82h),a\n\tdefm \"AB\"\n"
     "\tds 2,0\n\tld a,b\n",
     "D3 80 DB 81 D3 82 41 42 00 00 78", " --zilog --compatible"},
    // An ISIS-style source: control lines, labels with colons, upper case.
    {"IsisStyle", "isis.src",
     "$MOD80\n$TITLE('demo')\n$INCLUDE(:F1:DEFS.SRC)\n\tNAME DEMO\n\tSTKLN 16\n\tORG 0\n"
     "BEGIN:\tMVI A,0FFH\n\tOUT PORT\n\tJMP BEGIN\n\tEND BEGIN\n",
     "3E FF D3 10 C3 00 00"},
    // An Altair-era monitor fragment: column-1 names without colons.
    {"AltairMonitor", "mon.asm",
     "\tORG 0F800H\nMON\tLXI SP,STACK\n\tMVI A,3\n\tOUT 10H\nSTACK\tEQU 0FC00H\n\tEND\n",
     "31 00 FC 3E 03 D3 10"},
};

class CompatiblePrograms : public ::testing::TestWithParam<Case> {};

TEST_P(CompatiblePrograms, AssembleToTheirBytes) {
    const Case& c = GetParam();
    testing::ToolDir dir;
    dir.Write("Z80.LIB", "skip2\tmacro\n\tdb 0,0\n\tendm\n");
    dir.Write("DEFS.SRC", "PORT\tEQU 10H\n");
    const Assembled result = Assemble(dir, c.File, c.Source, c.Flags);
    EXPECT_EQ(result.Exit, 0) << result.Err;
    EXPECT_EQ(result.Bytes, c.Bytes) << result.Err;
    EXPECT_EQ(result.Err.find("error"), std::string::npos) << result.Err;
}

INSTANTIATE_TEST_SUITE_P(Dialects, CompatiblePrograms, ::testing::ValuesIn(Programs),
                         [](const auto& info) { return std::string(info.param.Name); });

// With the box clear, the same lines keep their default reading.
TEST(CompatibleMode, DefaultModeKeepsItsOwnReading) {
    testing::ToolDir dir;
    EXPECT_EQ(Assemble(dir, "a.asm", "\tdm 'AB'\n", "").Bytes, "41 C2");
    EXPECT_EQ(Assemble(dir, "a.asm", "\tnop ; x! mov a,b\n", "").Bytes, "00 78");
    EXPECT_EQ(Assemble(dir, "a.asm", "\tds 2,0ffh\n\tdb 1\n", "").Exit, 1);
}

// What stays an error in Compatible mode is reported on its line.
TEST(CompatibleMode, ErrorsStayOnTheirLines) {
    testing::ToolDir dir;
    const std::pair<const char*, const char*> cases[] = {
        {"y equ 5\ny equ 6\n", ":2: error: Symbol Already Defined ~ y"},
        {"\tif nosuch\n\tdb 1\n\tendif\n\tdb 2\n", ":1: error:"},
        {"\t.radix 16\n\t.radix 3\n", ":2: error: Radix must be 2, 8, 10 or 16 ~ 3"},
    };
    for (const auto& [source, message] : cases) {
        const Assembled result = Assemble(dir, "e.asm", source, " --compatible");
        EXPECT_EQ(result.Exit, 1) << source;
        EXPECT_NE(result.Err.find(message), std::string::npos) << source << result.Err;
        EXPECT_EQ(result.Err.find("Terminal"), std::string::npos) << result.Err;
    }
}

// Default mode: the warnings, each on the line it is about, and none for
// lines that read the same in every dialect.
TEST(CompatibleMode, DefaultModeWarnsWhereDialectsDiffer) {
    testing::ToolDir dir;
    const std::pair<const char*, const char*> cases[] = {
        {"\tnop\nORG 100H\n",
         ":2: warning: label looks like a directive; indent it, or use --compatible ~ ORG"},
        {"\tnop ; careful! mov a,b\n", ":1: warning: '!' in a ';' comment starts a statement"},
        {"\tif $ != 1\n\tendif\n", ":1: warning: '!' ends the statement; write <> for not-equal"},
        {"page equ 10\nstart nop\ntext db 1\n\tnop ; fine!\n\tnop ! nop\n", ""},
    };
    for (const auto& [source, warning] : cases) {
        const Assembled result = Assemble(dir, "w.asm", source, "");
        if (*warning)
            EXPECT_NE(result.Err.find(warning), std::string::npos) << source << result.Err;
        else
            EXPECT_EQ(result.Err.find("warning"), std::string::npos) << result.Err;
    }
}

// A malformed if expression is an error on its line and a false condition,
// not the terminal stop, in either mode.
TEST(CompatibleMode, MalformedConditionIsAnErrorNotAStop) {
    for (const char* flags : {"", " --compatible"}) {
        testing::ToolDir dir;
        const Assembled result =
            Assemble(dir, "c.asm", "\tif ($ <> 260h\n\tdb 1\n\tendif\n\tdb 2\n", flags);
        EXPECT_EQ(result.Exit, 1);
        EXPECT_NE(result.Err.find("c.asm:1: error:"), std::string::npos) << result.Err;
        EXPECT_EQ(result.Err.find("Terminal"), std::string::npos) << result.Err;
        EXPECT_EQ(result.Bytes, "02");
    }
}

// .xall lists only the expansion lines that emit code, .sall none, .lall
// all of them again, within what --list-macro-expansions lists.
TEST(CompatibleMode, ExpansionListingWords) {
    testing::ToolDir dir;
    dir.Write("l.mac", "m\tmacro\n\tnop\nx\tset 1\n\tendm\n\tm\n\t.xall\n\tm\n\t.sall\n\tm\n"
                       "\t.lall\n\tm\n");
    const auto result =
        dir.Run("{l.mac} --compatible --list-macro-expansions --listing {l.ls} --quiet");
    EXPECT_EQ(result.Exit, 0) << result.Err;
    std::vector<std::string> expanded;
    std::istringstream lines(dir.Listed("l.ls"));
    for (std::string line; std::getline(lines, line);)
        if (line.find("+01") != std::string::npos) expanded.push_back(line.substr(line.find('\t')));
    EXPECT_EQ(expanded.size(), 5u);
    EXPECT_EQ(expanded[2].find("set"), std::string::npos) << expanded[2];
}

// Include files and macro libraries are found whatever their letter case,
// with a warning naming the file taken; a library not found is an error on
// its line.
TEST(CompatibleMode, FilesInAnyLetterCase) {
    testing::ToolDir dir;
    dir.Write("DEFS.INC", "five equ 5\n");
    dir.Write("MACS.LIB", "two\tmacro\n\tdb 2\n\tendm\n");
    for (const char* flags : {"", " --compatible"}) {
        const Assembled found =
            Assemble(dir, "f.asm", "\tinclude defs.inc\n\tmaclib macs\n\tdb five\n\ttwo\n", flags);
        EXPECT_EQ(found.Exit, 0) << found.Err;
        EXPECT_EQ(found.Bytes, "05 02");
        EXPECT_NE(found.Err.find("f.asm:1: warning: file name found in another letter case"),
                  std::string::npos)
            << found.Err;
        EXPECT_NE(found.Err.find("MACS.LIB"), std::string::npos) << found.Err;
        const Assembled missing = Assemble(dir, "m.asm", "\tnop\n\tmaclib nosuch\n", flags);
        EXPECT_EQ(missing.Exit, 1);
        EXPECT_NE(missing.Err.find("m.asm:2: error: Macro library error ~ nosuch.lib"),
                  std::string::npos)
            << missing.Err;
    }
}

} // namespace
} // namespace trident
