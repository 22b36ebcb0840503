#include "support/ListingBody.h"
#include "support/RunTool.h"
#include "support/TempSource.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::Quoted;
using testing::ReadWholeFile;
using testing::RunTool;

class InstructionsToolTest : public ::testing::Test {
  protected:
    testing::TempDir dir;
};

// The batch tool finds OpTable.def beside itself.
TEST_F(InstructionsToolTest, ListsInstructionLinesWithAddressBytesAndFields) {
    const auto source = dir.Write("prog.asm", "start: mvi a,5 ; load\r\n"
                                              " mov b,-3(ix)\r\n"
                                              " jrnz start\r\n"
                                              " jmp start\r\n");
    const auto listing = dir.Path() / "prog.ls";
    const auto result = RunTool(Quoted(source) + " --listing " + Quoted(listing), dir.Path());
    EXPECT_EQ(result.Exit, 0) << result.Err;
    EXPECT_EQ(result.Out, "0 errors, 2 warnings\n");
    EXPECT_EQ(testing::StatementLines(ReadWholeFile(listing)),
              "0000\t3E05\tstart\tmvi\ta,5\t; load\t\r\n"
              "~z80 warning  ~ -3(ix)\r\n"
              "0002\tDD46FD\t\tmov\tb,-3(ix)\t\t\r\n"
              "~Z80 Warning ~ jrnz\r\n"
              "0005\t20F9\t\tjrnz\tstart\t\t\r\n"
              "0007\tC30000 \t\tjmp\tstart\t\t\r\n");
}

TEST_F(InstructionsToolTest, ErrorsNameTheSourceLine) {
    const auto source = dir.Write("bad.asm", " nop\n mov m,m\n");
    const auto result = RunTool(Quoted(source), dir.Path());
    EXPECT_EQ(result.Exit, 1);
    EXPECT_EQ(result.Err, source.string() + ":2: error: Memory to Memory NOT allowed ~ mov\n");
}

TEST_F(InstructionsToolTest, OptableChoosesAnotherTable) {
    const auto table = dir.Write("mine.def", "nop,118,1,blank,NO,8080\n");
    const auto source = dir.Write("prog.asm", " nop\n");
    const auto listing = dir.Path() / "prog.ls";
    const auto result =
        RunTool(Quoted(source) + " --optable " + Quoted(table) + " --listing " + Quoted(listing),
                dir.Path());
    EXPECT_EQ(result.Exit, 0) << result.Err;
    EXPECT_EQ(testing::StatementLines(ReadWholeFile(listing)), "0000\t76\t\tnop\t\t\t\r\n");
}

TEST_F(InstructionsToolTest, UnreadableTableStopsTheRunWithOneMessage) {
    const auto source = dir.Write("prog.asm", " nop\n");
    const auto result =
        RunTool(Quoted(source) + " --optable " + Quoted(dir.Path() / "none.def"), dir.Path());
    EXPECT_EQ(result.Exit, 2);
    const std::string head = "\nUnable to read OpTable.Def to initialize Assembler Error #";
    EXPECT_EQ(result.Err.rfind(head, 0), 0u) << result.Err;
    EXPECT_EQ(result.Err.find(head, 1), std::string::npos) << result.Err;
}

} // namespace
} // namespace trident
