#pragma once

#include "encoder/OpcodeRow.h"
#include "source/RunState.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

// The instruction set of a run, read from the opcode table file at the start
// of every assembly: one row per mnemonic, the first row of a mnemonic wins.
class OpcodeTable {
  public:
    static constexpr std::int16_t MaxRows = 257;

    // Replaces the rows by those of `file`; rows past MaxRows are ignored.
    // Throws OpcodeTableError when the file cannot be opened or a field
    // cannot be read as its type; the rows are then left as they were.
    void LoadOpcodeTable(const std::filesystem::path& file);
    // As LoadOpcodeTable, from the file's text.
    void ReadRows(std::string_view text);
    void Clear() {
        pRows.clear();
        pFoldedNames.clear();
        pSlots.clear();
    }

    // The index of the first row whose mnemonic is `word` (case-blind), or
    // -1. A row of cpu "z80" or "z180", spelt exactly so, marks that
    // processor as used in `state`.
    std::int16_t FindMnemonic(std::string_view word, RunState& state) const;
    // As FindMnemonic, for a word already in lower case (a statement's keyword).
    std::int16_t FindKeyword(std::string_view keyword, RunState& state) const;
    // As FindKeyword, without marking any use.
    std::int16_t RowOfKeyword(std::string_view keyword) const;
    // Whether a lower-case word is a mnemonic, with no other effect.
    bool HasKeyword(std::string_view keyword) const { return RowOfKeyword(keyword) >= 0; }
    // What finding row `index` does besides: a row of cpu "z80" or "z180"
    // marks that processor as used.
    void MarkUse(std::int16_t index, RunState& state) const {
        const OpcodeRow& row = pRows[static_cast<std::size_t>(index)];
        if (row.MarksUse && row.Family == RowCpu::Z80) state.Z80Used = true;
        if (row.MarksUse && row.Family == RowCpu::Z180) state.Z180Used = true;
    }

    std::int16_t Count() const { return static_cast<std::int16_t>(pRows.size()); }
    const OpcodeRow& Row(std::int16_t index) const {
        return pRows.at(static_cast<std::size_t>(index));
    }

  private:
    struct Slot {
        std::uint64_t Key = 0;
        std::int16_t Row = -1;
    };

    void IndexFirstRows();

    std::vector<OpcodeRow> pRows;
    // Each row's mnemonic in lower case.
    std::vector<std::string> pFoldedNames;
    // Every statement of every pass looks its operation word up, so the
    // first row of each mnemonic is found by its NameKey through open
    // addressing: a power-of-two table of slots, at most half of them taken
    // so that every search ends at its name or at a free slot.
    std::vector<Slot> pSlots;
    unsigned pSlotBits = 0;
};

} // namespace trident
