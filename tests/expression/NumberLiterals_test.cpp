#include "expression/ExpressionEvaluator.h"
#include "expression/ValueText.h"

#include <gtest/gtest.h>
#include <string>

namespace trident {
namespace {

using test::Case;
using test::Check;

Value Number(ExpressionEvaluator& evaluator, const std::string& text) {
    return evaluator.EvalNumber(text);
}

TEST(EvalNumber, RadixesPrefixesSuffixesAndSeparators) {
    const Case cases[] = {
        {"&h", "int 0"},     {"1.0", "double 1"},
        {"0x", "int 0"},     {"0b1010", "int 10"},
        {"-5", "int -5"},    {"0xffd", "int 4093"},
        {"17o", "int 15"},   {"1_000", "int 1000"},
        {"17q", "int 15"},   {"1,000", "int 1000"},
        {"'A'", "int 65"},   {"1$000", "int 1000"},
        {"0x1b", "int 27"},  {"1.5", "double 1.5"},
        {"0x1d", "int 29"},  {"1,024d", "int 1024"},
        {"0X1D", "int 29"},  {" \t42\t ", "int 42"},
        {"0o17", "int 15"},  {"1e3", "double 1000"},
        {"0q17", "int 15"},  {"0FF$FFh", "int 65535"},
        {"&o17", "int 15"},  {"2.5E-1", "double 0.25"},
        {"0d99", "int 99"},  {"1_000.5", "double 1000.5"},
        {"0FFh", "int 255"}, {"&h7FFFFFFF", "int 2147483647"},
        {"0ffh", "int 255"}, {"2147483647", "int 2147483647"},
        {"&hFF", "int 255"}, {"&hFFFFFFFF", "double 4294967295"},
        {"0xFF", "int 255"}, {"2147483648", "double 2147483648"},
        {"0ABh", "int 171"}, {"1F_FFFF_FFFF_FFFFh", "double 9007199254740991"},
        {"1010b", "int 10"},
    };
    Check(cases, Number);
}

TEST(EvalNumber, FaultsNameTheOffendingText) {
    const Case cases[] = {
        {"", "empty", {{6, ""}}},       {"0AGh", "empty", {{17, "G"}}},
        {".", "empty", {{6, "."}}},     {"0x1G", "empty", {{17, "G"}}},
        {"h", "empty", {{22, "h"}}},    {"&hxy", "empty", {{17, "x"}}},
        {"1e", "empty", {{6, "1e"}}},   {"12x", "empty", {{6, "12x"}}},
        {"12b", "empty", {{19, "2"}}},  {"0b11b", "empty", {{19, "b"}}},
        {"19o", "empty", {{18, "9"}}},  {"0b102", "empty", {{19, "2"}}},
        {"&o8", "empty", {{18, "8"}}},  {"FFh", "empty", {{22, "FFh"}}},
        {"0'", "empty", {{23, "0'"}}},  {"1e999", "empty", {{6, "1e999"}}},
        {"12ad", "empty", {{17, "a"}}}, {"1_2.3.4", "empty", {{6, "12.3.4"}}},
        {"1.5h", "empty", {{17, "."}}},
    };
    Check(cases, Number);
}

// Escapes: "\18" is octal 1, then "8"; three octal digits at most; a lone
// quote before the closing one is dropped.
TEST(SingleQuoteStrToNumber, CharacterConstants) {
    const Case cases[] = {
        {"''", "int 0"},     {"'\\''", "int 39"},       {"'", "empty", {{23, "'"}}},
        {"'A'", "int 65"},   {"'\\\\'", "int 92"},      {"'ABCD'", "int 1094861636"},
        {"' '", "int 32"},   {"'\\x'", "int 120"},      {"'it''s'", "int 1769219955"},
        {"'\\t'", "int 9"},  {"'AB'", "int 16706"},     {"'\\400'", "empty", {{20, ""}}},
        {"'\\b'", "int 8"},  {"'\\101'", "int 65"},     {"'abc", "empty", {{23, "'abc"}}},
        {"'\\0'", "int 0"},  {"'\\18'", "int 312"},     {"abc'", "empty", {{23, "abc'"}}},
        {"'a''", "int 97"},  {"'\xe9'", "int 233"},     {"'ABCDE'", "double 280284578885"},
        {"'\\n'", "int 10"}, {"'\\377'", "int 255"},    {"'a'b'", "empty", {{23, "'a'b'"}}},
        {"'\\v'", "int 11"}, {"'\\1011'", "int 16689"}, {"'ab\\'", "empty", {{21, "'ab\\'"}}},
    };
    Check(cases, [](ExpressionEvaluator& e, const std::string& text) {
        return e.SingleQuoteStrToNumber(text);
    });
}

TEST(DoubleQuotedStringToString, EscapesQuotesAndFaults) {
    const Case cases[] = {
        {"\"\"", "string "},           {"\"", "string ", {{25, "\""}}},
        {"'\\''", "string '"},         {"`abc`", "string abc", {{-12, "`"}}},
        {"\"a\"\"", "string a"},       {"\"a\\400b\"", "string a", {{20, ""}}},
        {"\"abc\"", "string abc"},     {"\"abc'", "string abc", {{25, "\"abc'"}}},
        {"\"\\\"\"", "string \""},     {"\"say \"\"hi\"\"\"", "string say \"hi\""},
        {"'it''s'", "string it's"},    {"\"a\"b\"", "string a", {{24, "\"a\"b\""}}},
        {"\"\\0619\"", "string 19"},   {"\"ab\\\"", "string ab", {{21, "\"ab\\\""}}},
        {"", "string ", {{25, ""}}},   {"`abc\"", "string abc", {{-12, "`"}, {25, "`abc\""}}},
        {"\"a\\tb\"", "string a\tb"},  {"\"\\n\\r\\a\\b\\f\\v\\\\\"", "string \n\r\a\b\f\v\\"},
        {"\"\\101\\x\"", "string Ax"},
    };
    Check(cases, [](ExpressionEvaluator& e, const std::string& text) {
        return e.DoubleQuotedStringToString(text);
    });
}

} // namespace
} // namespace trident
