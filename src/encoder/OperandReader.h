#pragma once

#include "assembler/Statement.h"
#include "encoder/RegisterEntry.h"
#include "encoder/RegisterOperand.h"

#include <cstdint>
#include <string_view>

namespace trident {

class Assembly;

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
    OperandReader(Assembly& run, Statement& statement) : pRun(run), pStatement(statement) {}

    // Reports a count that differs from `expected`; the encoding goes on.
    void CheckOperandCount(std::int16_t expected) const;
    // The operand at `index` (from 0); empty when the line has fewer.
    std::string_view Operand(int index) const {
        if (index < 0 || index >= pStatement.OperandCount()) return {};
        return pStatement.OperandList[static_cast<std::size_t>(index)];
    }
    // Reads `operand` as a register of `width`. Indexed memory forms d(ix),
    // d(iy), d(x), d(y) are found anywhere in the text; d is a signed 8-bit
    // expression, 0 when absent. Always returns a result.
    RegisterOperand ClassifyRegister(std::string_view operand, RegisterWidth width);

  private:
    // The entry of the first indexed form (ix), (iy), (x), (y) found in
    // `operand`, its displacement read into `result`; nullptr when none is.
    const RegisterEntry* ReadIndexedForm(std::string_view operand, RegisterOperand& result);
    void NoteIndexRegister(std::string_view operand);
    void CheckWidth(std::string_view operand, const RegisterEntry& entry, RegisterWidth width);

    Assembly& pRun;
    Statement& pStatement;
};

} // namespace trident
