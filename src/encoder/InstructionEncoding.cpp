#include "encoder/InstructionEncoding.h"

#include "base/Text.h"
#include "encoder/EncoderContext.h"
#include "encoder/NameKey.h"
#include "source/Statement.h"

#include <algorithm>
#include <array>

namespace trident {
namespace {

// Where a register code or a small number goes in the opcode byte.
constexpr std::int32_t SourceField(std::int32_t code) {
    return code & 7;
}
constexpr std::int32_t DestinationField(std::int32_t code) {
    return code * 8 & 56;
}
constexpr std::int32_t PairField(std::int32_t code) {
    return code * 8 & 48;
}

constexpr std::uint64_t PushKey = NameKey("push");
constexpr std::uint64_t PopKey = NameKey("pop");
constexpr std::uint64_t DadKey = NameKey("dad");
constexpr std::uint64_t DadxKey = NameKey("dadx");
constexpr std::uint64_t DadyKey = NameKey("dady");

std::int32_t WholeValue(const Value& value) {
    return static_cast<std::int32_t>(AsNumber(value).value_or(0));
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    return text;
}

} // namespace

const InstructionEncoding::ClassRule* InstructionEncoding::RuleFor(OperandClass operandClass) {
    using enum OperandClass;
    using E = InstructionEncoding;
    // The classes mems, memd, regreg, regmem, memreg, memdata and regdata
    // have no encoding: their rows assemble to nothing. Every class but
    // the relative jump depends on its row and operands alone; the jump
    // depends on the statement's address too, which a later pass may move.
    static constexpr std::array<ClassRule, 21> Rules{{
        {Blank, 0, &E::Blank, true},
        {Data, 1, &E::ImmediateByte, true},
        {Port, 1, &E::ImmediateByte, true},
        {Label, 1, &E::ImmediateWord, true},
        {Address, 1, &E::ImmediateWord, true},
        {RegOrMemS, 1, &E::RegOrMemS, true},
        {RegOrMemSRev, 1, &E::RegOrMemSRev, true},
        {NumberRegOrMemS, 2, &E::NumberRegOrMemS, true},
        {RegOrMemD, 1, &E::RegOrMemD, true},
        {RegS, 1, &E::RegS, true},
        {RegD, 1, &E::RegD, true},
        {Disp, 1, &E::Disp, false},
        {Rp1, 1, &E::Rp1, true},
        {Rp2, 1, &E::PairFamily, true},
        {Rp3, 1, &E::PairFamily, true},
        {RpData16, 2, &E::RpData16, true},
        {MemRegMem, 2, &E::MemRegMem, true},
        {RegOrMemData, 2, &E::RegOrMemData, true},
        {RegPort, 2, &E::RegOrMemData, true},
        {PortReg, 2, &E::PortReg, true},
        {Number, 1, &E::Number, true},
    }};
    // Indexed by class code: every instruction of every pass picks its rule.
    static constexpr auto ByClass = [] {
        std::array<ClassRule, static_cast<std::size_t>(RegPort) + 1> byClass{};
        for (const ClassRule& rule : Rules) byClass[static_cast<std::size_t>(rule.Class)] = rule;
        return byClass;
    }();
    const auto code = static_cast<std::size_t>(operandClass);
    if (code >= ByClass.size() || ByClass[code].Encoder == nullptr) return nullptr;
    return &ByClass[code];
}

InstructionEncoding::InstructionEncoding(EncoderContext& run, Statement& statement,
                                         const OpcodeRow& row)
    : pRun(run), pStatement(statement), pRow(row), pRule(RuleFor(row.Class)),
      pOperands(run, statement) {}

bool InstructionEncoding::Keepable() const {
    return pRule != nullptr && pRule->Keepable;
}

void InstructionEncoding::Encode() {
    if (pRule == nullptr) return;
    pOperands.CheckOperandCount(pRule->Operands);
    (this->*pRule->Encoder)();
}

// --- The classes -----------------------------------------------------------

void InstructionEncoding::Blank() {
    EmitRowPrefix();
    EmitOpcode(0);
}

void InstructionEncoding::ImmediateByte() {
    EmitImmediate(8);
}

void InstructionEncoding::ImmediateWord() {
    EmitImmediate(16);
}

void InstructionEncoding::EmitImmediate(int width) {
    EmitRowPrefix();
    EmitOpcode(0);
    Emit(pRun.EvaluateOperand(WithoutLeadingBlanks(pOperands.Operand(0)), width), width);
    pStatement.BytesText += ' ';
}

void InstructionEncoding::RegOrMemS() {
    const RegisterOperand reg = ReadRegister(0, RegisterWidth::Byte);
    EmitIndexPrefix(reg);
    EmitRowPrefix();
    EmitOpcode(SourceField(reg.Code));
    EmitDisplacement(reg);
}

// The CB-prefixed indexed forms carry the displacement ahead of the opcode.
void InstructionEncoding::RegOrMemSRev() {
    const RegisterOperand reg = ReadRegister(0, RegisterWidth::Byte);
    EmitIndexPrefix(reg);
    EmitRowPrefix();
    EmitDisplacement(reg);
    EmitOpcode(SourceField(reg.Code));
}

void InstructionEncoding::NumberRegOrMemS() {
    const std::int32_t bit = WholeValue(EvaluateNumber(0, 3));
    const RegisterOperand reg = ReadRegister(1, RegisterWidth::Byte);
    EmitIndexPrefix(reg);
    EmitRowPrefix();
    EmitDisplacement(reg);
    EmitOpcode(DestinationField(bit) | SourceField(reg.Code));
}

void InstructionEncoding::RegOrMemD() {
    const RegisterOperand reg = ReadRegister(0, RegisterWidth::Byte);
    EmitIndexPrefix(reg);
    if (reg.IndexPrefix && (pRow.Family == RowCpu::Z180 || MnemonicIs("inp") || MnemonicIs("outp")))
        Error("ix or iy NOT allowed");
    EmitRowPrefix();
    EmitOpcode(DestinationField(reg.Code));
    EmitDisplacement(reg);
}

void InstructionEncoding::RegS() {
    const RegisterOperand reg = ReadRegister(0, RegisterWidth::Byte);
    RejectMemory(reg, pOperands.Operand(0));
    EmitRowPrefix();
    EmitOpcode(SourceField(reg.Code));
}

void InstructionEncoding::RegD() {
    const RegisterOperand reg = ReadRegister(0, RegisterWidth::Byte);
    RejectMemory(reg, pOperands.Operand(0));
    EmitRowPrefix();
    EmitOpcode(DestinationField(reg.Code));
}

// Relative jumps count from the address after a two-byte instruction.
void InstructionEncoding::Disp() {
    const Value target = pRun.State().EraZ80Library ? LibraryJumpTarget() : EvaluateNumber(0, 16);
    EmitRowPrefix();
    EmitOpcode(0);
    if (IsEmpty(target)) {
        Emit(target, 8);
        return;
    }
    const std::int32_t displacement = WholeValue(target) - (pRun.State().LineAddress + 2);
    if (displacement < -128 || displacement > 127)
        pRun.ListError("Bad Range", std::to_string(displacement));
    EmitByte(displacement & 0xFF);
}

// Where the era's Z80 library stands in for its file, "$" in a relative
// jump is the address of the displacement byte, as that library computes
// it: `jr $-1` jumps to the opcode.
Value InstructionEncoding::LibraryJumpTarget() {
    const std::int32_t start = pRun.State().LineAddress;
    pRun.SetLocation(start + 1);
    Value target = EvaluateNumber(0, 16);
    pRun.SetLocation(start);
    return target;
}

// ldax and stax: the pair goes to bit 4 alone, and only bc or de exist.
void InstructionEncoding::Rp1() {
    const RegisterOperand reg = ReadRegister(0, RegisterWidth::BcOrDe);
    EmitOpcode(reg.Code * 8 & 16);
}

// push, pop, inx, dcx and the double adds. On an 8080 row an index register
// stands for hl with its prefix (push ix, inx iy, dad x); the Z80 rows
// dadx and dady carry their own prefix instead.
void InstructionEncoding::PairFamily() {
    // The mnemonics this class tells apart, compared as keys.
    const std::uint64_t mnemonic = NameKey(pStatement.Keyword);
    const bool stack = mnemonic == PushKey || mnemonic == PopKey;
    const bool indexAdd = mnemonic == DadxKey || mnemonic == DadyKey;
    const bool dad = mnemonic == DadKey;
    RegisterOperand reg;
    if (stack && OperandIs(0, "a"))
        reg.Code = 6;
    else
        reg = ReadRegister(0, RegisterWidth::Word);
    if (reg.IndexPrefix) {
        if (pRow.Family == RowCpu::I8080)
            EmitByte(*reg.IndexPrefix);
        else if (!indexAdd)
            Error("Illegal use of ");
    }
    if (dad && OperandIs(0, "ix")) Error("ix NOT allowed");
    if (dad && OperandIs(0, "iy")) Error("iy NOT allowed");
    if (indexAdd && OperandIs(0, "hl")) Error("hl NOT allowed");
    if (stack && OperandIs(0, "sp")) Error("sp NOT allowed");
    EmitRowPrefix();
    EmitOpcode(PairField(reg.Code));
}

void InstructionEncoding::RpData16() {
    const Value value = EvaluateNumber(1, 16);
    const RegisterOperand reg = ReadRegister(0, RegisterWidth::Word);
    EmitIndexPrefix(reg);
    EmitRowPrefix();
    EmitOpcode(PairField(reg.Code));
    Emit(value, 16);
}

void InstructionEncoding::MemRegMem() {
    const RegisterOperand target = ReadRegister(0, RegisterWidth::Byte);
    const RegisterOperand source = ReadRegister(1, RegisterWidth::Byte);
    if (target.Code == 6 && source.Code == 6) Error("Memory to Memory NOT allowed");
    EmitIndexPrefix(target);
    EmitIndexPrefix(source);
    EmitRowPrefix();
    EmitOpcode(DestinationField(target.Code) | SourceField(source.Code));
    EmitDisplacement(target);
    EmitDisplacement(source);
}

// Also regport: the byte after the opcode is then a port number.
void InstructionEncoding::RegOrMemData() {
    const RegisterOperand reg = ReadRegister(0, RegisterWidth::Byte);
    const Value value = EvaluateNumber(1, 8);
    EmitRegisterAndByte(reg, value);
}

void InstructionEncoding::PortReg() {
    const Value port = EvaluateNumber(0, 8);
    const RegisterOperand reg = ReadRegister(1, RegisterWidth::Byte);
    EmitRegisterAndByte(reg, port);
}

void InstructionEncoding::EmitRegisterAndByte(const RegisterOperand& reg, const Value& value) {
    RejectIndexOnZ180(reg);
    EmitIndexPrefix(reg);
    EmitRowPrefix();
    EmitOpcode(DestinationField(reg.Code));
    EmitDisplacement(reg);
    Emit(value, 8);
}

void InstructionEncoding::Number() {
    const std::int32_t number = WholeValue(EvaluateNumber(0, 3));
    EmitRowPrefix();
    EmitOpcode(DestinationField(number));
}

// --- Checks ------------------------------------------------------------------

void InstructionEncoding::RejectIndexOnZ180(const RegisterOperand& reg) {
    if (reg.IndexPrefix && pRow.Family == RowCpu::Z180) Error("ix or iy NOT allowed");
}

void InstructionEncoding::RejectMemory(const RegisterOperand& reg, std::string_view operand) {
    if (reg.Code == 6) pRun.ListError("Memory Not Allowed ", operand);
}

// --- Operands and bytes --------------------------------------------------------

Value InstructionEncoding::EvaluateNumber(int index, int width) {
    return pRun.EvaluateOperand(pOperands.Operand(index), width);
}

RegisterOperand InstructionEncoding::ReadRegister(int index, RegisterWidth width) {
    return pOperands.ReadRegister(index, width);
}

void InstructionEncoding::Emit(const Value& value, int width) {
    pRun.EmitBits(WholeBits(value), width, pStatement.BytesText);
}

void InstructionEncoding::EmitByte(std::int32_t byte) {
    pRun.EmitBits(static_cast<std::uint32_t>(byte), 8, pStatement.BytesText);
}

void InstructionEncoding::EmitIndexPrefix(const RegisterOperand& reg) {
    if (reg.IndexPrefix) EmitByte(*reg.IndexPrefix);
}

void InstructionEncoding::EmitRowPrefix() {
    if (const auto prefix = pRow.PrefixByte()) EmitByte(*prefix);
}

void InstructionEncoding::EmitOpcode(std::int32_t fields) {
    EmitByte(pRow.Opcode | fields);
}

void InstructionEncoding::EmitDisplacement(const RegisterOperand& reg) {
    if (reg.IndexPrefix) EmitByte(reg.Displacement);
}

void InstructionEncoding::Error(std::string_view message) {
    pRun.ListError(message, pStatement.Operation);
}

bool InstructionEncoding::MnemonicIs(std::string_view mnemonic) const {
    return pStatement.Keyword == mnemonic;
}

bool InstructionEncoding::OperandIs(int index, std::string_view text) const {
    const std::string_view operand = pOperands.Operand(index);
    return std::equal(operand.begin(), operand.end(), text.begin(), text.end(),
                      [](char c, char l) { return ToLowerAscii(c) == l; });
}

} // namespace trident
