#include "SourceRun.h"
#include "assembler/ConditionalStack.h"
#include "assembler/RunFailure.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::SourceRun;
using Texts = std::vector<std::string>;

struct FormCase {
    const char* Condition;
    bool Holds;
};

class FormTest : public ::testing::TestWithParam<FormCase> {};

// The then-branch sets n to 1, the else-branch to 2; a set is executed in
// every pass, so n tells which branch the final pass took.
TEST_P(FormTest, AssemblesThenOrElseBranch) {
    SCOPED_TRACE(GetParam().Condition);
    SourceRun run;
    const std::string source = std::string("n set 0\n ") + GetParam().Condition +
                               "\nn set 1\n else\nn set 2\n endif\nafter set 3\n";
    EXPECT_EQ(run.Assemble(source), Assembly::Outcome::Completed);
    EXPECT_EQ(run.Symbol("n"), GetParam().Holds ? 1 : 2);
    EXPECT_EQ(run.Symbol("after"), 3) << "endif resumes assembly";
    EXPECT_EQ(run.DiagnosticTexts(), Texts{});
}

INSTANTIATE_TEST_SUITE_P(
    Forms, FormTest,
    ::testing::Values(
        // "$" always exists: it is published before every statement.
        FormCase{"ifdef $", true}, FormCase{"ifdef nosuch", false}, FormCase{"IFNDEF nosuch", true},
        FormCase{"ifndef $", false}, FormCase{"ifs_ncs ABC , eq, abc", true},
        FormCase{"ifs_ncs a,NE,A", false}, FormCase{"ifs_cs ABC,eq,abc", false},
        FormCase{"ifs_cs abc , eq,abc", true}, FormCase{"ifs_cs \"a\",eq,a", false},
        FormCase{"ifs_cs a,ne,b", true},
        // Only pass 1 sees if1, and the branches here follow the final pass.
        FormCase{"if1", false}, FormCase{"ifp1", false},
        // if tests bit 0 of the whole part of the absolute value.
        FormCase{"if 1", true}, FormCase{"if 2", false}, FormCase{"if 3", true},
        FormCase{"if 0", false}, FormCase{"if -1", true}, FormCase{"if -2", false},
        FormCase{"if 3.5", true}, FormCase{"if 2.9", false}, FormCase{"if -3.7", true},
        FormCase{"ifz 0", true}, FormCase{"ifz 2", false}, FormCase{"iff 0", true},
        FormCase{"ifeq 5", false}, FormCase{"ifnz 2", true}, FormCase{"ifnz 0", false},
        FormCase{"ift 1", true}, FormCase{"ifne 0", false}, FormCase{"ifgt -5", false},
        FormCase{"ifgt 1", true}, FormCase{"ifge 0", true}, FormCase{"ifge -1", false},
        FormCase{"iflt -1", true}, FormCase{"iflt 0", false}, FormCase{"ifle 0", true},
        FormCase{"ifle 1", false}, FormCase{"IfGt 2*3-7", false}, FormCase{"ifnz 'a'", true}),
    [](const auto& info) { return "Case" + std::to_string(info.index); });

TEST(Conditionals, IfOneIsTrueInPassOne) {
    // x is created only when pass 1 assembles the branch.
    SourceRun run;
    run.Assemble(" if1\nx equ 1\n endif\n ifp1\ny equ 2\n endif\n");
    EXPECT_EQ(run.Symbol("x"), 1);
    EXPECT_EQ(run.Symbol("y"), 2);
    EXPECT_EQ(run.StatementLines().size(), 6u) << "skipped lines are still listed";
}

struct RunCase {
    const char* Name;
    const char* Source;
    Texts Diagnostics;
    Texts Defined;
    Texts Undefined;
};

class RegionTest : public ::testing::TestWithParam<RunCase> {};

TEST_P(RegionTest, SkipsAndPairsLevels) {
    const RunCase& c = GetParam();
    SourceRun run;
    EXPECT_EQ(run.Assemble(c.Source), Assembly::Outcome::Completed);
    EXPECT_EQ(run.DiagnosticTexts(), c.Diagnostics);
    for (const std::string& name : c.Defined) EXPECT_TRUE(run.Defined(name)) << name;
    for (const std::string& name : c.Undefined) EXPECT_FALSE(run.Defined(name)) << name;
}

