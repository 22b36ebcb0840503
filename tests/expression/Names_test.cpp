#include "expression/ValueText.h"
#include "expression/clsExpression.h"
#include "symbols/clsSymbolTable.h"

#include <gtest/gtest.h>
#include <vector>

namespace trident {
namespace {

using test::Describe;
using test::Drain;
using test::ErrorEntry;
using Errors = std::vector<ErrorEntry>;

class ExpressionNames : public ::testing::Test {
  protected:
    void SetUp() override {
        pTable.LoadPreDefinedValues(0);
        pTable.SetVariable("Loop", std::int32_t{16});
        pTable.SetVariable("$", std::int32_t{0x100});
        pTable.SetVariable("half", 0.5);
        pTable.SetVariable("greeting", std::string("hi"));
        pTable.SetVariable("FFh", std::int32_t{7});
        pTable.SetVariable("..fwd", std::int32_t{3});
        pEvaluator.SetVariables(&pTable);
    }

    clsSymbolTable pTable;
    clsExpression pEvaluator;
};

TEST_F(ExpressionNames, NamesTakeTheirValuesFromTheSymbolTable) {
    const std::pair<const char*, const char*> cases[] = {
        {"TRUE", "int16 -1"},
        {"TRUE and FALSE", "int 0"},
        {"not FALSE", "int -1"},
        {"Loop*2", "int 32"},
        {"$+2", "int 258"},
        {"$ + Loop", "int 272"},
        {"half*4", "double 2"},
        {"greeting", "string hi"},
        {"greeting+\"!\"", "string hi!"},
        {"FFh", "int 7"},
        {"0FFh+FFh", "int 262"},
        {"..fwd+1", "int 4"},
        {"high(Loop*256)", "int 16"},
        {"-Loop", "int -16"},
        {"(Loop)", "int 16"},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Describe(pEvaluator.Evaluate(text)), value) << text;
    }
    EXPECT_EQ(Drain(pEvaluator), Errors{});
}

TEST_F(ExpressionNames, UnknownNamesMakeTheResultEmptyAndAreReported) {
    EXPECT_EQ(Describe(pEvaluator.Evaluate("later+1")), "empty");
    EXPECT_EQ(Describe(pEvaluator.Evaluate("u8(later)*Loop")), "empty");
    EXPECT_EQ(Describe(pEvaluator.Evaluate("later = later")), "empty");
    EXPECT_EQ(Drain(pEvaluator),
              (Errors{{26, "later"}, {26, "later"}, {26, "later"}, {26, "later"}}));
}

TEST_F(ExpressionNames, CaseSensitivityIsHandedToTheSymbolTable) {
    EXPECT_EQ(Describe(pEvaluator.Evaluate("LOOP")), "empty");
    EXPECT_EQ(Drain(pEvaluator), (Errors{{26, "LOOP"}}));

    pEvaluator.SetCaseSensitive(false);
    EXPECT_EQ(Describe(pEvaluator.Evaluate("LOOP")), "int 16");
    EXPECT_FALSE(pTable.CaseSensitive());
    EXPECT_EQ(Drain(pEvaluator), Errors{});
}

TEST_F(ExpressionNames, LookUpMarksTheSymbolReferenced) {
    pEvaluator.Evaluate("Loop");
    ASSERT_TRUE(pTable.VariableExists("Loop"));
    EXPECT_TRUE(pTable.Refed());
}

TEST_F(ExpressionNames, UnlinkedEvaluatorReportsMissingOperand) {
    pEvaluator.SetVariables(nullptr);
    EXPECT_EQ(Describe(pEvaluator.Evaluate("Loop")), "empty");
    EXPECT_EQ(Drain(pEvaluator), (Errors{{3, "Loop"}}));
}

} // namespace
} // namespace trident
