#include "assembler/Assembly.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

constexpr auto Either = Signedness::Either;
constexpr auto Signed = Signedness::Signed;
constexpr auto Unsigned = Signedness::Unsigned;

TEST(EvaluateOperand, AppliesTheRangeRulesOfTheWidth) {
    struct Case {
        const char* Text;
        int Width;
        Signedness Sign;
        std::int32_t Value;
        const char* Diagnostic; // "" when none
    };
    // clang-format off
    const Case cases[] = {
        {"7", 3, Either, 7, ""}, {"8", 3, Either, 0, "Value out of Range"},
        {"-1", 3, Either, 7, "Value out of Range"}, {"255", 8, Either, 255, ""},
        {"256", 8, Either, 0, "Value out of Range"}, {"-128", 8, Either, 128, ""},
        {"-129", 8, Either, 127, "Value out of Range"},
        {"200", 8, Signed, -56, "Signed Value out of Range"}, {"-3", 8, Signed, -3, ""},
        {"-1", 8, Unsigned, 255, "Unsigned Value out of Range"},
        {"3.5", 8, Either, 3, "Value Truncated to Integer"},
        {"65535", 16, Either, 65535, ""}, {"-32768", 16, Either, 32768, ""},
        {"65536", 16, Either, 0, "Value out of Range"},
        {"40000", 16, Signed, -25536, "Signed Value out of Range"},
        {"-2", 16, Unsigned, 65534, "Unsigned Value out of Range"},
        {"'AB'", 16, Either, 0x4142, ""}, {"\"A\"", 8, Either, 65, ""},
        // Beyond the 64-bit integers the low bits are still those of the number.
        {"9223372036854777856", 16, Either, 0x0800, "Value out of Range"},
        {"-9223372036854777856", 16, Either, 0xF800, "Value out of Range"},
        {"1e300", 8, Either, 0, "Value out of Range"}};
    // clang-format on
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Text);
        Assembly run;
        run.State().ListThisLine = true;
        const Value value = run.EvaluateOperand(c.Text, c.Width, c.Sign);
        ASSERT_TRUE(std::holds_alternative<std::int32_t>(value));
        EXPECT_EQ(std::get<std::int32_t>(value), c.Value);
        const auto& diagnostics = run.GetListing().Diagnostics();
        if (std::string(c.Diagnostic).empty()) {
            EXPECT_TRUE(diagnostics.empty()) << diagnostics.front().Message;
            continue;
        }
        ASSERT_EQ(diagnostics.size(), 1u);
        EXPECT_EQ(diagnostics[0].Message, c.Diagnostic);
        EXPECT_NE(diagnostics[0].Detail.find(c.Text), std::string::npos);
    }
}

TEST(EvaluateOperand, UnresolvedNamesStayEmptyAndQuietOutsideTheFinalPass) {
    Assembly run;
    run.State().ListThisLine = false;
    EXPECT_TRUE(IsEmpty(run.EvaluateOperand("later", 16)));
    EXPECT_TRUE(run.GetListing().Diagnostics().empty());
    run.State().ListThisLine = true;
    EXPECT_TRUE(IsEmpty(run.EvaluateOperand("later", 16)));
    ASSERT_EQ(run.GetListing().Diagnostics().size(), 1u);
    EXPECT_EQ(run.GetListing().Diagnostics()[0].Message, "Non Existant Variable");
    EXPECT_EQ(run.GetListing().Diagnostics()[0].Detail, "later");
}

TEST(EvaluateOperand, ConversionWarningsBecomeWarningLines) {
    Assembly run;
    run.State().ListThisLine = true;
    run.EvaluateOperand("u8(300)", 8);
    ASSERT_FALSE(run.GetListing().Diagnostics().empty());
    EXPECT_EQ(run.GetListing().Diagnostics()[0].Kind, Severity::Warning);
    EXPECT_EQ(run.GetListing().Diagnostics()[0].Message, "Conversion to Unsigned 8 bit integer");
}

} // namespace
} // namespace trident
