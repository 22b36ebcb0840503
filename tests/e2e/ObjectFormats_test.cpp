#include "e2e/ToolDir.h"

#include <gtest/gtest.h>
#include <map>

namespace trident {
namespace {

// Address → byte, as a loader of each format would fill memory.
using Memory = std::map<unsigned, unsigned char>;

unsigned HexByte(const std::string& text, std::size_t at) {
    return static_cast<unsigned>(std::stoul(text.substr(at, 2), nullptr, 16));
}

// The sum of the byte pairs of `record` from `from` up to `to` before its end.
unsigned Sum(const std::string& record, std::size_t from, std::size_t to) {
    unsigned sum = 0;
    for (std::size_t i = from; i + to < record.size(); i += 2) sum += HexByte(record, i);
    return sum;
}

// Reads Intel HEX (`hex`) or S-records, checking every record's count and
// checksum; returns the start address.
unsigned Load(const std::string& text, bool hex, Memory& memory) {
    unsigned start = 0;
    for (std::size_t from = 0, end = 0; end != std::string::npos; from = end + 2) {
        end = text.find("\r\n", from);
        const std::string record = text.substr(from, end - from);
        const unsigned count = HexByte(record, hex ? 1 : 2);
        const unsigned address = HexByte(record, hex ? 3 : 4) * 256 + HexByte(record, hex ? 5 : 6);
        if (hex) {
            EXPECT_EQ(record[0], ':');
            EXPECT_EQ(Sum(record, 1, 1) & 0xFF, 0u) << record;
            EXPECT_LE(address % 16 + count, 16u) << "no record crosses a 16-byte boundary";
        } else {
            EXPECT_EQ(record.size(), 4 + 2 * count) << record;
            EXPECT_EQ(~Sum(record, 2, 2) & 0xFF, HexByte(record, record.size() - 2)) << record;
            EXPECT_TRUE(record.starts_with("S1") || record.starts_with("S9")) << record;
        }
        if (hex ? count == 0 : record.starts_with("S9")) {
            start = address;
            continue;
        }
        for (unsigned i = 0; i + (hex ? 0 : 3) < count; ++i)
            memory[address + i] =
                static_cast<unsigned char>(HexByte(record, (hex ? 9 : 8) + 2 * i));
    }
    return start;
}

TEST(ObjectFormats, HexAndSrecordsOfAMultiOrgProgramDecodeToTheBinaryImage) {
    testing::ToolDir dir;
    dir.Write("multi.asm", " org 0108h\nstart: lxi h,table\n"
                           " db 1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17\n ds 5\n"
                           " dw start,1234h\n org 0200h\ntable: db 'end of program'\n end start\n");
    const auto result = dir.Run("{multi.asm} --hex {m.hex} --srec {m.mx} --bin {m.bin}");
    ASSERT_EQ(result.Exit, 0) << result.Err;

    const std::string image = dir.Read("m.bin");
    ASSERT_EQ(image.size(), 0x200u + 14 - 0x108);
    Memory hex, srec;
    EXPECT_EQ(Load(dir.Read("m.hex"), true, hex), 0x108u);
    EXPECT_EQ(Load(dir.Read("m.mx"), false, srec), 0x108u);
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
