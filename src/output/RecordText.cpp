#include "output/RecordText.h"

#include "output/ColouredLine.h"
#include "output/HexText.h"
#include "output/ObjectInks.h"

#include <bit>

namespace trident {
namespace {

constexpr Colour CountInk{0, 160, 160};
constexpr Colour TypeInk{160, 0, 0};
constexpr Colour ChecksumInk{160, 0, 0};

} // namespace

using ObjectInks::LineEnd;

void RecordText::WriteRecord(std::uint16_t address, std::span<const std::uint8_t> bytes,
                             std::uint16_t wordBytes) {
    Write(pFormat.Mark, pFormat.Type, address, bytes, wordBytes, true);
}

void RecordText::WriteEnd(std::uint16_t startAddress, bool standard) {
    const std::string_view type =
        standard && !pFormat.EndType.empty() ? pFormat.EndType : pFormat.Type;
    Write(pFormat.EndMark, type, startAddress, {}, 0, standard);
}

void RecordText::WriteHeader() {
    if (!pFormat.HeaderMark.empty()) Write(pFormat.HeaderMark, pFormat.Type, 0, {}, 0, true);
}

void RecordText::Write(std::string_view mark, std::string_view type, std::uint16_t address,
                       std::span<const std::uint8_t> bytes, std::uint16_t wordBytes, bool lineEnd) {
    const int count = static_cast<int>(bytes.size());
    const int countField = count + pFormat.CountExtra;
    // The type field, where the format has one, is two hex digits.
    const int typeValue = type.empty() ? 0 : (type[0] - '0') * 16 + (type[1] - '0');
    int sum = countField + (address >> 8) + (address & 0xFF) + typeValue;
    for (const std::uint8_t byte : bytes) sum += byte;
    const auto checksum = static_cast<std::uint32_t>(pFormat.OnesComplement ? ~sum : -sum);

    // The data goes in one piece per stretch of bytes of the same kind (from
    // bytes or from words), each in its colour.
    ColouredLine line(pText, mark.size() + 2 + 4 + type.size() + 2 * bytes.size() + 2 +
                                 (lineEnd ? LineEnd.size() : 0));
    line.Put(mark, ObjectInks::Command);
    WriteHexDigits(line.Take(2, CountInk), static_cast<std::uint32_t>(countField), 2);
    WriteHexDigits(line.Take(4, ObjectInks::Address), address, 4);
    line.Put(type, TypeInk);
    const auto all = static_cast<std::uint16_t>((1u << count) - 1);
    for (int first = 0; first < count;) {
        const bool fromWord = (wordBytes >> first & 1) != 0;
        // The stretch ends at the first later byte of the other kind.
        const unsigned otherKind = (fromWord ? ~wordBytes : wordBytes) & all & (~0u << first);
        const int end = otherKind == 0 ? count : std::countr_zero(otherKind);
        char* out = line.Take(2 * static_cast<std::size_t>(end - first),
                              fromWord ? ObjectInks::Word : ObjectInks::Byte);
        for (; first < end; ++first)
            out = WriteHexByte(out, bytes[static_cast<std::size_t>(first)]);
    }
    WriteHexDigits(line.Take(2, ChecksumInk), checksum & 0xFF, 2);
    if (lineEnd) line.Put(LineEnd, ObjectInks::Address);
}

} // namespace trident
