#include "encoder/EncoderRun.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::EncoderRun;
using Texts = std::vector<std::string>;

struct ExpansionCase {
    const char* Name;
    const char* Source;
    const char* Bytes;
    Texts Diagnostics = {};
};

class ExpansionTest : public ::testing::TestWithParam<ExpansionCase> {};

TEST_P(ExpansionTest, EmitsTheExpandedBytes) {
    const ExpansionCase& c = GetParam();
    EncoderRun run;
    EXPECT_EQ(run.Assemble(c.Source), Assembly::Outcome::Completed);
    EXPECT_EQ(run.Bytes(), c.Bytes);
    EXPECT_EQ(run.DiagnosticTexts(), c.Diagnostics);
}

INSTANTIATE_TEST_SUITE_P(
    Macros, ExpansionTest,
    ::testing::Values(
        ExpansionCase{"JoinedLabelCaseBlind",
                      "m macro a,b\nlbl&A db a,B\n endm\n M 1,2\n dw lbl1\n", "01 02 00 00"},
        ExpansionCase{"BracketedArgument", "m macro list,x\n db list\n db x\n endm\n m <1,2>,3\n",
                      "01 02 03"},
        ExpansionCase{"MissingArgumentIsEmpty", "m macro a,b\n db a b\n endm\n m 3\n m 3,+4\n",
                      "03 07"},
        ExpansionCase{"SurplusArgumentsWarn", "m macro a\n db a\n endm\n m 1,2\n", "01",
                      Texts{"Surplus Macro Arguments ignored ~ m"}},
        // "%" binds the decimal text of the value, not the expression.
        ExpansionCase{"PercentArgument",
                      "k equ 6\nm macro v\n ifs_cs v,eq,12\n db v\n endif\n endm\n m %k*2\n"
                      " m k*2\n",
                      "0C"},
        ExpansionCase{"PercentForwardReference",
                      "m macro v\n db v\n endm\n m %later\nlater equ 9\n", "09"},
        ExpansionCase{"NestedInvocation",
                      "inner macro x\n db x+1\n endm\nouter macro y\n inner y*2\n db y\n endm\n"
                      " outer 3\n",
                      "07 03"},
        ExpansionCase{"RecursionStoppedByConditional",
                      "down macro n\n db n\n ifgt n\n down %n-1\n endif\n endm\n down 3\n db 9\n",
                      "03 02 01 00 09"},
        ExpansionCase{"ExitmLeavesTheMacroAndItsConditionals",
                      "m macro a\n db 1\n ifz a\n exitm\n endif\n db 2\n endm\n m 0\n m 1\n db 3\n",
                      "01 01 02 03"},
        ExpansionCase{"CaretVanishes", "m macro\n db 2^3, 'A^&B'\n endm\n m\n", "17 41 26 42"},
        ExpansionCase{"RedefinitionIsNoDuplicateSymbol",
                      "m macro\n db 1\n endm\nm macro\n db 2\n endm\n m\n", "02"},
        ExpansionCase{"NamelessMacroIsDropped", " macro\n db 1\n endm\n db 2\n", "02",
                      Texts{"Macros must have a name ~ macro"}},
        ExpansionCase{"DefinitionInSkippedRegion", " if 0\nm macro\n db 1\n endm\n endif\n m\n", "",
                      Texts{"Invalid Directive, Operation or Macro ~ m"}},
        ExpansionCase{
            "OutsideMacros", " local x\n exitm\n endm\n db 1\n", "01",
            Texts{"Not valid outside Macros ~ local", "Not valid outside Macros ~ exitm"}},
        ExpansionCase{"MacroNamedLikeAnInstructionIsNeverCalled", "nop macro\n db 5\n endm\n nop\n",
                      "00"}),
    [](const auto& info) { return info.param.Name; });

