#include "output/RtfText.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

TEST(RtfText, ColourTableEscapesAndParagraphs) {
    ColouredText text;
    text.Append("a\\b{c}\t", Colour{200, 0, 0});
    text.Append("\xE9\r", Colour{0, 0, 0});
    text.Append("\nnext", Colour{200, 0, 0});
    const std::string rtf = ToRtf(text, "Courier New", 10);
    EXPECT_EQ(rtf.rfind("{\\rtf1", 0), 0u);
    EXPECT_NE(rtf.find("{\\colortbl ;\\red200\\green0\\blue0;\\red0\\green0\\blue0;}"),
              std::string::npos)
        << "each colour once, in order of first use";
    EXPECT_NE(rtf.find("\\cf1 a\\\\b\\{c\\}\\tab \\cf2 \\'e9\\par\n\\cf1 next}"), std::string::npos)
        << rtf;
    EXPECT_NE(rtf.find("Courier New"), std::string::npos);
    EXPECT_EQ(std::count(rtf.begin(), rtf.end(), '{'), std::count(rtf.begin(), rtf.end(), '}'))
        << "escaped braces must not unbalance the document";
}

} // namespace
} // namespace trident
