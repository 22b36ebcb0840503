#pragma once

#include "assembler/RunState.h"
#include "encoder/OpcodeRow.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
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
        pFirstRows.clear();
    }

    // The index of the first row whose mnemonic is `word` (case-blind), or
    // -1. A row of cpu "z80" or "z180", spelt exactly so, marks that
    // processor as used in `state`.
    std::int16_t FindMnemonic(std::string_view word, RunState& state) const;

    std::int16_t Count() const { return static_cast<std::int16_t>(pRows.size()); }
    const OpcodeRow& Row(std::int16_t index) const {
        return pRows.at(static_cast<std::size_t>(index));
    }

  private:
    // Lets the index be searched with a view, without building a string.
    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view name) const {
            return std::hash<std::string_view>{}(name);
        }
    };
    using RowIndex = std::unordered_map<std::string, std::int16_t, NameHash, std::equal_to<>>;

    std::vector<OpcodeRow> pRows;
    // Each mnemonic in lower case and the first row that carries it.
    RowIndex pFirstRows;
};

} // namespace trident
