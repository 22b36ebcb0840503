#include "macros/MacroText.h"

#include "assembler/LineScanner.h"
#include "assembler/SourceStatement.h"

#include <array>

namespace trident::MacroText {
namespace {

// The characters that end a word of a replayed field.
constexpr std::string_view Delimiters = "\t +-*/\\%<=>&!#^|()'\"";

constexpr std::array<bool, 256> DelimiterTable() {
    std::array<bool, 256> table{};
    for (const char c : Delimiters) table[static_cast<unsigned char>(c)] = true;
    return table;
}

constexpr std::array<bool, 256> IsDelimiterTable = DelimiterTable();

bool IsDelimiter(char c) {
    return IsDelimiterTable[static_cast<unsigned char>(c)];
}

// An argument passed in angle brackets is substituted without them; that is
// how a text with commas reaches the body as one argument.
std::string_view Unbracketed(std::string_view text) {
    if (text.size() >= 2 && text.front() == '<' && text.back() == '>')
        return text.substr(1, text.size() - 2);
    return text;
}

std::string ReplaceWords(std::string_view text, const ParameterMap& parameters) {
    std::string result;
    result.reserve(text.size());
    std::size_t pos = 0;
    while (pos < text.size()) {
        const std::size_t start = pos;
        const bool delimiters = IsDelimiter(text[pos]);
        while (pos < text.size() && IsDelimiter(text[pos]) == delimiters) ++pos;
        const std::string_view run = text.substr(start, pos - start);
        const std::string* bound = delimiters ? nullptr : parameters.Find(run);
        result += bound ? Unbracketed(*bound) : run;
    }
    return result;
}

// "^" escapes the next "^" or "&"; an unescaped "&" is a join and vanishes,
// and so does every single "^" (2^3 in a body becomes 23).
std::string ResolveJoins(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    bool escaped = false;
    for (const char c : text) {
        if (c == '^' || c == '&') {
            if (escaped) result += c;
            escaped = c == '^' && !escaped;
            continue;
        }
        result += c;
    }
    return result;
}

} // namespace

std::string ComposeLine(std::string_view label, std::string_view operation,
                        std::span<const std::string_view> operands, std::string_view comment) {
    if (label.empty() && operation.empty() && operands.empty()) return std::string(comment);
    std::string line(label);
    line.append("\t").append(operation).append("\t");
    for (std::size_t i = 0; i < operands.size(); ++i) {
        if (i > 0) line += ',';
        line += operands[i];
    }
    if (!comment.empty()) line.append("\t").append(comment);
    return line;
}

std::string SubstituteParameters(std::string_view text, const ParameterMap& parameters) {
    return ResolveJoins(ReplaceWords(text, parameters));
}

std::string SubstituteLine(std::string_view line, const ParameterMap& parameters) {
    std::vector<SourceStatement> statements;
    LineScanner::SplitSourceLine(line, statements);
    std::vector<std::string> operands;
    std::vector<std::string_view> operandViews;
    std::string result;
    for (std::size_t i = 0; i < statements.size(); ++i) {
        const SourceStatement& statement = statements[i];
        if (i > 0) result += '!';
        LineScanner::SplitOperands(statement.Operands, operands);
        for (std::string& operand : operands) operand = SubstituteParameters(operand, parameters);
        operandViews.assign(operands.begin(), operands.end());
        result += ComposeLine(SubstituteParameters(statement.Label, parameters),
                              SubstituteParameters(statement.Operation, parameters), operandViews,
                              statement.Comment);
    }
    return result;
}

} // namespace trident::MacroText
