#include "output/IntelHexWriter.h"
#include "output/LoaderWriter.h"
#include "output/SrecWriter.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

Value Byte(int value) {
    return Value{std::int32_t{value}};
}

// Feeds `count` bytes 0, 1, 2 ... from `address` and finishes with `start`.
template <typename Writer>
std::string Records(std::uint16_t address, int count, std::uint16_t start = 0) {
    Writer writer;
    writer.SetEnabled(true);
    writer.Restart(address);
    for (int i = 0; i < count; ++i) writer.WriteValue(Byte(i), 8);
    writer.Finish(start);
    return writer.Text().Text();
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2)
        lines.push_back(text.substr(start, end - start));
    lines.push_back(text.substr(start));
    return lines;
}

TEST(IntelHex, ThreeBytesMakeOneRecordAndTheEndRecordFollows) {
    IntelHexWriter hex;
    hex.SetEnabled(true);
    hex.Restart(0x0100);
    for (int b : {0x3E, 0x01, 0x02}) hex.WriteValue(Byte(b), 8);
    hex.Finish(0);
    EXPECT_EQ(hex.Text().Text(), ":030100003E0102BB\r\n:0000000000");
}

TEST(IntelHex, RecordsNeverCrossASixteenByteBoundary) {
    const auto lines = Lines(Records<IntelHexWriter>(0x0108, 24));
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0].substr(0, 9), ":08010800");
    EXPECT_EQ(lines[1].substr(0, 9), ":10011000");
    EXPECT_EQ(lines[2], ":00012000DF") << "opened by the 24th byte, closed empty at the end";
    EXPECT_EQ(lines[3], ":0000000000");
    const auto shorter = Lines(Records<IntelHexWriter>(0x0108, 20));
    ASSERT_EQ(shorter.size(), 3u);
    EXPECT_EQ(shorter[1].substr(0, 9), ":0C011000");
}

TEST(IntelHex, RestartClosesTheOpenRecordAndOpensAtTheNewAddress) {
    IntelHexWriter hex;
    hex.SetEnabled(true);
    hex.Restart(0x0100);
    hex.WriteValue(Byte(0xAA), 8);
    hex.Restart(0x0205);
    hex.WriteValue(Byte(0xBB), 8);
    hex.Finish(0x0100);
    EXPECT_EQ(Lines(hex.Text().Text()),
              (std::vector<std::string>{":01010000AA54", ":01020500BB3D", ":00010000FF"}));
}

TEST(IntelHex, WordSplitsAcrossRecordsAndIsColouredAsAWord) {
    IntelHexWriter hex;
    hex.SetEnabled(true);
    hex.Restart(0x000F);
    hex.WriteValue(Byte(0x1234), 16);
    hex.Finish(0);
    const auto lines = Lines(hex.Text().Text());
    EXPECT_EQ(lines[0], ":01000F0034BC");
    EXPECT_EQ(lines[1], ":0100100012DD");
    const auto& runs = hex.Text().Runs();
    const std::size_t at = hex.Text().Text().find("34BC");
    bool blue = false;
    for (const auto& run : runs)
        if (run.Start == at) blue = run.Ink == Colour{0, 0, 255};
    EXPECT_TRUE(blue);
}

TEST(IntelHex, DisabledWriterWritesNothing) {
    IntelHexWriter hex;
    hex.Restart(0);
    hex.WriteValue(Byte(1), 8);
    hex.Finish(0);
    EXPECT_TRUE(hex.Text().Empty());
}

TEST(Srec, DataAndTerminationRecords) {
    SrecWriter srec;
    srec.SetEnabled(true);
    srec.Restart(0x0100);
    srec.WriteValue(Byte(0x3E), 8);
    srec.WriteValue(Byte(0x01), 8);
    srec.Finish(0x0100);
    EXPECT_EQ(srec.Text().Text(), "S10501003E01BA\r\nS9030100FB");
}

TEST(Srec, LastByteAtBoundaryLeavesAnEmptyRecord) {
    const auto lines = Lines(Records<SrecWriter>(0x010F, 1));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], "S104010F00EB");
    EXPECT_EQ(lines[1], "S1030110EB");
    EXPECT_EQ(lines[2], "S9030000FC");
}

struct LoaderCase {
    LoaderStyle Style;
    bool OrgFirst;
    const char* Expected;
};

TEST(Loader, StylesAndBlocks) {
    const LoaderCase cases[] = {
        {LoaderStyle::Ddt, true, "S0100\r\n3E\r\n01\r\n.\r\n"},
        {LoaderStyle::Sde, true, ".\r\n\r\nE0100\r\n3E\r\n01\r\n."},
        // Bytes before the first org get no opening command.
        {LoaderStyle::Ddt, false, "3E\r\n01\r\n.\r\n"},
    };
    for (const LoaderCase& c : cases) {
        LoaderWriter loader;
        loader.SetEnabled(true);
        loader.SetStyle(c.Style);
        if (c.OrgFirst) loader.Restart(0x0100);
        loader.WriteValue(Byte(0x3E), 8);
        loader.WriteValue(Byte(0x01), 8);
        loader.Finish();
        EXPECT_EQ(loader.Text().Text(), c.Expected);
    }
}

TEST(Loader, AJumpOpensASecondBlockAndWordsGiveTwoLines) {
    LoaderWriter loader;
    loader.SetEnabled(true);
    loader.Restart(0x0100);
    loader.WriteValue(Byte(0x1234), 16);
    loader.Restart(0x0200);
    loader.WriteValue(Byte(0xFF), 8);
    loader.Finish();
    EXPECT_EQ(loader.Text().Text(), "S0100\r\n34\r\n12\r\nS0200\r\nFF\r\n.\r\n");
}

} // namespace
} // namespace trident
