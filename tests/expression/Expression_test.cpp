#include "expression/ValueText.h"
#include "expression/clsExpression.h"

#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <string>
#include <vector>

namespace trident {
namespace {

using test::Describe;
using test::Drain;
using test::ErrorEntry;
using Errors = std::vector<ErrorEntry>;

struct ValueCase {
    const char* Text;
    const char* Value;
};

// Evaluates every case on a fresh evaluator without a symbol table and
// expects its value and an empty error list.
void ExpectValues(const std::vector<ValueCase>& cases) {
    for (const auto& c : cases) {
        clsExpression evaluator;
        EXPECT_EQ(Describe(evaluator.Evaluate(c.Text)), c.Value) << c.Text;
        EXPECT_EQ(Describe(evaluator.Result()), c.Value) << c.Text;
        EXPECT_EQ(Drain(evaluator), Errors{}) << c.Text;
    }
}

TEST(Evaluate, PrecedenceLevels) {
    ExpectValues({
        {"2+3*4", "int 14"},
        {"2*3+4", "int 10"},
        {"2^3*2", "int 16"},
        {"2*3^2", "int 18"},
        {"1 or 2 and 4", "int 1"},
        {"1 xor 3 and 2", "int 3"},
        {"1+1 = 2", "int -1"},
        {"2 = 1+1", "int -1"},
        {"3 > 2 and 2 > 1", "int -1"},
        {"1 << 2 + 1", "int 5"},
        {"(2+3)*4", "int 20"},
        {"((2))", "int 2"},
    });
}

TEST(Evaluate, SameLevelAssociatesLeftToRight) {
    ExpectValues({
        {"10-4-3", "int 3"},
        {"10-2+3", "int 11"},
        {"100/10/5", "int 2"},
        {"2^3^2", "int 64"},
        {"17 mod 10 mod 4", "int 3"},
        {"2*6/4", "int 3"},
        {"1 = 1 = -1", "int -1"},
    });
}

TEST(Evaluate, StrictLeftToRightOrderWhenAsked) {
    clsExpression evaluator;
    evaluator.SetPrecedence(1);
    EXPECT_EQ(Describe(evaluator.Evaluate("2+3*4")), "int 20");
    EXPECT_EQ(Describe(evaluator.Evaluate("2+(3*4)")), "int 14");
    EXPECT_EQ(Drain(evaluator), Errors{});
}

TEST(Evaluate, UnsupportedPrecedenceIsReportedAndLevelsApply) {
    clsExpression evaluator;
    evaluator.SetPrecedence(7);
    EXPECT_EQ(Describe(evaluator.Evaluate("2+3*4")), "int 14");
    EXPECT_EQ(Drain(evaluator), (Errors{{28, "7"}}));
}

TEST(Evaluate, ArithmeticOperators) {
    ExpectValues({
        {"7/2", "int 3"},
        {"7 idiv 2", "int 3"},
        {"-7/2", "int -3"},
        {"7\\2", "double 3.5"},
        {"6\\2", "int 3"},
        {"7.5/2", "double 3"},
        {"1\\4", "double 0.25"},
        {"5 mod 3", "int 2"},
        {"5 % 3", "int 2"},
        {"5 mod(3)", "int 2"},
        {"5 MOD 3", "int 2"},
        {"-7 mod 2", "int -1"},
        {"5.5 mod 2", "double 1.5"},
        {"2^10", "int 1024"},
        {"2^-1", "double 0.5"},
        {"4^0.5", "double 2"},
        {"1.5+1", "double 2.5"},
        {"1.5*2", "double 3"},
        {"2147483647+1", "double 2147483648"},
        {"-2147483647-2", "double -2147483649"},
        {"65536*65536", "double 4294967296"},
        {"1.5e+3", "double 1500"},
        {"2e-1*10", "double 2"},
    });
}

TEST(Evaluate, ComparisonsGiveMinusOneOrZero) {
    ExpectValues({
        {"3 = 3", "int -1"},
        {"3 eq 4", "int 0"},
        {"3 <> 3", "int 0"},
        {"3 != 4", "int -1"},
        {"3 ne 3", "int 0"},
        {"2 < 3", "int -1"},
        {"2 lt 2", "int 0"},
        {"3 > 2", "int -1"},
        {"3 gt 3", "int 0"},
        {"3 >= 3", "int -1"},
        {"3 ge 4", "int 0"},
        {"3 gte 2", "int -1"},
        {"3 <= 2", "int 0"},
        {"3 le 3", "int -1"},
        {"2 lte 3", "int -1"},
        {"1.5 < 2", "int -1"},
        {"0.5 = 1\\2", "int -1"},
    });
}

TEST(Evaluate, BitwiseAndShiftOperators) {
    ExpectValues({
        {"12 and 10", "int 8"},     {"12 & 10", "int 8"},
        {"12 or 3", "int 15"},      {"12 | 3", "int 15"},
        {"12 xor 10", "int 6"},     {"0 imp 0", "int -1"},
        {"-1 imp 0", "int 0"},      {"6 imp 3", "int -5"},
        {"5 eqv 5", "int -1"},      {"5 eqv 4", "int -2"},
        {"-1 and 0FFh", "int 255"}, {"&hFFFFFFFF and 0FFh", "int 255"},
        {"1 << 4", "int 16"},       {"1 shl 4", "int 16"},
        {"1 lsl 4", "int 16"},      {"1 lsl 31", "double 2147483648"},
        {"256 >> 4", "int 16"},     {"256 shr 4", "int 16"},
        {"256 lsr 4", "int 16"},    {"5 lsr 1", "int 2"},
        {"-8 lsr 1", "int -4"},     {"-7 lsr 1", "int -3"},
        {"3 asl 2", "int 12"},      {"3 asl 1.9", "double 6"},
        {"-16 asr 2", "int -4"},    {"5 asr 1", "double 2.5"},
        {"1 asl -1", "double 0.5"},
    });
}

TEST(Evaluate, PrefixOperatorsBindToTheNextOperand) {
    ExpectValues({
        {"-5", "int -5"},
        {"--5", "int 5"},
        {"+5", "int 5"},
        {"#5", "int 5"},
        {"- 5", "int -5"},
        {"-1.5", "double -1.5"},
        {"-(2+3)", "int -5"},
        {"-2^2", "int 4"},
        {"2*-3", "int -6"},
        {"2--3", "int 5"},
        {"not 0", "int -1"},
        {"NOT 0", "int -1"},
        {"not(0)", "int -1"},
        {"not -1", "int 0"},
        {"!0", "int -1"},
        {"!5", "int -6"},
        {"not 0 and 5", "int 5"},
        {"-2147483648", "double -2147483648"},
        {"-(-2147483647-1)", "double 2147483648"},
    });
}

TEST(Evaluate, ByteSelection) {
    ExpectValues({
        {"high 1234h", "int 18"},      {"low 1234h", "int 52"},
        {"high 1234h+1", "int 19"},    {"high(1234h)", "int 18"},
        {"low(1234h)", "int 52"},      {"hhigh(12345678h)", "int 18"},
        {"hlow(12345678h)", "int 52"}, {"high(12345678h)", "int 86"},
        {"low(12345678h)", "int 120"}, {"low(-1)", "int 255"},
        {"high(-1)", "int 0"},         {"high(-300)", "int 255"},
        {"low(-300)", "int 212"},      {"high -300", "int 255"},
        {"low -300", "int 212"},       {"hhigh(-1)", "int 0"},
        {"hlow(-65537)", "int 255"},   {"low(3.7)", "int 3"},
        {"low(-3.7)", "int 253"},      {"hhigh(&hFFFFFFFF)", "int 255"},
        {"low(1 + 255)", "int 0"},
    });
}

TEST(Evaluate, NulTestsTheRestOfItsGroupUnevaluated) {
    ExpectValues({
        {"nul ", "int -1"},
        {"nul", "int -1"},
        {"nul()", "int -1"},
        {"nul ( )", "int -1"},
        {"nul x", "int 0"},
        {"nul undefined + 1", "int 0"},
        {"(nul) + 1", "int 0"},
        {"5 + (nul abc)", "int 5"},
        {"5 + (nul)", "int 4"},
        {"nul(a)", "int 0"},
        {"nul ')'", "int 0"},
    });
}

TEST(Evaluate, CharacterConstantsAndStrings) {
    ExpectValues({
        {"'A'", "int 65"},
        {"'a'+1", "int 98"},
        {"' '", "int 32"},
        {"'+'", "int 43"},
        {"'('", "int 40"},
        {"'\\''", "int 39"},
        {"'it''s' and 0FFh", "int 115"},
        {"\"abc\"", "string abc"},
        {"\"a b+c\"", "string a b+c"},
        {"\"ab\"+\"cd\"", "string abcd"},
        {"\"ab\" = \"ab\"", "int -1"},
        {"\"ab\" <> \"ab\"", "int 0"},
        {"\"ab\" < \"b\"", "int -1"},
        {"\"\"", "string "},
        {"(\"x\")", "string x"},
    });
}

TEST(Evaluate, Functions) {
    ExpectValues({
        {"sqr(16)", "double 4"},
        {"log(1)", "double 0"},
        {"exp(0)", "double 1"},
        {"int(2.5)", "int 2"},
        {"int(-2.5)", "int -3"},
        {"fix(-2.5)", "int -2"},
        {"fix(2.5)", "int 2"},
        {"ceil(2.1)", "int 3"},
        {"ceil(-2.1)", "int -2"},
        {"floor(-2.1)", "int -3"},
        {"int(1e12+0.5)", "double 1000000000000"},
        {"sgn(-7)", "int -1"},
        {"sgn(0)", "int 0"},
        {"sgn(0.5)", "int 1"},
        {"abs(-7)", "int 7"},
        {"abs(-2.5)", "double 2.5"},
        {"abs(-2147483647-1)", "double 2147483648"},
        {"sqr(sqr(16))", "double 2"},
        {"-abs(-3)", "int -3"},
    });
}

struct NearCase {
    const char* Text;
    double Value;
};

TEST(Evaluate, TrigonometryFollowsTheAngleUnit) {
    constexpr double pi = std::numbers::pi;
    const NearCase radians[] = {
        {"sin(0)", 0.0},
        {"cos(0)", 1.0},
        {"tan(0.5)", std::tan(0.5)},
        {"atan(1)", pi / 4},
        {"asin(1)", pi / 2},
        {"acos(0)", pi / 2},
        {"sec(0)", 1.0},
        {"cosec(1)", 1 / std::sin(1.0)},
        {"cotan(1)", 1 / std::tan(1.0)},
        {"deg2rad(180)", pi},
        {"rad2deg(1)", 180 / pi},
    };
    const NearCase degrees[] = {
        {"sin(30)", 0.5},    {"cos(60)", 0.5},     {"tan(45)", 1.0},         {"atan(1)", 45.0},
        {"asin(0.5)", 30.0}, {"acos(0.5)", 60.0},  {"sec(60)", 2.0},         {"cosec(30)", 2.0},
        {"cotan(45)", 1.0},  {"deg2rad(180)", pi}, {"rad2deg(1)", 180 / pi},
    };
    clsExpression evaluator;
    EXPECT_EQ(evaluator.DRG(), AngleUnit::Radians);
    for (const auto& c : radians) {
        EXPECT_NEAR(*AsNumber(evaluator.Evaluate(c.Text)), c.Value, 1e-12) << c.Text;
    }
    evaluator.SetDRG(AngleUnit::Degrees);
    for (const auto& c : degrees) {
        EXPECT_NEAR(*AsNumber(evaluator.Evaluate(c.Text)), c.Value, 1e-12) << c.Text;
    }
    EXPECT_EQ(Drain(evaluator), Errors{});
}

struct ConversionCase {
    const char* Text;
    const char* Value;
    Errors Expected;
};

TEST(Evaluate, IntegerConversionsWarnWhenTheyChangeTheValue) {
    const ConversionCase cases[] = {
        {"u8(255)", "int 255", {}},
        {"u8(300)", "int 44", {{-3, "300"}}},
        {"u8(-1)", "int 255", {{-3, "-1"}}},
        {"u8(2.5)", "int 2", {{-3, "2.5"}}},
        {"u16(65535)", "int 65535", {}},
        {"u16(70000)", "int 4464", {{-4, "70000"}}},
        {"u16(-1)", "int 65535", {{-4, "-1"}}},
        {"u24(16777215)", "int 16777215", {}},
        {"u24(16777216)", "int 0", {{-5, "16777216"}}},
        {"u32(-1)", "double 4294967295", {{-6, "-1"}}},
        {"u32(4294967296)", "int 0", {{-6, "4294967296"}}},
        {"s8(-128)", "int -128", {}},
        {"s8(200)", "int -56", {{-7, "200"}}},
        {"s8(-129)", "int 127", {{-7, "-129"}}},
        {"s16(-5)", "int -5", {}},
        {"s16(40000)", "int -25536", {{-8, "40000"}}},
        {"s24(8388608)", "int -8388608", {{-9, "8388608"}}},
        {"s32(2147483648)", "int -2147483648", {{-10, "2147483648"}}},
        {"s32(-2.5)", "int -2", {{-10, "-2.5"}}},
        {"S8(1)", "int 1", {}},
    };
    for (const auto& c : cases) {
        clsExpression evaluator;
        EXPECT_EQ(Describe(evaluator.Evaluate(c.Text)), c.Value) << c.Text;
        EXPECT_EQ(Drain(evaluator), c.Expected) << c.Text;
    }
}

struct FaultCase {
    const char* Text;
    Errors Expected;
    const char* Value = "empty";
};

// Each expression leaves exactly these entries; most evaluate to nothing.
TEST(Evaluate, MalformedExpressionsAndInvalidOperations) {
    const FaultCase cases[] = {
        {"", {{8, ""}}},
        {"   ", {{8, ""}}},
        {"1+", {{8, ""}}},
        {"*5", {{8, "*"}}},
        {"5+*3", {{8, "*"}}},
        {"2 = = 3", {{8, "="}}},
        {"()", {{8, ")"}}},
        {"(1+)", {{8, ")"}}},
        {"(1+2", {{10, ""}}},
        {"sqr(4", {{10, ""}}},
        {"((((1)))", {{10, ""}}},
        {"1+2)", {{9, ")"}}},
        {"5 3", {{7, "3"}}},
        {"5 (3)", {{7, "("}}},
        {"5 'a'", {{7, "'a'"}}},
        {"5(3)", {{7, "("}}},
        {"5 foo 3", {{4, "foo"}}},
        {"5 mod3", {{4, "mod3"}}},
        {"5 mod", {{4, "mod"}}},
        {"5 # 3", {{4, "#"}}},
        {"5 ! 3", {{4, "!"}}},
        {"5 ror 1", {{12, "ror"}}},
        {"5 rol 1", {{12, "rol"}}},
        {"foo(3)", {{13, "foo"}}},
        {"foo(1\\0)", {{13, "foo"}, {11, "\\"}}},
        {"1/0", {{11, "/"}}},
        {"1\\0", {{11, "\\"}}},
        {"5 mod 0", {{11, "mod"}}},
        {"0^-1", {{11, "^"}}},
        {"(-8)^(1\\3)", {{11, "^"}}},
        {"1 asl 31", {{11, "asl"}}},
        {"1 asr -40", {{11, "asr"}}},
        {"sqr(-1)", {{11, "sqr"}}},
        {"log(0)", {{11, "log"}}},
        {"exp(1000)", {{11, "exp"}}},
        {"asin(2)", {{11, "asin"}}},
        {"cotan(0)", {{11, "cotan"}}},
        {"cosec(0)", {{11, "cosec"}}},
        {"\"a\" * 2", {{5, "*"}}},
        {"\"a\" + 1", {{5, "+"}}},
        {"-\"a\"", {{5, "-"}}},
        {"sqr(\"a\")", {{5, "sqr"}}},
        {"0AGh+1", {{17, "G"}}},
        {"12b + 0AGh", {{19, "2"}, {17, "G"}}},
        {"1.5h", {{17, "."}}},
        {"'a'b'", {{4, "b'"}}},
        {"'\\400'", {{20, ""}}},
        {"\"abc", {{25, "\"abc"}}, "string ab"},
        {"fix (2.5)", {{3, "fix"}, {7, "("}}},
        {"x", {{3, "x"}}},
        {"FFh", {{3, "FFh"}}},
        {"x+1", {{3, "x"}}},
        {"u8(x)", {{3, "x"}}},
        {"x + y", {{3, "x"}, {3, "y"}}},
    };
    for (const auto& c : cases) {
        clsExpression evaluator;
        EXPECT_EQ(Describe(evaluator.Evaluate(c.Text)), c.Value) << c.Text;
        EXPECT_EQ(Drain(evaluator), c.Expected) << c.Text;
    }
}

TEST(Evaluate, FractionalOperandsOfBitwiseOperatorsAreTruncatedWithAWarning) {
    const ConversionCase cases[] = {
        {"2.5 and 3", "int 2", {{-2, "2.5"}}},
        {"not 1.5", "int -2", {{-2, "1.5"}}},
        {"1.5 or 2.5", "int 3", {{-2, "1.5"}, {-2, "2.5"}}},
    };
    for (const auto& c : cases) {
        clsExpression evaluator;
        EXPECT_EQ(Describe(evaluator.Evaluate(c.Text)), c.Value) << c.Text;
        EXPECT_EQ(Drain(evaluator), c.Expected) << c.Text;
    }
}

TEST(Evaluate, PrecisionConvertsTheResult) {
    struct PrecisionCase {
        std::int16_t Precision;
        std::string Text;
        const char* Value;
        Errors Expected;
    };
    const PrecisionCase cases[] = {
        {0, "7\\2", "double 3.5", {}},
        {1, "7\\2", "double 3.5", {}},
        {2, "7\\2", "int 3", {{-2, "3.5"}}},
        {2, "-7\\2", "int -3", {{-2, "-3.5"}}},
        {2, "1e12", "double 1000000000000", {}},
        {3, "&hFFFFFFFF", "int -1", {{-11, "4294967295"}}},
        {3, "1.5", "int 1", {{-11, "1.5"}}},
        {3, "2.0", "int 2", {}},
        {3, "\"s\"", "string s", {}},
        // 200 characters make a constant beyond every double.
        {3, "'" + std::string(200, 'x') + "'", "int 0", {{-11, "inf"}}},
        {4, "7", "double 7", {}},
        {4, "7/2", "double 3", {}},
        {5, "7\\2", "double 3.5", {{29, "5"}}},
        {-1, "1", "int 1", {{29, "-1"}}},
    };
    for (const auto& c : cases) {
        clsExpression evaluator;
        evaluator.SetPrecision(c.Precision);
        EXPECT_EQ(Describe(evaluator.Evaluate(c.Text)), c.Value) << c.Precision << " " << c.Text;
        EXPECT_EQ(Drain(evaluator), c.Expected) << c.Precision << " " << c.Text;
    }
}

TEST(Evaluate, ErrorsAccumulateUntilDrained) {
    clsExpression evaluator;
    evaluator.Evaluate("1/0");
    evaluator.Evaluate("2+2");
    EXPECT_EQ(Describe(evaluator.Result()), "int 4");
    evaluator.Evaluate("1+");
    EXPECT_EQ(Describe(evaluator.Result()), "empty");
    EXPECT_EQ(evaluator.GetNextErrorStr(), "Invalid Math Operation");
    EXPECT_EQ(evaluator.Error(), 11);
    EXPECT_EQ(evaluator.GetNextErrorStr(), "Missing Operand");
    EXPECT_EQ(evaluator.GetNextErrorStr(), "No Error");
    EXPECT_EQ(evaluator.Error(), 0);
}

TEST(Evaluate, ExpressionPropertyIsWhatGetsEvaluated) {
    clsExpression evaluator;
    evaluator.SetExpression("6*7");
    EXPECT_EQ(evaluator.Expression(), "6*7");
    EXPECT_EQ(Describe(evaluator.Evaluate()), "int 42");
    EXPECT_EQ(Describe(evaluator.Result()), "int 42");
}

TEST(Evaluate, DeepNestingAndLongExpressionsStayCheap) {
    constexpr int depth = 200000;
    const std::string nested = std::string(depth, '(') + "1" + std::string(depth, ')');
    std::string flat = "1";
    for (int i = 1; i < depth; ++i) flat += i % 2 == 0 ? "+1" : "*1";
    std::string prefixes(depth, '-');
    prefixes += "1";

    const auto start = std::chrono::steady_clock::now();
    clsExpression evaluator;
    EXPECT_EQ(Describe(evaluator.Evaluate(nested)), "int 1");
    EXPECT_EQ(Describe(evaluator.Evaluate(flat)), "int 100000");
    EXPECT_EQ(Describe(evaluator.Evaluate(prefixes)), "int 1");
    EXPECT_EQ(Describe(evaluator.Evaluate(std::string(depth, '('))), "empty");
    EXPECT_EQ(Drain(evaluator), (Errors{{8, ""}}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

} // namespace
} // namespace trident
