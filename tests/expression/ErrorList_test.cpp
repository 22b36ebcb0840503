#include "expression/ErrorList.h"
#include "expression/ValueText.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using test::Drain;
using test::Errors;

// Entries are taken oldest first; the extra string may hold any printable
// text, "~" included. The count is bounded by its type.
TEST(ErrorList, EntriesAreTakenOldestFirstWithTheirExtraStrings) {
    ErrorList errors;
    errors.AddError(EvalError::InvalidDecimalDigit, "G");
    errors.AddError(EvalError::ToUnsigned8, "300");
    errors.AddError(EvalError::NonExistentVariable, "loop");
    errors.AddError(EvalError::InvalidOperator, "a~b\x7f");
    errors.AddError(EvalError::MissingOperand);
    EXPECT_EQ(errors.Error(), 1);
    EXPECT_EQ(errors.ErrorCount(), 5);
    EXPECT_EQ(errors.GetNextError(), 17);
    EXPECT_EQ(errors.ExtraErrorString(), "G");
    EXPECT_EQ(errors.Error(), 17);
    EXPECT_EQ(Drain(errors), (Errors{{-3, "300"}, {26, "loop"}, {4, "a~b"}, {8, ""}}));
    EXPECT_EQ(errors.GetNextError(), 0);
    EXPECT_EQ(errors.Error(), 0);

    // Clearing all removes the entries; clearing the error only resets the code.
    errors.AddError(EvalError::InvalidNumber, "x");
    errors.AddError(EvalError::InvalidNumber, "y");
    EXPECT_EQ(errors.Error(), 1);
    errors.ErrorClear();
    EXPECT_EQ(errors.Error(), 0);
    EXPECT_EQ(errors.ErrorCount(), 2);
    errors.ClearAllErrors();
    EXPECT_EQ(errors.ErrorCount(), 0);
    EXPECT_EQ(errors.GetNextErrorStr(), "No Error");
    for (int i = 0; i < 40000; ++i) errors.AddError(EvalError::InvalidNumber);
    EXPECT_EQ(errors.ErrorCount(), 32767);
}

// The text reader splits at "~", not at the recording separator: without a
// "~" in the extra string only the message remains, and with one only the
// text between the first and a second "~" is kept.
TEST(ErrorList, TextReaderSplitsEntriesAtTilde) {
    const struct {
        EvalError Code;
        const char* Extra;
        const char* Text;
        int CodeAfter;
        const char* ExtraAfter;
    } cases[] = {
        {EvalError::InvalidDecimalDigit, "G", "Invalid Decimal Digit", 17, ""},
        {EvalError::MissingOperand, "", "Missing Operand", 8, ""},
        {EvalError::NonExistentVariable, "x~loop", "loop ~ Non Existant Variable", 26, "loop"},
        {EvalError::InvalidOperator, "a~b~c", "b ~ Invalid Operator", 4, "b"},
        {EvalError::ToUnsigned8, "~300", "300 ~ Conversion to Unsigned 8 bit integer", -3, "300"},
        {EvalError::NonStandardQuote, "q~", "Non Standard Quote", -12, ""},
    };
    for (const auto& c : cases) {
        ErrorList errors;
        errors.AddError(c.Code, c.Extra);
        EXPECT_EQ(errors.GetNextErrorStr(), c.Text) << c.Extra;
        EXPECT_EQ(errors.Error(), c.CodeAfter) << c.Extra;
        EXPECT_EQ(errors.ExtraErrorString(), c.ExtraAfter) << c.Extra;
        EXPECT_EQ(errors.ErrorCount(), 0);
    }
}

TEST(ErrorList, MessagesByCode) {
    const std::pair<int, const char*> cases[] = {
        {-12, "Non Standard Quote"},
        {-11, "Implementation Forced to 32 bit signed integer"},
        {-6, "Conversion to Unsigned 32 bit integer"},
        {-3, "Conversion to Unsigned 8 bit integer"},
        {-2, "Implementation Truncation to integer"},
        {0, "No Error"},
        {3, "Operand does not exist"},
        {9, "Missing ("},
        {14, "Mismatched Parenthesis"},
        {22, "Number Must Start With 0-9"},
        {25, "MismatchedOpenAndCloseQuotes"},
        {26, "Non Existant Variable"},
        {30, "Implementation Error"},
    };
    for (const auto& [code, message] : cases) {
        EXPECT_EQ(ErrorList::ErrorString(code), message) << code;
    }
    for (const int code : {-13, -1, 1, 2, 31}) {
        EXPECT_EQ(ErrorList::ErrorString(code), "Unknown Error") << code;
    }
}

} // namespace
} // namespace trident
