// The outputs of a whole assembly; what each output holds for a program is
// checked through the batch tool (e2e/BatchOutputs_test.cpp).
#include "encoder/EncoderRun.h"

#include <array>
#include <gtest/gtest.h>

namespace trident {
namespace {

TEST(AssemblyOutputs, NothingEmittedGivesAnEmptyImageAndEmptyRecords) {
    testing::EncoderRun run;
    ASSERT_EQ(run.Assemble("; nothing\n"), Assembly::Outcome::Completed);
    EXPECT_EQ(run.Run().BinaryImage(), "");
    EXPECT_EQ(run.Run().Outputs().Hex().Text(), ":00000000\x30\x30\r\n:0000000000");
}

TEST(AssemblyOutputs, OnlyTheSelectedObjectTextsAreBuilt) {
    const ObjectTexts selections[] = {{.Srec = false, .Hex = true, .Loader = false},
                                      {.Srec = true, .Hex = false, .Loader = true}};
    for (const ObjectTexts& wanted : selections) {
        testing::EncoderRun run;
        run.Options().Objects = wanted;
        ASSERT_EQ(run.Assemble(" org 100h\n mvi a,1\n"), Assembly::Outcome::Completed);
        const ObjectOutputs& outputs = run.Run().Outputs();
        EXPECT_EQ(outputs.Srec().Empty(), !wanted.Srec);
        EXPECT_EQ(outputs.Hex().Empty(), !wanted.Hex);
        EXPECT_EQ(outputs.Loader().Empty(), !wanted.Loader);
        if (wanted.Hex) {
            EXPECT_EQ(outputs.Hex().Text(), ":020100003E01BE\r\n:0000000000");
        }
    }
}

// Plain text is the same with or without its colours.
TEST(AssemblyOutputs, TextsWithoutColourRunsHoldTheSameText) {
    const std::string source = " org 100h\nhere: mvi a,1 ; one\n jmp here\n";
    testing::EncoderRun coloured;
    testing::EncoderRun plain;
    plain.Options().ColourRuns = false;
    ASSERT_EQ(coloured.Assemble(source), Assembly::Outcome::Completed);
    ASSERT_EQ(plain.Assemble(source), Assembly::Outcome::Completed);
    const auto texts = [](testing::EncoderRun& run) {
        const ObjectOutputs& outputs = run.Run().Outputs();
        return std::array<const ColouredText*, 4>{&run.Run().GetListing().Text(), &outputs.Hex(),
                                                  &outputs.Srec(), &outputs.Loader()};
    };
    const auto withColours = texts(coloured);
    const auto withoutColours = texts(plain);
    for (std::size_t i = 0; i < withColours.size(); ++i) {
        EXPECT_EQ(withoutColours[i]->Text(), withColours[i]->Text()) << i;
        EXPECT_FALSE(withColours[i]->Runs().empty()) << i;
        EXPECT_TRUE(withoutColours[i]->Runs().empty()) << i;
    }
}

TEST(AssemblyOutputs, ReportsFollowTheFinalPassWithTheCrossReference) {
    testing::EncoderRun run;
    ASSERT_EQ(run.Assemble("five equ 5\nstart: mvi a,five\n jmp start\nidle: nop\n"),
              Assembly::Outcome::Completed);
    const std::string_view listing = run.Run().GetListing().Text().Text();
    const std::size_t statistics = listing.find("\r\nStatistics\r\n");
    ASSERT_NE(statistics, std::string::npos);
    EXPECT_EQ(listing.find("Statistics", statistics + 4), std::string::npos)
        << "one set of reports, after the final pass only";
    const auto rows = run.Run().SymbolReport();
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
