#include "output/ColouredLine.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace trident {
namespace {

constexpr Colour Red{200, 0, 0};
constexpr Colour Blue{0, 0, 200};

// Lines written in place must read exactly as their pieces appended one by
// one: every field length the short copies treat apart (none, one to three,
// four to seven, eight to sixteen, longer), over enough lines that the text
// grows many times.
TEST(ColouredLine, LinesReadAsTheirPiecesWhateverTheirLengths) {
    const std::string source = "abcdefghijklmnopqrstuvwxyz0123456789";
    ColouredText inPlace;
    inPlace.KeepColours(false);
    std::string expected;
    for (int round = 0; round < 40; ++round) {
        for (std::size_t length = 0; length <= 20; ++length) {
            const std::string_view field = std::string_view(source).substr(round % 10, length);
            ColouredLine line(inPlace, field.size() + 3);
            line.Put(field, Red);
            line.Put('\t', Red);
            line.Put("\r\n", Blue);
            expected.append(field).append("\t\r\n");
        }
    }
    EXPECT_EQ(inPlace.Text(), expected);
    EXPECT_TRUE(inPlace.Runs().empty());
}

TEST(ColouredLine, RunsSkipEmptyPiecesAndMergeAdjacentInks) {
    ColouredText text;
    text.Append("ab", Red);
    {
        ColouredLine line(text, 6);
        line.Put("cd", Red); // continues the run before the line
        line.Put("", Blue);  // leaves no run
        line.Put('e', Blue);
        char* digits = line.Take(2, Blue);
        digits[0] = '4';
        digits[1] = '2';
        line.Put('f', Red);
    }
    EXPECT_EQ(text.Text(), "abcde42f");
    const std::vector<ColouredText::Run> runs = text.Runs();
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_EQ(runs[0].Start, 0u);
    EXPECT_EQ(runs[0].Length, 4u);
    EXPECT_EQ(runs[0].Ink, Red);
    EXPECT_EQ(runs[1].Start, 4u);
    EXPECT_EQ(runs[1].Length, 3u);
    EXPECT_EQ(runs[1].Ink, Blue);
    EXPECT_EQ(runs[2].Start, 7u);
    EXPECT_EQ(runs[2].Length, 1u);
}

} // namespace
} // namespace trident
