#include "support/RunTool.h"
#include "support/TempSource.h"

#include <gtest/gtest.h>
#include <map>

namespace trident {
namespace {

using testing::Quoted;
using testing::ReadWholeFile;

// Address → byte, as a loader of each format would fill memory.
using Memory = std::map<unsigned, unsigned char>;

unsigned HexByte(const std::string& text, std::size_t at) {
    return static_cast<unsigned>(std::stoul(text.substr(at, 2), nullptr, 16));
}

std::vector<std::string> Records(const std::string& text) {
    std::vector<std::string> records;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2)
        records.push_back(text.substr(start, end - start));
    records.push_back(text.substr(start));
    return records;
}

// Reads Intel HEX, checking every record's checksum; returns the start address.
unsigned LoadHex(const std::string& text, Memory& memory) {
    unsigned start = 0;
    for (const std::string& record : Records(text)) {
        EXPECT_EQ(record[0], ':');
        const unsigned count = HexByte(record, 1);
        const unsigned address = HexByte(record, 3) * 256 + HexByte(record, 5);
        unsigned sum = 0;
        for (std::size_t i = 1; i + 1 < record.size(); i += 2) sum += HexByte(record, i);
        EXPECT_EQ(sum & 0xFF, 0u) << record;
        EXPECT_LE(address % 16 + count, 16u) << "no record crosses a 16-byte boundary";
        for (unsigned i = 0; i < count; ++i)
            memory[address + i] = static_cast<unsigned char>(HexByte(record, 9 + 2 * i));
        if (count == 0) start = address;
    }
    return start;
}

// Reads S-records, checking counts and checksums; returns the start address.
unsigned LoadSrec(const std::string& text, Memory& memory) {
    unsigned start = 0;
    for (const std::string& record : Records(text)) {
        const unsigned count = HexByte(record, 2);
        EXPECT_EQ(record.size(), 4 + 2 * count) << record;
        const unsigned address = HexByte(record, 4) * 256 + HexByte(record, 6);
        unsigned sum = 0;
        for (std::size_t i = 2; i + 2 < record.size(); i += 2) sum += HexByte(record, i);
        EXPECT_EQ(~sum & 0xFF, HexByte(record, record.size() - 2)) << record;
        if (record.substr(0, 2) == "S9") {
            start = address;
            continue;
        }
        EXPECT_EQ(record.substr(0, 2), "S1");
        for (unsigned i = 0; i + 3 < count; ++i)
            memory[address + i] = static_cast<unsigned char>(HexByte(record, 8 + 2 * i));
    }
    return start;
}

TEST(ObjectFormats, HexAndSrecordsOfAMultiOrgProgramDecodeToTheBinaryImage) {
    testing::TempDir dir;
    const auto source = dir.Write("multi.asm", " org 0108h\n"
                                               "start: lxi h,table\n"
                                               " db 1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17\n"
                                               " ds 5\n"
                                               " dw start,1234h\n"
                                               " org 0200h\n"
                                               "table: db 'end of program'\n"
                                               " end start\n");
    const auto result =
        testing::RunTool(Quoted(source) + " --hex " + Quoted(dir.Path() / "m.hex") + " --srec " +
                             Quoted(dir.Path() / "m.mx") + " --bin " + Quoted(dir.Path() / "m.bin"),
                         dir.Path());
    ASSERT_EQ(result.Exit, 0) << result.Err;

    const std::string image = ReadWholeFile(dir.Path() / "m.bin");
    ASSERT_EQ(image.size(), 0x200u + 14 - 0x108);
    Memory hex, srec;
    EXPECT_EQ(LoadHex(ReadWholeFile(dir.Path() / "m.hex"), hex), 0x108u);
    EXPECT_EQ(LoadSrec(ReadWholeFile(dir.Path() / "m.mx"), srec), 0x108u);
    EXPECT_EQ(hex, srec);
    // Every byte of either format is in the image, and every byte of the
    // image outside the reserved space and the gap is in the formats.
    for (const auto& [address, byte] : hex)
        EXPECT_EQ(static_cast<unsigned char>(image[address - 0x108]), byte) << address;
    EXPECT_EQ(hex.size(), 3u + 17 + 4 + 14);
    EXPECT_EQ(hex.count(0x108 + 3 + 17), 0u) << "reserved space is never filled in";
}

} // namespace
} // namespace trident
