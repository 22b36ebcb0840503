#include "macros/MacroText.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

struct TextCase {
    const char* Text;
    const char* Expected;
};

// n = 3, list = <a,b>, Reg = b, v = <1, 2>, op = db; other words stay.
ParameterMap Parameters() {
    ParameterMap parameters;
    for (const auto& [name, text] :
         {std::pair{"n", "3"}, std::pair{"list", "<a,b>"}, std::pair{"Reg", "b"},
          std::pair{"v", "<1, 2>"}, std::pair{"op", "db"}})
        parameters.Bind(name, text);
    return parameters;
}

class SubstitutionTest : public ::testing::TestWithParam<TextCase> {};

TEST_P(SubstitutionTest, ReplacesWordsAndResolvesJoins) {
    EXPECT_EQ(MacroText::SubstituteParameters(GetParam().Text, Parameters()), GetParam().Expected);
}

INSTANTIATE_TEST_SUITE_P(
    Words, SubstitutionTest,
    ::testing::Values(TextCase{"N+n*(n)", "3+3*(3)"}, TextCase{"reg", "b"},
                      TextCase{"lbl&n", "lbl3"}, TextCase{"n&n&", "33"}, TextCase{"lbln", "lbln"},
                      // Quotes delimit words; a comma does not ("n,x" is one word).
                      TextCase{"'n' \"n x\"", "'3' \"3 x\""}, TextCase{"'n,x'", "'n,x'"},
                      // A bracketed replacement loses its brackets, bracketed text does not.
                      TextCase{"list", "a,b"}, TextCase{"<n>", "<3>"},
                      TextCase{"n\tn n-n/n\\n%n<n=n>n!n#n|n", "3\t3 3-3/3\\3%3<3=3>3!3#3|3"},
                      TextCase{"n.n n$", "n.n n$"},
                      // A single caret vanishes; a caret escapes the next caret or ampersand.
                      TextCase{"2^3", "23"}, TextCase{"1^^2", "1^2"}, TextCase{"a^&b", "a&b"},
                      TextCase{"^x&", "x&"}, TextCase{"^^^&", "^&"}));

class LineTest : public ::testing::TestWithParam<TextCase> {};

TEST_P(LineTest, SubstitutesFieldsButNotTheComment) {
    EXPECT_EQ(MacroText::SubstituteLine(GetParam().Text, Parameters()), GetParam().Expected);
}

INSTANTIATE_TEST_SUITE_P(Lines, LineTest,
                         ::testing::Values(TextCase{"l&n\top\tv,3\t; v", "l3\tdb\t1, 2,3\t; v"},
                                           TextCase{"* v", "* v"}, TextCase{"; v", "; v"},
                                           TextCase{" op 1,,2 ! op v", "\tdb\t1,,2!\tdb\t1, 2"}));

} // namespace
} // namespace trident
