// Programs that recurse or repeat without end by mistake: the run fails as
// a whole, naming the limit and the line, instead of hanging or growing.
#include "assembler/SourceRun.h"

#include <gtest/gtest.h>
#include <string>

namespace trident {
namespace {

struct Runaway {
    const char* Name;
    const char* Source;
    std::int32_t ExpansionLimit;
    const char* Failure;
    const char* Place; // how the message ends
};

const Runaway Runaways[] = {
    {"MacroCallingItself", "; a\nm macro\n m\n endm\n m\n", 10'000'000,
     "macro expansion nested deeper than 255 levels (",
     "prog.asm line 5, in expansion of macro m)"},
    {"MacrosCallingEachOther", "m macro x\n n x\n endm\nn macro y\n m y\n endm\n m 1\n", 10'000'000,
     "macro expansion nested deeper than 255 levels (",
     "prog.asm line 7, in expansion of macro m)"},
    {"NestedRepeats", "\n rept 1000\n rept 1000\nx set 1\n endm\n endm\n", 5000,
     "more than 5000 lines of macro expansion in one pass (",
     "prog.asm line 2, in expansion of macro rept)"},
    {"MacroRepeatingItsBody", "m macro\n rept 30000\n nop\n endm\n endm\n m\n", 20000,
     "more than 20000 lines of macro expansion in one pass (",
     "prog.asm line 6, in expansion of macro rept)"},
};

void PrintTo(const Runaway& runaway, std::ostream* out) {
    *out << runaway.Name;
}

class RunawayTest : public ::testing::TestWithParam<Runaway> {};

TEST_P(RunawayTest, FailsNamingTheLimitAndTheLine) {
    testing::SourceRun run;
    run.Options().MaxExpandedLines = GetParam().ExpansionLimit;
    EXPECT_EQ(run.Assemble(GetParam().Source), Assembly::Outcome::Failed);
    const std::string& failure = run.Run().FailureMessage();
    EXPECT_EQ(failure.rfind(GetParam().Failure, 0), 0u) << failure;
    EXPECT_TRUE(failure.ends_with(GetParam().Place)) << failure;
    // Failed in pass 1: no later pass was started.
    EXPECT_EQ(run.Passes(), std::vector<int>{1});
}

INSTANTIATE_TEST_SUITE_P(Programs, RunawayTest, ::testing::ValuesIn(Runaways),
                         [](const auto& info) { return std::string(info.param.Name); });

TEST(ExpansionLimit, CountsEachPassAfresh) {
    testing::SourceRun run;
    run.Options().MaxExpandedLines = 100;
    // 60 expanded lines in each of the two passes.
    const char* source = " rept 20\n nop\n nop\n nop\n endm\n";
    EXPECT_EQ(run.Assemble(source), Assembly::Outcome::Completed) << run.Run().FailureMessage();
    EXPECT_EQ(run.Passes(), (std::vector<int>{1, 0}));
}

} // namespace
} // namespace trident
