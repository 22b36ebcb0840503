#include "SourceRun.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::SourceRun;
using Texts = std::vector<std::string>;

struct DefinitionCase {
    const char* Name;
    const char* Source;
    std::vector<int> Passes;
    const char* Symbol;
    std::optional<double> Value; // nothing: the symbol must not exist
    Texts Diagnostics;
};

class DefinitionTest : public ::testing::TestWithParam<DefinitionCase> {};

TEST_P(DefinitionTest, PassesValueAndDiagnostics) {
    const DefinitionCase& c = GetParam();
    SourceRun run;
    EXPECT_EQ(run.Assemble(c.Source), Assembly::Outcome::Completed);
    EXPECT_EQ(run.Passes(), c.Passes);
    EXPECT_EQ(run.Symbol(c.Symbol), c.Value);
    EXPECT_EQ(run.DiagnosticTexts(), c.Diagnostics);
}

INSTANTIATE_TEST_SUITE_P(
    Sources, DefinitionTest,
    ::testing::Values(
        // A new symbol in pass 1 asks for a pass that creates nothing new.
        DefinitionCase{"Equ", "x equ 5\n", {1, 2, 0}, "x", 5, {}},
        DefinitionCase{"EquIsCaseBlind", "x EqU 5\n", {1, 2, 0}, "x", 5, {}},
        // b is unknown while pass 1 reaches a; pass 2 creates a and so
        // needs pass 3.
        DefinitionCase{"ForwardReference", "a equ b\nb equ 3\n", {1, 2, 3, 0}, "a", 3, {}},
        DefinitionCase{"DuplicateKeepsFirstValue",
                       "x equ 5\nx equ 6\n",
                       {1, 2, 0},
                       "x",
                       5,
                       {"Symbol Already Defined ~ x"}},
        DefinitionCase{
            "LabelThenEqu", "x:\nx equ 6\n", {1, 2, 0}, "x", 0, {"Symbol Already Defined ~ x"}},
        DefinitionCase{"DotDotNamesRedefine", "..t equ 1\n..t equ 2\n", {1, 2, 0}, "..t", 2, {}},
        // set neither reports duplicates nor asks for another pass.
        DefinitionCase{"Set", "n set 1\nn set 2\n", {1, 0}, "n", 2, {}},
        DefinitionCase{"SetFollowsEachPass", "n set 1\nx equ n\nn set 2\n", {1, 2, 0}, "x", 1, {}},
        DefinitionCase{"Aset", "n aset 3\n", {1, 0}, "n", 3, {}},
        DefinitionCase{"Defl", "n DEFL 4\n", {1, 0}, "n", 4, {}},
        DefinitionCase{"Dl", "n dl 5\n", {1, 0}, "n", 5, {}},
        DefinitionCase{
            "EquWithoutLabel", " equ 5\n", {1, 0}, "equ", {}, {"Missing Label for  ~ equ"}},
        DefinitionCase{"SetWithoutLabelKeepsSpelling",
                       " SeT 4\n",
                       {1, 0},
                       "SeT",
                       {},
                       {"Missing Label for  ~ SeT"}},
        DefinitionCase{"EquMissingOperand",
                       "e equ\n",
                       {1, 0},
                       "e",
                       {},
                       {"Missing operand ~ equ", "Missing Operand ~ "}},
        DefinitionCase{
            "EquTooManyOperands", "f equ 1,2\n", {1, 2, 0}, "f", 1, {"Too many operands ~ equ"}},
        // An unresolved set value leaves the symbol as it was.
        DefinitionCase{"SetUnresolvedKeepsValue",
                       "n set 1\nn set later\nx equ n\nlater equ 9\n",
                       {1, 2, 0},
                       "x",
                       1,
                       {}}),
    [](const auto& info) { return std::string(info.param.Name); });

TEST(SymbolDirectives, DuplicateReportedAtTheSecondDefinition) {
    SourceRun run;
    run.Assemble("x equ 5\n; between\nx equ 6\n");
    ASSERT_EQ(run.Diagnostics().size(), 1u);
    EXPECT_EQ(run.Diagnostics()[0].Where.Line, 3);
}

// Other than one operand, set is the Z80 bit instruction (or a fault of
// it): the label names the address and no symbol directive speaks.
TEST(SymbolDirectives, SetWithOtherThanOneOperandIsLeftToLaterSteps) {
    for (const char* source : {"m set 7,b\n", "m set\n", "m SET 1,2,3\n"}) {
        SourceRun run;
        run.Assemble(source);
        EXPECT_EQ(run.Symbol("m"), 0) << source;
        for (const std::string& text : run.DiagnosticTexts())
            EXPECT_EQ(text.find("Missing Label for"), std::string::npos) << source;
        ASSERT_FALSE(run.StatementLines().empty());
        EXPECT_EQ(run.StatementLines().front().find("  \t"), std::string::npos)
            << "no value column: " << source;
    }
    SourceRun unlabelled;
    unlabelled.Assemble(" set 3,a\n");
    for (const std::string& text : unlabelled.DiagnosticTexts())
        EXPECT_EQ(text.find("Missing Label for"), std::string::npos);
}

