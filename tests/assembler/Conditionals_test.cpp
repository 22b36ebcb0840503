#include "SourceRun.h"
#include "assembler/ConditionalStack.h"
#include "source/RunFailure.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::SourceRun;
using Texts = std::vector<std::string>;

// The address and value columns of a source's first listing line.
std::string FirstColumns(SourceRun& run) {
    const Texts lines = run.StatementLines();
    return lines.empty() ? "no line" : lines.front().substr(0, lines.front().find('\t', 5));
}

// The then-branch sets n to 1, the else-branch to 2; a set is executed in
// every pass, so n tells which branch the final pass took, and that the
// skipped branch's set was not tried. The condition's listed line shows the
// value it tested.
TEST(Conditionals, EachFormAssemblesThenOrElseBranch) {
    struct Case {
        const char* Condition;
        bool Holds;
        const char* Column = nullptr; // not checked when null
    };
    // clang-format off
    const Case cases[] = {
        // "$" always exists: it is published before every statement.
        {"ifdef $", true, "FFFF  "}, {"ifdef nosuch", false}, {"IFNDEF nosuch", true},
        {"ifndef $", false, "0000  "},
        {"ifs_ncs ABC , eq, abc", true}, {"ifs_ncs a,NE,A", false}, {"ifs_cs ABC,eq,abc", false},
        {"ifs_cs abc , eq,abc", true}, {"ifs_cs \"a\",eq,a", false}, {"ifs_cs a,ne,b", true},
        {"ifs_cs a,eq,a", true, "FFFF  "},
        // Only pass 1 sees if1, and the branches here follow the final pass.
        {"if1", false, "0000  "}, {"ifp1", false},
        // if tests bit 0 of the whole part of the absolute value.
        {"if 1", true}, {"if 2", false}, {"if 3", true, "0003  "}, {"if 0", false},
        {"if -1", true}, {"if -2", false}, {"if 3.5", true}, {"if 2.9", false}, {"if -3.7", true},
        {"ifz 0", true}, {"ifz 2", false}, {"iff 0", true}, {"ifeq 5", false}, {"ifnz 2", true},
        {"ifnz 0", false}, {"ifnz 43981", true, "ABCD  "}, {"ift 1", true}, {"ifne 0", false},
        {"ifgt -5", false, "FFFB  "}, {"ifgt 1", true}, {"ifge 0", true}, {"ifge -1", false},
        {"iflt -1", true}, {"iflt 0", false}, {"ifle 0", true}, {"ifle 1", false},
        {"IfGt 2*3-7", false}, {"ifnz 'a'", true}};
    // clang-format on
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Condition);
        SourceRun run(std::string(" ") + c.Condition +
                      "\nn set 1\n else\nn set 2\n endif\nafter set 3\n");
        EXPECT_EQ(run.Outcome(), Assembly::Outcome::Completed);
        EXPECT_EQ(run.Symbol("n"), c.Holds ? 1 : 2);
        EXPECT_EQ(run.Symbol("after"), 3) << "endif resumes assembly";
        EXPECT_EQ(run.DiagnosticTexts(), Texts{});
        if (c.Column) {
            EXPECT_EQ(FirstColumns(run), std::string("0000\t") + c.Column);
        }
    }
}

// A faulty condition tests nothing, and neither does else.
TEST(Conditionals, UntestedLinesShowNoValue) {
    for (const auto& [line, column] :
         {std::pair{" ifs_cs a,lt,a\n endif\n", "0000  "}, std::pair{" else\n endif\n", ""},
          std::pair{" iffy 1\n endif\n", ""}}) {
        SourceRun run(line);
        EXPECT_EQ(FirstColumns(run), std::string("0000\t") + column) << line;
    }
}

TEST(Conditionals, IfOneIsTrueInPassOne) {
    // x is created only when pass 1 assembles the branch.
    SourceRun run(" if1\nx equ 1\n endif\n ifp1\ny equ 2\n endif\n");
    EXPECT_EQ(run.Symbol("x"), 1);
    EXPECT_EQ(run.Symbol("y"), 2);
    EXPECT_EQ(run.StatementLines().size(), 6u) << "skipped lines are still listed";
}

