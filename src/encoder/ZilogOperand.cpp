#include "encoder/ZilogOperand.h"

#include "base/Text.h"

#include <array>
#include <optional>

namespace trident {
namespace {

using enum ZilogShape;

struct NamedOperand {
    std::string_view Text; // lower case; blanks next to the parentheses dropped
    ZilogShape Shape;
    std::string_view Name;
    std::string_view Intel;
};

constexpr std::array<NamedOperand, 24> NamedOperands{{
    {"a", Register, "a", "a"},         {"b", Register, "b", "b"},
    {"c", Register, "c", "c"},         {"d", Register, "d", "d"},
    {"e", Register, "e", "e"},         {"h", Register, "h", "h"},
    {"l", Register, "l", "l"},         {"i", Register, "i", "i"},
    {"r", Register, "r", "r"},         {"bc", Pair, "bc", "bc"},
    {"de", Pair, "de", "de"},          {"hl", Pair, "hl", "hl"},
    {"sp", Pair, "sp", "sp"},          {"ix", Pair, "ix", "ix"},
    {"iy", Pair, "iy", "iy"},          {"af", Pair, "af", "psw"},
    {"af'", AlternateAf, "af'", ""},   {"(hl)", HlMemory, "hl", "m"},
    {"(bc)", PairMemory, "bc", "bc"},  {"(de)", PairMemory, "de", "de"},
    {"(sp)", PairMemory, "sp", "sp"},  {"(c)", CPort, "c", ""},
    {"(ix)", IndexBare, "ix", "(ix)"}, {"(iy)", IndexBare, "iy", "(iy)"},
}};

const NamedOperand* FindNamed(std::string_view key) {
    for (const NamedOperand& named : NamedOperands)
        if (named.Text == key) return &named;
    return nullptr;
}

// Whether the parenthesis that closes the first character is the last
// character: (5) and ((x)+1) are, (x+1)*2 and (1)+(2) are not. Parentheses
// inside quotes do not count.
bool WhollyParenthesized(std::string_view text) {
    if (text.size() < 2 || text.front() != '(' || text.back() != ')') return false;
    int depth = 0;
    char quote = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (quote != 0) {
            if (c == quote) quote = 0;
        } else if (c == '\'' || c == '"') {
            quote = c;
        } else if (c == '(') {
            ++depth;
        } else if (c == ')' && --depth == 0) {
            return at + 1 == text.size();
        }
    }
    return false;
}

// (ix+d) and (iy-d): the 8080-style form writes the displacement in front of
// the index register, d(ix) and -d(iy).
std::optional<ZilogOperand> ReadIndexed(std::string_view inner) {
    const std::string index = LowerCase(inner.substr(0, 2));
    if (index != "ix" && index != "iy") return std::nullopt;
    std::string displacement = std::string(TrimBlanks(inner.substr(2)));
    if (displacement.empty() || (displacement.front() != '+' && displacement.front() != '-'))
        return std::nullopt;
    if (displacement.front() == '+')
        displacement = std::string(TrimBlanks(std::string_view(displacement).substr(1)));
    if (displacement.empty()) return std::nullopt;
    return ZilogOperand{Indexed, index, displacement + "(" + index + ")"};
}

} // namespace

ZilogOperand ZilogOperand::Read(std::string_view text) {
    const std::string trimmed = std::string(TrimBlanks(text));
    const bool parenthesized = WhollyParenthesized(trimmed);
    const std::string inner =
        parenthesized
            ? std::string(TrimBlanks(std::string_view(trimmed).substr(1, trimmed.size() - 2)))
            : std::string{};
    const std::string key = LowerCase(parenthesized ? "(" + inner + ")" : trimmed);
    if (const NamedOperand* named = FindNamed(key))
        return {named->Shape, std::string(named->Name), std::string(named->Intel)};
    if (!parenthesized) return {Value, LowerCase(trimmed), trimmed};
    if (std::optional<ZilogOperand> indexed = ReadIndexed(inner)) return *indexed;
    return {Memory, LowerCase(inner), inner};
}

} // namespace trident