TEST(SymbolDirectives, DotDotNameTakesEachValueInTurn) {
    SourceRun run;
    run.Assemble("..t equ 1\nx equ ..t\n..t equ 2\ny equ ..t\n");
    EXPECT_EQ(run.Symbol("x"), 1);
    EXPECT_EQ(run.Symbol("y"), 2);
    EXPECT_TRUE(run.Diagnostics().empty());
}

struct ValueColumnCase {
    const char* Name;
    const char* Source;
    const char* Line; // the first listing line
};

class ValueColumnTest : public ::testing::TestWithParam<ValueColumnCase> {};

TEST_P(ValueColumnTest, ShowsFourHexDigitsAndTwoSpaces) {
    SourceRun run;
    run.Assemble(GetParam().Source);
    ASSERT_FALSE(run.StatementLines().empty());
    EXPECT_EQ(run.StatementLines().front(), GetParam().Line);
}

INSTANTIATE_TEST_SUITE_P(
    Sources, ValueColumnTest,
    ::testing::Values(
        ValueColumnCase{"Small", "x equ 5 ; five\n", "0000\t0005  \tx\tequ\t5\t; five\t"},
        ValueColumnCase{"UpperCaseHex", "x equ 43981\n", "0000\tABCD  \tx\tequ\t43981\t\t"},
        ValueColumnCase{"Negative", "x equ -1\n", "0000\tFFFF  \tx\tequ\t-1\t\t"},
        ValueColumnCase{"LowSixteenBits", "x equ 74565\n", "0000\t2345  \tx\tequ\t74565\t\t"},
        ValueColumnCase{"FractionDropped", "x equ 2.75\n", "0000\t0002  \tx\tequ\t2.75\t\t"},
        ValueColumnCase{"StringShowsZero", "x equ \"ab\"\n", "0000\t0000  \tx\tequ\t\"ab\"\t\t"},
        ValueColumnCase{"Set", "n set 255\n", "0000\t00FF  \tn\tset\t255\t\t"},
        ValueColumnCase{"MissingLabelShowsNothing", " equ 5\n", "0000\t\t\tequ\t5\t\t"}),
    [](const auto& info) { return std::string(info.param.Name); });

struct PredefCase {
    const char* Name;
    const char* Source;
    Texts Present;
    Texts Absent;
    Texts Diagnostics;
};

class PredefTest : public ::testing::TestWithParam<PredefCase> {};

TEST_P(PredefTest, LoadsTheNamedGroups) {
    const PredefCase& c = GetParam();
    SourceRun run;
    run.Assemble(c.Source);
    for (const std::string& name : c.Present) EXPECT_TRUE(run.Defined(name)) << name;
    for (const std::string& name : c.Absent) EXPECT_FALSE(run.Defined(name)) << name;
    EXPECT_EQ(run.DiagnosticTexts(), c.Diagnostics);
}

INSTANTIATE_TEST_SUITE_P(
    Sources, PredefTest,
    ::testing::Values(
        PredefCase{"NoOperandLoadsAll", " predef\n", {"PI", "TRUE", "MaxU8", "ixh", "cma"}, {}, {}},
        PredefCase{"All", " predef ALL\n", {"PI", "TRUE", "MaxU8", "ixh", "cma"}, {}, {}},
        PredefCase{"Math", " predef math\n", {"PI", "HalfPi"}, {"TRUE", "MaxU8"}, {}},
        PredefCase{"Logic", " predef Logic\n", {"TRUE", "FALSE"}, {"PI"}, {}},
        PredefCase{"LimitsAnyCase", " PREDEF LIMITS\n", {"MaxU8", "MinS32"}, {"PI"}, {}},
        PredefCase{"Registers", " predef z80regs\n", {"ixh", "iyl"}, {"cma"}, {}},
        PredefCase{"Mnemonics", " predef 8080mnems\n", {"cma", "aci"}, {"ixh"}, {}},
        // An unknown group is reported and the rest still load.
        PredefCase{"UnknownGroup",
                   " predef foo,math,,logic\n",
                   {"PI", "TRUE"},
                   {"MaxU8"},
                   {"Invalid Operand ~ foo", "Invalid Operand ~ "}},
        // The label of a predef line names nothing.
        PredefCase{"LabelIgnored", "p predef math\n", {"PI"}, {"p"}, {}}),
    [](const auto& info) { return std::string(info.param.Name); });

} // namespace
} // namespace trident
