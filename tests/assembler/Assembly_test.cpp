#include "SourceRun.h"
#include "assembler/ListingColours.h"
#include "source/RunFailure.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::SourceRun;
using Passes = std::vector<int>;

TEST(AssemblyRun, MissingSourceDoesNothing) {
    SourceRun run;
    EXPECT_EQ(run.Run().Assemble(testing::TempDir().Path() / "nosuch.asm"),
              Assembly::Outcome::NoSource);
    EXPECT_EQ(run.Run().Assemble(""), Assembly::Outcome::NoSource);
    EXPECT_TRUE(run.Passes().empty());
}

// A new label in pass 1 asks for one more pass to settle, however many
// statements of the line bring one.
TEST(AssemblyRun, ResolvingPassesThenTheFinalPass) {
    const std::pair<const char*, Passes> cases[] = {{"", {1, 0}},
                                                    {"; nothing\n* at all\n\n", {1, 0}},
                                                    {"start:\n", {1, 2, 0}},
                                                    {"a: ! b: ! c:\n", {1, 2, 0}}};
    for (const auto& [text, passes] : cases) {
        SourceRun run(text);
        EXPECT_EQ(run.Outcome(), Assembly::Outcome::Completed) << text;
        EXPECT_EQ(run.Passes(), passes) << text;
    }
}

TEST(AssemblyRun, EmptySourceEmitsNothing) {
    SourceRun run("");
    EXPECT_EQ(run.Run().State().LowestAddress, 65535);
    EXPECT_EQ(run.Run().State().HighestAddress, 0);
    EXPECT_EQ(run.Run().State().HighestPass, 0);
    EXPECT_EQ(run.ListingText(), "");
}

TEST(AssemblyRun, LabelNamesItsAddressAndDollarIsDefined) {
    SourceRun run("here:\n");
    EXPECT_EQ(run.Symbol("here"), 0);
    EXPECT_EQ(run.Run().Symbols().Pass(run.Run().Symbols().SlotOf("here")), 0);
    EXPECT_TRUE(run.Defined("$"));
}

TEST(AssemblyRun, DiagnosticsOnlyInTheFinalPass) {
    SourceRun run("x:\n  bogus 1,2\n");
    EXPECT_EQ(run.Passes(), (Passes{1, 2, 0}));
    EXPECT_EQ(run.ListingText(), "0000\t\tx\t\t\t\t\r\n"
                                 "~Invalid Directive, Operation or Macro ~ bogus\r\n"
                                 "0000\t\t\tbogus\t1,2\t\t\r\n");
    EXPECT_EQ(run.Run().State().ErrorCount, 1);
    EXPECT_EQ(run.ShownErrors(), 1);
    ASSERT_EQ(run.Diagnostics().size(), 1u);
    EXPECT_EQ(run.Diagnostics()[0].Where.File, run.SourcePath().string());
    EXPECT_EQ(run.Diagnostics()[0].Where.Line, 2);
    EXPECT_EQ(run.Diagnostics()[0].Detail, "bogus");
    // The diagnostic line is one run of the error colour.
    const std::string_view line = "~Invalid Directive, Operation or Macro ~ bogus\r\n";
    const auto& runs = run.Run().GetListing().Text().Runs();
    EXPECT_TRUE(std::ranges::any_of(runs, [&](const ColouredText::Run& r) {
        return r.Ink == ListingColours::Error && r.Length == line.size() &&
               run.ListingText().substr(r.Start, r.Length) == line;
    }));
}

TEST(AssemblyRun, ListAllPassesListsAndReportsEveryPass) {
    SourceRun run;
    run.Options().ListAllPasses = true;
    run.Assemble("x:\n  bogus\n");
    EXPECT_EQ(run.Diagnostics().size(), 3u);
    EXPECT_EQ(run.Run().State().ErrorCount, 1) << "counts describe the last pass";
}

TEST(AssemblyRun, StopDuringPassOneLeavesNoListing) {
    SourceRun run;
    run.StopAtYield(1);
    EXPECT_EQ(run.Assemble("a:\nb:\nc:\n"), Assembly::Outcome::Stopped);
    EXPECT_EQ(run.Passes(), Passes{1});
    EXPECT_EQ(run.Run().State().TotalLines, 1) << "the pass ends at the next statement boundary";
    EXPECT_EQ(run.ListingText(), "");
}

TEST(AssemblyRun, CountersDescribeTheFinalPass) {
    SourceRun run("a:\n! ! \n; c\n");
    EXPECT_EQ(run.Run().State().LinesReadFromFile, 3);
    EXPECT_EQ(run.Run().State().TotalLines, 5);
}

