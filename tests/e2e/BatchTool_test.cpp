// Exit statuses, the summary on standard output and the diagnostics on
// standard error.
#include "e2e/ToolDir.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

TEST(BatchTool, CleanSourceExitsZeroAndWritesTheListing) {
    testing::ToolDir dir;
    dir.Write("ok.asm", "start: ; go\r\n");
    const auto result = dir.Run("{ok.asm} --listing {ok.ls}");
    EXPECT_EQ(result.Exit, 0);
    EXPECT_EQ(result.Out, "0 errors, 0 warnings\n");
    EXPECT_EQ(result.Err, "");
    EXPECT_EQ(dir.Listed("ok.ls"), "0000\t\tstart\t\t\t; go\t\r\n");
}

// Statement errors and encoder errors alike name the file and the line;
// --quiet leaves out the summary.
TEST(BatchTool, ErrorsGoToStandardErrorWithFileAndLine) {
    testing::ToolDir dir;
    const std::string file = dir.Write("bad.asm", "; fine\n  frob x\n  zap\n mov m,m\n").string();
    const std::string errors = file + ":2: error: Invalid Directive, Operation or Macro ~ frob\n" +
                               file + ":3: error: Invalid Directive, Operation or Macro ~ zap\n" +
                               file + ":4: error: Memory to Memory NOT allowed ~ mov\n";
    for (const char* quiet : {"", " --quiet"}) {
        const auto result = dir.Run("{bad.asm}" + std::string(quiet));
        EXPECT_EQ(result.Exit, 1);
        EXPECT_EQ(result.Err, errors);
        EXPECT_EQ(result.Out, *quiet ? "" : "3 errors, 0 warnings\n");
    }
}

// Usage errors, a missing source and an unwritable listing exit 2.
TEST(BatchTool, FailedRunsExitTwo) {
    testing::ToolDir dir;
    dir.Write("ok.asm", "a:\n");
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"--no-such-option x.asm", ""},
        {"{nosuch.asm}", "no such file"},
        {"{ok.asm} --listing {no/dir.ls}", "cannot write"}};
    for (const auto& [arguments, message] : cases) {
        const auto result = dir.Run(arguments);
        EXPECT_EQ(result.Exit, 2) << arguments;
        EXPECT_NE(result.Err.find(message), std::string::npos) << arguments << ": " << result.Err;
    }
    const auto help = dir.Run("--help");
    EXPECT_EQ(help.Exit, 0);
    EXPECT_NE(help.Out.find("--listing"), std::string::npos);
}

} // namespace
} // namespace trident
