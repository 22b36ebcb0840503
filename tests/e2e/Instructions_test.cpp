#include "e2e/ToolDir.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

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

TEST(InstructionsTool, OptableChoosesAnotherTable) {
    testing::ToolDir dir;
    dir.Write("mine.def", "nop,118,1,blank,NO,8080\n");
    dir.Write("prog.asm", " nop\n");
    const auto result = dir.Run("{prog.asm} --optable {mine.def} --listing {prog.ls}");
    EXPECT_EQ(result.Exit, 0) << result.Err;
    EXPECT_EQ(dir.Listed("prog.ls"), "0000\t76\t\tnop\t\t\t\r\n");
}

// A missing table, or a directory in its place.
TEST(InstructionsTool, UnreadableTableStopsTheRunWithOneMessage) {
    testing::ToolDir dir;
    dir.Write("prog.asm", " nop\n");
    for (const char* table : {"{none.def}", "{.}"}) {
        const auto result = dir.Run("{prog.asm} --optable " + std::string(table));
        EXPECT_EQ(result.Exit, 2);
        const std::string head = "\nUnable to read OpTable.Def to initialize Assembler Error #";
        EXPECT_EQ(result.Err.rfind(head, 0), 0u) << result.Err;
        EXPECT_EQ(result.Err.find(head, 1), std::string::npos) << result.Err;
    }
}

} // namespace
} // namespace trident
