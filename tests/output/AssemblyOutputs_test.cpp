#include "assembler/Assembly.h"
#include "support/TempSource.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

class AssemblyOutputsTest : public ::testing::Test {
  protected:
    AssemblyOutputsTest() { run.Options().OpcodeTableFile = TRIDENT_BIN_DIR "/OpTable.def"; }
    void Assemble(std::string_view text) {
        ASSERT_EQ(run.Assemble(dir.Write("prog.asm", text)), Assembly::Outcome::Completed);
    }
    testing::TempDir dir;
    Assembly run;
};

TEST_F(AssemblyOutputsTest, FinalPassFillsEveryOutputOnce) {
    Assemble("start: mvi a,5\n jmp start\n");
    EXPECT_EQ(run.Outputs().Hex().Text(), ":050000003E05C30000F5\r\n:0000000000");
    EXPECT_EQ(run.Outputs().Srec().Text(), "S10800003E05C30000F1\r\nS9030000FC");
    EXPECT_EQ(run.Outputs().Loader().Text(), "3E\r\n05\r\nC3\r\n00\r\n00\r\n.\r\n");
    EXPECT_EQ(run.BinaryImage(), std::string("\x3E\x05\xC3\x00\x00", 5));
}

TEST_F(AssemblyOutputsTest, LoaderStyleIsARunOption) {
    run.Options().Loader = LoaderStyle::Sde;
    Assemble(" nop\n");
    EXPECT_EQ(run.Outputs().Loader().Text(), "00\r\n.");
}

TEST_F(AssemblyOutputsTest, NothingEmittedGivesAnEmptyImageAndEmptyRecords) {
    Assemble("; nothing\n");
    EXPECT_EQ(run.BinaryImage(), "");
    EXPECT_EQ(run.Outputs().Hex().Text(), ":00000000\x30\x30\r\n:0000000000");
}

TEST_F(AssemblyOutputsTest, ReportsFollowTheFinalPassWithTheCrossReference) {
    Assemble("five equ 5\nstart: mvi a,five\n jmp start\nidle: nop\n");
    const std::string& listing = run.GetListing().Text().Text();
    const std::size_t statistics = listing.find("\r\nStatistics\r\n");
    ASSERT_NE(statistics, std::string::npos);
    EXPECT_EQ(listing.find("Statistics", statistics + 4), std::string::npos)
        << "one set of reports, after the final pass only";
    const auto rows = run.SymbolReport();
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].Name, "five");
    EXPECT_EQ(rows[0].Kind, "equ");
    EXPECT_EQ(rows[0].DefinedAt.Line, 1);
    ASSERT_EQ(rows[0].References.size(), 1u);
    EXPECT_EQ(rows[0].References[0].Line, 2);
    EXPECT_EQ(rows[1].Name, "idle");
    EXPECT_TRUE(rows[1].References.empty());
    EXPECT_EQ(rows[2].Name, "start");
    EXPECT_EQ(rows[2].Kind, "label");
}

} // namespace
} // namespace trident
