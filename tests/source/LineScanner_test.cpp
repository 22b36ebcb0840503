#include "base/Text.h"
#include "source/LineScanner.h"
#include "source/RunFailure.h"

#include <gtest/gtest.h>
#include <span>
#include <tuple>

namespace trident {
namespace {

using Texts = std::vector<std::string>;

// Compatible mode's cut, and the marks the scanner leaves for the dispatch
// in both modes: each statement as label, operation, operands, comment and
// marks.
TEST(LineScanner, CompatibleRulesAndMarks) {
    struct Expected {
        const char* Label;
        const char* Operation;
        const char* Operands;
        const char* Comment;
        std::uint8_t Marks;
    };
    // clang-format off
    const std::tuple<const char*, Dialect, std::vector<Expected>> cases[] = {
        {" nop ; a! mov a,b", Dialect::Compatible, {{"", "nop", "", "; a! mov a,b", 0}}},
        {" nop ; a! mov a,b", Dialect::Standard, {{"", "nop", "", "; a", 0}, {"", "mov", "a,b", "", FromComment}}},
        {" nop ; a! ; b", Dialect::Standard, {{"", "nop", "", "; a", 0}, {"", "", "", "; b", 0}}},
        {" if $ != 1 ; c", Dialect::Compatible, {{"", "if", "$ != 1", "; c", 0}}},
        {" if $ != 1", Dialect::Standard, {{"", "if", "$", "", 0}, {"=", "1", "", "", EqualsAfterSeparator}}},
        {" cmp b!inx h", Dialect::Compatible, {{"", "cmp", "b", "", 0}, {"", "inx", "h", "", 0}}},
        {" cmp b!inx h", Dialect::Standard, {{"", "cmp", "b", "", 0}, {"inx", "h", "", "", 0}}},
        {" nop!here: nop", Dialect::Compatible, {{"", "nop", "", "", 0}, {"here", "nop", "", "", 0}}},
        {"  size EQU 10", Dialect::Compatible, {{"size", "EQU", "10", "", 0}}},
        {"  size equ 10", Dialect::Standard, {{"", "size", "equ 10", "", 0}}},
        {"  n = 1", Dialect::Compatible, {{"n", "=", "1", "", 0}}},
        {"  jr macro t", Dialect::Compatible, {{"jr", "macro", "t", "", 0}}},
        {"ORG 100H", Dialect::Compatible, {{"ORG", "100H", "", "", BareLabel}}},
        {"ORG 100H", Dialect::Standard, {{"ORG", "100H", "", "", BareLabel}}},
        {"here: nop", Dialect::Standard, {{"here", "nop", "", "", 0}}},
        {"$INCLUDE(:F1:A.SRC) ; x!y", Dialect::Compatible, {{"", "", "", "$INCLUDE(:F1:A.SRC) ; x!y", ControlLine}}},
        {"$-MACRO", Dialect::Standard, {{"$-MACRO", "", "", "", BareLabel}}},
        {" nop!$-MACRO", Dialect::Compatible, {{"", "nop", "", "", 0}, {"", "$-MACRO", "", "", 0}}},
    };
    // clang-format on
    for (const auto& [line, dialect, expected] : cases) {
        std::vector<SourceStatement> statements;
        std::vector<std::string_view> operands;
        ASSERT_EQ(LineScanner::ScanLine(line, statements, operands, dialect),
                  static_cast<int>(expected.size()))
            << line;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            SCOPED_TRACE(std::string(line) + " statement " + std::to_string(i));
            EXPECT_EQ(statements[i].Label, expected[i].Label);
            EXPECT_EQ(statements[i].Operation, expected[i].Operation);
            EXPECT_EQ(statements[i].Operands, expected[i].Operands);
            EXPECT_EQ(statements[i].Comment, expected[i].Comment);
            EXPECT_EQ(statements[i].Marks, expected[i].Marks);
        }
    }
}

// A column-1 operation word: the statement cut again as if indented.
TEST(LineScanner, IndentedStatementTakesTheFirstWordAsOperation) {
    SourceStatement statement;
    std::vector<std::string_view> operands;
    LineScanner::ScanIndentedStatement("MOV A, B ; x! y", statement, operands);
    EXPECT_EQ(statement.Label, "");
    EXPECT_EQ(statement.Operation, "MOV");
    EXPECT_EQ(Texts(operands.begin(), operands.end()), (Texts{"A", "B"}));
    EXPECT_EQ(statement.Comment, "; x! y");
}

TEST(LineScanner, ScanLineCutsStatementsFieldsAndOperands) {
    // Each statement as label, operation, operands, comment.
    // clang-format off
    const std::pair<const char*, std::vector<SourceStatement>> cases[] = {
        {"LOOP: ld a,b ; x", {{"LOOP", "ld", "a,b", "; x"}}},
        {"start ld a,b", {{"start", "ld", "a,b", ""}}},
        {"   here: nop", {{"here", "nop", "", ""}}},
        {"   nop", {{"", "nop", "", ""}}},
        {"\tmvi\ta,5\t\t", {{"", "mvi", "a,5", ""}}},
        {"* whole line ; comment", {{"", "", "", "* whole line ; comment"}}},
        {"ld a,1 ! ld b,2", {{"ld", "a,1", "", ""}, {"", "ld", "b,2", ""}}},
        {" ld a,1 ! ld b,2", {{"", "ld", "a,1", ""}, {"", "ld", "b,2", ""}}},
        {" db 'a;b',0", {{"", "db", "'a;b',0", ""}}},
        {" db \"x\\\";y\" ; c", {{"", "db", "\"x\\\";y\"", "; c"}}},
        {" db \"x\\\\\";y", {{"", "db", "\"x\\\\\"", ";y"}}},
        {" nop ; note ! nop", {{"", "nop", "", "; note "}, {"", "nop", "", ""}}},
        {"", {{"", "", "", ""}}},
        {"; only a comment", {{"", "", "", "; only a comment"}}},
        {"   ; indented", {{"", "", "", "; indented"}}},
        {"label", {{"label", "", "", ""}}},
        {"label;c", {{"label", "", "", ";c"}}},
        {"lbl!nop", {{"lbl", "", "", ""}, {"nop", "", "", ""}}},
        {" mac <a;b>", {{"", "mac", "<a", ";b>"}}},
        {" nop!", {{"", "nop", "", ""}}},
        {" db 'it''s!'", {{"", "db", "'it''s!'", ""}}},
        {" ld a,b  \r", {{"", "ld", "a,b", ""}}},
        {" db 1, ,'a,b' ,\"x\\\",y\" , ;c", {{"", "db", "1, ,'a,b' ,\"x\\\",y\" ,", ";c"}}}};
    // clang-format on
    for (const auto& [line, expected] : cases) {
        std::vector<SourceStatement> statements;
        std::vector<std::string_view> operands;
        ASSERT_EQ(LineScanner::ScanLine(line, statements, operands),
                  static_cast<int>(expected.size()))
            << line;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            SCOPED_TRACE(std::string(line) + " statement " + std::to_string(i));
            EXPECT_EQ(statements[i].Label, expected[i].Label);
            EXPECT_EQ(statements[i].Operation, expected[i].Operation);
            EXPECT_EQ(statements[i].Operands, expected[i].Operands);
            EXPECT_EQ(statements[i].Comment, expected[i].Comment);
            // The walk over the line splits each field as the field splitter does.
            std::vector<std::string_view> split;
            LineScanner::SplitOperands(statements[i].Operands, split);
            const auto walked =
                std::span(operands).subspan(statements[i].FirstOperand, statements[i].OperandCount);
            EXPECT_EQ(Texts(walked.begin(), walked.end()), Texts(split.begin(), split.end()));
        }
    }
}

