#pragma once

#include "output/ColouredText.h"

#include <QColor>
#include <QString>
#include <cstddef>
#include <string>
#include <string_view>

class QPlainTextEdit;
class QTextDocument;

namespace trident::ViewText {

// Replaces the view's text by `text`, each run in its colour. Bytes are
// shown one character each, as the source stored them.
void Show(QPlainTextEdit& view, const ColouredText& text);

// The object image from `lowest` to `highest` as a hexadecimal dump, sixteen
// bytes a line behind the line's address; empty when `image` is.
QString HexDump(const std::string& image, int lowest);

QColor ToQColor(const Colour& colour);

// The number of the view line that holds `offset` of `text` once Show has
// put it in a view: CR LF, a CR alone and an LF alone each end a line.
int LineAt(std::string_view text, std::size_t offset);

// Which diagnostic lines a search stops at.
enum class Diagnostics { Errors, Warnings, Both };

// The number of the next text line at or after `fromLine` that is a
// diagnostic of the asked kind (a line that begins with "~", an error in
// the error colour, a warning in the warning colour), searching on from the
// top after the end; -1 when the listing has none.
int FindDiagnosticLine(const QTextDocument& listing, int fromLine, Diagnostics kind);

} // namespace trident::ViewText
