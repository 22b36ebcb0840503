#pragma once

#include "assembler/LineScanner.h"
#include "expression/ProgramHandle.h"
#include "symbols/SymbolSlot.h"

#include <algorithm>
#include <array>
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

    // The values an instruction emitted, when nothing its encoding depended
    // on can change from one pass to the next (no symbol's value, no
    // diagnostic): later passes emit them again without encoding. Operands
    // that read as an index register are noted again, since the warning
    // they may raise depends on an option.
    class Encoding {
      public:
        static constexpr std::size_t MostValues = 4;
        static constexpr std::size_t MostNotes = 2;

        bool Kept() const { return pCount > 0 && (pFlags & Spoilt) == 0; }
        // An encoding that met a value that is not a constant meets it in
        // every pass: it is not watched again.
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

    static constexpr std::int16_t UnknownRow = -2;

    // The instruction's opcode row; -1 when the operation word names none.
    std::int16_t Row = UnknownRow;

  private:
    // Declared here so that they fill the room before the next member.
    std::uint8_t pOperandCount = 0;
    std::uint8_t pNextHolder = 0;

  public:
    // What the instruction emitted, when that can be emitted again as it is.
    Encoding Emitted;
    // Where the label was found in the symbol table.
    SymbolSlot Label;

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

    Operand* pOperands = nullptr;
};

} // namespace trident
