// Turning operand text into values: evaluation with the evaluator's faults
// turned into listing diagnostics, and the range rules of each width.
#include "assembler/Assembly.h"
#include "assembler/StatementMemo.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

namespace trident {
namespace {

struct Range {
    double Lowest;
    double Highest;
    const char* Message;
};

Range RangeFor(int width, Signedness signedness) {
    if (width == 3) return {0, 7, "Value out of Range"};
    const bool wide = width == 16;
    switch (signedness) {
    case Signedness::Signed:
        return {wide ? -32768.0 : -128.0, wide ? 32767.0 : 127.0, "Signed Value out of Range"};
    case Signedness::Unsigned:
        return {0, wide ? 65535.0 : 255.0, "Unsigned Value out of Range"};
    case Signedness::Either:
        break;
    }
    return {wide ? -32768.0 : -128.0, wide ? 65535.0 : 255.0, "Value out of Range"};
}

// The value reduced to `width` bits: two's complement for signed operands,
// the low bits otherwise.
std::int32_t ToWidth(double value, int width, Signedness signedness) {
    // The low 32 bits of the whole part, taken exactly for every double
    // however large; infinity and NaN have none.
    constexpr double twoPow32 = 4294967296.0;
    constexpr double twoPow53 = 9007199254740992.0;
    std::uint32_t bits = 0;
    if (std::fabs(value) < twoPow53) {
        // Exact in 64 bits: the low 32 bits of the two's complement.
        bits = static_cast<std::uint32_t>(static_cast<std::int64_t>(std::trunc(value)));
    } else if (std::isfinite(value)) {
        double low32 = std::fmod(std::trunc(value), twoPow32);
        if (low32 < 0) low32 += twoPow32;
        bits = static_cast<std::uint32_t>(low32);
    }
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

Value Assembly::Evaluate(std::string_view text) {
    ++pChangeableEvents;
    return Evaluate(text, KeptText(text));
}

// An operand of a kept statement remembers its program.
StatementMemo::Operand* Assembly::KeptText(std::string_view text) {
    return pStatement.Memo ? pStatement.Memo->EvaluatedText(pStatement.OperandList, text) : nullptr;
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
            pEvaluator->GetNextError();
            ++pChangeableEvents;
        }
        return;
    }
    while (pEvaluator->ErrorCount() > 0) {
        const std::int32_t code = pEvaluator->GetNextError();
        const std::string message = clsExpression::ErrorString(code);
        const std::string extra = pEvaluator->ExtraErrorString();
        if (code < 0)
            ListWarning(message, extra);
        else
            ListError(message, extra);
    }
}

Value Assembly::EvaluateOperand(std::string_view text, int width, Signedness signedness,
                                bool force) {
    StatementMemo::Operand* kept = KeptText(text);
    const std::uint8_t key = WholeKey(width, signedness);
    // The text of one constant reduces to the same value in every pass.
    if (kept && kept->WholeKey == key && pEvaluator->KeepsResults()) return Value{kept->Whole};
    const Value result = Evaluate(text, kept);
    if (IsEmpty(result)) {
        ++pChangeableEvents;
        return result;
    }
    std::optional<double> number = AsNumber(result);
    if (!number) {
        // A quoted string of one character stands for its code.
        const std::string& chars = std::get<std::string>(result);
        if (chars.size() == 1) {
            number = static_cast<unsigned char>(chars[0]);
        } else {
            ListError("Value out of Range", text, force);
            return Value{std::int32_t{0}};
        }
    }
    const Range range = RangeFor(width, signedness);
    // The detail is composed only for a diagnostic: most operands are fine.
    const auto detail = [&] { return std::string(text) + " = " + NumberText(*number); };
    bool clean = true;
    if (*number < range.Lowest || *number > range.Highest) {
        ListError(range.Message, detail(), force);
        clean = false;
    }
    if (width != 3 && signedness == Signedness::Either && *number != std::trunc(*number)) {
        ListWarning("Value Truncated to Integer", detail(), force);
        clean = false;
    }
    const std::int32_t whole = ToWidth(*number, width, signedness);
    if (kept && clean && pEvaluator->KeepsResults() && pEvaluator->IsConstant(kept->Program)) {
        kept->Whole = whole;
        kept->WholeKey = key;
    } else {
        ++pChangeableEvents;
    }
    return Value{whole};
}

} // namespace trident
