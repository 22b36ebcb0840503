#include "frontend/ViewText.h"

#include "assembler/ListingColours.h"

#include <QHash>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>

namespace trident::ViewText {
namespace {

quint32 Packed(const Colour& colour) {
    return quint32(colour.Red) << 16 | quint32(colour.Green) << 8 | colour.Blue;
}

bool IsKind(const QTextBlock& line, Diagnostics kind) {
    if (!line.text().startsWith(QLatin1Char('~'))) return false;
    const QColor ink = line.begin().fragment().charFormat().foreground().color();
    const bool error = ink == ToQColor(ListingColours::Error);
    const bool warning = ink == ToQColor(ListingColours::Warning);
    switch (kind) {
    case Diagnostics::Errors:
        return error;
    case Diagnostics::Warnings:
        return warning;
    case Diagnostics::Both:
        return error || warning;
    }
    return false;
}

} // namespace

QColor ToQColor(const Colour& colour) {
    return QColor(colour.Red, colour.Green, colour.Blue);
}

void Show(QPlainTextEdit& view, const ColouredText& text) {
    QTextDocument* document = view.document();
    document->setUndoRedoEnabled(false);
    document->clear();
    // One edit block: the layout hears of the new text once, not once per
    // run, which is what keeps a listing of a hundred thousand lines quick.
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    QHash<quint32, QTextCharFormat> formats;
    const std::string_view all = text.Text();
    for (const ColouredText::Run& run : text.Runs()) {
        auto format = formats.find(Packed(run.Ink));
        if (format == formats.end()) {
            QTextCharFormat ink;
            ink.setForeground(ToQColor(run.Ink));
            format = formats.insert(Packed(run.Ink), ink);
        }
        cursor.insertText(QString::fromLatin1(all.data() + run.Start, qsizetype(run.Length)),
                          *format);
    }
    cursor.endEditBlock();
    view.moveCursor(QTextCursor::Start);
}

int LineAt(std::string_view text, std::size_t offset) {
    int line = 0;
    const std::size_t end = std::min(offset, text.size());
    for (std::size_t at = 0; at < end; ++at) {
        if (text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n') ++at;
        if (text[at] == '\r' || text[at] == '\n') ++line;
    }
    return line;
}

QString HexDump(const std::string& image, int lowest) {
    QString dump;
    for (std::size_t offset = 0; offset < image.size(); offset += 16) {
        dump += QStringLiteral("%1 ").arg(lowest + int(offset), 4, 16, QLatin1Char('0')).toUpper();
        for (std::size_t i = offset; i < image.size() && i < offset + 16; ++i)
            dump += QStringLiteral(" %1")
                        .arg(static_cast<unsigned char>(image[i]), 2, 16, QLatin1Char('0'))
                        .toUpper();
        dump += QLatin1Char('\n');
    }
    return dump;
}

int FindDiagnosticLine(const QTextDocument& listing, int fromLine, Diagnostics kind) {
    const QTextBlock start = listing.findBlockByNumber(fromLine);
    for (QTextBlock line = start; line.isValid(); line = line.next())
        if (IsKind(line, kind)) return line.blockNumber();
    for (QTextBlock line = listing.begin(); line.isValid() && line != start; line = line.next())
        if (IsKind(line, kind)) return line.blockNumber();
    return -1;
}

} // namespace trident::ViewText