INSTANTIATE_TEST_SUITE_P(
    Repeats, ExpansionTest,
    ::testing::Values(
        ExpansionCase{"Rept", " rept 3\n db 7\n endm\n", "07 07 07"},
        ExpansionCase{"ReptWithACounter", "n set 2\n rept n\nn set n+1\n db n\n endm\n", "03 04"},
        ExpansionCase{"ReptZeroOrLess", " rept 0\n db 1\n endm\n rept -2\n db 2\n endm\n db 3\n",
                      "03"},
        ExpansionCase{"Irp", " irp x,<1,2,3>\n db x*2\n endm\n", "02 04 06"},
        ExpansionCase{"IrpWithoutBrackets", " irp x,4,<5,6>\n db x\n endm\n", "04 05 06"},
        ExpansionCase{"IrpEmptyList", " irp x,<>\n db 1\n endm\n", ""},
        ExpansionCase{"Irpc", " irpc c,abc\n db 'c'\n endm\n", "61 62 63"},
        ExpansionCase{"IrpcBracketedBlanks", " irpc c,<a b>\n db \"c\"\n endm\n", "61 20 62"},
        ExpansionCase{"PercentLists",
                      "n equ 4\n irp x,<%n+1,2>\n db x\n endm\n irpc d,%n*3\n db d\n endm\n",
                      "05 02 01 02"},
        ExpansionCase{"ExitmEndsTheWholeBlock",
                      "c set 0\n rept 5\nc set c+1\n db c\n ifz c-2\n exitm\n endif\n endm\n"
                      " db 0ffh\n",
                      "01 02 FF"},
        ExpansionCase{"ReptInsideMacro", "m macro n,v\n rept n\n db v\n endm\n endm\n m 2,9\n",
                      "09 09"},
        ExpansionCase{"MacroInsideIrp", "m macro v\n db v,v\n endm\n irp x,<4,5>\n m x\n endm\n",
                      "04 04 05 05"},
        ExpansionCase{"NestedRepeats", " rept 2\n irp x,<1,2>\n db x\n endm\n endm\n",
                      "01 02 01 02"},
        ExpansionCase{
            "MissingOperands", " irp\n db 1\n endm\n irpc x\n endm\n rept\n endm\n", "",
            Texts{"Missing Operands ~ irp", "Missing Operands ~ irpc", "Missing Operands ~ rept"}}),
    [](const auto& info) { return info.param.Name; });

// Each expansion numbers its local names on from the last; the numbering
// restarts every pass, so a forward reference to a local label resolves.
TEST(LocalNames, DifferBetweenCallsButNotBetweenPasses) {
    EncoderRun run;
    EXPECT_EQ(run.Assemble("m macro\n local l,k\n dw l\nl db 0\n endm\n m\n m\n"),
              Assembly::Outcome::Completed);
    EXPECT_EQ(run.Bytes(), "02 00 00 05 00 00");
    EXPECT_EQ(run.DiagnosticTexts(), Texts{});
    EXPECT_EQ(run.Symbol("??000001"), 2);
    EXPECT_EQ(run.Symbol("??000003"), 5);
    EXPECT_FALSE(run.Defined("??000005")) << "names of earlier passes are reused";
}

TEST(LocalNames, RenewedInEveryRepetition) {
    EncoderRun run;
    run.Assemble(" rept 2\n local here\nhere dw here\n endm\n");
    EXPECT_EQ(run.Bytes(), "00 00 02 00");
    EXPECT_EQ(run.Symbol("??000002"), 2);
}

TEST(Repeats, UnresolvedCountStopsTheRun) {
    EncoderRun run;
    EXPECT_EQ(run.Assemble(" rept later\n db 1\n endm\nlater equ 2\n"),
              Assembly::Outcome::Terminated);
    EXPECT_EQ(run.DiagnosticTexts(), Texts{std::string(Assembly::TerminalMessage) + " ~ later"});
}

TEST(Expansion, EndlessRecursionFailsTheRunAtTheDepthLimit) {
    EncoderRun run;
    EXPECT_EQ(run.Assemble(" db 1\nm macro\n m\n endm\n m\n"), Assembly::Outcome::Failed);
    const std::string& message = run.Run().FailureMessage();
    EXPECT_NE(message.find("deeper than 255 levels"), std::string::npos) << message;
    EXPECT_NE(message.find("line 5, in expansion of macro m"), std::string::npos) << message;
}

} // namespace
} // namespace trident
