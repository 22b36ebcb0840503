#include "expression/ValueText.h"
#include "expression/clsExpression.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace trident {
namespace {

using test::Describe;
using test::Drain;
using test::ErrorEntry;
using Errors = std::vector<ErrorEntry>;

struct LiteralCase {
    const char* Text;
    const char* Value;
    Errors Expected;
};

TEST(EvalNumber, RadixesPrefixesSuffixesAndSeparators) {
    const LiteralCase cases[] = {
        {"0FFh", "int 255", {}},
        {"0ffh", "int 255", {}},
        {"&hFF", "int 255", {}},
        {"0xFF", "int 255", {}},
        {"0xffd", "int 4093", {}},
        {"0x1b", "int 27", {}},
        {"0x1d", "int 29", {}},
        {"0X1D", "int 29", {}},
        {"0ABh", "int 171", {}},
        {"1010b", "int 10", {}},
        {"0b1010", "int 10", {}},
        {"17o", "int 15", {}},
        {"17q", "int 15", {}},
        {"0o17", "int 15", {}},
        {"0q17", "int 15", {}},
        {"&o17", "int 15", {}},
        {"0d99", "int 99", {}},
        {"1_000", "int 1000", {}},
        {"1,000", "int 1000", {}},
        {"1$000", "int 1000", {}},
        {"1,024d", "int 1024", {}},
        {"0FF$FFh", "int 65535", {}},
        {" \t42\t ", "int 42", {}},
        {"&h", "int 0", {}},
        {"0x", "int 0", {}},
        {"&h7FFFFFFF", "int 2147483647", {}},
        {"&hFFFFFFFF", "double 4294967295", {}},
        {"1F_FFFF_FFFF_FFFFh", "double 9007199254740991", {}},
        {"2147483647", "int 2147483647", {}},
        {"2147483648", "double 2147483648", {}},
        {"-5", "int -5", {}},
        {"1.5", "double 1.5", {}},
        {"1.0", "double 1", {}},
        {"1e3", "double 1000", {}},
        {"2.5E-1", "double 0.25", {}},
        {"1_000.5", "double 1000.5", {}},
        {"'A'", "int 65", {}},
    };
    for (const auto& c : cases) {
        clsExpression evaluator;
        EXPECT_EQ(Describe(evaluator.EvalNumber(c.Text)), c.Value) << c.Text;
        EXPECT_EQ(Drain(evaluator), c.Expected) << c.Text;
    }
}

TEST(EvalNumber, FaultsNameTheOffendingText) {
    const LiteralCase cases[] = {
        {"12b", "empty", {{19, "2"}}},
        {"0b11b", "empty", {{19, "b"}}},
        {"0b102", "empty", {{19, "2"}}},
        {"19o", "empty", {{18, "9"}}},
        {"&o8", "empty", {{18, "8"}}},
        {"12ad", "empty", {{17, "a"}}},
        {"1.5h", "empty", {{17, "."}}},
        {"0AGh", "empty", {{17, "G"}}},
        {"0x1G", "empty", {{17, "G"}}},
        {"&hxy", "empty", {{17, "x"}}},
        {"FFh", "empty", {{22, "FFh"}}},
        {"h", "empty", {{22, "h"}}},
        {"0'", "empty", {{23, "0'"}}},
        {"12x", "empty", {{6, "12x"}}},
        {"1_2.3.4", "empty", {{6, "12.3.4"}}},
        {"1e", "empty", {{6, "1e"}}},
        {".", "empty", {{6, "."}}},
        {"", "empty", {{6, ""}}},
        {"1e999", "empty", {{6, "1e999"}}},
    };
    for (const auto& c : cases) {
        clsExpression evaluator;
        EXPECT_EQ(Describe(evaluator.EvalNumber(c.Text)), c.Value) << c.Text;
        EXPECT_EQ(Drain(evaluator), c.Expected) << c.Text;
    }
}

TEST(EvalNumber, TwoBadNumbersGiveTwoEntriesInOrder) {
    clsExpression evaluator;
    evaluator.EvalNumber("12b");
    evaluator.EvalNumber("0AGh");
    EXPECT_EQ(Drain(evaluator), (Errors{{19, "2"}, {17, "G"}}));
}

TEST(SingleQuoteStrToNumber, CharacterConstants) {
    const LiteralCase cases[] = {
        {"'A'", "int 65", {}},
        {"'AB'", "int 16706", {}},
        {"'ABCD'", "int 1094861636", {}},
        {"'ABCDE'", "double 280284578885", {}},
        {"''", "int 0", {}},
        {"' '", "int 32", {}},
        {"'\\n'", "int 10", {}},
        {"'\\t'", "int 9", {}},
        {"'\\b'", "int 8", {}},
        {"'\\v'", "int 11", {}},
        {"'\\\\'", "int 92", {}},
        {"'\\''", "int 39", {}},
        {"'\\x'", "int 120", {}},
        {"'\\101'", "int 65", {}},
        {"'\\0'", "int 0", {}},
        {"'\\377'", "int 255", {}},
        {"'\\18'", "int 312", {}},     // octal 1, then "8"
        {"'\\1011'", "int 16689", {}}, // three octal digits at most
        {"'it''s'", "int 1769219955", {}},
        {"'a''", "int 97", {}}, // a lone quote before the closing one is dropped
        {"'\xe9'", "int 233", {}},
        {"'\\400'", "empty", {{20, ""}}},
        {"'a'b'", "empty", {{23, "'a'b'"}}},
        {"'abc", "empty", {{23, "'abc"}}},
        {"abc'", "empty", {{23, "abc'"}}},
        {"'", "empty", {{23, "'"}}},
        {"'ab\\'", "empty", {{21, "'ab\\'"}}},
    };
    for (const auto& c : cases) {
        clsExpression evaluator;
        EXPECT_EQ(Describe(evaluator.SingleQuoteStrToNumber(c.Text)), c.Value) << c.Text;
        EXPECT_EQ(Drain(evaluator), c.Expected) << c.Text;
    }
}

struct StringCase {
    const char* Text;
    std::string Value;
    Errors Expected;
};

TEST(DoubleQuotedStringToString, EscapesQuotesAndFaults) {
    const StringCase cases[] = {
        {"\"abc\"", "abc", {}},
        {"\"\"", "", {}},
        {"\"a\\tb\"", "a\tb", {}},
        {"\"\\n\\r\\a\\b\\f\\v\\\\\"", "\n\r\a\b\f\v\\", {}},
        {"\"\\\"\"", "\"", {}},
        {"\"say \"\"hi\"\"\"", "say \"hi\"", {}},
        {"\"\\101\\x\"", "Ax", {}},
        {"\"\\0619\"", "19", {}},
        {"'it''s'", "it's", {}},
        {"'\\''", "'", {}},
        {"\"a\"\"", "a", {}}, // lone quote before the closing one
        {"\"abc'", "abc", {{25, "\"abc'"}}},
        {"\"", "", {{25, "\""}}},
        {"", "", {{25, ""}}},
        {"`abc`", "abc", {{-12, "`"}}},
        {"`abc\"", "abc", {{-12, "`"}, {25, "`abc\""}}},
        {"\"a\"b\"", "a", {{24, "\"a\"b\""}}},
        {"\"a\\400b\"", "a", {{20, ""}}},
        {"\"ab\\\"", "ab", {{21, "\"ab\\\""}}},
    };
    for (const auto& c : cases) {
        clsExpression evaluator;
        EXPECT_EQ(evaluator.DoubleQuotedStringToString(c.Text), c.Value) << c.Text;
        EXPECT_EQ(Drain(evaluator), c.Expected) << c.Text;
    }
}

} // namespace
} // namespace trident
