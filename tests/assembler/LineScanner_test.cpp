#include "assembler/LineScanner.h"
#include "assembler/RunFailure.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

struct LineCase {
    const char* Line;
    std::vector<SourceStatement> Expected;
};

class SplitSourceLineTest : public ::testing::TestWithParam<LineCase> {};

TEST_P(SplitSourceLineTest, CutsStatementsAndFields) {
    const LineCase& c = GetParam();
    std::vector<SourceStatement> statements;
    const int count = LineScanner::SplitSourceLine(c.Line, statements);
    ASSERT_EQ(count, static_cast<int>(c.Expected.size())) << c.Line;
    for (std::size_t i = 0; i < c.Expected.size(); ++i) {
        SCOPED_TRACE(std::string(c.Line) + " statement " + std::to_string(i));
        EXPECT_EQ(statements[i].Label, c.Expected[i].Label);
        EXPECT_EQ(statements[i].Operation, c.Expected[i].Operation);
        EXPECT_EQ(statements[i].Operands, c.Expected[i].Operands);
        EXPECT_EQ(statements[i].Comment, c.Expected[i].Comment);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Lines, SplitSourceLineTest,
    ::testing::Values(LineCase{"LOOP: ld a,b ; x", {{"LOOP", "ld", "a,b", "; x"}}},
                      LineCase{"start ld a,b", {{"start", "ld", "a,b", ""}}},
                      LineCase{"   here: nop", {{"here", "nop", "", ""}}},
                      LineCase{"   nop", {{"", "nop", "", ""}}},
                      LineCase{"\tmvi\ta,5\t\t", {{"", "mvi", "a,5", ""}}},
                      LineCase{"* whole line ; comment", {{"", "", "", "* whole line ; comment"}}},
                      LineCase{"ld a,1 ! ld b,2", {{"ld", "a,1", "", ""}, {"", "ld", "b,2", ""}}},
                      LineCase{" ld a,1 ! ld b,2", {{"", "ld", "a,1", ""}, {"", "ld", "b,2", ""}}},
                      LineCase{" db 'a;b',0", {{"", "db", "'a;b',0", ""}}},
                      LineCase{" db \"x\\\";y\" ; c", {{"", "db", "\"x\\\";y\"", "; c"}}},
                      LineCase{" db \"x\\\\\";y", {{"", "db", "\"x\\\\\"", ";y"}}},
                      LineCase{" nop ; note ! nop",
                               {{"", "nop", "", "; note "}, {"", "nop", "", ""}}},
                      LineCase{"", {{"", "", "", ""}}},
                      LineCase{"; only a comment", {{"", "", "", "; only a comment"}}},
                      LineCase{"label", {{"label", "", "", ""}}},
                      LineCase{"label;c", {{"label", "", "", ";c"}}},
                      LineCase{"lbl!nop", {{"lbl", "", "", ""}, {"nop", "", "", ""}}},
                      LineCase{" mac <a;b>", {{"", "mac", "<a", ";b>"}}},
                      LineCase{" nop!", {{"", "nop", "", ""}}},
                      LineCase{" db 'it''s!'", {{"", "db", "'it''s!'", ""}}},
                      LineCase{" ld a,b  \r", {{"", "ld", "a,b", ""}}}));

struct OperandCase {
    const char* Field;
    std::vector<std::string> Operands;
    std::vector<std::string> MacroArguments;
};

class SplitOperandsTest : public ::testing::TestWithParam<OperandCase> {};

TEST_P(SplitOperandsTest, SplitsOnCommasOutsideQuotes) {
    const OperandCase& c = GetParam();
    std::vector<std::string> items;
    EXPECT_EQ(LineScanner::SplitOperands(c.Field, items), static_cast<int>(c.Operands.size()));
    EXPECT_EQ(items, c.Operands);
    EXPECT_EQ(LineScanner::SplitMacroArguments(c.Field, items),
              static_cast<int>(c.MacroArguments.size()));
    EXPECT_EQ(items, c.MacroArguments);
}

INSTANTIATE_TEST_SUITE_P(
    Fields, SplitOperandsTest,
    ::testing::Values(OperandCase{"a,b", {"a", "b"}, {"a", "b"}},
                      OperandCase{"1,,2", {"1", "", "2"}, {"1", "", "2"}},
                      OperandCase{"<a,b>,c", {"<a", "b>", "c"}, {"<a,b>", "c"}},
                      OperandCase{"'a,b' , \"c,d\"", {"'a,b'", "\"c,d\""}, {"'a,b'", "\"c,d\""}},
                      OperandCase{"  x  ,\ty\t", {"x", "y"}, {"x", "y"}}, OperandCase{"", {}, {}},
                      OperandCase{"   ", {}, {}}, OperandCase{"1,", {"1"}, {"1"}},
                      OperandCase{",", {""}, {""}},
                      OperandCase{"'\\'',x", {"'\\''", "x"}, {"'\\''", "x"}},
                      OperandCase{"<<a,b>,c>,d", {"<<a", "b>", "c>", "d"}, {"<<a,b>,c>", "d"}}));

TEST(LineScannerLimits, ThirtyTwoStatementsFitAndTheThirtyThirdFails) {
    std::string line = "nop";
    for (int i = 1; i < LineScanner::MaxStatements; ++i) line += "!nop";
    std::vector<SourceStatement> statements;
    EXPECT_EQ(LineScanner::SplitSourceLine(line, statements), 32);
    line += "!nop";
    try {
        LineScanner::SplitSourceLine(line, statements);
        FAIL() << "a 33rd statement was accepted";
    } catch (const RunFailure& failure) {
        EXPECT_NE(std::string(failure.what()).find("32 statements"), std::string::npos);
    }
}

TEST(LineScannerLimits, HundredTwentyEightOperandsFitAndTheNextFails) {
    std::string field = "0";
    for (int i = 1; i < LineScanner::MaxOperands; ++i) field += ",0";
    std::vector<std::string> operands;
    EXPECT_EQ(LineScanner::SplitOperands(field, operands), 128);
    EXPECT_THROW(LineScanner::SplitOperands(field + ",0", operands), RunFailure);
    EXPECT_EQ(LineScanner::SplitOperands(field + ",", operands), 128)
        << "a trailing comma adds no operand";
    EXPECT_THROW(LineScanner::SplitMacroArguments(field + ",,", operands), RunFailure)
        << "an empty operand between commas counts";
}

TEST(LineScannerText, SmallTransforms) {
    EXPECT_EQ(LineScanner::TabsToSpaces("a\tb\t"), "a b ");
    EXPECT_EQ(LineScanner::LowerCase("MoV A,B"), "mov a,b");
    EXPECT_EQ(LineScanner::TrimBlanks(" \t x y \t"), "x y");
    EXPECT_EQ(LineScanner::TrimBlanks("  "), "");
    std::string text = "\xC1\x42\xFF";
    LineScanner::StripParityBits(text);
    EXPECT_EQ(text, "\x41\x42\x7F");
}

} // namespace
} // namespace trident
