#pragma once

#include "encoder/RegisterEntry.h"
#include "encoder/RegisterOperand.h"
#include "source/Statement.h"
#include "source/StatementMemo.h"

#include <cstdint>
#include <string_view>

namespace trident {

class EncoderContext;

// What an operand position asks of a register name.
enum class RegisterWidth {
    Any = 0,
    Byte = 8,     // an 8-bit register or a memory operand
    Word = 16,    // a 16-bit register or pair
    BcOrDe = 161, // a pair that must be bc or de
};

// The operand services of the instruction classes: the operand count and
// the reading of register operands, with their diagnostics.
class OperandReader {
  public:
    OperandReader(EncoderContext& run, Statement& statement) : pRun(run), pStatement(statement) {}

    // Reports a count that differs from `expected`; the encoding goes on.
    void CheckOperandCount(std::int16_t expected) const;
    // The operand at `index` (from 0); empty when the line has fewer.
    std::string_view Operand(int index) const {
        if (index < 0 || index >= pStatement.OperandCount()) return {};
        return pStatement.OperandList[static_cast<std::size_t>(index)];
    }
    // Reads the operand at `index` as a register of `width`. Indexed memory
    // forms d(ix), d(iy), d(x), d(y) are found anywhere in the text; d is a
    // signed 8-bit expression, 0 when absent. Always returns a result.
    RegisterOperand ReadRegister(int index, RegisterWidth width);
    // An index register met in `operand` colours the statement, and is
    // warned about unless the Z80 box is checked.
    static void WarnIndexRegister(EncoderContext& run, Statement& statement,
                                  std::string_view operand);

  private:
    // How an operand reads as a register, worked out from its text alone:
    // for an indexed form, the first of (ix), (iy), (x), (y) found in it,
    // and the displacement written before it.
    struct Form {
        StatementMemo::RegisterForm Kind;
        const RegisterEntry* Entry; // none for no register
        std::uint32_t DisplacementLength;
    };
    static Form ReadForm(std::string_view operand);
    RegisterOperand RegisterByValue(std::string_view operand, RegisterWidth width);
    // The operand at `index` is `operand`.
    void NoteIndexRegister(int index, std::string_view operand);
    void CheckWidth(std::string_view operand, const RegisterEntry& entry, RegisterWidth width);

    EncoderContext& pRun;
    Statement& pStatement;
};

} // namespace trident
