// The coloured views and the search for diagnostic lines in them.
#include "assembler/ListingColours.h"
#include "frontend/ViewText.h"

#include <QPlainTextEdit>
#include <QTextBlock>
#include <QtTest>
#include <ctime>

namespace trident {

class ViewTextTest : public QObject {
    Q_OBJECT

  private slots:
    void diagnosticSearchGoesByMarkAndColourAndWraps() {
        ColouredText text;
        text.Append("~Invalid Directive ~ foo\r\n", ListingColours::Error);           // 0
        text.Append("0000\tnop\r\n", ListingColours::Plain);                          // 1
        text.Append("~Z80 Warning ~ ldir\r\n", ListingColours::Warning);              // 2
        text.Append("~ a comment line, not a diagnostic\r\n", ListingColours::Plain); // 3
        text.Append("0001\t~ in the middle\r\n", ListingColours::Plain);              // 4
        text.Append("~Invalid Directive ~ bar\r\n", ListingColours::Error);           // 5
        QPlainTextEdit view;
        ViewText::Show(view, text);
        const QTextDocument& listing = *view.document();
        using ViewText::Diagnostics;
        QCOMPARE(ViewText::FindDiagnosticLine(listing, 0, Diagnostics::Errors), 0);
        QCOMPARE(ViewText::FindDiagnosticLine(listing, 1, Diagnostics::Errors), 5);
        QCOMPARE(ViewText::FindDiagnosticLine(listing, 6, Diagnostics::Errors), 0);
        QCOMPARE(ViewText::FindDiagnosticLine(listing, 1, Diagnostics::Warnings), 2);
        QCOMPARE(ViewText::FindDiagnosticLine(listing, 3, Diagnostics::Warnings), 2);
        QCOMPARE(ViewText::FindDiagnosticLine(listing, 3, Diagnostics::Both), 5);

        QPlainTextEdit clean;
        ViewText::Show(clean, ColouredText{});
        QCOMPARE(ViewText::FindDiagnosticLine(*clean.document(), 0, Diagnostics::Both), -1);
    }

    // A listing offset names the view line that Show puts it on, whatever
    // ends the lines before it.
    void anOffsetIsFoundOnTheLineTheViewShowsItOn() {
        ColouredText text;
        text.Append("0000\tnop\r\n#a\r\n", ListingColours::Plain);
        text.Append("x\ry\n#b", ListingColours::Error);
        text.Append("\r\n\r\n#c\n", ListingColours::Warning);
        QPlainTextEdit view;
        ViewText::Show(view, text);
        const std::string_view all = text.Text();
        int marks = 0;
        for (std::size_t at = all.find('#'); at != std::string_view::npos;
             at = all.find('#', at + 1), ++marks) {
            const int line = ViewText::LineAt(all, at);
            QCOMPARE(view.document()->findBlockByNumber(line).text().left(1), QStringLiteral("#"));
        }
        QCOMPARE(marks, 3);
        QCOMPARE(ViewText::LineAt(all, all.size() + 10), view.document()->blockCount() - 1);
    }

    void aHundredThousandLineListingShowsQuickly() {
        ColouredText text;
        for (int line = 0; line < 100000; ++line) {
            text.Append("1234", ListingColours::Plain);
            text.Append("3E05\t", ListingColours::Bytes);
            text.Append("label\tmvi\ta,5\t", ListingColours::Z80Instruction);
            text.Append("; comment\t", ListingColours::Comment);
            text.Append("\r\n", ListingColours::Plain);
            if (line % 1000 == 0)
                text.Append("~Value out of Range ~ 256\r\n", ListingColours::Error);
        }
        QPlainTextEdit view;
        view.resize(600, 400);
        view.show();
        // Processor time, not wall time: the bound must hold on a busy
        // machine, and one insertion at a time without an edit block takes
        // minutes for this many lines.
        const std::clock_t start = std::clock();
        ViewText::Show(view, text);
        QCoreApplication::processEvents();
        const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
        QCOMPARE(view.document()->blockCount(), 100000 + 100 + 1);
        QVERIFY2(seconds < 10, qPrintable(QStringLiteral("%1 s").arg(seconds)));
    }
};

} // namespace trident

QTEST_MAIN(trident::ViewTextTest)
#include "ViewText_test.moc"
