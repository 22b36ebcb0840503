#include "assembler/SourceFile.h"
#include "support/TempSource.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

std::vector<std::string> AllLines(SourceFile file) {
    std::vector<std::string> lines;
    while (!file.AtEnd()) lines.emplace_back(file.ReadSourceLine());
    return lines;
}

struct LineEndCase {
    const char* Name;
    std::string Text;
    std::vector<std::string> Lines;
};

class ReadSourceLineTest : public ::testing::TestWithParam<LineEndCase> {};

TEST_P(ReadSourceLineTest, CutsLinesByTheLineEndRule) {
    const LineEndCase& c = GetParam();
    EXPECT_EQ(AllLines(SourceFile::FromText("t", c.Text)), c.Lines);
}

INSTANTIATE_TEST_SUITE_P(
    LineEnds, ReadSourceLineTest,
    ::testing::Values(
        LineEndCase{"CrLf", "a\r\nb\r\n", {"a", "b"}}, LineEndCase{"LfOnly", "a\nb\n", {"a", "b"}},
        // One character after CR is always consumed, whatever it is.
        LineEndCase{"CrAlone", "abc\rdef\rghi", {"abc", "ef", "hi"}},
        LineEndCase{"LfCr", "a\n\rb", {"a", ""}}, LineEndCase{"CrCr", "a\r\rb", {"a", "b"}},
        LineEndCase{"NoFinalLineEnd", "a\nb", {"a", "b"}}, LineEndCase{"CrAtEnd", "a\r", {"a"}},
        LineEndCase{"Empty", "", {}},
        LineEndCase{
            "HighAndNulBytes", std::string("\xFF\x00x\n", 4), {std::string("\xFF\x00x", 3)}}),
    [](const auto& info) { return std::string(info.param.Name); });

TEST(SourceFileTest, CountsLinesAndOpensOnlyRegularFiles) {
    testing::TempDir dir;
    auto file = SourceFile::Open(dir.Write("x.asm", "one\ntwo\n"));
    ASSERT_TRUE(file.has_value());
    file->ReadSourceLine();
    file->ReadSourceLine();
    EXPECT_EQ(file->LineNumber(), 2);
    EXPECT_TRUE(file->AtEnd());
    EXPECT_FALSE(SourceFile::Open(dir.Path() / "missing.asm").has_value());
    EXPECT_FALSE(SourceFile::Open(dir.Path()).has_value());
}

} // namespace
} // namespace trident
