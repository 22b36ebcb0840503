#include "e2e/ToolDir.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

TEST(SymbolsAndConditionalsTool, ValueColumnAndDuplicateSymbol) {
    testing::ToolDir dir;
    const auto source = dir.Write("sym.asm", "size equ 10h\n if size-15\nsize equ 20h\n endif\n");
    const auto result = dir.Run("{sym.asm} --listing {sym.ls}");
    EXPECT_EQ(result.Exit, 1);
    EXPECT_EQ(result.Err, source.string() + ":3: error: Symbol Already Defined ~ size\n");
    EXPECT_EQ(result.Out, "1 errors, 0 warnings\n");
    EXPECT_EQ(dir.Listed("sym.ls"), "0000\t0010  \tsize\tequ\t10h\t\t\r\n"
                                    "0000\t0001  \t\tif\tsize-15\t\t\r\n"
                                    "~Symbol Already Defined ~ size\r\n"
                                    "0000\t0020  \tsize\tequ\t20h\t\t\r\n"
                                    "0000\t\t\tendif\t\t\t\r\n");
}

} // namespace
} // namespace trident
