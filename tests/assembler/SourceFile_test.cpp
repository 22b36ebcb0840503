#include "assembler/SourceFile.h"
#include "support/TempSource.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using Texts = std::vector<std::string>;

TEST(SourceFileTest, CutsLinesByTheLineEndRule) {
    const std::pair<std::string, Texts> cases[] = {
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\nb\n", {"a", "b"}},
        // One character after CR is always consumed, whatever it is.
        {"abc\rdef\rghi", {"abc", "ef", "hi"}},
        {"a\n\rb", {"a", ""}},
        {"a\r\rb", {"a", "b"}},
        {"a\nb", {"a", "b"}},
        {"a\nbb\ncc\rdd\n\ne\rf", {"a", "bb", "cc", "d", "", "e"}},
        {"a\r", {"a"}},
        {"", {}},
        {std::string("\xFF\x00x\n", 4), {std::string("\xFF\x00x", 3)}}};
    for (const auto& [text, lines] : cases) {
        SourceFile file = SourceFile::FromText("t", text);
        // Read twice: where the carriage returns are is remembered between lines.
        for (int round = 0; round < 2; ++round) {
            Texts read;
            while (!file.AtEnd()) read.emplace_back(file.ReadSourceLine());
            EXPECT_EQ(read, lines) << "round " << round;
            file.Rewind();
        }
    }
}

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
