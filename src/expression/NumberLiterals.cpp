#include "expression/NumberLiterals.h"

#include "expression/CharTests.h"
#include "expression/NumericValue.h"
#include "expression/QuotedText.h"

#include <array>
#include <charconv>
#include <limits>
#include <optional>

namespace trident::expr {

namespace {

// Digit separators, allowed anywhere in a number and ignored.
constexpr std::string_view kSeparators = "_,$";

enum class Affix { Prefix, Suffix };

enum class RuleKind {
    Plain,             // digits in the rule's radix
    HexAfterZeroX,     // as Plain, unless the text starts with "0x": then hexadecimal
    FirstMustBeDigit,  // as Plain, but the text must start with a decimal digit
    CharacterConstant, // the whole text is a character constant
};

struct LiteralRule {
    Affix Where;
    std::string_view Marker;
    int Radix;
    RuleKind Kind;
};

// Tried in this order; the first rule whose marker matches decides. Suffixes
// come before prefixes, which is why "0x1b" and "0x1d" need their own test
// for "0x" and why "0b11b" is read as the binary digits "0b11".
constexpr std::array kRules{
    LiteralRule{Affix::Prefix, "&h", 16, RuleKind::Plain},
    LiteralRule{Affix::Prefix, "&o", 8, RuleKind::Plain},
    LiteralRule{Affix::Suffix, "b", 2, RuleKind::HexAfterZeroX},
    LiteralRule{Affix::Suffix, "o", 8, RuleKind::Plain},
    LiteralRule{Affix::Suffix, "q", 8, RuleKind::Plain},
    LiteralRule{Affix::Suffix, "d", 10, RuleKind::HexAfterZeroX},
    LiteralRule{Affix::Suffix, "h", 16, RuleKind::FirstMustBeDigit},
    LiteralRule{Affix::Suffix, "'", 0, RuleKind::CharacterConstant},
    LiteralRule{Affix::Prefix, "0b", 2, RuleKind::Plain},
    LiteralRule{Affix::Prefix, "0o", 8, RuleKind::Plain},
    LiteralRule{Affix::Prefix, "0q", 8, RuleKind::Plain},
    LiteralRule{Affix::Prefix, "0d", 10, RuleKind::Plain},
    LiteralRule{Affix::Prefix, "0x", 16, RuleKind::Plain},
};

struct RadixDigits {
    int Radix;
    bool (*IsDigit)(char);
    EvalError Fault;
};

// A bad hexadecimal digit is reported with the decimal code on purpose.
constexpr std::array kRadixDigits{
    RadixDigits{2, IsBinaryDigit, EvalError::InvalidBinaryDigit},
    RadixDigits{8, IsOctalDigit, EvalError::InvalidOctalDigit},
    RadixDigits{10, IsDecimalDigit, EvalError::InvalidDecimalDigit},
    RadixDigits{16, IsHexDigit, EvalError::InvalidDecimalDigit},
};

const RadixDigits& DigitsOfRadix(int radix) {
    for (const auto& digits : kRadixDigits) {
        if (digits.Radix == radix) return digits;
    }
    return kRadixDigits[2];
}

int DigitValue(char lower) {
    return IsDecimalDigit(lower) ? lower - '0' : lower - 'a' + 10;
}

bool Matches(const LiteralRule& rule, std::string_view lower) {
    return rule.Where == Affix::Prefix ? lower.starts_with(rule.Marker)
                                       : lower.ends_with(rule.Marker);
}

std::string_view DigitsOf(const LiteralRule& rule, std::string_view text) {
    return rule.Where == Affix::Prefix ? text.substr(rule.Marker.size())
                                       : text.substr(0, text.size() - rule.Marker.size());
}

// Digits of one radix, left to right; the values stay exact up to 2 to the
// power 53. An empty digit string is 0.
Value ConvertDigits(std::string_view digits, int radix, ErrorList& errors) {
    const RadixDigits& kind = DigitsOfRadix(radix);
    double value = 0.0;
    for (const char c : StripChars(digits, kSeparators)) {
        const char lower = ToLowerAscii(c);
        if (!kind.IsDigit(lower)) {
            errors.AddError(kind.Fault, std::string(1, c));
            return {};
        }
        value = value * radix + DigitValue(lower);
    }
    return MakeWhole(value);
}

std::size_t SkipDigits(std::string_view text, std::size_t pos) {
    while (pos < text.size() && IsDecimalDigit(text[pos])) ++pos;
    return pos;
}

// Optional sign, digits with an optional point and fraction, optional
// exponent: the ordinary decimal notation.
bool IsDecimalNotation(std::string_view text) {
    std::size_t pos = (!text.empty() && (text[0] == '+' || text[0] == '-')) ? 1 : 0;
    const std::size_t intStart = pos;
    pos = SkipDigits(text, pos);
    std::size_t digitCount = pos - intStart;
    if (pos < text.size() && text[pos] == '.') {
        const std::size_t fractionStart = ++pos;
        pos = SkipDigits(text, pos);
        digitCount += pos - fractionStart;
    }
    if (digitCount == 0) return false;
    if (pos < text.size() && (text[pos] == 'e' || text[pos] == 'E')) {
        ++pos;
        if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) ++pos;
        const std::size_t exponentStart = pos;
        pos = SkipDigits(text, pos);
        if (pos == exponentStart) return false;
    }
    return pos == text.size();
}

// Plain decimal text. Written without point or exponent and within 32 bits
// it is an integer, so that "10" counts like any other integer in
// arithmetic; with a point or an exponent, or beyond 32 bits, it is a
// double ("1.5", "1e3", "1.0").
Value ConvertDecimal(std::string_view text, ErrorList& errors) {
    const std::string cleaned = StripChars(text, kSeparators);
    double value = 0.0;
    bool parsed = IsDecimalNotation(cleaned);
    if (parsed) {
        const std::size_t skip = cleaned[0] == '+' ? 1 : 0;
        const auto [end, ec] =
            std::from_chars(cleaned.data() + skip, cleaned.data() + cleaned.size(), value);
        parsed = ec == std::errc{} && end == cleaned.data() + cleaned.size();
    }
    if (!parsed) {
        errors.AddError(EvalError::InvalidNumber, cleaned);
        return {};
    }
    if (cleaned.find_first_of(".eE") != std::string::npos) return value;
    return MakeWhole(value);
}

Value ApplyRule(const LiteralRule& rule, std::string_view text, std::string_view lower,
                ErrorList& errors) {
    switch (rule.Kind) {
    case RuleKind::HexAfterZeroX:
        if (lower.starts_with("0x")) return ConvertDigits(text.substr(2), 16, errors);
        break;
    case RuleKind::FirstMustBeDigit:
        if (!IsDecimalDigit(text.front())) {
            errors.AddError(EvalError::MustStartWithDigit, text);
            return {};
        }
        break;
    case RuleKind::CharacterConstant:
        if (!text.starts_with('\'')) {
            errors.AddError(EvalError::InvalidSingleQuotes, text);
            return {};
        }
        return SingleQuoteStrToNumber(text, errors);
    case RuleKind::Plain:
        break;
    }
    return ConvertDigits(DigitsOf(rule, text), rule.Radix, errors);
}

bool IsEnclosedIn(std::string_view text, char quote) {
    return text.size() >= 2 && text.front() == quote && text.back() == quote;
}

// Records the fault that stopped a decoding; loneQuote is the code for a
// lone quote, which depends on the kind of literal.
void ReportQuoteFault(QuoteFault fault, EvalError loneQuote, std::string_view text,
                      ErrorList& errors) {
    switch (fault) {
    case QuoteFault::None:
        return;
    case QuoteFault::LoneQuote:
        errors.AddError(loneQuote, text);
        return;
    case QuoteFault::OctalOverflow:
        errors.AddError(EvalError::InvalidOctalEscape);
        return;
    case QuoteFault::TrailingEscape:
        errors.AddError(EvalError::InvalidEscape, text);
        return;
    }
}

// The two forms nearly every program writes, decimal digits alone and
// hexadecimal digits with an "h" after a leading decimal digit, read without
// the general rules: no rule's marker can match them, so the result is the
// same. Nothing when the text has another form or too many digits.
std::optional<Value> CommonNumber(std::string_view text) {
    if (text.size() < 1 || text.size() > 8 || !IsDecimalDigit(text.front())) return std::nullopt;
    const char last = text.back();
    const bool hex = last == 'h' || last == 'H';
    if (hex) text.remove_suffix(1);
    std::int32_t value = 0;
    for (const char c : text) {
        if (IsDecimalDigit(c)) {
            value = value * (hex ? 16 : 10) + (c - '0');
        } else if (hex && IsHexDigit(ToLowerAscii(c))) {
            value = value * 16 + (ToLowerAscii(c) - 'a' + 10);
        } else {
            return std::nullopt;
        }
    }
    return Value{value};
}

// Digits of `radix` alone (separators aside), starting with a decimal digit.
std::optional<Value> RadixNumber(std::string_view text, int radix) {
    if (text.empty() || !IsDecimalDigit(text.front())) return std::nullopt;
    double value = 0;
    for (const char c : text) {
        if (kSeparators.find(c) != std::string_view::npos) continue;
        const char lower = ToLowerAscii(c);
        const int digit = IsDecimalDigit(lower) ? lower - '0'
                          : IsHexDigit(lower)   ? lower - 'a' + 10
                                                : radix;
        if (digit >= radix) return std::nullopt;
        value = value * radix + digit;
    }
    return MakeWhole(value);
}

} // namespace

