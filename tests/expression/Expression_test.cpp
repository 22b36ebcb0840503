#include "expression/ExpressionEvaluator.h"
#include "expression/ValueText.h"
#include "symbols/SymbolTable.h"

#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <span>
#include <string>

namespace trident {
namespace {

using test::Case;
using test::Check;
using test::Describe;
using test::Drain;
using test::Errors;
using test::Evaluated;

// Levels, left-to-right order within a level, and prefixes binding to the
// next operand.
TEST(Evaluate, PrecedenceAssociationAndPrefixes) {
    const Case cases[] = {
        {"+5", "int 5"},     {"2^3*2", "int 16"},   {"(2+3)*4", "int 20"},
        {"#5", "int 5"},     {"2*3^2", "int 18"},   {"100/10/5", "int 2"},
        {"-5", "int -5"},    {"10-4-3", "int 3"},   {"1 << 2 + 1", "int 5"},
        {"--5", "int 5"},    {"2^3^2", "int 64"},   {"-1.5", "double -1.5"},
        {"!0", "int -1"},    {"not 0", "int -1"},   {"1 = 1 = -1", "int -1"},
        {"!5", "int -6"},    {"NOT 0", "int -1"},   {"not 0 and 5", "int 5"},
        {"- 5", "int -5"},   {"not -1", "int 0"},   {"1 or 2 and 4", "int 1"},
        {"-2^2", "int 4"},   {"10-2+3", "int 11"},  {"1 xor 3 and 2", "int 3"},
        {"2--3", "int 5"},   {"-(2+3)", "int -5"},  {"17 mod 10 mod 4", "int 3"},
        {"2*6/4", "int 3"},  {"not(0)", "int -1"},  {"3 > 2 and 2 > 1", "int -1"},
        {"2*-3", "int -6"},  {"1+1 = 2", "int -1"}, {"-2147483648", "double -2147483648"},
        {"2+3*4", "int 14"}, {"2 = 1+1", "int -1"}, {"-(-2147483647-1)", "double 2147483648"},
        {"2*3+4", "int 10"},
    };
    Check(cases, Evaluated);
}

// Comparisons give -1 or 0; results beyond 32 bits become doubles.
TEST(Evaluate, ArithmeticAndComparisons) {
    const Case cases[] = {
        {"7/2", "int 3"},    {"5 mod 3", "int 2"},  {"7\\2", "double 3.5"},
        {"6\\2", "int 3"},   {"5 MOD 3", "int 2"},  {"-7 mod 2", "int -1"},
        {"-7/2", "int -3"},  {"2^10", "int 1024"},  {"2^-1", "double 0.5"},
        {"5 % 3", "int 2"},  {"3 != 4", "int -1"},  {"1\\4", "double 0.25"},
        {"3 = 3", "int -1"}, {"3 >= 3", "int -1"},  {"1.5+1", "double 2.5"},
        {"3 eq 4", "int 0"}, {"3 le 3", "int -1"},  {"2e-1*10", "double 2"},
        {"3 <> 3", "int 0"}, {"1.5 < 2", "int -1"}, {"0.5 = 1\\2", "int -1"},
        {"3 ne 3", "int 0"}, {"7 idiv 2", "int 3"}, {"1.5e+3", "double 1500"},
        {"2 < 3", "int -1"}, {"7.5/2", "double 3"}, {"5.5 mod 2", "double 1.5"},
        {"2 lt 2", "int 0"}, {"5 mod(3)", "int 2"}, {"65536*65536", "double 4294967296"},
        {"3 > 2", "int -1"}, {"4^0.5", "double 2"}, {"2147483647+1", "double 2147483648"},
        {"3 gt 3", "int 0"}, {"1.5*2", "double 3"}, {"-2147483647-2", "double -2147483649"},
        {"3 ge 4", "int 0"}, {"3 gte 2", "int -1"}, {"int(1e12+0.5)", "double 1000000000000"},
        {"3 <= 2", "int 0"}, {"2 lte 3", "int -1"}, {"abs(-2147483647-1)", "double 2147483648"},
    };
    Check(cases, Evaluated);
}

// Fractional operands of bitwise operators are truncated with a warning, and
// the integer conversions warn when they change the value.
TEST(Evaluate, BitwiseByteAndConversionOperators) {
    const Case cases[] = {
        {"S8(1)", "int 1"},       {"3 asl 1.9", "double 6"},
        {"12 & 10", "int 8"},     {"5 asr 1", "double 2.5"},
        {"12 | 3", "int 15"},     {"high(1234h)", "int 18"},
        {"1 << 4", "int 16"},     {"high(-300)", "int 255"},
        {"5 lsr 1", "int 2"},     {"low(1 + 255)", "int 0"},
        {"12 or 3", "int 15"},    {"-1 and 0FFh", "int 255"},
        {"0 imp 0", "int -1"},    {"1 asl -1", "double 0.5"},
        {"-1 imp 0", "int 0"},    {"high 1234h+1", "int 19"},
        {"6 imp 3", "int -5"},    {"hlow(-65537)", "int 255"},
        {"5 eqv 5", "int -1"},    {"u16(65535)", "int 65535"},
        {"5 eqv 4", "int -2"},    {"hlow(12345678h)", "int 52"},
        {"1 shl 4", "int 16"},    {"high(12345678h)", "int 86"},
        {"1 lsl 4", "int 16"},    {"low(12345678h)", "int 120"},
        {"3 asl 2", "int 12"},    {"hhigh(12345678h)", "int 18"},
        {"high(-1)", "int 0"},    {"hhigh(&hFFFFFFFF)", "int 255"},
        {"low(3.7)", "int 3"},    {"1 lsl 31", "double 2147483648"},
        {"s16(-5)", "int -5"},    {"u24(16777215)", "int 16777215"},
        {"12 and 10", "int 8"},   {"&hFFFFFFFF and 0FFh", "int 255"},
        {"12 xor 10", "int 6"},   {"u8(-1)", "int 255", {{-3, "-1"}}},
        {"256 >> 4", "int 16"},   {"u8(2.5)", "int 2", {{-3, "2.5"}}},
        {"-8 lsr 1", "int -4"},   {"not 1.5", "int -2", {{-2, "1.5"}}},
        {"-7 lsr 1", "int -3"},   {"u8(300)", "int 44", {{-3, "300"}}},
        {"low(-1)", "int 255"},   {"2.5 and 3", "int 2", {{-2, "2.5"}}},
        {"hhigh(-1)", "int 0"},   {"s8(200)", "int -56", {{-7, "200"}}},
        {"u8(255)", "int 255"},   {"u16(-1)", "int 65535", {{-4, "-1"}}},
        {"low -300", "int 212"},  {"s8(-129)", "int 127", {{-7, "-129"}}},
        {"256 shr 4", "int 16"},  {"s32(-2.5)", "int -2", {{-10, "-2.5"}}},
        {"256 lsr 4", "int 16"},  {"u16(70000)", "int 4464", {{-4, "70000"}}},
        {"-16 asr 2", "int -4"},  {"s16(40000)", "int -25536", {{-8, "40000"}}},
        {"low 1234h", "int 52"},  {"u24(16777216)", "int 0", {{-5, "16777216"}}},
        {"high 1234h", "int 18"}, {"u32(-1)", "double 4294967295", {{-6, "-1"}}},
        {"low(1234h)", "int 52"}, {"u32(4294967296)", "int 0", {{-6, "4294967296"}}},
        {"low(-300)", "int 212"}, {"1.5 or 2.5", "int 3", {{-2, "1.5"}, {-2, "2.5"}}},
        {"high -300", "int 255"}, {"s24(8388608)", "int -8388608", {{-9, "8388608"}}},
        {"low(-3.7)", "int 253"}, {"s32(2147483648)", "int -2147483648", {{-10, "2147483648"}}},
        {"s8(-128)", "int -128"},
    };
    Check(cases, Evaluated);
}

// "nul" tests the rest of its group, unevaluated, for emptiness. An unclosed
// string keeps what it holds but for its last character.
TEST(Evaluate, NulCharactersStringsAndFunctions) {
    const Case cases[] = {
        {"nul", "int -1"},     {"int(2.5)", "int 2"},   {"ceil(-2.1)", "int -2"},
        {"' '", "int 32"},     {"fix(2.5)", "int 2"},   {"\"abc\"", "string abc"},
        {"'+'", "int 43"},     {"sgn(-7)", "int -1"},   {"floor(-2.1)", "int -3"},
        {"'('", "int 40"},     {"sgn(0.5)", "int 1"},   {"5 + (nul abc)", "int 5"},
        {"nul ", "int -1"},    {"exp(0)", "double 1"},  {"abs(-2.5)", "double 2.5"},
        {"nul x", "int 0"},    {"ceil(2.1)", "int 3"},  {"\"ab\" < \"b\"", "int -1"},
        {"nul()", "int -1"},   {"-abs(-3)", "int -3"},  {"sqr(sqr(16))", "double 2"},
        {"nul(a)", "int 0"},   {"(nul) + 1", "int 0"},  {"\"a b+c\"", "string a b+c"},
        {"'a'+1", "int 98"},   {"5 + (nul)", "int 4"},  {"\"ab\" = \"ab\"", "int -1"},
        {"'\\''", "int 39"},   {"log(1)", "double 0"},  {"\"ab\" <> \"ab\"", "int 0"},
        {"\"\"", "string "},   {"fix(-2.5)", "int -2"}, {"nul undefined + 1", "int 0"},
        {"sgn(0)", "int 0"},   {"(\"x\")", "string x"}, {"'it''s' and 0FFh", "int 115"},
        {"nul ')'", "int 0"},  {"sqr(16)", "double 4"}, {"\"ab\"+\"cd\"", "string abcd"},
        {"abs(-7)", "int 7"},  {"int(-2.5)", "int -3"}, {"\"abc", "string ab", {{25, "\"abc"}}},
        {"nul ( )", "int -1"},
    };
    Check(cases, Evaluated);
}

TEST(Evaluate, TrigonometryFollowsTheAngleUnit) {
    constexpr double pi = std::numbers::pi;
    struct NearCase {
        const char* Text;
        double Value;
    };
    const NearCase radians[] = {
        {"sin(0)", 0.0},     {"asin(1)", pi / 2},      {"tan(0.5)", std::tan(0.5)},
        {"cos(0)", 1.0},     {"acos(0)", pi / 2},      {"cosec(1)", 1 / std::sin(1.0)},
        {"sec(0)", 1.0},     {"deg2rad(180)", pi},     {"cotan(1)", 1 / std::tan(1.0)},
        {"atan(1)", pi / 4}, {"rad2deg(1)", 180 / pi},
    };
    const NearCase degrees[] = {
        {"sin(30)", 0.5},    {"cos(60)", 0.5},     {"tan(45)", 1.0},         {"atan(1)", 45.0},
        {"asin(0.5)", 30.0}, {"acos(0.5)", 60.0},  {"sec(60)", 2.0},         {"cosec(30)", 2.0},
        {"cotan(45)", 1.0},  {"deg2rad(180)", pi}, {"rad2deg(1)", 180 / pi},
    };
    ExpressionEvaluator evaluator; // in radians until told otherwise
    for (const auto& c : radians) {
        EXPECT_NEAR(*AsNumber(evaluator.Evaluate(c.Text)), c.Value, 1e-12) << c.Text;
    }
    evaluator.SetDRG(AngleUnit::Degrees);
    for (const auto& c : degrees) {
        EXPECT_NEAR(*AsNumber(evaluator.Evaluate(c.Text)), c.Value, 1e-12) << c.Text;
    }
    EXPECT_EQ(Drain(evaluator), Errors{});
}

// Each expression leaves exactly these entries and evaluates to nothing.
TEST(Evaluate, MalformedExpressionsAndInvalidOperations) {
    const struct {
        std::string Text;
        Errors Expected;
        const char* Value = "empty";
    } cases[] = {
        {"", {{8, ""}}},       {"0^-1", {{11, "^"}}},     {"\"a\" + 1", {{5, "+"}}},
        {"1+", {{8, ""}}},     {"1.5h", {{17, "."}}},     {"5 ror 1", {{12, "ror"}}},
        {"x", {{3, "x"}}},     {"FFh", {{3, "FFh"}}},     {"5 rol 1", {{12, "rol"}}},
        {"   ", {{8, ""}}},    {"u8(x)", {{3, "x"}}},     {"5 mod 0", {{11, "mod"}}},
        {"*5", {{8, "*"}}},    {"1\\0", {{11, "\\"}}},    {"sqr(-1)", {{11, "sqr"}}},
        {"()", {{8, ")"}}},    {"-\"a\"", {{5, "-"}}},    {"1 asl 31", {{11, "asl"}}},
        {"5 3", {{7, "3"}}},   {"'a'b'", {{4, "b'"}}},    {"asin(2)", {{11, "asin"}}},
        {"x+1", {{3, "x"}}},   {"2 = = 3", {{8, "="}}},   {"(-8)^(1\\3)", {{11, "^"}}},
        {"5+*3", {{8, "*"}}},  {"5 'a'", {{7, "'a'"}}},   {"1 asr -40", {{11, "asr"}}},
        {"(1+)", {{8, ")"}}},  {"5 mod", {{4, "mod"}}},   {"exp(1000)", {{11, "exp"}}},
        {"(1+2", {{10, ""}}},  {"'\\400'", {{20, ""}}},   {"sqr(\"a\")", {{5, "sqr"}}},
        {"1+2)", {{9, ")"}}},  {"((((1)))", {{10, ""}}},  {"cotan(0)", {{11, "cotan"}}},
        {"5(3)", {{7, "("}}},  {"5 foo 3", {{4, "foo"}}}, {"cosec(0)", {{11, "cosec"}}},
        {"1/0", {{11, "/"}}},  {"5 mod3", {{4, "mod3"}}}, {"x + y", {{3, "x"}, {3, "y"}}},
        {"sqr(4", {{10, ""}}}, {"foo(3)", {{13, "foo"}}}, {"fix (2.5)", {{3, "fix"}, {7, "("}}},
        {"5 (3)", {{7, "("}}}, {"log(0)", {{11, "log"}}}, {"12b + 0AGh", {{19, "2"}, {17, "G"}}},
        {"5 # 3", {{4, "#"}}}, {"\"a\" * 2", {{5, "*"}}}, {"foo(1\\0)", {{13, "foo"}, {11, "\\"}}},
        {"5 ! 3", {{4, "!"}}},
    };
    Check(cases, Evaluated);
}

// Precedence 1 evaluates strictly left to right; precision 2 forces whole
// numbers where the value is small enough, 3 forces 32-bit signed integers
// and 4 doubles. A constant of 200 characters lies beyond every double.
TEST(Evaluate, PrecedenceAndPrecisionSettings) {
    const std::string huge = "'" + std::string(200, 'x') + "'";
    const struct {
        std::int16_t Precedence;
        std::int16_t Precision;
        Case C;
    } cases[] = {
        {1, 0, {"2+3*4", "int 20"}},
        {1, 0, {"2+(3*4)", "int 14"}},
        {7, 0, {"2+3*4", "int 14", {{28, "7"}}}},
        {0, 1, {"7\\2", "double 3.5"}},
        {0, 2, {"7\\2", "int 3", {{-2, "3.5"}}}},
        {0, 2, {"-7\\2", "int -3", {{-2, "-3.5"}}}},
        {0, 2, {"1e12", "double 1000000000000"}},
        {0, 3, {"&hFFFFFFFF", "int -1", {{-11, "4294967295"}}}},
        {0, 3, {"1.5", "int 1", {{-11, "1.5"}}}},
        {0, 3, {"2.0", "int 2"}},
        {0, 3, {"\"s\"", "string s"}},
        {0, 3, {huge, "int 0", {{-11, "inf"}}}},
        {0, 4, {"7", "double 7"}},
        {0, 4, {"7/2", "double 3"}},
        {0, 5, {"7\\2", "double 3.5", {{29, "5"}}}},
        {0, -1, {"1", "int 1", {{29, "-1"}}}},
    };
    for (const auto& [precedence, precision, c] : cases) {
        Check(std::span(&c, 1), [&, precedence = precedence, precision = precision](
                                    ExpressionEvaluator& evaluator, const std::string& text) {
            evaluator.SetPrecedence(precedence);
            evaluator.SetPrecision(precision);
            return Evaluated(evaluator, text);
        });
    }
}

TEST(Evaluate, ErrorsAccumulateUntilDrained) {
    ExpressionEvaluator evaluator;
    evaluator.Evaluate("1/0");
    evaluator.SetExpression("2+2");
    EXPECT_EQ(Describe(evaluator.Evaluate()), "int 4");
    EXPECT_EQ(Describe(evaluator.Result()), "int 4");
    evaluator.Evaluate("1+");
    EXPECT_EQ(Describe(evaluator.Result()), "empty");
    EXPECT_EQ(evaluator.GetNextErrorStr(), "Invalid Math Operation");
    EXPECT_EQ(evaluator.Error(), 11);
    EXPECT_EQ(evaluator.GetNextErrorStr(), "Missing Operand");
    EXPECT_EQ(evaluator.GetNextErrorStr(), "No Error");
    EXPECT_EQ(evaluator.Error(), 0);
}

// A text evaluated again, from the evaluator's own store or from a handle
// the caller keeps, gives what evaluating it anew would give, whatever
// changed in between: the settings, or the programs the evaluator keeps.
TEST(Evaluate, HandlesFollowTheSettingsAndTheKeptPrograms) {
    ExpressionEvaluator evaluator;
    ProgramHandle product;
    ProgramHandle seven;
    EXPECT_FALSE(evaluator.IsConstant(seven)) << "holds no program yet";
    EXPECT_EQ(Describe(evaluator.Evaluate("2+3*4")), "int 14");
    EXPECT_EQ(Describe(evaluator.Evaluate("2+3*4", product)), "int 14");
    EXPECT_EQ(Describe(evaluator.Evaluate("7", seven)), "int 7");
    EXPECT_TRUE(evaluator.IsConstant(seven));
    EXPECT_FALSE(evaluator.IsConstant(product));
    evaluator.SetPrecedence(1); // drops the kept programs
    EXPECT_FALSE(evaluator.IsConstant(seven));
    EXPECT_EQ(Describe(evaluator.Evaluate("2+3*4")), "int 20");
    EXPECT_EQ(Describe(evaluator.Evaluate("2+3*4", product)), "int 20");
    evaluator.SetPrecision(4);
    EXPECT_FALSE(evaluator.KeepsResults());
    EXPECT_EQ(Describe(evaluator.Evaluate("7", seven)), "double 7");
    evaluator.SetPrecision(0);
    evaluator.SetPrecedence(9);
    EXPECT_FALSE(evaluator.KeepsResults());
    EXPECT_EQ(Describe(evaluator.Evaluate("7", seven)), "int 7");
    EXPECT_EQ(Drain(evaluator), (Errors{{28, "9"}}));
    evaluator.SetPrecedence(0);
    EXPECT_TRUE(evaluator.KeepsResults());

    SymbolTable table;
    table.SetVariable("seven", std::int32_t{7});
    ProgramHandle name;
    EXPECT_EQ(Describe(evaluator.Evaluate("seven*2", name)), "empty");
    evaluator.SetVariables(&table); // drops the kept programs, with their names' slots
    EXPECT_EQ(Describe(evaluator.Evaluate("seven*2", name)), "int 14");
    EXPECT_EQ(Drain(evaluator), (Errors{{3, "seven"}}));
}

TEST(Evaluate, DeepNestingAndLongExpressionsStayCheap) {
    constexpr int depth = 200000;
    std::string flat = "1";
    for (int i = 1; i < depth; ++i) flat += i % 2 == 0 ? "+1" : "*1";
    const auto start = std::chrono::steady_clock::now();
    ExpressionEvaluator evaluator;
    EXPECT_EQ(Describe(evaluator.Evaluate(std::string(depth, '(') + "1" + std::string(depth, ')'))),
              "int 1");
    EXPECT_EQ(Describe(evaluator.Evaluate(flat)), "int 100000");
    EXPECT_EQ(Describe(evaluator.Evaluate(std::string(depth, '-') + "1")), "int 1");
    EXPECT_EQ(Describe(evaluator.Evaluate(std::string(depth, '('))), "empty");
    EXPECT_EQ(Drain(evaluator), (Errors{{8, ""}}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

} // namespace
} // namespace trident
