#pragma once

#include "encoder/OpcodeRow.h"
#include "encoder/OperandReader.h"
#include "symbols/Value.h"

#include <cstdint>
#include <string_view>

namespace trident {

class EncoderContext;
struct Statement;

// The encoding of one instruction statement by its opcode table row: the
// row's operand class decides how the operands are read and in which order
// prefixes, opcode, displacement and immediate value are emitted. Errors are
// reported and the bytes emitted all the same, so that a statement has the
// same size in every pass.
class InstructionEncoding {
  public:
    InstructionEncoding(EncoderContext& run, Statement& statement, const OpcodeRow& row);

    void Encode();
    // Whether the encoding depends on nothing but the row and the values of
    // the operands, so that it can be kept when those are constants.
    bool Keepable() const;

  private:
    using ClassEncoder = void (InstructionEncoding::*)();
    struct ClassRule {
        OperandClass Class;
        std::int16_t Operands;
        ClassEncoder Encoder;
        bool Keepable;
    };
    static const ClassRule* RuleFor(OperandClass operandClass);

    void Blank();
    void ImmediateByte();
    void ImmediateWord();
    void RegOrMemS();
    void RegOrMemSRev();
    void NumberRegOrMemS();
    void RegOrMemD();
    void RegS();
    void RegD();
    void Disp();
    void Rp1();
    void PairFamily();
    void RpData16();
    void MemRegMem();
    void RegOrMemData();
    void PortReg();
    void Number();

    void EmitImmediate(int width);
    void EmitRegisterAndByte(const RegisterOperand& reg, const Value& value);
    void RejectIndexOnZ180(const RegisterOperand& reg);
    void RejectMemory(const RegisterOperand& reg, std::string_view operand);

    Value LibraryJumpTarget();
    Value EvaluateNumber(int index, int width);
    RegisterOperand ReadRegister(int index, RegisterWidth width);
    void Emit(const Value& value, int width);
    void EmitByte(std::int32_t byte);
    void EmitIndexPrefix(const RegisterOperand& reg);
    void EmitRowPrefix();
    void EmitOpcode(std::int32_t fields);
    void EmitDisplacement(const RegisterOperand& reg);
    void Error(std::string_view message);
    bool MnemonicIs(std::string_view mnemonic) const;
    // Whether the operand at `index` is `text` (lower case), without regard to case.
    bool OperandIs(int index, std::string_view text) const;

    EncoderContext& pRun;
    Statement& pStatement;
    const OpcodeRow& pRow;
    const ClassRule* pRule; // nullptr for a class without an encoding
    OperandReader pOperands;
};

} // namespace trident
