#include "support/ListingBody.h"
#include "support/RunTool.h"
#include "support/TempSource.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::Quoted;
using testing::ReadWholeFile;
using testing::RunTool;

class BatchOutputsTest : public ::testing::Test {
  protected:
    std::filesystem::path Source(std::string_view text, std::string_view name = "prog.asm") {
        return dir.Write(name, text);
    }
    std::filesystem::path Out(std::string_view name) const { return dir.Path() / name; }
    testing::ToolResult Run(const std::string& arguments) { return RunTool(arguments, dir.Path()); }

    testing::TempDir dir;
};

constexpr std::string_view Program = "start: mvi a,5\n jmp start\n";

TEST_F(BatchOutputsTest, EachOutputIsWrittenWhereAsked) {
    const auto source = Source(Program);
    const auto result =
        Run(Quoted(source) + " --hex " + Quoted(Out("p.hex")) + " --srec " + Quoted(Out("p.mx")) +
            " --loader " + Quoted(Out("p.txt")) + " --bin " + Quoted(Out("p.bin")));
    ASSERT_EQ(result.Exit, 0) << result.Err;
    EXPECT_EQ(ReadWholeFile(Out("p.hex")), ":050000003E05C30000F5\r\n:0000000000");
    EXPECT_EQ(ReadWholeFile(Out("p.mx")), "S10800003E05C30000F1\r\nS9030000FC");
    EXPECT_EQ(ReadWholeFile(Out("p.txt")), "3E\r\n05\r\nC3\r\n00\r\n00\r\n.\r\n");
    EXPECT_EQ(ReadWholeFile(Out("p.bin")), std::string("\x3E\x05\xC3\x00\x00", 5));
    EXPECT_FALSE(std::filesystem::exists(Out("prog.ls")))
        << "the listing is written by default only when no output is asked for";
}

TEST_F(BatchOutputsTest, WithoutOutputOptionsTheListingGoesBesideTheSource) {
    const auto source = Source(Program, "prog.v2.asm");
    ASSERT_EQ(Run(Quoted(source)).Exit, 0);
    EXPECT_EQ(testing::StatementLines(ReadWholeFile(Out("prog.ls"))).substr(0, 10), "0000\t3E05\t");
}

TEST_F(BatchOutputsTest, LoaderStyleAndRtf) {
    const auto source = Source(" nop\n");
    ASSERT_EQ(Run(Quoted(source) + " --loader-style SDE --loader " + Quoted(Out("l.txt"))).Exit, 0);
    EXPECT_EQ(ReadWholeFile(Out("l.txt")), "00\r\n.");
    ASSERT_EQ(Run(Quoted(source) + " --rtf --listing " + Quoted(Out("l.rtf"))).Exit, 0);
    EXPECT_EQ(ReadWholeFile(Out("l.rtf")).rfind("{\\rtf1", 0), 0u);
    EXPECT_EQ(Run(Quoted(source) + " --loader-style zzz").Exit, 2);
}

TEST_F(BatchOutputsTest, SymbolFileAssemblesBackToTheSameValues) {
    const auto source = Source("five equ 5\nstart: nop\nlater equ start+1234h\n");
    ASSERT_EQ(Run(Quoted(source) + " --symbols " + Quoted(Out("p.sym"))).Exit, 0);
    const std::string symbols = ReadWholeFile(Out("p.sym"));
    EXPECT_EQ(symbols, "five EQU 00005H\r\nlater EQU 01234H\r\nstart EQU 00000H\r\n");
    const auto again = Run(Quoted(Out("p.sym")) + " --symbols " + Quoted(Out("again.sym")));
    EXPECT_EQ(again.Exit, 0) << again.Err;
    EXPECT_EQ(ReadWholeFile(Out("again.sym")), symbols);
}

struct OptionCase {
    const char* Name;
    const char* Source;
    const char* Option;
    const char* Without;
    const char* With;
};

class BatchOptionTest : public BatchOutputsTest,
                        public ::testing::WithParamInterface<OptionCase> {};

// Each window option box has a flag; the flag changes what the listing says.
TEST_P(BatchOptionTest, FlagChangesTheListing) {
    const OptionCase& c = GetParam();
    const auto source = Source(c.Source);
    const auto plain = Run(Quoted(source) + " --listing " + Quoted(Out("a.ls")));
    const auto flagged = Run(Quoted(source) + " " + c.Option + " --listing " + Quoted(Out("b.ls")));
    EXPECT_NE(ReadWholeFile(Out("a.ls")).find(c.Without), std::string::npos) << plain.Err;
    EXPECT_NE(ReadWholeFile(Out("b.ls")).find(c.With), std::string::npos) << flagged.Err;
}

INSTANTIATE_TEST_SUITE_P(
    Flags, BatchOptionTest,
    ::testing::Values(OptionCase{"BigEndian", " lxi h,1234h\n", "--big-endian", "\t213412\t",
                                 "\t211234\t"},
                      OptionCase{"NoZ80Warnings", " exx\n", "--no-z80-warnings",
                                 "~Z80 Warning ~ exx", "0000\tD9\t"},
                      OptionCase{"Z180", " slp\n", "--z180", "~Z180 Warning ~ slp", "0000\tED76\t"},
                      OptionCase{"CaseSensitive", "Here: jmp here\n", "--case-sensitive",
                                 "0000\tC30000", "~Non Existant Variable ~ here"},
                      OptionCase{"StripParity", " \xEE\xEF\xF0\n", "--strip-parity",
                                 "~Invalid Directive", "\tnop\t"},
                      OptionCase{"ListAllPasses", "x: jmp y\ny: nop\n", "--list-all-passes",
                                 "Statistics", "~Non Existant Variable ~ y"}),
    [](const auto& info) { return std::string(info.param.Name); });

TEST_F(BatchOutputsTest, QuietPrintsOnlyDiagnostics) {
    const auto source = Source(" frob\n");
    const auto result = Run(Quoted(source) + " --quiet --listing " + Quoted(Out("q.ls")));
    EXPECT_EQ(result.Exit, 1);
    EXPECT_EQ(result.Out, "");
    EXPECT_NE(result.Err.find(": error: Invalid Directive, Operation or Macro ~ frob"),
              std::string::npos);
}

TEST_F(BatchOutputsTest, FailedSaveKeepsTheExistingFile) {
    const auto source = Source(Program);
    const auto target = dir.Write("keep.hex", "precious");
    // A directory where the save's temporary file would go makes the write
    // fail, for every user.
    std::filesystem::create_directory(Out("keep.hex.tmp~"));
    const auto result = Run(Quoted(source) + " --hex " + Quoted(target));
    EXPECT_EQ(result.Exit, 2);
    EXPECT_NE(result.Err.find("cannot write"), std::string::npos);
    EXPECT_EQ(ReadWholeFile(target), "precious");
}

TEST_F(BatchOutputsTest, UnreadableOpcodeTableExitsTwoWithTheLoadMessage) {
    const auto source = Source(Program);
    const auto result = Run(Quoted(source) + " --optable " + Quoted(Out("none.def")));
    EXPECT_EQ(result.Exit, 2);
    EXPECT_NE(result.Err.find("Unable to read OpTable.Def to initialize Assembler "),
              std::string::npos)
        << result.Err;
}

} // namespace
} // namespace trident
