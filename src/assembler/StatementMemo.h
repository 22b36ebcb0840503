#pragma once

#include <cstdint>
#include <span>

namespace trident {

// What the statement handlers work out about a statement of the main file
// when they first execute it, for the later passes to reuse: every pass
// executes every statement again, and the main file's statements keep their
// text for the whole assembly. Only what cannot differ from one pass to the
// next is kept, and the effects of the work saved (processor marks,
// diagnostics) still happen every time.
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
    // read as one at ReadLength characters: a handler may shorten an operand).
    struct Operand {
        RegisterForm Form = RegisterForm::Unread;
        std::int8_t Entry = -1; // in RegisterTable::Entries()
        std::uint32_t ReadLength = 0;
        std::uint32_t DisplacementLength = 0;
    };

    static constexpr std::int16_t UnknownRow = -2;

    // The instruction's opcode row; -1 when the operation word names none.
    std::int16_t Row = UnknownRow;

    // One entry for each of the statement's operands, in their order.
    void KeepOperands(std::span<Operand> operands) {
        pOperands = operands.data();
        pOperandCount = static_cast<std::uint32_t>(operands.size());
    }

    // The entry of operand `index`; nullptr when the statement has fewer.
    Operand* OperandAt(int index) {
        return static_cast<std::uint32_t>(index) < pOperandCount ? &pOperands[index] : nullptr;
    }

  private:
    Operand* pOperands = nullptr;
    std::uint32_t pOperandCount = 0;
};

} // namespace trident