// Operands split on commas outside quotes; macro arguments also keep
// <bracketed> lists whole.
TEST(LineScanner, SplitOperandsAndMacroArguments) {
    // clang-format off
    const std::tuple<const char*, Texts, Texts> cases[] = {
        {"a,b", {"a", "b"}, {"a", "b"}},
        {"1,,2", {"1", "", "2"}, {"1", "", "2"}},
        {"<a,b>,c", {"<a", "b>", "c"}, {"<a,b>", "c"}},
        {"'a,b' , \"c,d\"", {"'a,b'", "\"c,d\""}, {"'a,b'", "\"c,d\""}},
        {"  x  ,\ty\t", {"x", "y"}, {"x", "y"}},
        {"", {}, {}}, {"   ", {}, {}}, {"1,", {"1"}, {"1"}}, {",", {""}, {""}},
        {"'\\'',x", {"'\\''", "x"}, {"'\\''", "x"}},
        {"<<a,b>,c>,d", {"<<a", "b>", "c>", "d"}, {"<<a,b>,c>", "d"}}};
    // clang-format on
    for (const auto& [field, operands, arguments] : cases) {
        std::vector<std::string_view> views;
        EXPECT_EQ(LineScanner::SplitOperands(field, views), static_cast<int>(operands.size()));
        EXPECT_EQ(Texts(views.begin(), views.end()), operands) << field;
        Texts items;
        EXPECT_EQ(LineScanner::SplitMacroArguments(field, items),
                  static_cast<int>(arguments.size()));
        EXPECT_EQ(items, arguments) << field;
    }
}

// What a broken limit says, and of which line, is checked through a whole assembly.
TEST(LineScanner, LimitsAreThirtyTwoStatementsAndHundredTwentyEightOperands) {
    std::string line = "nop", field = "0";
    for (int i = 1; i < LineScanner::MaxStatements; ++i) line += "!nop";
    for (int i = 1; i < LineScanner::MaxOperands; ++i) field += ",0";
    std::vector<SourceStatement> statements;
    std::vector<std::string_view> operands;
    Texts arguments;
    EXPECT_EQ(LineScanner::ScanLine(line, statements, operands), 32);
    EXPECT_THROW(LineScanner::ScanLine(line + "!nop", statements, operands), RunFailure);
    // A line's walk marks the statement instead: those before it still run.
    const std::string fields = " db " + field + "! db " + field + ",0! nop";
    statements.clear();
    operands.clear();
    ASSERT_EQ(LineScanner::ScanLine(fields, statements, operands), 3);
    EXPECT_FALSE(statements[0].TooManyOperands);
    EXPECT_TRUE(statements[1].TooManyOperands);
    EXPECT_EQ(statements[2].Operation, "nop");
    EXPECT_EQ(LineScanner::SplitOperands(field, operands), 128);
    EXPECT_THROW(LineScanner::SplitOperands(field + ",0", operands), RunFailure);
    EXPECT_EQ(LineScanner::SplitOperands(field + ",", operands), 128)
        << "a trailing comma adds no operand";
    EXPECT_THROW(LineScanner::SplitMacroArguments(field + ",,", arguments), RunFailure)
        << "an empty operand between commas counts";
}

TEST(LineScanner, SmallTextTransforms) {
    EXPECT_EQ(LineScanner::TabsToSpaces("a\tb\t"), "a b ");
    EXPECT_EQ(LowerCase("MoV A,B"), "mov a,b");
    EXPECT_EQ(TrimBlanks(" \t x y \t"), "x y");
    EXPECT_EQ(TrimBlanks("  "), "");
    std::string text = "\xC1\x42\xFF";
    LineScanner::StripParityBits(text);
    EXPECT_EQ(text, "\x41\x42\x7F");
}

} // namespace
} // namespace trident
