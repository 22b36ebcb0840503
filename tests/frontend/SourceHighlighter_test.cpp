// Source colours: fields cut by the assembler's scanner, operation words
// classified by the assembler's tables.
#include "assembler/ListingColours.h"
#include "encoder/OpcodeTable.h"
#include "frontend/SourceHighlighter.h"
#include "frontend/ViewText.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QtTest>

namespace trident {
namespace {

// The ink of the character at `column` of the document's first line.
QColor InkAt(const QTextDocument& document, int column) {
    for (const QTextLayout::FormatRange& range : document.firstBlock().layout()->formats())
        if (column >= range.start && column < range.start + range.length)
            return range.format.foreground().color();
    return {};
}

} // namespace

class SourceHighlighterTest : public QObject {
    Q_OBJECT

  private slots:
    void eachFieldTakesItsColour() {
        OpcodeTable opcodes;
        opcodes.LoadOpcodeTable(TRIDENT_BIN_DIR "/OpTable.def");
        const QColor label(0, 96, 128), instruction(0, 0, 160), none;
        const QColor directive = ViewText::ToQColor(ListingColours::Directive);
        const QColor macro = ViewText::ToQColor(ListingColours::MacroCall);
        const QColor number = ViewText::ToQColor(ListingColours::Bytes);
        const QColor string = ViewText::ToQColor(ListingColours::Conditional);
        const QColor comment = ViewText::ToQColor(ListingColours::Comment);
        const struct {
            const char* Line;
            const char* At; // the text whose first character is looked at
            QColor Ink;
        } cases[] = {
            {"start: mvi a,5 ; five", "start", label},
            {"start: mvi a,5 ; five", "mvi", instruction},
            {"start: mvi a,5 ; five", "a,", none},
            {"start: mvi a,5 ; five", "5", number},
            {"start: mvi a,5 ; five", "; five", comment},
            {" LDIR", "LDIR", instruction},
            {" db 'a;b',0FFh ! twice", "'a;b'", string},
            {" db 'a;b',0FFh ! twice", ";b'", string},
            {" db 'a;b',0FFh ! twice", "0FFh", number},
            {" db 'a;b',0FFh ! twice", "db", directive},
            {" db 'a;b',0FFh ! twice", "twice", macro},
            {" thrice 1", "thrice", none},
            {"* a comment line", "a comment", comment},
            {" ifdef x", "ifdef", directive},
        };
        for (const auto& c : cases) {
            QTextDocument document;
            SourceHighlighter highlighter(&document, [&opcodes](std::string_view word) {
                return word == "twice" ? WordKind::Macro : ClassifyWord(word, opcodes);
            });
            document.setPlainText(QLatin1String(c.Line));
            highlighter.rehighlight();
            const int column = int(QString::fromLatin1(c.Line).indexOf(QLatin1String(c.At)));
            QVERIFY(column >= 0);
            QVERIFY2(InkAt(document, column) == c.Ink,
                     qPrintable(QStringLiteral("%1 in \"%2\"").arg(c.At, c.Line)));
        }
    }
};

} // namespace trident

QTEST_MAIN(trident::SourceHighlighterTest)
#include "SourceHighlighter_test.moc"
