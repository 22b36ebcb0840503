#pragma once

#include "expression/ProgramHandle.h"
#include "source/KeptEncoding.h"
#include "source/LineScanner.h"
#include "symbols/SymbolSlot.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>

namespace trident {

struct RegisterEntry;

// What the statement handlers work out about a statement of the main file
// when they first execute it, for the later passes to reuse: every pass
// executes every statement again, and the main file's statements keep their
// text for the whole assembly. Only what cannot differ from one pass to the
// next is kept; what may (the symbol table's layout, the evaluator's
// programs and settings, the options) is checked before each use, and the
// effects of the work saved (processor marks, diagnostics) still happen
// every time.
class StatementMemo {
  public:
    // How an operand reads as a register.
    enum class RegisterForm : std::uint8_t {
        Unread,
        Named,   // a register name as it stands: Entry
        Indexed, // an indexed memory form, Entry, after DisplacementLength characters
        None,    // no register
    };

    // What is kept of one operand: how it reads as a register (when it was
    // read as one at ReadLength characters: a handler may shorten an
    // operand), and the one text within it that is evaluated (the operand,
    // or a part of it such as the displacement of an indexed form): where it
    // starts in the operand, its length, its program, and, for a text whose
    // program is one constant, the operand value it reduced to without a
    // diagnostic, for the width and signedness in WholeKey (0: none).
    struct Operand {
        ProgramHandle Program;
        const RegisterEntry* Entry = nullptr;
        std::uint32_t ReadLength = 0;
        std::uint32_t DisplacementLength = 0;
        std::uint32_t Offset = 0;
        std::uint32_t Length = 0;
        std::int32_t Whole = 0;
        std::uint8_t WholeKey = 0;
        RegisterForm Form = RegisterForm::Unread;
    };

    static constexpr std::int16_t UnknownRow = -2;

    // The instruction's opcode row; -1 when the operation word names none.
    std::int16_t Row() const { return pRow; }
    void SetRow(std::int16_t row) { pRow = row; }
    // What the instruction emitted, when that can be emitted again as it is.
    KeptEncoding& Emitted() { return pEmitted; }
    // Where the label was found in the symbol table.
    SymbolSlot& Label() { return pLabel; }

    // One entry for each of the statement's operands, in their order.
    void KeepOperands(std::span<Operand> operands) {
        pOperands = operands.data();
        pOperandCount = static_cast<std::uint8_t>(operands.size());
    }

    // The entry of operand `index`; nullptr when the statement has fewer.
    Operand* OperandAt(int index) {
        return static_cast<std::uint32_t>(index) < pOperandCount ? &pOperands[index] : nullptr;
    }

    // The operand that holds `text`, among `operands` (the statement's
    // operand list), with its evaluated text set to `text`; nullptr when
    // `text` lies in none of them (a translated form, say).
    Operand* EvaluatedText(std::span<const std::string_view> operands, std::string_view text) {
        const std::size_t index = Holding(operands, text);
        if (index >= pOperandCount) return nullptr;
        Operand& kept = pOperands[index];
        const auto offset = static_cast<std::uint32_t>(text.data() - operands[index].data());
        if (kept.Offset != offset || kept.Length != text.size()) {
            kept.Offset = offset;
            kept.Length = static_cast<std::uint32_t>(text.size());
            kept.Program = {};
            kept.WholeKey = 0;
        }
        return &kept;
    }

  private:
    // The index of the operand that holds `text`; pOperandCount when none
    // does. Operands are mostly evaluated in their order: the search starts
    // after the operand found last.
    std::size_t Holding(std::span<const std::string_view> operands, std::string_view text) {
        const auto at = reinterpret_cast<std::uintptr_t>(text.data());
        const std::size_t count = std::min<std::size_t>(operands.size(), pOperandCount);
        std::size_t index = pNextHolder < count ? pNextHolder : 0;
        for (std::size_t tried = 0; tried < count; ++tried) {
            const auto start = reinterpret_cast<std::uintptr_t>(operands[index].data());
            const std::size_t size = operands[index].size();
            if (at >= start && at - start <= size && text.size() <= size - (at - start)) {
                pNextHolder = static_cast<std::uint8_t>(index + 1);
                return index;
            }
            if (++index == count) index = 0;
        }
        return pOperandCount;
    }

    static_assert(LineScanner::MaxOperands <= 255, "operand counts fit pOperandCount");

    std::int16_t pRow = UnknownRow;
    std::uint8_t pOperandCount = 0;
    std::uint8_t pNextHolder = 0;
    KeptEncoding pEmitted;
    SymbolSlot pLabel;
    Operand* pOperands = nullptr;
};

} // namespace trident