Value EvalNumber(std::string_view text, ErrorList& errors, int radix) {
    text = TrimBlanks(text);
    if (radix != 10)
        if (const auto number = RadixNumber(text, radix)) return *number;
    if (const auto common = CommonNumber(text)) return *common;
    const std::string lower = LowerCase(text);
    for (const auto& rule : kRules) {
        if (Matches(rule, lower)) return ApplyRule(rule, text, lower, errors);
    }
    return ConvertDecimal(text, errors);
}

Value SingleQuoteStrToNumber(std::string_view text, ErrorList& errors) {
    if (!IsEnclosedIn(text, '\'')) {
        errors.AddError(EvalError::InvalidSingleQuotes, text);
        return {};
    }
    const DecodedText decoded = DecodeQuotedBody(text.substr(1, text.size() - 2), '\'');
    if (decoded.Fault != QuoteFault::None) {
        ReportQuoteFault(decoded.Fault, EvalError::InvalidSingleQuotes, text, errors);
        return {};
    }
    return CharacterCodes(decoded.Bytes);
}

Value CharacterCodes(std::string_view characters) {
    double value = 0.0;
    for (const char c : characters) value = value * 256.0 + static_cast<unsigned char>(c);
    return MakeWhole(value);
}

std::string DoubleQuotedStringToString(std::string_view text, ErrorList& errors) {
    const char quote = text.empty() ? '"' : text.front();
    if (quote != '\'' && quote != '"')
        errors.AddError(EvalError::NonStandardQuote, text.substr(0, 1));
    if (text.size() < 2 || text.back() != quote) errors.AddError(EvalError::MismatchedQuotes, text);
    if (text.size() < 2) return {};
    DecodedText decoded = DecodeQuotedBody(text.substr(1, text.size() - 2), quote);
    ReportQuoteFault(decoded.Fault, EvalError::InvalidDoubleQuotes, text, errors);
    return std::move(decoded.Bytes);
}

} // namespace trident::expr
