#include "encoder/OperandReader.h"

#include "base/Text.h"
#include "encoder/EncoderContext.h"
#include "encoder/RegisterTable.h"
#include "source/Statement.h"
#include "source/StatementMemo.h"

#include <array>
#include <optional>
#include <span>

namespace trident {
namespace {

// Searched for in this order; the first one found in an operand applies.
constexpr std::array<std::string_view, 4> IndexedForms{"(ix)", "(iy)", "(x)", "(y)"};
// The registers and pairs in the order of their codes.
constexpr std::array<std::string_view, 8> RegistersByCode{"b", "c", "d", "e", "h", "l", "m", "a"};
constexpr std::array<std::string_view, 4> PairsByCode{"b", "d", "h", "sp"};

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

RegisterOperand OperandReader::ReadRegister(int index, RegisterWidth width) {
    const std::string_view operand = Operand(index);
    StatementMemo::Operand* kept = pStatement.Memo ? pStatement.Memo->OperandAt(index) : nullptr;
    Form form;
    if (kept && kept->Form != StatementMemo::RegisterForm::Unread &&
        kept->ReadLength == operand.size()) {
        form = {kept->Form, kept->Entry, kept->DisplacementLength};
    } else {
        form = ReadForm(operand);
        if (kept) {
            kept->Form = form.Kind;
            kept->Entry = form.Entry;
            kept->ReadLength = static_cast<std::uint32_t>(operand.size());
            kept->DisplacementLength = form.DisplacementLength;
        }
    }
    // The effects of reading the operand, in every pass: the displacement's
    // value and diagnostics, the index register's mark and warning, the
    // checks.
    RegisterOperand result;
    if (form.Kind == StatementMemo::RegisterForm::None) {
        if (pRun.State().Options.CompatibleMode) return RegisterByValue(operand, width);
        pRun.ListError("Bad register", operand);
        return result;
    }
    if (form.Kind == StatementMemo::RegisterForm::Indexed) {
        const std::string_view displacement = operand.substr(0, form.DisplacementLength);
        if (displacement.find_first_not_of(" \t") != std::string_view::npos) {
            const Value value = pRun.EvaluateOperand(displacement, 8, Signedness::Signed);
            result.Displacement = static_cast<std::int32_t>(AsNumber(value).value_or(0));
        }
        NoteIndexRegister(index, operand);
    } else if (form.Entry->IndexPrefix) {
        NoteIndexRegister(index, operand);
    }
    result.Code = form.Entry->Code;
    result.IndexPrefix = form.Entry->IndexPrefix;
    CheckWidth(operand, *form.Entry, width);
    return result;
}

// The era's sources name registers through symbols (`ctrkh equ h`, then
// `mov a,ctrkh`): an expression whose value is a register's code selects it,
// 0 to 7 for b ... a, 0, 2, 4, 6 for the pairs.
RegisterOperand OperandReader::RegisterByValue(std::string_view operand, RegisterWidth width) {
    const Value value = pRun.Evaluate(operand);
    RegisterOperand result;
    if (IsEmpty(value)) return result;
    const std::optional<double> code = AsNumber(value);
    const bool pair = width == RegisterWidth::Word || width == RegisterWidth::BcOrDe;
    const std::span<const std::string_view> names =
        pair ? std::span<const std::string_view>(PairsByCode) : RegistersByCode;
    const double index = pair ? code.value_or(-1) / 2 : code.value_or(-1);
    if (!code || index < 0 || index >= static_cast<double>(names.size()) ||
        index != static_cast<int>(index)) {
        pRun.ListError("Bad register", operand);
        return result;
    }
    const RegisterEntry& entry = *RegisterTable::Find(names[static_cast<std::size_t>(index)]);
    result.Code = entry.Code;
    CheckWidth(operand, entry, width);
    return result;
}

// Most operands are a register name as it stands. An indexed form written
// alone, (ix) say, is one too and reads as it would with an empty
// displacement. Every other indexed form has a parenthesis.
OperandReader::Form OperandReader::ReadForm(std::string_view operand) {
    using enum StatementMemo::RegisterForm;
    if (const RegisterEntry* entry = RegisterTable::Find(operand)) return {Named, entry, 0};
    if (operand.find('(') == std::string_view::npos) return {None, nullptr, 0};
    const std::string folded = LowerCase(operand);
    for (const std::string_view form : IndexedForms) {
        const std::size_t at = folded.find(form);
        if (at != std::string::npos)
            return {Indexed, RegisterTable::Find(form), static_cast<std::uint32_t>(at)};
    }
    return {None, nullptr, 0};
}

void OperandReader::NoteIndexRegister(int index, std::string_view operand) {
    if (KeptEncoding* log = pRun.EmissionLog()) log->AddNote(index);
    WarnIndexRegister(pRun, pStatement, operand);
}

void OperandReader::WarnIndexRegister(EncoderContext& run, Statement& statement,
                                      std::string_view operand) {
    statement.IndexUsed = true;
    if (!run.State().Options.Z80)
        run.ListWarning("z80 warning ",
                        statement.WrittenAs.empty() ? operand : statement.WrittenAs);
}

inline void OperandReader::CheckWidth(std::string_view operand, const RegisterEntry& entry,
                                      RegisterWidth width) {
    if (width == RegisterWidth::Byte && !HoldsByte(entry.Width))
        pRun.ListError("Register NOT 8 bits", operand);
    if ((width == RegisterWidth::Word || width == RegisterWidth::BcOrDe) && !HoldsPair(entry.Width))
        pRun.ListError("Register NOT 16 bits", operand);
    if (width == RegisterWidth::BcOrDe && entry.Code != 0 && entry.Code != 2)
        pRun.ListError("Only bc or de allowed", operand);
}

} // namespace trident
