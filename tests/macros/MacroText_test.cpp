#include "macros/MacroText.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

// n = 3, list = <a,b>, Reg = b, v = <1, 2>, op = db; other words stay.
ParameterMap Parameters() {
    ParameterMap parameters;
    for (const auto& [name, text] :
         {std::pair{"n", "3"}, std::pair{"list", "<a,b>"}, std::pair{"Reg", "b"},
          std::pair{"v", "<1, 2>"}, std::pair{"op", "db"}})
        parameters.Bind(name, text);
    return parameters;
}

// Quotes delimit words; a comma does not ("n,x" is one word). A bracketed
// replacement loses its brackets, bracketed text does not. A single caret
// vanishes; a caret escapes the next caret or ampersand.
TEST(MacroText, SubstituteParametersReplacesWordsAndResolvesJoins) {
    const std::pair<const char*, const char*> cases[] = {
        {"N+n*(n)", "3+3*(3)"}, {"reg", "b"},
        {"lbl&n", "lbl3"},      {"n&n&", "33"},
        {"lbln", "lbln"},       {"'n' \"n x\"", "'3' \"3 x\""},
        {"'n,x'", "'n,x'"},     {"list", "a,b"},
        {"<n>", "<3>"},         {"n\tn n-n/n\\n%n<n=n>n!n#n|n", "3\t3 3-3/3\\3%3<3=3>3!3#3|3"},
        {"n.n n$", "n.n n$"},   {"2^3", "23"},
        {"1^^2", "1^2"},        {"a^&b", "a&b"},
        {"^x&", "x&"},          {"^^^&", "^&"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(MacroText::SubstituteParameters(text, Parameters()), expected) << text;
    }
}

TEST(MacroText, SubstituteLineSubstitutesFieldsButNotTheComment) {
    const std::pair<const char*, const char*> cases[] = {
        {"l&n\top\tv,3\t; v", "l3\tdb\t1, 2,3\t; v"},
        {"* v", "* v"},
        {"; v", "; v"},
        {" op 1,,2 ! op v", "\tdb\t1,,2!\tdb\t1, 2"},
    };
    ScannedLine scratch;
    std::string line = "left from the line before";
    for (const auto& [text, expected] : cases) {
        MacroText::SubstituteLine(text, Parameters(), Dialect::Standard, scratch, line, 1000);
        EXPECT_EQ(line, expected) << text;
    }
}

} // namespace
} // namespace trident
