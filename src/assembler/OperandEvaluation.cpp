// Turning operand text into values: evaluation with the evaluator's faults
// turned into listing diagnostics, and the range rules of each width.
#include "assembler/Assembly.h"
#include "expression/EvalError.h"
#include "source/StatementMemo.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

namespace trident {
namespace {

struct Range {
    std::int32_t Lowest;
    std::int32_t Highest;
    const char* Message;
};

Range RangeFor(int width, Signedness signedness) {
    if (width == 3) return {0, 7, "Value out of Range"};
    const bool wide = width == 16;
    switch (signedness) {
    case Signedness::Signed:
        return {wide ? -32768 : -128, wide ? 32767 : 127, "Signed Value out of Range"};
    case Signedness::Unsigned:
        return {0, wide ? 65535 : 255, "Unsigned Value out of Range"};
    case Signedness::Either:
        break;
    }
    return {wide ? -32768 : -128, wide ? 65535 : 255, "Value out of Range"};
}

// The low `width` bits of `bits`: two's complement for signed operands, the
// low bits otherwise.
std::int32_t ToWidth(std::uint32_t bits, int width, Signedness signedness) {
    const std::uint32_t mask = (1u << width) - 1u;
    const std::uint32_t low = bits & mask;
    if (signedness == Signedness::Signed && width > 3 && (low & (1u << (width - 1))) != 0)
        return static_cast<std::int32_t>(low) - static_cast<std::int32_t>(1u << width);
    return static_cast<std::int32_t>(low);
}

std::string NumberText(double value) {
    if (value == std::trunc(value) && std::fabs(value) < 1e15)
        return std::to_string(static_cast<long long>(value));
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

// The width and signedness an operand value was reduced for, never 0.
std::uint8_t WholeKey(int width, Signedness signedness) {
    return static_cast<std::uint8_t>(0x80 | width | static_cast<int>(signedness) << 5);
}

} // namespace

// An operand of a kept statement remembers its program.
inline StatementMemo::Operand* Assembly::KeptText(std::string_view text) {
    return pStatement.Memo ? pStatement.Memo->EvaluatedText(pStatement.OperandList, text) : nullptr;
}

Value Assembly::Evaluate(std::string_view text) {
    pMetChangeable = true;
    return Evaluate(text, KeptText(text));
}

const Value& Assembly::EvaluateInPlace(std::string_view text, ProgramHandle& program) {
    pEvaluator->SetCaseSensitive(pState.Options.CaseSensitiveSymbols);
    const Value& result = pEvaluator->EvaluateInPlace(text, program);
    // Most evaluations record nothing; reporting faults leaves the value
    // where it lies.
    if (pEvaluator->ErrorCount() > 0) ReportEvaluatorFaults();
    return result;
}

Value Assembly::Evaluate(std::string_view text, StatementMemo::Operand* kept) {
    pEvaluator->SetCaseSensitive(pState.Options.CaseSensitiveSymbols);
    Value result = kept ? pEvaluator->Evaluate(text, kept->Program) : pEvaluator->Evaluate(text);
    // Most evaluations record nothing.
    if (pEvaluator->ErrorCount() > 0) ReportEvaluatorFaults();
    return result;
}

std::string Assembly::ConvertQuotedString(std::string_view text) {
    std::string characters = pEvaluator->DoubleQuotedStringToString(text);
    ReportEvaluatorFaults();
    return characters;
}

void Assembly::ReportEvaluatorFaults() {
    // Diagnostics are written only with a listed line: the faults of the
    // other lines are taken off the list without composing their texts.
    if (!pListing.ListsLines()) {
        while (pEvaluator->ErrorCount() > 0) {
            NoteUnresolved(pEvaluator->GetNextError());
            pMetChangeable = true;
        }
        return;
    }
    while (pEvaluator->ErrorCount() > 0) {
        const std::int32_t code = pEvaluator->GetNextError();
        NoteUnresolved(code);
        const std::string message = ExpressionEvaluator::ErrorString(code);
        const std::string extra = pEvaluator->ExtraErrorString();
        if (code < 0)
            ListWarning(message, extra);
        else
            ListError(message, extra);
    }
}

// The names without a value that the statement under way met: whether a
// condition waits for a later pass, and the note that explains a terminal
// stop.
void Assembly::NoteUnresolved(std::int32_t code) {
    if (code != static_cast<std::int32_t>(EvalError::NonExistentVariable)) return;
    std::string name = pEvaluator->ExtraErrorString();
    if (std::find(pUnresolvedNames.begin(), pUnresolvedNames.end(), name) == pUnresolvedNames.end())
        pUnresolvedNames.push_back(std::move(name));
}

Value Assembly::EvaluateOperand(std::string_view text, int width, Signedness signedness,
                                bool force) {
    StatementMemo::Operand* kept = KeptText(text);
    const std::uint8_t key = WholeKey(width, signedness);
    // The text of one constant reduces to the same value in every pass.
    if (kept && kept->WholeKey == key) return Value{kept->Whole};
    // A kept operand's value is taken where it lies: it is read before
    // anything can change it.
    Value copy;
    const Value& result = kept ? EvaluateInPlace(text, kept->Program) : copy = Evaluate(text, kept);
    if (IsEmpty(result)) {
        pMetChangeable = true;
        return Value{};
    }
    bool clean = true;
    // Most operands are whole numbers: they are checked without doubles.
    const auto* integer = std::get_if<std::int32_t>(&result);
    const std::int32_t whole = integer
                                   ? ReduceWhole(text, *integer, width, signedness, force, clean)
                                   : ReduceNumber(text, result, width, signedness, force, clean);
    if (kept && pEvaluator->IsConstant(kept->Program)) {
        // A diagnostic, counted as it was raised, comes again in every pass.
        if (clean) {
            kept->Whole = whole;
            kept->WholeKey = key;
        }
    } else {
        pMetChangeable = true;
    }
    return Value{whole};
}

std::int32_t Assembly::ReduceWhole(std::string_view text, std::int32_t value, int width,
                                   Signedness signedness, bool force, bool& clean) {
    const Range range = RangeFor(width, signedness);
    if ((value < range.Lowest || value > range.Highest) && !IsEraByte(value, width, signedness))
        [[unlikely]] {
        ReportOutOfRange(text, value, range.Message, force);
        clean = false;
    }
    return ToWidth(static_cast<std::uint32_t>(value), width, signedness);
}

// The era's assemblers take a byte from -256 to 255, its high byte 00 or FF
// (ani not mask); only values outside the usual range are asked about.
bool Assembly::IsEraByte(double value, int width, Signedness signedness) const {
    return pState.Options.CompatibleMode && width == 8 && signedness == Signedness::Either &&
           value >= -256 && value < -128;
}

void Assembly::ReportOutOfRange(std::string_view text, std::int32_t value, const char* message,
                                bool force) {
    ListError(message, std::string(text) + " = " + std::to_string(value), force);
}

std::int32_t Assembly::ReduceNumber(std::string_view text, const Value& result, int width,
                                    Signedness signedness, bool force, bool& clean) {
    std::optional<double> number = AsNumber(result);
    if (!number) {
        // A quoted string of one character stands for its code.
        const std::string& chars = std::get<std::string>(result);
        if (chars.size() != 1) {
            ListError("Value out of Range", text, force);
            clean = false;
            return 0;
        }
        number = static_cast<unsigned char>(chars[0]);
    }
    const Range range = RangeFor(width, signedness);
    // The detail is composed only for a diagnostic: most operands are fine.
    const auto detail = [&] { return std::string(text) + " = " + NumberText(*number); };
    if ((*number < range.Lowest || *number > range.Highest) &&
        !IsEraByte(*number, width, signedness)) {
        ListError(range.Message, detail(), force);
        clean = false;
    }
    if (width != 3 && signedness == Signedness::Either && *number != std::trunc(*number)) {
        ListWarning("Value Truncated to Integer", detail(), force);
        clean = false;
    }
    return ToWidth(WholeBits(*number), width, signedness);
}

} // namespace trident
