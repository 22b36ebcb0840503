#pragma once

#include "assembler/WordKind.h"

#include <QSyntaxHighlighter>
#include <functional>
#include <string_view>

namespace trident {

// Colours a source file's lines: labels, operation words by what the
// assembler makes of them, numbers and strings in the operands, comments.
// Lines are cut into fields by the assembler's own scanner, and words are
// classified by the assembler (ClassifyWord), so the colours follow the
// dispatch rather than a list of the window's own.
class SourceHighlighter : public QSyntaxHighlighter {
    Q_OBJECT

  public:
    using Classifier = std::function<WordKind(std::string_view)>;

    SourceHighlighter(QTextDocument* document, Classifier classify);

  protected:
    void highlightBlock(const QString& text) override;

  private:
    void ColourOperands(std::string_view line, std::string_view operands);
    void Paint(std::string_view line, std::string_view field, const QTextCharFormat& format);

    Classifier pClassify;
};

} // namespace trident
