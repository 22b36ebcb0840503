#include "support/ListingBody.h"
#include "support/RunTool.h"
#include "support/TempSource.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::Quoted;
using testing::RunTool;

class BatchToolTest : public ::testing::Test {
  protected:
    testing::TempDir dir;
};

TEST_F(BatchToolTest, CleanSourceExitsZeroAndWritesTheListing) {
    const auto source = dir.Write("ok.asm", "start: ; go\r\n");
    const auto listing = dir.Path() / "ok.ls";
    const auto result = RunTool(Quoted(source) + " --listing " + Quoted(listing), dir.Path());
    EXPECT_EQ(result.Exit, 0);
    EXPECT_EQ(result.Out, "0 errors, 0 warnings\n");
    EXPECT_EQ(result.Err, "");
    EXPECT_EQ(testing::StatementLines(testing::ReadWholeFile(listing)),
              "0000\t\tstart\t\t\t; go\t\r\n");
}

TEST_F(BatchToolTest, ErrorsGoToStandardErrorWithFileAndLine) {
    const auto source = dir.Write("bad.asm", "; fine\n  frob x\n  zap\n");
    const auto result = RunTool(Quoted(source), dir.Path());
    EXPECT_EQ(result.Exit, 1);
    const std::string file = source.string();
    EXPECT_EQ(result.Err, file + ":2: error: Invalid Directive, Operation or Macro ~ frob\n" +
                              file + ":3: error: Invalid Directive, Operation or Macro ~ zap\n");
    EXPECT_EQ(result.Out, "2 errors, 0 warnings\n");
}

TEST_F(BatchToolTest, MissingSourceExitsTwo) {
    const auto result = RunTool(Quoted(dir.Path() / "nosuch.asm"), dir.Path());
    EXPECT_EQ(result.Exit, 2);
    EXPECT_NE(result.Err.find("no such file"), std::string::npos);
}

TEST_F(BatchToolTest, DirectoryAsSourceExitsTwo) {
    const auto result = RunTool(Quoted(dir.Path()), dir.Path());
    EXPECT_EQ(result.Exit, 2);
}

TEST_F(BatchToolTest, PassedLimitExitsTwoNamingTheLimitAndLine) {
    std::string line = " nop";
    for (int i = 0; i < 40; ++i) line += "! nop";
    const auto source = dir.Write("limit.asm", "; one\n" + line + "\n");
    const auto result = RunTool(Quoted(source), dir.Path());
    EXPECT_EQ(result.Exit, 2);
    EXPECT_NE(result.Err.find("more than 32 statements on one line"), std::string::npos)
        << result.Err;
    EXPECT_NE(result.Err.find("line 2"), std::string::npos) << result.Err;
}

TEST_F(BatchToolTest, UnwritableListingExitsTwoAndKeepsNothingHalfWritten) {
    const auto source = dir.Write("ok.asm", "a:\n");
    const auto result =
        RunTool(Quoted(source) + " --listing " + Quoted(dir.Path() / "no" / "dir.ls"), dir.Path());
    EXPECT_EQ(result.Exit, 2);
    EXPECT_NE(result.Err.find("cannot write"), std::string::npos);
}

TEST_F(BatchToolTest, UsageErrorsExitTwo) {
    EXPECT_EQ(RunTool("", dir.Path()).Exit, 2);
    EXPECT_EQ(RunTool("--no-such-option x.asm", dir.Path()).Exit, 2);
    const auto help = RunTool("--help", dir.Path());
    EXPECT_EQ(help.Exit, 0);
    EXPECT_NE(help.Out.find("--listing"), std::string::npos);
}

} // namespace
} // namespace trident
