#include "encoder/OpcodeTable.h"

#include "base/Text.h"
#include "encoder/ListInputReader.h"
#include "encoder/NameKey.h"
#include "encoder/OpcodeTableError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>
#include <system_error>

namespace trident {
namespace {

constexpr const char* Component = "OpcodeTable";

std::optional<double> ParseNumber(std::string_view text) {
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    double number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (text.empty() || error != std::errc{} || stop != end) return std::nullopt;
    return number;
}

// Reads the fields of one row, keeping count of rows for the messages.
class RowReader {
  public:
    explicit RowReader(std::string_view text) : pInput(text) {}

    bool AtEnd() { return pInput.AtEnd(); }

    OpcodeRow ReadRow() {
        ++pRowNumber;
        OpcodeRow row;
        row.Mnemonic = Field("mnemonic");
        row.Opcode = static_cast<std::uint8_t>(WholeNumber("opcode", 0, 255));
        row.Spare = static_cast<std::int16_t>(WholeNumber("spare", -32768, 32767));
        row.Class = OperandClassCode(Field("class"));
        row.Prefix = PrefixValue(Field("prefix"));
        row.Cpu = Field("cpu");
        row.Family = Family(row.Cpu);
        row.MarksUse = row.Cpu == "z80" || row.Cpu == "z180";
        return row;
    }

  private:
    static RowCpu Family(std::string_view cpu) {
        const std::string key = LowerCase(cpu);
        if (key == "8080") return RowCpu::I8080;
        if (key == "z80") return RowCpu::Z80;
        if (key == "z180") return RowCpu::Z180;
        return RowCpu::Other;
    }

    std::string Field(std::string_view name) {
        std::optional<std::string> field = pInput.ReadField();
        if (!field)
            throw OpcodeTableError(OpcodeTableError::RowCutShort, Component,
                                   "Input past end of file: row " + std::to_string(pRowNumber) +
                                       " ends before its " + std::string(name) + " field");
        return *field;
    }

    double WholeNumber(std::string_view name, double lowest, double highest) {
        const std::string text = Field(name);
        const std::optional<double> number = ParseNumber(text);
        if (!number || *number != std::trunc(*number))
            throw OpcodeTableError(OpcodeTableError::NotANumber, Component,
                                   "Type mismatch: the " + std::string(name) + " field of row " +
                                       std::to_string(pRowNumber) + " (\"" + text +
                                       "\") is not a whole number");
        if (*number < lowest || *number > highest)
            throw OpcodeTableError(OpcodeTableError::OutOfRange, Component,
                                   "Overflow: the " + std::string(name) + " field of row " +
                                       std::to_string(pRowNumber) + " (" + text +
                                       ") is out of range");
        return *number;
    }

    // A whole number is kept in the narrowest integer that holds it, so that
    // only the values that fit 16 bits count as a prefix byte.
    static Value PrefixValue(const std::string& text) {
        const std::optional<double> number = ParseNumber(text);
        if (!number) return Value{text};
        const double value = *number;
        if (value != std::trunc(value)) return Value{value};
        if (value >= std::numeric_limits<std::int16_t>::min() &&
            value <= std::numeric_limits<std::int16_t>::max())
            return Value{static_cast<std::int16_t>(value)};
        if (value >= std::numeric_limits<std::int32_t>::min() &&
            value <= std::numeric_limits<std::int32_t>::max())
            return Value{static_cast<std::int32_t>(value)};
        return Value{value};
    }

    ListInputReader pInput;
    int pRowNumber = 0;
};

OpcodeTableError FileFault(int number, const std::filesystem::path& file) {
    return OpcodeTableError(number, "the file system",
                            std::generic_category().message(number) + ": " + file.string());
}

std::string ReadWholeFile(const std::filesystem::path& file) {
    std::error_code status;
    if (std::filesystem::is_directory(file, status)) throw FileFault(EISDIR, file);
    errno = 0;
    std::ifstream in(file, std::ios::binary);
    if (!in) throw FileFault(errno != 0 ? errno : ENOENT, file);
    std::ostringstream text;
    text << in.rdbuf();
    if (in.bad()) throw FileFault(EIO, file);
    return text.str();
}

} // namespace

void OpcodeTable::LoadOpcodeTable(const std::filesystem::path& file) {
    ReadRows(ReadWholeFile(file));
}

void OpcodeTable::ReadRows(std::string_view text) {
    RowReader reader(text);
    std::vector<OpcodeRow> rows;
    while (rows.size() < static_cast<std::size_t>(MaxRows) && !reader.AtEnd())
        rows.push_back(reader.ReadRow());
    pRows = std::move(rows);
    IndexFirstRows();
}

void OpcodeTable::IndexFirstRows() {
    pFoldedNames.clear();
    for (const OpcodeRow& row : pRows) pFoldedNames.push_back(LowerCase(row.Mnemonic));
    pSlotBits = 4;
    while ((std::size_t{1} << pSlotBits) < 2 * pRows.size()) ++pSlotBits;
    pSlots.assign(std::size_t{1} << pSlotBits, Slot{});
    const std::size_t mask = pSlots.size() - 1;
    for (std::size_t index = 0; index < pRows.size(); ++index) {
        const std::string& name = pFoldedNames[index];
        const std::uint64_t key = NameKey(name);
        std::size_t slot = KeySlot(key, pSlotBits);
        while (pSlots[slot].Row >= 0 &&
               pFoldedNames[static_cast<std::size_t>(pSlots[slot].Row)] != name)
            slot = (slot + 1) & mask;
        // The first row of a name keeps its slot.
        if (pSlots[slot].Row < 0) pSlots[slot] = Slot{key, static_cast<std::int16_t>(index)};
    }
}

std::int16_t OpcodeTable::FindMnemonic(std::string_view word, RunState& state) const {
    // Mnemonics are short: lower-cased on the stack when they fit.
    std::array<char, 16> buffer{};
    if (word.size() > buffer.size()) return FindKeyword(LowerCase(word), state);
    std::transform(word.begin(), word.end(), buffer.begin(), ToLowerAscii);
    return FindKeyword(std::string_view(buffer.data(), word.size()), state);
}

std::int16_t OpcodeTable::FindKeyword(std::string_view keyword, RunState& state) const {
    const std::int16_t index = RowOf(keyword);
    if (index >= 0) MarkUse(index, state);
    return index;
}

std::int16_t OpcodeTable::RowOf(std::string_view keyword) const {
    if (pSlots.empty()) return -1;
    const std::uint64_t key = NameKey(keyword);
    const std::size_t mask = pSlots.size() - 1;
    for (std::size_t slot = KeySlot(key, pSlotBits);; slot = (slot + 1) & mask) {
        const std::int16_t index = pSlots[slot].Row;
        if (index < 0) return -1;
        if (pSlots[slot].Key != key) continue;
        if (keyword.size() > PackedNameLength &&
            pFoldedNames[static_cast<std::size_t>(index)] != keyword)
            continue;
        return index;
    }
}

} // namespace trident
