#include "expression/ExpressionEvaluator.h"
#include "expression/ValueText.h"
#include "symbols/SymbolTable.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using test::Describe;
using test::Drain;
using test::Errors;

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

    std::string Evaluate(const char* text) { return Describe(pEvaluator.Evaluate(text)); }

    SymbolTable pTable;
    ExpressionEvaluator pEvaluator;
};

TEST_F(ExpressionNames, NamesTakeTheirValuesFromTheSymbolTable) {
    const std::pair<const char*, const char*> cases[] = {
        {"FFh", "int 7"},     {"-Loop", "int -16"},    {"0FFh+FFh", "int 262"},
        {"$+2", "int 258"},   {"(Loop)", "int 16"},    {"greeting", "string hi"},
        {"TRUE", "int16 -1"}, {"half*4", "double 2"},  {"TRUE and FALSE", "int 0"},
        {"Loop*2", "int 32"}, {"not FALSE", "int -1"}, {"high(Loop*256)", "int 16"},
        {"..fwd+1", "int 4"}, {"$ + Loop", "int 272"}, {"greeting+\"!\"", "string hi!"},
    };
    for (const auto& [text, value] : cases) EXPECT_EQ(Evaluate(text), value) << text;
    EXPECT_EQ(Drain(pEvaluator), Errors{});
}

TEST_F(ExpressionNames, UnknownNamesMakeTheResultEmptyAndAreReported) {
    for (const char* text : {"later+1", "u8(later)*Loop", "later = later", "LOOP"}) {
        EXPECT_EQ(Evaluate(text), "empty") << text;
    }
    EXPECT_EQ(Drain(pEvaluator),
              (Errors{{26, "later"}, {26, "later"}, {26, "later"}, {26, "later"}, {26, "LOOP"}}));
    pEvaluator.SetCaseSensitive(false); // handed on to the symbol table
    EXPECT_EQ(Evaluate("LOOP"), "int 16");
    EXPECT_FALSE(pTable.CaseSensitive());
    pEvaluator.SetVariables(nullptr);
    EXPECT_EQ(Evaluate("Loop"), "empty");
    EXPECT_EQ(Drain(pEvaluator), (Errors{{3, "Loop"}}));
}

// A text's program is kept, but its names are looked up in the table as it
// is at each evaluation.
TEST_F(ExpressionNames, KeptProgramsSeeTheTableAsItIsNow) {
    const std::pair<const char*, const char*> before[] = {{"later+1", "empty"},
                                                          {"half*4", "double 2"}};
    for (const auto& [text, value] : before) EXPECT_EQ(Evaluate(text), value) << text;
    pTable.SetVariable("later", std::int32_t{4});
    pTable.SetVariable("half", 0.25);
    const std::pair<const char*, const char*> after[] = {{"later+1", "int 5"},
                                                         {"half*4", "double 1"}};
    for (const auto& [text, value] : after) EXPECT_EQ(Evaluate(text), value) << text;
    EXPECT_EQ(Drain(pEvaluator), (Errors{{26, "later"}}));
}

} // namespace
} // namespace trident
