// The batch tool's output options.
#include "e2e/ToolDir.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

constexpr std::string_view Program = "start: mvi a,5\n jmp start\n";

TEST(BatchOutputs, EachOutputIsWrittenWhereAsked) {
    testing::ToolDir dir;
    dir.Write("prog.asm", Program);
    const auto result =
        dir.Run("{prog.asm} --hex {p.hex} --srec {p.mx} --loader {p.txt} --bin {p.bin}");
    ASSERT_EQ(result.Exit, 0) << result.Err;
    EXPECT_EQ(dir.Read("p.hex"), ":050000003E05C30000F5\r\n:0000000000");
    EXPECT_EQ(dir.Read("p.mx"), "S10800003E05C30000F1\r\nS9030000FC");
    EXPECT_EQ(dir.Read("p.txt"), "3E\r\n05\r\nC3\r\n00\r\n00\r\n.\r\n");
    EXPECT_EQ(dir.Read("p.bin"), std::string("\x3E\x05\xC3\x00\x00", 5));
    EXPECT_FALSE(std::filesystem::exists(dir.At("prog.ls")))
        << "the listing is written by default only when no output is asked for";
}

TEST(BatchOutputs, WithoutOutputOptionsTheListingGoesBesideTheSource) {
    testing::ToolDir dir;
    dir.Write("prog.v2.asm", Program);
    ASSERT_EQ(dir.Run("{prog.v2.asm}").Exit, 0);
    EXPECT_EQ(dir.Listed("prog.ls").substr(0, 10), "0000\t3E05\t");
}

TEST(BatchOutputs, LoaderStyleAndRtf) {
    testing::ToolDir dir;
    dir.Write("prog.asm", " nop\n");
    ASSERT_EQ(dir.Run("{prog.asm} --loader-style SDE --loader {l.txt}").Exit, 0);
    EXPECT_EQ(dir.Read("l.txt"), "00\r\n.");
    ASSERT_EQ(dir.Run("{prog.asm} --rtf --listing {l.rtf}").Exit, 0);
    EXPECT_EQ(dir.Read("l.rtf").rfind("{\\rtf1", 0), 0u);
    EXPECT_EQ(dir.Run("{prog.asm} --loader-style zzz").Exit, 2);
}

TEST(BatchOutputs, SymbolFileAssemblesBackToTheSameValues) {
    testing::ToolDir dir;
    dir.Write("prog.asm", "five equ 5\nstart: nop\nlater equ start+1234h\n");
    ASSERT_EQ(dir.Run("{prog.asm} --symbols {p.sym}").Exit, 0);
    const std::string symbols = dir.Read("p.sym");
    EXPECT_EQ(symbols, "five EQU 00005H\r\nlater EQU 01234H\r\nstart EQU 00000H\r\n");
    const auto again = dir.Run("{p.sym} --symbols {again.sym}");
    EXPECT_EQ(again.Exit, 0) << again.Err;
    EXPECT_EQ(dir.Read("again.sym"), symbols);
}

// Each window option box has a flag; the flag changes what the listing says.
TEST(BatchOutputs, EachFlagChangesTheListing) {
    // clang-format off
    const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
        {" lxi h,1234h\n", "--big-endian", "\t213412\t", "\t211234\t"},
        {" exx\n", "--no-z80-warnings", "~Z80 Warning ~ exx", "0000\tD9\t"},
        {" slp\n", "--z180", "~Z180 Warning ~ slp", "0000\tED76\t"},
        {"Here: jmp here\n", "--case-sensitive", "0000\tC30000", "~Non Existant Variable ~ here"},
        {" \xEE\xEF\xF0\n", "--strip-parity", "~Invalid Directive", "\tnop\t"},
        {"x: jmp y\ny: nop\n", "--list-all-passes", "Statistics", "~Non Existant Variable ~ y"}};
    // clang-format on
    for (const auto& [source, flag, without, with] : cases) {
        SCOPED_TRACE(flag);
        testing::ToolDir dir;
        dir.Write("prog.asm", source);
        const auto plain = dir.Run("{prog.asm} --listing {a.ls}");
        const auto flagged = dir.Run("{prog.asm} " + std::string(flag) + " --listing {b.ls}");
        EXPECT_NE(dir.Read("a.ls").find(without), std::string::npos) << plain.Err;
        EXPECT_NE(dir.Read("b.ls").find(with), std::string::npos) << flagged.Err;
    }
}

} // namespace
} // namespace trident
