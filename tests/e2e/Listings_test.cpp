// Whole programs of each kind of statement through the batch tool, with
// the exact listing it writes.
#include "e2e/ToolDir.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

TEST(SymbolsAndConditionalsTool, ValueColumnAndDuplicateSymbol) {
    testing::ToolDir dir;
    const auto source = dir.Write("sym.asm", "size equ 10h\n if size-15\nsize equ 20h\n endif\n");
    const auto result = dir.Run("{sym.asm} --listing {sym.ls}");
    EXPECT_EQ(result.Exit, 1);
    EXPECT_EQ(result.Err, source.string() + ":3: error: Symbol Already Defined ~ size\n");
    EXPECT_EQ(result.Out, "1 errors, 0 warnings\n");
    EXPECT_EQ(dir.Listed("sym.ls"), "0000\t0010  \tsize\tequ\t10h\t\t\r\n"
                                    "0000\t0001  \t\tif\tsize-15\t\t\r\n"
                                    "~Symbol Already Defined ~ size\r\n"
                                    "0000\t0020  \tsize\tequ\t20h\t\t\r\n"
                                    "0000\t\t\tendif\t\t\t\r\n");
}

// Two origins, an include file beside the source, reserved space and an end
// that names the start address: the listing follows every jump, and stops
// at the end.
TEST(DataAndControlTool, ListsAProgramOfSeveralOrigins) {
    testing::ToolDir dir;
    dir.Write("tab.inc", "table: dm \"ABCDE\"\n");
    dir.Write("prog.asm", " org 100h\nstart: db \"Hi\",0\n dw start\n include tab.inc\n"
                          " org 200h\nbuf: ds 4\n dc \"ok\"\n end start\n db 99\n");
    const auto result = dir.Run("{prog.asm} --listing {prog.ls}");
    EXPECT_EQ(result.Exit, 0) << result.Err;
    EXPECT_EQ(dir.Listed("prog.ls"), "0000\t\t\torg\t100h\t\t\r\n"
                                     "0100\t48 69 00\tstart\tdb\t\"Hi\",0\t\t\r\n"
                                     "0103\t0001\t\tdw\tstart\t\t\r\n"
                                     "0105\t\t\tinclude\ttab.inc\t\t\r\n"
                                     "0105\t41 42 43 44\r\n\tC5\ttable\tdm\t\"ABCDE\"\t\t\r\n"
                                     "010A\t\t\t\t\t\t\r\n"
                                     "010A\t\t\torg\t200h\t\t\r\n"
                                     "0200\t\tbuf\tds\t4\t\t\r\n"
                                     "0204\t6F EB\t\tdc\t\"ok\"\t\t\r\n"
                                     "0206\t\t\tend\tstart\t\t\r\n");
}

// A fault inside an expansion is reported at the calling line, with the
// macro named; the expansion lines are listed with their level.
TEST(MacrosTool, ReportsFaultsAtTheCallAndListsTheExpansion) {
    testing::ToolDir dir;
    const auto source =
        dir.Write("mac.asm", "fill macro n,v\n rept n\n db v\n endm\n endm\n fill 2,<1,nosuch>\n");
    const auto result = dir.Run("{mac.asm} --listing {mac.ls} --list-macro-expansions");
    EXPECT_EQ(result.Exit, 1);
    const std::string place = source.string() + ":6: ";
    const std::string report = place + "error: Non Existant Variable ~ nosuch\n" + place +
                               "note: in expansion of macro rept\n";
    EXPECT_EQ(result.Err, report + report);
    EXPECT_EQ(dir.Listed("mac.ls"), "0000\t\tfill\tmacro\tn,v\t\t\r\n"
                                    "0000\t\t\tendm\t\t\t\r\n"
                                    "0000\t\t\tfill\t2,<1,nosuch>\t\t\r\n"
                                    "0000 +01\t\t\trept\t2\t\t\r\n"
                                    "0000 +01\t\t\tendm\t\t\t\r\n"
                                    "~Non Existant Variable ~ nosuch\r\n"
                                    "0000 +02\t01 00\t\tdb\t1,nosuch\t\t\r\n"
                                    "~Non Existant Variable ~ nosuch\r\n"
                                    "0002 +02\t01 00\t\tdb\t1,nosuch\t\t\r\n");
}

// The batch tool finds OpTable.def beside itself.
TEST(InstructionsTool, ListsInstructionLinesWithAddressBytesAndFields) {
    testing::ToolDir dir;
    dir.Write("prog.asm",
              "start: mvi a,5 ; load\r\n mov b,-3(ix)\r\n jrnz start\r\n jmp start\r\n");
    const auto result = dir.Run("{prog.asm} --listing {prog.ls}");
    EXPECT_EQ(result.Exit, 0) << result.Err;
    EXPECT_EQ(result.Out, "0 errors, 2 warnings\n");
    EXPECT_EQ(dir.Listed("prog.ls"), "0000\t3E05\tstart\tmvi\ta,5\t; load\t\r\n"
                                     "~z80 warning  ~ -3(ix)\r\n"
                                     "0002\tDD46FD\t\tmov\tb,-3(ix)\t\t\r\n"
                                     "~Z80 Warning ~ jrnz\r\n"
                                     "0005\t20F9\t\tjrnz\tstart\t\t\r\n"
                                     "0007\tC30000 \t\tjmp\tstart\t\t\r\n");
}

} // namespace
} // namespace trident