TEST(Conditionals, SkippedRegionsAndLevelPairing) {
    struct Case {
        const char* Source;
        Texts Diagnostics, Defined, Undefined;
    };
    // clang-format off
    const Case cases[] = {
        // Inside a skipped region a true inner condition stays skipped, its
        // else too, and the outer else still pairs with the outer if.
        {" if 0\n if 1\na equ 1\n else\nb equ 1\n endif\nc equ 1\n else\nd equ 1\n endif\n",
         {}, {"d"}, {"a", "b", "c"}},
        {" if 1\n if 0\na equ 1\n else\nb equ 1\n endif\nc equ 1\n else\nd equ 1\n endif\n",
         {}, {"b", "c"}, {"a", "d"}},
        // Nothing is evaluated or validated while skipping.
        {" if 0\n if nosuch\n iffy\n endif\n endif\n endif\ne equ 1\n", {}, {"e"}, {}},
        // Labels in skipped regions name nothing.
        {"top if 0\nskipped:\nin endif\nout:\n", {}, {"top", "out"}, {"skipped", "in"}},
        // else at level 0 starts skipping; endif reports and resumes.
        {"a equ 1\n else\nb equ 1\n nonsense\n endif\nc equ 1\n",
         {"Mismatched IF/ENDIF directives ~ endif"}, {"a", "c"}, {"b"}},
        {" endif\na equ 1\n", {"Mismatched IF/ENDIF directives ~ endif"}, {"a"}, {}},
        // An unknown word opens no level: its endif closes the outer one.
        {" if 1\n iffy 1\n endif\na equ 1\n endif\n",
         {"Invalid IF directive ~ iffy", "Mismatched IF/ENDIF directives ~ endif"}, {"a"}, {}},
        {" ifs_ncs a,lt,b\na equ 1\n else\nb equ 1\n endif\n",
         {"Only eq and ne supported ~ lt"}, {"b"}, {"a"}},
        {" ifdef\n endif\n ifdef a,b\n endif\n ifs_cs a,eq\n endif\n if1 x\n endif\n"
         " ifz 0,1\n endif\n",
         {"Missing operand ~ ifdef", "Too many operands ~ ifdef", "Too few operands ~ ifs_cs",
          "No operands allowed ~ if1", "Too many operands ~ ifz"}, {}, {}}};
    // clang-format on
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Source);
        SourceRun run(c.Source);
        EXPECT_EQ(run.Outcome(), Assembly::Outcome::Completed);
        EXPECT_EQ(run.DiagnosticTexts(), c.Diagnostics);
        for (const std::string& name : c.Defined) EXPECT_TRUE(run.Defined(name)) << name;
        for (const std::string& name : c.Undefined) EXPECT_FALSE(run.Defined(name)) << name;
    }
}

// Levels left open at the end of a pass do not reach the next one: were
// they kept, the final pass would skip x's line and show no value for it.
TEST(Conditionals, EveryPassStartsOutsideAllLevels) {
    for (const char* source : {"x equ 1\n if 0\n", "x equ 1\n else\n", "x equ 1\n if 1\n if 0\n"}) {
        SourceRun run(source);
        ASSERT_FALSE(run.StatementLines().empty());
        EXPECT_EQ(run.StatementLines().front(), "0000\t0001  \tx\tequ\t1\t\t") << source;
    }
    // A level kept open from pass 1 would pair with the endif of pass 0.
    SourceRun run(" endif\n if 0\n");
    EXPECT_EQ(run.DiagnosticTexts(), Texts{"Mismatched IF/ENDIF directives ~ endif"});
}

TEST(Conditionals, IfdefBeforeDefinitionIsFalseOnlyInPassOne) {
    SourceRun run;
    run.Options().ListAllPasses = true;
    run.Assemble(" ifdef later\n endif\nlater:\n");
    EXPECT_EQ(run.Passes(), (std::vector<int>{1, 2, 0}));
    // Every pass is listed, each followed by its reports.
    Texts ifdefLines;
    const std::string_view text = run.Run().GetListing().Text().Text();
    for (std::size_t start = 0, end; (end = text.find("\r\n", start)) != std::string::npos;
         start = end + 2)
        if (text.find("ifdef", start) < end)
            ifdefLines.emplace_back(text.substr(start, end - start));
    EXPECT_EQ(ifdefLines,
              (Texts{"0000\t0000  \t\tifdef\tlater\t\t", "0000\tFFFF  \t\tifdef\tlater\t\t",
                     "0000\tFFFF  \t\tifdef\tlater\t\t"}));
}

TEST(Conditionals, UnresolvedConditionStopsTheRun) {
    for (const auto& [word, name] : {std::pair{"if", "undefined_name"}, {"IFGT", "later"}}) {
        SourceRun run(std::string(" ") + word + " " + name + "\nx equ 1\n endif\nlater:\n");
        EXPECT_EQ(run.Outcome(), Assembly::Outcome::Terminated) << word;
        EXPECT_EQ(run.Passes(), std::vector<int>{1});
        EXPECT_EQ(run.DiagnosticTexts(),
                  Texts{std::string(Assembly::TerminalMessage) + " ~ " + word});
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
    const std::string& message = beyond.Run().FailureMessage();
    EXPECT_NE(message.find("conditionals nested deeper than 255 levels"), std::string::npos);
    EXPECT_NE(message.find("line 256"), std::string::npos) << message;
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
