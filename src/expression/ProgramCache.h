#pragma once

#include "expression/ExpressionProgram.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace trident::expr {

// The programs of the expression texts an evaluator has met, found by their
// text. An assembly meets the same few thousand texts in every pass, so a
// look-up must cost little: an open-addressed index of the texts' hashes,
// probed linearly, over programs that never move once kept. The memory kept
// is bounded; a text met after the bound is reached is simply not kept.
class ProgramCache {
  public:
    // The program kept for text, or nothing.
    Program* Find(std::string_view text);
    // Keeps program as the program of text, which Find did not know; nothing
    // when it would take the memory kept beyond `budget` bytes.
    Program* Keep(std::string_view text, Program&& program, std::size_t budget);
    void Clear();
    // Changes whenever kept programs are dropped: a program found before
    // holds while this stays.
    std::uint64_t Generation() const { return pGeneration; }

  private:
    struct Entry {
        std::string Text;
        Program Code;
    };
    struct Slot {
        std::uint64_t Hash = 0;
        Entry* Target = nullptr; // none: the slot is free
    };

    std::size_t SlotFor(std::uint64_t hash, std::string_view text) const;
    void Grow();

    std::deque<Entry> pEntries;
    std::vector<Slot> pSlots; // a power of two in size, at most half of them used
    std::size_t pBytes = 0;
    std::uint64_t pGeneration = 1;
};

} // namespace trident::expr