// Later passes reuse the main file's lines as the first pass read them; a
// new assembly must read the file afresh, with the options it now has.
TEST(AssemblyRun, EachAssemblyReadsTheSourceAgain) {
    SourceRun run(" db 1\n");
    const RunState& state = run.Run().State();
    EXPECT_EQ(state.ObjectImage[0], 1);
    run.Assemble(" db 2\n db 3\n");
    EXPECT_EQ(state.ObjectImage[0], 2);
    EXPECT_EQ(state.ObjectImage[1], 3);

    // "d" with bit 7 set: an unknown word unless the parity bit is stripped.
    run.Assemble(" \xE4\xE2 4\n");
    EXPECT_EQ(state.ErrorCount, 1);
    run.Options().StripParity = true;
    run.Run().Assemble(run.SourcePath());
    EXPECT_EQ(state.ErrorCount, 0);
    EXPECT_EQ(state.ObjectImage[0], 4);
}

TEST(AssemblyRun, TwoRunsInOneProcessShareNothing) {
    SourceRun first, second;
    first.Options().CaseSensitiveSymbols = true;
    EXPECT_EQ(first.Assemble("Alpha:\n"), Assembly::Outcome::Completed);
    EXPECT_EQ(second.Assemble("beta:\n"), Assembly::Outcome::Completed);
    EXPECT_TRUE(first.Defined("Alpha"));
    EXPECT_FALSE(first.Defined("alpha"));
    EXPECT_FALSE(second.Defined("Alpha"));
}

// An unlisted statement gets no text, but its bytes all the same.
TEST(EmitValue, StoresLowByteFirstAndTextFollowsTheByteOrderOption) {
    struct Case {
        Value In;
        int Width;
        bool BigEndian, Listed;
        const char* Text;
        std::vector<std::uint8_t> Bytes;
    };
    const Case cases[] = {
        {Value{std::int32_t{0x1234}}, 16, false, true, "3412", {0x34, 0x12}},
        {Value{std::int32_t{0x1234}}, 16, true, true, "1234", {0x34, 0x12}},
        {Value{std::int32_t{0x1234}}, 16, false, false, "", {0x34, 0x12}},
        {Value{std::int32_t{-1}}, 8, false, true, "FF", {0xFF}},
        {Value{std::int32_t{0x1FF}}, 8, false, true, "FF", {0xFF}},
        {Value{-2.0}, 16, false, true, "FEFF", {0xFE, 0xFF}},
        {Value{}, 16, false, true, "0000", {0x00, 0x00}},
    };
    for (const Case& c : cases) {
        Assembly run;
        run.Options().BigEndianCode = c.BigEndian;
        run.State().LocationCounter = 0x100;
        run.State().ListThisLine = c.Listed;
        EXPECT_EQ(run.EmitValue(c.In, c.Width), c.Text);
        const auto& image = run.State().ObjectImage;
        const int size = static_cast<int>(c.Bytes.size());
        EXPECT_EQ(std::vector<std::uint8_t>(image.begin() + 0x100, image.begin() + 0x100 + size),
                  c.Bytes);
        EXPECT_EQ(run.State().LowestAddress, 0x100);
        EXPECT_EQ(run.State().HighestAddress, 0x100 + size - 1);
        EXPECT_EQ(run.State().LocationCounter, 0x100 + size);
    }
}

TEST(EmitValue, WholeBitsOfEveryKindOfValue) {
    const std::pair<Value, std::uint32_t> cases[] = {{Value{std::int32_t{-1}}, 0xFFFFFFFFu},
                                                     {Value{std::int16_t{0x1234}}, 0x1234u},
                                                     {Value{-2.7}, 0xFFFFFFFEu},
                                                     {Value{65537.9}, 0x10001u},
                                                     {Value{1e30}, 0u},
                                                     {Value{4294967296.0 * 1e6 + 5.0}, 5u},
                                                     {Value{std::nan("")}, 0u},
                                                     {Value{}, 0u},
                                                     {Value{std::string("AB")}, 0u}};
    for (const auto& [in, bits] : cases) EXPECT_EQ(WholeBits(in), bits);
}

TEST(EmitValue, AnAddressPastFFFFFailsTheRun) {
    Assembly run;
    run.State().ListThisLine = true;
    run.State().LocationCounter = 0xFFFF;
    EXPECT_EQ(run.EmitValue(Value{std::int32_t{1}}, 8), "01");
    EXPECT_THROW(run.EmitValue(Value{std::int32_t{1}}, 8), RunFailure);
    run.State().LocationCounter = 0xFFFF;
    EXPECT_THROW(run.EmitValue(Value{std::int32_t{1}}, 16), RunFailure)
        << "the high byte of a word would land past FFFF";
}

} // namespace
} // namespace trident
