#include "expression/ErrorList.h"
#include "expression/ValueText.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using test::Drain;
using test::Errors;

// Entries are taken oldest first; the extra string may hold any printable
// text, "~" included, and is cut at a DEL. The count is bounded by its type.
TEST(ErrorList, EntriesAreTakenOldestFirstWithTheirExtraStrings) {
    ErrorList errors;
    errors.AddError(EvalError::InvalidDecimalDigit, "G");
    errors.AddError(EvalError::ToUnsigned8, "300");
    errors.AddError(EvalError::NonExistentVariable, "loop");
    errors.AddError(EvalError::InvalidOperator, "a~b\x7f");
    errors.AddError(EvalError::MissingOperand);
    EXPECT_EQ(errors.ErrorCount(), 5);
    EXPECT_EQ(Drain(errors), (Errors{{17, "G"}, {-3, "300"}, {26, "loop"}, {4, "a~b"}, {8, ""}}));
    EXPECT_EQ(errors.GetNextError(), 0);

    errors.AddError(EvalError::InvalidNumber, "x");
    errors.ClearAllErrors();
    EXPECT_EQ(errors.ErrorCount(), 0);
    for (int i = 0; i < 40000; ++i) errors.AddError(EvalError::InvalidNumber);
    EXPECT_EQ(errors.ErrorCount(), 32767);
}

TEST(ErrorList, MessagesByCode) {
    const std::pair<int, const char*> cases[] = {
        {-13, "'^' is the power operator; xor is exclusive or"},
        {-12, "Non Standard Quote"},
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
        {28, "String longer than 65535 characters"},
        {30, "Implementation Error"},
    };
    for (const auto& [code, message] : cases) {
        EXPECT_EQ(ErrorList::ErrorString(code), message) << code;
    }
    for (const int code : {-14, -11, -1, 1, 2, 29, 31}) {
        EXPECT_EQ(ErrorList::ErrorString(code), "Unknown Error") << code;
    }
}

} // namespace
} // namespace trident
