// Programs that recurse or repeat without end by mistake: the run fails as
// a whole, naming the limit and the line, instead of hanging or growing.
#include "assembler/SourceRun.h"

#include <gtest/gtest.h>
#include <string>

namespace trident {
namespace {

TEST(Runaways, FailInPassOneNamingTheLimitAndTheLine) {
    const char* const TooDeep = "macro expansion nested deeper than 255 levels (";
    // Each source, its expansion limit, and how the failure message starts and ends.
    // clang-format off
    const std::tuple<const char*, std::int32_t, const char*, const char*> runaways[] = {
        {"; a\nm macro\n m\n endm\n m\n", 10'000'000, TooDeep, "prog.asm line 5, in expansion of macro m)"},
        {"m macro x\n n x\n endm\nn macro y\n m y\n endm\n m 1\n", 10'000'000, TooDeep,
         "prog.asm line 7, in expansion of macro m)"},
        {"\n rept 1000\n rept 1000\nx set 1\n endm\n endm\n", 5000,
         "more than 5000 lines of macro expansion in one pass (", "prog.asm line 2, in expansion of macro rept)"},
        {"m macro\n rept 30000\n nop\n endm\n endm\n m\n", 20000,
         "more than 20000 lines of macro expansion in one pass (", "prog.asm line 6, in expansion of macro rept)"}};
    // clang-format on
    for (const auto& [source, limit, failure, place] : runaways) {
        testing::SourceRun run;
        run.Options().MaxExpandedLines = limit;
        EXPECT_EQ(run.Assemble(source), Assembly::Outcome::Failed) << source;
        const std::string& message = run.Run().FailureMessage();
        EXPECT_EQ(message.rfind(failure, 0), 0u) << message;
        EXPECT_TRUE(message.ends_with(place)) << message;
        // Failed in pass 1: no later pass was started.
        EXPECT_EQ(run.Passes(), std::vector<int>{1}) << source;
    }
}

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