INSTANTIATE_TEST_SUITE_P(
    Sources, RegionTest,
    ::testing::Values(
        // Inside a skipped region a true inner condition stays skipped, its
        // else too, and the outer else still pairs with the outer if.
        RunCase{"NestedInSkipped",
                " if 0\n if 1\na equ 1\n else\nb equ 1\n endif\nc equ 1\n else\nd equ 1\n "
                "endif\n",
                {},
                {"d"},
                {"a", "b", "c"}},
        RunCase{"FalseInsideTrue",
                " if 1\n if 0\na equ 1\n else\nb equ 1\n endif\nc equ 1\n else\nd equ 1\n "
                "endif\n",
                {},
                {"b", "c"},
                {"a", "d"}},
        // Nothing is evaluated or validated while skipping.
        RunCase{"SkippedWordsNotEvaluated",
                " if 0\n if nosuch\n iffy\n endif\n endif\n endif\ne equ 1\n",
                {},
                {"e"},
                {}},
        RunCase{"LabelsInSkippedRegionsNameNothing",
                "top if 0\nskipped:\nin endif\nout:\n",
                {},
                {"top", "out"},
                {"skipped", "in"}},
        // else at level 0 starts skipping; endif reports and resumes.
        RunCase{"StrayElse",
                "a equ 1\n else\nb equ 1\n nonsense\n endif\nc equ 1\n",
                {"Mismatched IF/ENDIF directives ~ endif"},
                {"a", "c"},
                {"b"}},
        RunCase{"StrayEndif",
                " endif\na equ 1\n",
                {"Mismatched IF/ENDIF directives ~ endif"},
                {"a"},
                {}},
        // An unknown word opens no level: its endif closes the outer one.
        RunCase{"InvalidWordOpensNoLevel",
                " if 1\n iffy 1\n endif\na equ 1\n endif\n",
                {"Invalid IF directive ~ iffy", "Mismatched IF/ENDIF directives ~ endif"},
                {"a"},
                {}},
        RunCase{"OnlyEqAndNe",
                " ifs_ncs a,lt,b\na equ 1\n else\nb equ 1\n endif\n",
                {"Only eq and ne supported ~ lt"},
                {"b"},
                {"a"}},
        RunCase{"OperandCounts",
                " ifdef\n endif\n ifdef a,b\n endif\n ifs_cs a,eq\n endif\n if1 x\n endif\n"
                " ifz 0,1\n endif\n",
                {"Missing operand ~ ifdef", "Too many operands ~ ifdef",
                 "Too few operands ~ ifs_cs", "No operands allowed ~ if1",
                 "Too many operands ~ ifz"},
                {},
                {}}),
    [](const auto& info) { return std::string(info.param.Name); });

// Symbol directives are not tried on skipped lines.
TEST(Conditionals, SkippedSetKeepsValue) {
    SourceRun run;
    run.Assemble("n set 1\n if 0\nn set 2\n endif\n");
    EXPECT_EQ(run.Symbol("n"), 1);
}

// Levels left open at the end of a pass do not reach the next one: were
// they kept, the final pass would skip x's line and show no value for it.
TEST(Conditionals, EveryPassStartsOutsideAllLevels) {
    for (const char* source : {"x equ 1\n if 0\n", "x equ 1\n else\n", "x equ 1\n if 1\n if 0\n"}) {
        SourceRun run;
        run.Assemble(source);
        ASSERT_FALSE(run.StatementLines().empty());
        EXPECT_EQ(run.StatementLines().front(), "0000\t0001  \tx\tequ\t1\t\t") << source;
    }
    // A level kept open from pass 1 would pair with the endif of pass 0.
    SourceRun run;
    run.Assemble(" endif\n if 0\n");
    EXPECT_EQ(run.DiagnosticTexts(), Texts{"Mismatched IF/ENDIF directives ~ endif"});
}

TEST(Conditionals, IfdefBeforeDefinitionIsFalseOnlyInPassOne) {
    SourceRun run;
    run.Options().ListAllPasses = true;
    run.Assemble(" ifdef later\n endif\nlater:\n");
    EXPECT_EQ(run.Passes(), (std::vector<int>{1, 2, 0}));
    // Every pass is listed, each followed by its reports.
    Texts ifdefLines;
    const std::string& text = run.Run().GetListing().Text().Text();
    for (std::size_t start = 0, end; (end = text.find("\r\n", start)) != std::string::npos;
         start = end + 2)
        if (text.find("ifdef", start) < end) ifdefLines.push_back(text.substr(start, end - start));
    EXPECT_EQ(ifdefLines,
              (Texts{"0000\t0000  \t\tifdef\tlater\t\t", "0000\tFFFF  \t\tifdef\tlater\t\t",
                     "0000\tFFFF  \t\tifdef\tlater\t\t"}));
}

