#include "encoder/OperandReader.h"

#include "assembler/Assembly.h"
#include "assembler/LineScanner.h"
#include "encoder/RegisterTable.h"

#include <array>

namespace trident {
namespace {

// Searched for in this order; the first one found in an operand applies.
constexpr std::array<std::string_view, 4> IndexedForms{"(ix)", "(iy)", "(x)", "(y)"};

bool HoldsByte(RegisterWidthClass width) {
    return width == RegisterWidthClass::Byte || width == RegisterWidthClass::ByteOrPair;
}

bool HoldsPair(RegisterWidthClass width) {
    return width == RegisterWidthClass::Pair || width == RegisterWidthClass::ByteOrPair;
}

} // namespace

void OperandReader::CheckOperandCount(std::int16_t expected) const {
    const int actual = pStatement.OperandCount();
    if (actual == expected) return;
    const std::string_view operation = pStatement.Operation;
    if (expected == 0 && actual >= 1) pRun.ListError("No operands allowed", operation);
    if (expected != 0 && actual > expected) pRun.ListError("Too many operands", operation);
    if (expected == 1 && actual < 1)
        pRun.ListError("Missing operand", operation);
    else if (expected > actual)
        pRun.ListError("Too few operands", operation);
}

RegisterOperand OperandReader::ClassifyRegister(std::string_view operand, RegisterWidth width) {
    RegisterOperand result;
    // Most operands are a register name as it stands. An indexed form
    // written alone, (ix) say, is one too and reads as it would with an
    // empty displacement.
    const RegisterEntry* entry = RegisterTable::Find(operand);
    if (entry != nullptr && entry->IndexPrefix) NoteIndexRegister(operand);
    // Every other indexed form has a parenthesis.
    if (entry == nullptr && operand.find('(') != std::string_view::npos)
        entry = ReadIndexedForm(operand, result);
    if (entry == nullptr) {
        pRun.ListError("Bad register", operand);
        return result;
    }
    result.Code = entry->Code;
    result.IndexPrefix = entry->IndexPrefix;
    CheckWidth(operand, *entry, width);
    return result;
}

const RegisterEntry* OperandReader::ReadIndexedForm(std::string_view operand,
                                                    RegisterOperand& result) {
    const std::string folded = LineScanner::LowerCase(operand);
    for (const std::string_view form : IndexedForms) {
        const std::size_t at = folded.find(form);
        if (at == std::string::npos) continue;
        const std::string_view displacement = operand.substr(0, at);
        if (!LineScanner::TrimBlanks(displacement).empty()) {
            const Value value = pRun.EvaluateOperand(displacement, 8, Signedness::Signed);
            result.Displacement = static_cast<std::int32_t>(AsNumber(value).value_or(0));
        }
        NoteIndexRegister(operand);
        return RegisterTable::Find(form);
    }
    return nullptr;
}

void OperandReader::NoteIndexRegister(std::string_view operand) {
    pStatement.IndexUsed = true;
    if (!pRun.State().Options.Z80) pRun.ListWarning("z80 warning ", operand);
}

void OperandReader::CheckWidth(std::string_view operand, const RegisterEntry& entry,
                               RegisterWidth width) {
    if (width == RegisterWidth::Byte && !HoldsByte(entry.Width))
        pRun.ListError("Register NOT 8 bits", operand);
    if ((width == RegisterWidth::Word || width == RegisterWidth::BcOrDe) && !HoldsPair(entry.Width))
        pRun.ListError("Register NOT 16 bits", operand);
    if (width == RegisterWidth::BcOrDe && entry.Code != 0 && entry.Code != 2)
        pRun.ListError("Only bc or de allowed", operand);
}

} // namespace trident
