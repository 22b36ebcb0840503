#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace trident {

// The values an instruction emitted, when nothing its encoding depended
// on can change from one pass to the next (no symbol's value, no
// diagnostic): later passes emit them again without encoding. Operands
// that read as an index register are noted again, since the warning
// they may raise depends on an option.
class KeptEncoding {
  public:
    static constexpr std::size_t MostValues = 4;
    static constexpr std::size_t MostNotes = 2;

    bool Kept() const { return pCount > 0 && (pFlags & Spoilt) == 0; }
    // An encoding that met a value that is not a constant, or raised a
    // diagnostic, does so in every pass: it is not watched again.
    bool GivenUp() const { return (pFlags & Never) != 0; }
    void GiveUp() { pFlags |= Never; }
    std::size_t ValueCount() const { return pCount; }
    // The low 16 bits of value `index`, and its width (8 or 16).
    std::uint32_t Value(std::size_t index) const { return pValues[index]; }
    int Width(std::size_t index) const { return (pFlags >> index & 1) != 0 ? 16 : 8; }
    std::size_t NoteCount() const { return pNotes & 3u; }
    int Note(std::size_t index) const { return pNotes >> (2 + 3 * index) & 7; }
    bool TrailingBlank() const { return (pFlags & Blank) != 0; }

    // While an encoding is watched: an emitted value; an operand (by
    // index) read as an index register, which must come before any
    // value; the blank the encoding left after its bytes.
    void AddValue(std::uint32_t whole, int width) {
        if (pCount == MostValues) pFlags |= Spoilt;
        if ((pFlags & Spoilt) != 0) return;
        pValues[pCount] = static_cast<std::uint16_t>(whole & 0xFFFFu);
        if (width == 16) pFlags = static_cast<std::uint8_t>(pFlags | 1u << pCount);
        ++pCount;
    }
    void AddNote(int operand) {
        const std::size_t count = NoteCount();
        if (pCount > 0 || count == MostNotes || operand < 0 || operand > 7) pFlags |= Spoilt;
        if ((pFlags & Spoilt) != 0) return;
        pNotes = static_cast<std::uint8_t>((pNotes + 1) | operand << (2 + 3 * count));
    }
    void SetTrailingBlank(bool blank) {
        if (blank) pFlags |= Blank;
    }

  private:
    // pFlags: bit i (below 4) marks value i as 16 bits wide.
    static constexpr std::uint8_t Blank = 0x10;
    static constexpr std::uint8_t Spoilt = 0x20; // something could not be kept
    static constexpr std::uint8_t Never = 0x40;

    std::array<std::uint16_t, MostValues> pValues{};
    std::uint8_t pCount = 0;
    std::uint8_t pFlags = 0;
    // The count of notes in bits 0-1, then each operand in 3 bits.
    std::uint8_t pNotes = 0;
};

} // namespace trident
