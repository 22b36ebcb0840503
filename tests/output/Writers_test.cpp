#include "output/LoaderWriter.h"
#include "output/RecordWriter.h"

#include <gtest/gtest.h>
#include <sstream>

namespace trident {
namespace {

// Feeds `steps` to `writer`: "@0100" restarts at an address, two hex digits
// write a byte and four a word.
template <typename Writer> Writer& Fed(Writer& writer, const std::string& steps) {
    std::istringstream words(steps);
    for (std::string word; words >> word;) {
        if (word[0] == '@')
            writer.Restart(static_cast<std::uint16_t>(std::stoi(word.substr(1), nullptr, 16)));
        else
            writer.WriteBits(static_cast<std::uint32_t>(std::stoi(word, nullptr, 16)),
                             static_cast<int>(word.size() * 4));
    }
    return writer;
}

enum class Format { Hex, Srec };

// The text of a record writer fed `steps` and finished with `start`, asked
// for one format only.
std::string Records(Format format, const std::string& steps, std::uint16_t start = 0) {
    RecordWriter writer;
    writer.SetEnabled(format == Format::Srec, format == Format::Hex);
    Fed(writer, steps).Finish(start);
    EXPECT_TRUE((format == Format::Hex ? writer.Srec() : writer.Hex()).Empty());
    return std::string((format == Format::Hex ? writer.Hex() : writer.Srec()).Text());
}

std::string Loaded(LoaderStyle style, const std::string& steps) {
    LoaderWriter loader;
    loader.SetEnabled(true);
    loader.SetStyle(style);
    Fed(loader, steps).Finish();
    return std::string(loader.Text().Text());
}

// A restart closes the open record and opens one at the new address; no
// record crosses a sixteen-byte boundary, and a byte ending at one leaves an
// empty record behind it.
TEST(RecordWriter, RecordsRestartsBoundariesAndTheEndRecord) {
    const std::string twenty = "@0108 00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11 12 13";
    const struct {
        Format Kind;
        std::string Steps;
        std::uint16_t Start;
        const char* Text;
    } cases[] = {
        {Format::Hex, "@0100 3E 01 02", 0, ":030100003E0102BB\r\n:0000000000"},
        {Format::Hex, "@0100 AA @0205 BB", 0x0100, ":01010000AA54\r\n:01020500BB3D\r\n:00010000FF"},
        {Format::Hex, twenty + " 14 15 16 17", 0,
         ":080108000001020304050607D3\r\n:1001100008090A0B0C0D0E0F1011121314151617E7\r\n"
         ":00012000DF\r\n:0000000000"},
        {Format::Hex, twenty, 0,
         ":080108000001020304050607D3\r\n:0C01100008090A0B0C0D0E0F1011121341\r\n:0000000000"},
        {Format::Srec, "@0100 3E 01", 0x0100, "S10501003E01BA\r\nS9030100FB"},
        {Format::Srec, "@010F 00", 0, "S104010F00EB\r\nS1030110EB\r\nS9030000FC"},
    };
    for (const auto& c : cases) EXPECT_EQ(Records(c.Kind, c.Steps, c.Start), c.Text) << c.Steps;
}

TEST(IntelHex, WordSplitsAcrossRecordsAndIsColouredAsAWord) {
    RecordWriter writer;
    writer.SetEnabled(false, true);
    Fed(writer, "@000F 1234").Finish(0);
    const ColouredText& hex = writer.Hex();
    EXPECT_EQ(hex.Text(), ":01000F0034BC\r\n:0100100012DD\r\n:0000000000");
    const std::size_t at = hex.Text().find("34BC");
    bool blue = false;
    for (const auto& run : hex.Runs())
        if (run.Start == at) blue = run.Ink == Colour{0, 0, 255};
    EXPECT_TRUE(blue);
}

TEST(RecordWriter, BothFormatsCutTheSameRecordsAndADisabledWriterWritesNothing) {
    const std::string steps = "@0100 3E 01 @010E 1234 56 @0200 FF";
    RecordWriter both;
    both.SetEnabled(true, true);
    Fed(both, steps).Finish(0x0100);
    EXPECT_EQ(both.Hex().Text(), Records(Format::Hex, steps, 0x0100));
    EXPECT_EQ(both.Srec().Text(), Records(Format::Srec, steps, 0x0100));
    RecordWriter neither;
    Fed(neither, steps).Finish(0);
    EXPECT_TRUE(neither.Hex().Empty());
    EXPECT_TRUE(neither.Srec().Empty());
}

TEST(Loader, StylesAndBlocks) {
    EXPECT_EQ(Loaded(LoaderStyle::Ddt, "@0100 3E 01"), "S0100\r\n3E\r\n01\r\n.\r\n");
    EXPECT_EQ(Loaded(LoaderStyle::Sde, "@0100 3E 01"), ".\r\n\r\nE0100\r\n3E\r\n01\r\n.");
    // Bytes before the first org get no opening command.
    EXPECT_EQ(Loaded(LoaderStyle::Ddt, "3E 01"), "3E\r\n01\r\n.\r\n");
    // A jump opens a second block, and a word gives two lines.
    EXPECT_EQ(Loaded(LoaderStyle::Ddt, "@0100 1234 @0200 FF"),
              "S0100\r\n34\r\n12\r\nS0200\r\nFF\r\n.\r\n");
}

} // namespace
} // namespace trident
