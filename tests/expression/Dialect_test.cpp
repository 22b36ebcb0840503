// The compatible dialect of the expressions against the standard one, on
// the same evaluator and the same texts.
#include "expression/ExpressionEvaluator.h"
#include "expression/ValueText.h"
#include "symbols/SymbolTable.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using expr::Dialect;
using test::Describe;
using test::Drain;
using test::Errors;

class ExpressionDialect : public ::testing::Test {
  protected:
    void SetUp() override {
        pTable.SetVariable("in", std::int32_t{0x100});
        pTable.SetVariable("~x", std::int32_t{5});
        pEvaluator.SetVariables(&pTable);
        pEvaluator.SetCaseSensitive(false);
    }

    std::string Evaluate(const char* text, Dialect dialect) {
        pEvaluator.SetDialect(dialect);
        return Describe(pEvaluator.Evaluate(text));
    }

    SymbolTable pTable;
    ExpressionEvaluator pEvaluator;
};

struct Reading {
    const char* Text;
    const char* Standard;
    const char* Compatible;
};

// Each text read in one dialect, then the other, then the first again: a
// program translated under one set of rules must not serve the other.
TEST_F(ExpressionDialect, EachTextFollowsTheDialectOfItsEvaluation) {
    const Reading readings[] = {
        {"2^3", "int 8", "int 1"},
        {"1+2^3", "int 9", "int 0"},
        {"~4", "empty", "int -5"},
        {"~ 4", "empty", "int -5"},
        {"\"Z\"+1", "empty", "int 91"},
        {"\"AB\"", "string AB", "int 16706"},
        {"\"ABC\"", "string ABC", "string ABC"},
        {"\"\"", "string ", "string "},
        {"'A'", "int 65", "int 65"},
        {"CMA", "empty", "int16 47"},
        {"~x", "int 5", "empty"},
        {"a*8+46h", "empty", "int 126"},
        {"PSW", "empty", "int16 6"},
        {"in", "int 256", "int 256"},
    };
    for (const auto& [text, standard, compatible] : readings) {
        EXPECT_EQ(Evaluate(text, Dialect::Standard), standard) << text;
        EXPECT_EQ(Evaluate(text, Dialect::Compatible), compatible) << text;
        EXPECT_EQ(Evaluate(text, Dialect::Standard), standard) << text;
        Drain(pEvaluator);
    }
}

TEST_F(ExpressionDialect, CaretBesideACharacterWarnsInTheStandardDialectOnly) {
    const std::pair<const char*, Errors> cases[] = {
        {"'A'^1", {{-13, "^"}}},
        {"1^'A'", {{-13, "^"}}},
        {"2^3", {}},
        {"('A')^1", {}},
    };
    for (const auto& [text, warnings] : cases) {
        Evaluate(text, Dialect::Standard);
        EXPECT_EQ(Drain(pEvaluator), warnings) << text;
        Evaluate(text, Dialect::Compatible);
        EXPECT_EQ(Drain(pEvaluator), Errors{}) << text;
    }
}

} // namespace
} // namespace trident
