#include "frontend/SourceHighlighter.h"

#include "assembler/ListingColours.h"
#include "frontend/ViewText.h"
#include "source/LineScanner.h"
#include "source/RunFailure.h"

#include <QTextCharFormat>
#include <array>
#include <cctype>
#include <string>
#include <vector>

namespace trident {
namespace {

enum class Token { Label, Instruction, Directive, Macro, Number, String, Comment, Count };

QTextCharFormat Ink(const Colour& colour, bool bold = false) {
    QTextCharFormat format;
    format.setForeground(ViewText::ToQColor(colour));
    if (bold) format.setFontWeight(QFont::Bold);
    return format;
}

// The source's tokens in the listing's inks where the listing has one.
const QTextCharFormat& FormatOf(Token token) {
    static const std::array<QTextCharFormat, std::size_t(Token::Count)> formats{
        Ink(Colour{0, 96, 128}, true),    // label
        Ink(Colour{0, 0, 160}, true),     // instruction
        Ink(ListingColours::Directive),   // directive
        Ink(ListingColours::MacroCall),   // macro call
        Ink(ListingColours::Bytes),       // number
        Ink(ListingColours::Conditional), // string
        Ink(ListingColours::Comment),     // comment
    };
    return formats[std::size_t(token)];
}

Token TokenOf(WordKind kind) {
    switch (kind) {
    case WordKind::Instruction:
        return Token::Instruction;
    case WordKind::Macro:
        return Token::Macro;
    default:
        return Token::Directive;
    }
}

bool IsWordChar(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '$' || c == '?' ||
           c == '@' || c == '.';
}

// The quoted text that begins at `from`, closing quote and escapes included.
std::size_t QuotedLength(std::string_view text, std::size_t from) {
    const char quote = text[from];
    std::size_t at = from + 1;
    for (bool escaped = false; at < text.size(); ++at) {
        if (text[at] == quote && !escaped) return at + 1 - from;
        escaped = text[at] == '\\' && !escaped;
    }
    return at - from;
}

} // namespace

SourceHighlighter::SourceHighlighter(QTextDocument* document, Classifier classify)
    : QSyntaxHighlighter(document), pClassify(std::move(classify)) {}

void SourceHighlighter::highlightBlock(const QString& text) {
    const std::string line = text.toLatin1().toStdString();
    std::vector<SourceStatement> statements;
    std::vector<std::string_view> operands;
    try {
        LineScanner::ScanLine(line, statements, operands);
    } catch (const RunFailure&) {
        // Too many statements for the assembler: shown as they are.
        return;
    }
    for (const SourceStatement& s : statements) {
        Paint(line, s.Label, FormatOf(Token::Label));
        const WordKind kind = pClassify ? pClassify(s.Operation) : WordKind::Other;
        if (kind != WordKind::Other) Paint(line, s.Operation, FormatOf(TokenOf(kind)));
        ColourOperands(line, s.Operands);
        Paint(line, s.Comment, FormatOf(Token::Comment));
    }
}

void SourceHighlighter::ColourOperands(std::string_view line, std::string_view operands) {
    for (std::size_t at = 0; at < operands.size();) {
        const char c = operands[at];
        std::size_t length = 1;
        if (c == '\'' || c == '"') {
            length = QuotedLength(operands, at);
            Paint(line, operands.substr(at, length), FormatOf(Token::String));
        } else if (IsWordChar(c)) {
            while (at + length < operands.size() && IsWordChar(operands[at + length])) ++length;
            // A word that begins with a digit is a number in some radix.
            if (std::isdigit(static_cast<unsigned char>(c)))
                Paint(line, operands.substr(at, length), FormatOf(Token::Number));
        }
        at += length;
    }
}

void SourceHighlighter::Paint(std::string_view line, std::string_view field,
                              const QTextCharFormat& format) {
    if (field.empty()) return;
    setFormat(int(field.data() - line.data()), int(field.size()), format);
}

} // namespace trident
