#include "macros/MacroText.h"

#include "source/LineScanner.h"
#include "source/RunFailure.h"
#include "source/SourceStatement.h"

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

// The line grows by whole arguments: it is measured after each, before it
// can double again.
void AppendReplacedWords(std::string& out, std::string_view text, const ParameterMap& parameters,
                         std::size_t longest) {
    std::size_t pos = 0;
    while (pos < text.size()) {
        const std::size_t start = pos;
        const bool delimiters = IsDelimiter(text[pos]);
        while (pos < text.size() && IsDelimiter(text[pos]) == delimiters) ++pos;
        const std::string_view run = text.substr(start, pos - start);
        const std::string* bound = delimiters ? nullptr : parameters.Find(run);
        const std::string_view piece = bound ? Unbracketed(*bound) : run;
        if (out.size() + piece.size() > longest) [[unlikely]]
            throw LimitReached("a line of macro expansion longer than " + std::to_string(longest) +
                               " characters");
        out += piece;
    }
}

// "^" escapes the next "^" or "&"; an unescaped "&" is a join and vanishes,
// and so does every single "^" (2^3 in a body becomes 23). Works on the
// text from `from` on, in place.
void ResolveJoins(std::string& text, std::size_t from) {
    std::size_t to = from;
    bool escaped = false;
    for (std::size_t i = from; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '^' || c == '&') {
            if (escaped) text[to++] = c;
            escaped = c == '^' && !escaped;
            continue;
        }
        text[to++] = c;
    }
    text.resize(to);
}

// Appends `text` with its parameters substituted.
void AppendSubstituted(std::string& out, std::string_view text, const ParameterMap& parameters,
                       std::size_t longest = std::string::npos) {
    const std::size_t start = out.size();
    AppendReplacedWords(out, text, parameters, longest);
    ResolveJoins(out, start);
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
    std::string result;
    AppendSubstituted(result, text, parameters);
    return result;
}

// As ComposeLine on the substituted fields, composed in one buffer.
void SubstituteLine(std::string_view line, const ParameterMap& parameters, Dialect dialect,
                    ScannedLine& scratch, std::string& result, std::size_t longest) {
    scratch.Scan(line, dialect);
    result.clear();
    result.reserve(line.size() + 16);
    for (std::size_t i = 0; i < scratch.Statements.size(); ++i) {
        const SourceStatement& statement = scratch.Statements[i];
        if (i > 0) result += '!';
        const std::size_t lineStart = result.size();
        AppendSubstituted(result, statement.Label, parameters, longest);
        const bool noLabel = result.size() == lineStart;
        result += '\t';
        const std::size_t operationStart = result.size();
        AppendSubstituted(result, statement.Operation, parameters, longest);
        const bool noOperation = result.size() == operationStart;
        if (statement.TooManyOperands) LineScanner::FailTooManyOperands();
        const std::span<const std::string_view> operands = scratch.OperandsOf(statement);
        if (noLabel && noOperation && operands.empty()) {
            result.resize(lineStart);
            result += statement.Comment;
            continue;
        }
        result += '\t';
        for (std::size_t k = 0; k < operands.size(); ++k) {
            if (k > 0) result += ',';
            AppendSubstituted(result, operands[k], parameters, longest);
        }
        if (!statement.Comment.empty()) result.append("\t").append(statement.Comment);
    }
}

} // namespace trident::MacroText