struct ColumnCase {
    const char* Condition;
    const char* Column;
};

class ColumnTest : public ::testing::TestWithParam<ColumnCase> {};

TEST_P(ColumnTest, ShowsTheTestedValue) {
    SCOPED_TRACE(GetParam().Condition);
    SourceRun run;
    run.Assemble(std::string(" ") + GetParam().Condition + "\n endif\n");
    ASSERT_FALSE(run.StatementLines().empty());
    const std::string line = run.StatementLines().front();
    EXPECT_EQ(line.substr(0, line.find('\t', 5)), std::string("0000\t") + GetParam().Column);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, ColumnTest,
    ::testing::Values(ColumnCase{"if 3", "0003  "}, ColumnCase{"ifgt -5", "FFFB  "},
                      ColumnCase{"ifnz 43981", "ABCD  "}, ColumnCase{"ifdef $", "FFFF  "},
                      ColumnCase{"ifndef $", "0000  "}, ColumnCase{"ifs_cs a,eq,a", "FFFF  "},
                      ColumnCase{"ifs_cs a,lt,a", "0000  "}, ColumnCase{"if1", "0000  "},
                      // Nothing is tested inside a skipped region.
                      ColumnCase{"else", ""}, ColumnCase{"iffy 1", ""}),
    [](const auto& info) { return "Case" + std::to_string(info.index); });

TEST(Conditionals, UnresolvedConditionStopsTheRun) {
    for (const char* condition : {"if undefined_name", "IFGT later"}) {
        SourceRun run;
        const std::string source = std::string(" ") + condition + "\nx equ 1\n endif\nlater:\n";
        EXPECT_EQ(run.Assemble(source), Assembly::Outcome::Terminated) << condition;
        EXPECT_EQ(run.Passes(), std::vector<int>{1});
        const std::string word = std::string(condition).substr(0, std::string(condition).find(' '));
        EXPECT_NE(run.ListingText().find("~  *** Terminal ~ Value must be Resolved NOW ****  ~ " +
                                         word + "\r\n"),
                  std::string::npos)
            << run.ListingText();
        EXPECT_FALSE(run.Defined("x"));
    }
}

TEST(Conditionals, NestingLimit) {
    std::string source;
    for (int level = 0; level < ConditionalStack::MaxDepth; ++level) source += " if 1\n";
    SourceRun deepest;
    EXPECT_EQ(deepest.Assemble(source + "x equ 1\n"), Assembly::Outcome::Completed);
    EXPECT_TRUE(deepest.Defined("x"));

    SourceRun beyond;
    EXPECT_EQ(beyond.Assemble(source + " if 0\n"), Assembly::Outcome::Failed);
    EXPECT_NE(beyond.Run().FailureMessage().find("conditionals nested deeper than 255 levels"),
              std::string::npos);
    EXPECT_NE(beyond.Run().FailureMessage().find("line 256"), std::string::npos)
        << beyond.Run().FailureMessage();
}

TEST(ConditionalStack, KeepsTheRunFlagAsTheOrOfOpenLevels) {
    bool skipping = true;
    ConditionalStack levels(skipping);
    levels.Reset();
    EXPECT_FALSE(skipping);
    levels.Open(false);
    levels.Open(true);
    levels.Open(false);
    EXPECT_TRUE(skipping) << "a skipping outer level skips the inner ones";
    EXPECT_EQ(levels.Depth(), 3);
    // Leaving a macro early closes the levels it opened.
    levels.CloseTo(1);
    EXPECT_EQ(levels.Depth(), 1);
    EXPECT_FALSE(skipping);
    levels.Else();
    EXPECT_TRUE(skipping);
    EXPECT_TRUE(levels.Close());
    EXPECT_FALSE(skipping);
    levels.Else();
    EXPECT_TRUE(skipping) << "else at level 0 inverts level 0";
    EXPECT_FALSE(levels.Close());
    EXPECT_FALSE(skipping);
    EXPECT_EQ(levels.Depth(), 0);
}

} // namespace
} // namespace trident
