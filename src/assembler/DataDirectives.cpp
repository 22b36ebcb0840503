#include "assembler/DataDirectives.h"

#include "assembler/Assembly.h"
#include "assembler/DataBytes.h"
#include "encoder/OperandReader.h"
#include "expression/CharTests.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <optional>
#include <string>

namespace trident {
namespace {

// How a directive ends its data.
enum class Ending {
    Plain,
    MarkLastCharacter, // the last character of a final string operand gets bit 7
    MarkLastByte,      // as MarkLastCharacter, and a numeric final operand too
    ZeroByte,          // a 0 byte follows the data
};

enum class Family { Bytes, Words, Storage, Text, IeeeSingle, IeeeDouble };

struct Form {
    Family Kind;
    Ending End = Ending::Plain;
    bool MostSignificantFirst = false; // the IEEE _be forms
};

constexpr std::uint8_t LastMark = 0x80;

// The whole operand is one quoted literal: it opens with a quote and the
// quote that closes it (a doubled quote and an escaped character stay
// inside) is its last character. An unclosed literal counts too; its
// conversion reports it. So 'A'+1 is an expression, 'AB' a string.
bool IsQuotedString(std::string_view text) {
    if (text.empty() || (text.front() != '\'' && text.front() != '"')) return false;
    const char quote = text.front();
    std::size_t pos = 1;
    while (pos < text.size()) {
        if (text[pos] == '\\') {
            pos += 2;
        } else if (text[pos] != quote) {
            ++pos;
        } else if (pos + 1 < text.size() && text[pos + 1] == quote) {
            pos += 2;
        } else {
            return pos + 1 == text.size();
        }
    }
    return true;
}

// The integer that EvaluateOperand reduced a resolved operand to.
std::int32_t WholeNumber(const Value& value) {
    return static_cast<std::int32_t>(AsNumber(value).value_or(0));
}

bool MissingOperands(Assembly& run, const Statement& statement) {
    if (statement.OperandCount() > 0) return false;
    run.ListError("Missing Operands", statement.Operation);
    return true;
}

// The number an IEEE operand stands for: any expression, decimal numbers
// with fraction and exponent included; a one-character string is its code.
double IeeeNumber(Assembly& run, std::string_view operand) {
    const Value value = run.Evaluate(operand);
    if (const std::optional<double> number = AsNumber(value)) return *number;
    if (IsEmpty(value)) return 0;
    const std::string& text = std::get<std::string>(value);
    if (text.size() == 1) return static_cast<unsigned char>(text.front());
    run.ListError("Invalid Operand", operand);
    return 0;
}

// The last character is emitted with 128 added: the end of a text marked
// in its top bit, as the monitors that print such texts expect.
void EmitCharacters(DataBytes& bytes, std::string_view characters, bool markLast) {
    for (std::size_t i = 0; i < characters.size(); ++i) {
        std::int32_t code = static_cast<unsigned char>(characters[i]);
        if (markLast && i + 1 == characters.size()) code += LastMark;
        bytes.Byte(static_cast<std::uint32_t>(code));
    }
}

void EmitBytes(Assembly& run, Statement& statement, const Form& form) {
    if (MissingOperands(run, statement)) return;
    DataBytes bytes(run, statement.BytesText);
    const std::size_t last = statement.OperandList.size() - 1;
    for (std::size_t i = 0; i <= last; ++i) {
        const std::string_view operand = TrimBlanks(statement.OperandList[i]);
        const bool final = i == last;
        if (IsQuotedString(operand)) {
            const bool mark = final && form.End != Ending::Plain && form.End != Ending::ZeroByte;
            EmitCharacters(bytes, run.ConvertQuotedString(operand), mark);
            continue;
        }
        Value value = run.EvaluateOperand(operand, 8);
        if (final && form.End == Ending::MarkLastByte && !IsEmpty(value))
            value = Value{WholeNumber(value) + LastMark};
        bytes.Byte(value);
    }
    if (form.End == Ending::ZeroByte) bytes.Byte(std::uint8_t{0});
}

// A two-character string stored in text order, as the Altair-era
// assemblers store `dw 'AB'` (41 42); nothing for any other operand.
std::optional<Value> TextOrderWord(Assembly& run, std::string_view operand) {
    if (!IsQuotedString(operand)) return {};
    const std::string characters = run.ConvertQuotedString(operand);
    if (characters.size() != 2) return {};
    const auto code = [](char c) {
        return static_cast<std::int32_t>(static_cast<unsigned char>(c));
    };
    return Value{code(characters[0]) | code(characters[1]) << 8};
}

void EmitWords(Assembly& run, Statement& statement) {
    if (MissingOperands(run, statement)) return;
    DataBytes bytes(run, statement.BytesText);
    const bool textOrder = run.State().Options.WordStringsInTextOrder;
    for (const std::string_view field : statement.OperandList) {
        const std::string_view operand = TrimBlanks(field);
        if (textOrder) {
            if (const std::optional<Value> word = TextOrderWord(run, operand)) {
                bytes.Word(*word);
                continue;
            }
        }
        bytes.Word(run.EvaluateOperand(operand, 16));
    }
}

// Reserved space is never filled in the object texts: their records restart
// after it. Its size must be known at once, since every later address
// depends on it.
void Reserve(Assembly& run, Statement& statement) {
    const OperandReader operands(run, statement);
    operands.CheckOperandCount(1);
    const std::string_view operand = TrimBlanks(operands.Operand(0));
    const Value size = run.EvaluateOperand(operand, 16);
    if (IsEmpty(size)) {
        run.TerminalStop(operand);
        return;
    }
    RunState& state = run.State();
    state.LocationCounter += WholeNumber(size);
    run.RestartOutputRecords(static_cast<std::uint16_t>(state.LocationCounter));
}

// `ds n,fill` (Compatible mode): n bytes of the fill value, emitted like
// data; `ds n` reserves as ever.
void ReserveOrFill(Assembly& run, Statement& statement) {
    if (statement.OperandCount() != 2) return Reserve(run, statement);
    const std::string_view countText = TrimBlanks(statement.OperandList[0]);
    const Value count = run.EvaluateOperand(countText, 16);
    if (IsEmpty(count)) {
        run.TerminalStop(countText);
        return;
    }
    const Value fill = run.EvaluateOperand(TrimBlanks(statement.OperandList[1]), 8);
    DataBytes bytes(run, statement.BytesText);
    for (std::int32_t i = WholeNumber(count) & 0xFFFF; i > 0; --i) bytes.Byte(fill);
}

void EmitText(Assembly& run, Statement& statement, const Form& form) {
    const OperandReader operands(run, statement);
    operands.CheckOperandCount(1);
    if (statement.OperandList.empty()) return;
    DataBytes bytes(run, statement.BytesText);
    const std::string text = run.ConvertQuotedString(TrimBlanks(operands.Operand(0)));
    EmitCharacters(bytes, text, form.End == Ending::MarkLastCharacter);
    if (form.End == Ending::ZeroByte) bytes.Byte(std::uint8_t{0});
}

void EmitIeee(Assembly& run, Statement& statement, const Form& form) {
    if (MissingOperands(run, statement)) return;
    DataBytes bytes(run, statement.BytesText);
    const bool single = form.Kind == Family::IeeeSingle;
    const int size = single ? 4 : 8;
    for (const std::string_view operand : statement.OperandList) {
        const double number = IeeeNumber(run, TrimBlanks(operand));
        const std::uint64_t bits = single ? std::bit_cast<std::uint32_t>(static_cast<float>(number))
                                          : std::bit_cast<std::uint64_t>(number);
        for (int i = 0; i < size; ++i) {
            const int shift = 8 * (form.MostSignificantFirst ? size - 1 - i : i);
            bytes.Byte(static_cast<std::uint8_t>((bits >> shift) & 0xFFu));
        }
    }
}

template <Family Kind, Ending End = Ending::Plain, bool MostSignificantFirst = false>
void Emit(Assembly& run, Statement& statement) {
    constexpr Form form{Kind, End, MostSignificantFirst};
    switch (Kind) {
    case Family::Bytes:
        return EmitBytes(run, statement, form);
    case Family::Words:
        return EmitWords(run, statement);
    case Family::Storage:
        return Reserve(run, statement);
    case Family::Text:
        return EmitText(run, statement, form);
    case Family::IeeeSingle:
    case Family::IeeeDouble:
        return EmitIeee(run, statement, form);
    }
}

constexpr LineCategory Data = LineCategory::Directive;

constexpr std::array<Directive, 26> DataDirectives{{
    {"db", Data, Emit<Family::Bytes>},
    {"defb", Data, Emit<Family::Bytes>},
    {".ascii", Data, Emit<Family::Bytes>},
    // Unlike .ascii, dm and defm mark the end of their text in bit 7.
    {"dm", Data, Emit<Family::Bytes, Ending::MarkLastCharacter>},
    {"defm", Data, Emit<Family::Bytes, Ending::MarkLastCharacter>},
    {"dz", Data, Emit<Family::Bytes, Ending::ZeroByte>},
    {"defz", Data, Emit<Family::Bytes, Ending::ZeroByte>},
    {".asciz", Data, Emit<Family::Bytes, Ending::ZeroByte>},
    {"dc", Data, Emit<Family::Bytes, Ending::MarkLastByte>},
    {"defc", Data, Emit<Family::Bytes, Ending::MarkLastByte>},
    {".ascis", Data, Emit<Family::Bytes, Ending::MarkLastByte>},
    {"dw", Data, Emit<Family::Words>},
    {"defw", Data, Emit<Family::Words>},
    {"ds", Data, Emit<Family::Storage>},
    {"defs", Data, Emit<Family::Storage>},
    {"text", Data, Emit<Family::Text>},
    {"dt", Data, Emit<Family::Text>},
    {"texz", Data, Emit<Family::Text, Ending::ZeroByte>},
    {"textz", Data, Emit<Family::Text, Ending::ZeroByte>},
    {"texts", Data, Emit<Family::Text, Ending::MarkLastCharacter>},
    {"i3es", Data, Emit<Family::IeeeSingle>},
    {"i3es_le", Data, Emit<Family::IeeeSingle>},
    {"i3es_be", Data, Emit<Family::IeeeSingle, Ending::Plain, true>},
    {"i3ed", Data, Emit<Family::IeeeDouble>},
    {"i3ed_le", Data, Emit<Family::IeeeDouble>},
    {"i3ed_be", Data, Emit<Family::IeeeDouble, Ending::Plain, true>},
}};

// Compatible mode's rows, looked up first: the Zilog and Microsoft-style
// defm stores plain text.
constexpr std::array<Directive, 4> CompatibleDataDirectives{{
    {"dm", Data, Emit<Family::Bytes>},
    {"defm", Data, Emit<Family::Bytes>},
    {"ds", Data, ReserveOrFill},
    {"defs", Data, ReserveOrFill},
}};

} // namespace

std::span<const Directive> DataDirectiveTable() {
    return DataDirectives;
}

std::span<const Directive> CompatibleDataDirectiveTable() {
    return CompatibleDataDirectives;
}

} // namespace trident
