#include "e2e/ToolDir.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

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

} // namespace
} // namespace trident
