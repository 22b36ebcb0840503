// Programs that recurse, repeat or grow without end by mistake: the run
// ends naming the limit and the line, instead of hanging or growing.
#include "assembler/SourceRun.h"

#include <gtest/gtest.h>
#include <string>

namespace trident {
namespace {

TEST(Runaways, NestingTooDeepFailsInPassOne) {
    const char* const TooDeep = "macro expansion nested deeper than 255 levels (";
    const std::pair<const char*, const char*> runaways[] = {
        {"; a\nm macro\n m\n endm\n m\n", "prog.asm line 5, in expansion of macro m)"},
        {"m macro x\n n x\n endm\nn macro y\n m y\n endm\n m 1\n",
         "prog.asm line 7, in expansion of macro m)"}};
    for (const auto& [source, place] : runaways) {
        testing::SourceRun run;
        EXPECT_EQ(run.Assemble(source), Assembly::Outcome::Failed) << source;
        const std::string& message = run.Run().FailureMessage();
        EXPECT_EQ(message.rfind(TooDeep, 0), 0u) << message;
        EXPECT_TRUE(message.ends_with(place)) << message;
        EXPECT_EQ(run.Passes(), std::vector<int>{1}) << source;
    }
}

// Each budget of the run, passed on purpose: the run ends as at a terminal
// stop, its message naming the limit, the line and the macro.
TEST(Runaways, EachBudgetEndsTheRunNamingTheLimit) {
    struct Budget {
        const char* Source;
        void (*Lower)(RunOptions&); // a limit lowered so that the test runs fast
        const char* Limit;
        const char* Place;
    };
    const Budget budgets[] = {
        {"\n rept 1000\n rept 1000\nx set 1\n endm\n endm\n",
         [](RunOptions& o) { o.MaxLinesPerPass = 5000; },
         "more than 5000 source lines read in one pass (",
         "prog.asm line 2, in expansion of macro rept)"},
        {"grow macro a\n grow a+a\n endm\n grow 1\n end\n", [](RunOptions&) {},
         "a line of macro expansion longer than 262144 characters (",
         "prog.asm line 4, in expansion of macro grow)"},
        {"wide macro a\n wide a,a\n endm\n wide <1234567890123456789012345678901234567890>\n",
         [](RunOptions& o) { o.MaxOpenExpansionText = 4000; },
         "more than 4000 characters of text in open macro expansions (",
         "in expansion of macro wide)"},
        {"m macro a\n rept 100\n db a\n endm\n endm\n m 1111111111\n",
         [](RunOptions& o) { o.MaxExpandedTextPerRun = 1000; },
         "more than 1000 characters of macro expansion in all passes (",
         "in expansion of macro rept)"},
        {"a equ b\nb equ c\nc equ d\nd equ 1\n", [](RunOptions& o) { o.MaxLinesPerRun = 10; },
         "more than 10 source lines read in all passes (", "prog.asm line 3)"},
    };
    for (const Budget& budget : budgets) {
        SCOPED_TRACE(budget.Source);
        testing::SourceRun run;
        budget.Lower(run.Options());
        EXPECT_EQ(run.Assemble(budget.Source), Assembly::Outcome::Terminated);
        const std::string& message = run.Run().FailureMessage();
        EXPECT_EQ(message.rfind(budget.Limit, 0), 0u) << message;
        EXPECT_TRUE(message.ends_with(budget.Place)) << message;
        EXPECT_NE(run.Run().GetListing().Text().Text().find("~Limit reached ~ " + message),
                  std::string::npos);
    }
}

TEST(LinesPerPass, CountEachPassAfresh) {
    testing::SourceRun run;
    run.Options().MaxLinesPerPass = 100;
    // 65 lines in each of the two passes.
    const char* source = " rept 20\n nop\n nop\n nop\n endm\n";
    EXPECT_EQ(run.Assemble(source), Assembly::Outcome::Completed) << run.Run().FailureMessage();
    EXPECT_EQ(run.Passes(), (std::vector<int>{1, 0}));
}

} // namespace
} // namespace trident
