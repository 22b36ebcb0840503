// The source view: a file's lines with their numbers, as the assembler
// numbers them, and the move to a line that a diagnostic names.
#include "GuiTestSupport.h"
#include "frontend/SourceView.h"

#include <QTemporaryDir>
#include <QTextBlock>
#include <QtTest>

namespace trident {

class SourceViewTest : public QObject {
    Q_OBJECT

  private:
    QTemporaryDir pDir;

    QString Write(const QString& name, const QByteArray& text) {
        const QString path = pDir.filePath(name);
        guitest::WriteAll(path, text);
        return path;
    }

  private slots:
    void aFileIsShownWithItsLineNumbers() {
        struct Case {
            const char* Name;
            QByteArray Text;
            int Lines;
            const char* Third;
        };
        QByteArray many;
        for (int line = 1; line <= 1200; ++line) many += " db " + QByteArray::number(line) + "\n";
        const Case cases[] = {
            {"crlf.asm", "start: mvi a,5\r\n nop\r\n jmp start\r\n", 4, " jmp start"},
            {"lf.asm", "a\nb\nc", 3, "c"},
            {"cr.asm", "a\rb\rc\r", 4, "c"},
            {"many.asm", many, 1201, " db 3"},
        };
        int narrowest = 0;
        for (const Case& c : cases) {
            SourceView view;
            view.resize(400, 300);
            view.show();
            QVERIFY(view.ShowFile(Write(QLatin1String(c.Name), c.Text)));
            QCOMPARE(view.blockCount(), c.Lines);
            QCOMPARE(view.document()->findBlockByNumber(2).text(), QLatin1String(c.Third));
            // The margin holds the line numbers and is as wide as the largest.
            auto* margin = view.findChild<QWidget*>(QStringLiteral("lineNumbers"));
            QVERIFY(margin && margin->isVisible());
            QCOMPARE(margin->width(), view.MarginWidth());
            QVERIFY(view.viewport()->geometry().left() >= view.MarginWidth());
            if (!narrowest) narrowest = view.MarginWidth();
            if (c.Lines > 1000) QVERIFY(view.MarginWidth() > narrowest);
        }
    }

    void goToLineSelectsThatLineAndShowsIt() {
        QByteArray text;
        for (int line = 1; line <= 500; ++line) text += " db " + QByteArray::number(line) + "\n";
        SourceView view;
        view.resize(400, 200);
        view.show();
        QVERIFY(view.ShowFile(Write(QStringLiteral("long.asm"), text)));
        view.GoToLine(420);
        QCOMPARE(view.CurrentLine(), 420);
        QCOMPARE(view.textCursor().selectedText(), QStringLiteral(" db 420"));
        QVERIFY(view.cursorForPosition(QPoint(0, 0)).blockNumber() > 300);
        view.GoToLine(9999); // past the end: stays
        QCOMPARE(view.CurrentLine(), 420);
    }

    void anUnreadableFileLeavesTheViewEmpty() {
        SourceView view;
        QVERIFY(view.ShowFile(Write(QStringLiteral("some.asm"), " nop\n")));
        QVERIFY(!view.ShowFile(pDir.filePath(QStringLiteral("missing.asm"))));
        QVERIFY(view.toPlainText().isEmpty());
        QVERIFY(view.File().isEmpty());
    }
};

} // namespace trident

QTEST_MAIN(trident::SourceViewTest)
#include "SourceView_test.moc"
