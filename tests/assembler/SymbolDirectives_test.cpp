#include "SourceRun.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::SourceRun;
using Texts = std::vector<std::string>;

TEST(SymbolDirectives, PassesValueAndDiagnostics) {
    struct Case {
        const char* Source;
        std::vector<int> Passes;
        const char* Symbol;
        std::optional<double> Value; // nothing: the symbol must not exist
        Texts Diagnostics;
    };
    // clang-format off
    const Case cases[] = {
        // A new symbol in pass 1 asks for a pass that creates nothing new.
        {"x equ 5\n", {1, 2, 0}, "x", 5, {}}, {"x EqU 5\n", {1, 2, 0}, "x", 5, {}},
        // b is unknown while pass 1 reaches a; pass 2 creates a and so needs pass 3.
        {"a equ b\nb equ 3\n", {1, 2, 3, 0}, "a", 3, {}},
        {"x equ 5\nx equ 6\n", {1, 2, 0}, "x", 5, {"Symbol Already Defined ~ x"}},
        {"x:\nx equ 6\n", {1, 2, 0}, "x", 0, {"Symbol Already Defined ~ x"}},
        // A "..name" takes each value in turn.
        {"..t equ 1\n..t equ 2\n", {1, 2, 0}, "..t", 2, {}},
        {"..t equ 1\nx equ ..t\n..t equ 2\n", {1, 2, 0}, "x", 1, {}},
        // set neither reports duplicates nor asks for another pass.
        {"n set 1\nn set 2\n", {1, 0}, "n", 2, {}},
        {"n set 1\nx equ n\nn set 2\n", {1, 2, 0}, "x", 1, {}},
        {"n aset 3\n", {1, 0}, "n", 3, {}}, {"n DEFL 4\n", {1, 0}, "n", 4, {}},
        {"n dl 5\n", {1, 0}, "n", 5, {}},
        {" equ 5\n", {1, 0}, "equ", {}, {"Missing Label for  ~ equ"}},
        {" SeT 4\n", {1, 0}, "SeT", {}, {"Missing Label for  ~ SeT"}},
        {"e equ\n", {1, 0}, "e", {}, {"Missing operand ~ equ", "Missing Operand ~ "}},
        {"f equ 1,2\n", {1, 2, 0}, "f", 1, {"Too many operands ~ equ"}},
        // An unresolved set value leaves the symbol as it was.
        {"n set 1\nn set later\nx equ n\nlater equ 9\n", {1, 2, 0}, "x", 1, {}}};
    // clang-format on
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Source);
        SourceRun run(c.Source);
        EXPECT_EQ(run.Outcome(), Assembly::Outcome::Completed);
        EXPECT_EQ(run.Passes(), c.Passes);
        EXPECT_EQ(run.Symbol(c.Symbol), c.Value);
        EXPECT_EQ(run.DiagnosticTexts(), c.Diagnostics);
    }
}

// A second definition, by label or by equ, is reported once, in the final
// pass, at its own line.
TEST(SymbolDirectives, DuplicateReportedOnceAtTheSecondDefinition) {
    for (const char* source : {"x:\n; between\nx:\n", "x equ 5\n; between\nx equ 6\n"}) {
        SourceRun run(source);
        ASSERT_EQ(run.Diagnostics().size(), 1u) << source;
        EXPECT_EQ(run.Diagnostics()[0].Message, "Symbol Already Defined");
        EXPECT_EQ(run.Diagnostics()[0].Where.Line, 3);
    }
}

// Other than one operand, set is the Z80 bit instruction (or a fault of
// it): the label names the address and no symbol directive speaks.
TEST(SymbolDirectives, SetWithOtherThanOneOperandIsLeftToLaterSteps) {
    for (const char* source : {"m set 7,b\n", "m set\n", "m SET 1,2,3\n", " set 3,a\n"}) {
        SourceRun run(source);
        for (const std::string& text : run.DiagnosticTexts())
            EXPECT_EQ(text.find("Missing Label for"), std::string::npos) << source;
        if (source[0] == ' ') continue; // no label to look at
        EXPECT_EQ(run.Symbol("m"), 0) << source;
        ASSERT_FALSE(run.StatementLines().empty());
        EXPECT_EQ(run.StatementLines().front().find("  \t"), std::string::npos)
            << "no value column: " << source;
    }
}

// The value column shows four hexadecimal digits and two spaces.
TEST(SymbolDirectives, ValueColumn) {
    // clang-format off
    const std::pair<const char*, const char*> cases[] = {
        {"x equ 5 ; five\n", "0000\t0005  \tx\tequ\t5\t; five\t"},
        {"x equ 43981\n", "0000\tABCD  \tx\tequ\t43981\t\t"},
        {"x equ -1\n", "0000\tFFFF  \tx\tequ\t-1\t\t"},
        {"x equ 74565\n", "0000\t2345  \tx\tequ\t74565\t\t"},  // the low sixteen bits
        {"x equ 2.75\n", "0000\t0002  \tx\tequ\t2.75\t\t"},    // the fraction dropped
        {"x equ \"ab\"\n", "0000\t0000  \tx\tequ\t\"ab\"\t\t"}, // a string shows zero
        {"n set 255\n", "0000\t00FF  \tn\tset\t255\t\t"},
        {" equ 5\n", "0000\t\t\tequ\t5\t\t"}}; // nothing without a label
    // clang-format on
    for (const auto& [source, line] : cases) {
        SourceRun run(source);
        ASSERT_FALSE(run.StatementLines().empty());
        EXPECT_EQ(run.StatementLines().front(), line);
    }
}

TEST(SymbolDirectives, PredefLoadsTheNamedGroups) {
    struct Case {
        const char* Source;
        Texts Present, Absent, Diagnostics;
    };
    // clang-format off
    const Case cases[] = {
        {" predef\n", {"PI", "TRUE", "MaxU8", "ixh", "cma"}, {}, {}},
        {" predef ALL\n", {"PI", "TRUE", "MaxU8", "ixh", "cma"}, {}, {}},
        {" predef math\n", {"PI", "HalfPi"}, {"TRUE", "MaxU8"}, {}},
        {" predef Logic\n", {"TRUE", "FALSE"}, {"PI"}, {}},
        {" PREDEF LIMITS\n", {"MaxU8", "MinS32"}, {"PI"}, {}},
        {" predef z80regs\n", {"ixh", "iyl"}, {"cma"}, {}},
        {" predef 8080mnems\n", {"cma", "aci"}, {"ixh"}, {}},
        // An unknown group is reported and the rest still load.
        {" predef foo,math,,logic\n", {"PI", "TRUE"}, {"MaxU8"},
         {"Invalid Operand ~ foo", "Invalid Operand ~ "}},
        // The label of a predef line names nothing.
        {"p predef math\n", {"PI"}, {"p"}, {}}};
    // clang-format on
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Source);
        SourceRun run(c.Source);
        for (const std::string& name : c.Present) EXPECT_TRUE(run.Defined(name)) << name;
        for (const std::string& name : c.Absent) EXPECT_FALSE(run.Defined(name)) << name;
        EXPECT_EQ(run.DiagnosticTexts(), c.Diagnostics);
    }
}

} // namespace
} // namespace trident
