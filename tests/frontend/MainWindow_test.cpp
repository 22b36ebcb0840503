// The main window driven as a user drives it: source box, Assemble, Stop,
// the views, the Next buttons, saving and the settings store.
#include "GuiTestSupport.h"
#include "frontend/ChangeWatcher.h"
#include "frontend/MainWindow.h"
#include "frontend/SourceView.h"

#include <QAction>
#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QStackedWidget>
#include <QStyleOptionButton>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

namespace trident {

using guitest::ReadAll;
using guitest::WhenModal;
using guitest::WithCrLf;

namespace {

// Eight bytes from address 0: 3E 05 21 34 12 C3 00 00.
constexpr const char* Program = "start: mvi a,5\r\n lxi h,1234h\r\n jmp start\r\n";
// Two errors (unknown operations) around one Z80 warning.
constexpr const char* TwoBadLines =
    "start: mvi a,5\n foo\n ldir\n lxi h,1234h\n bar 1\n jmp start\n";

template <class T> T* Child(QObject* window, const char* name) {
    return window->findChild<T*>(QLatin1String(name));
}

QString ViewOf(MainWindow& window, const char* name) {
    return Child<QPlainTextEdit>(&window, name)->toPlainText();
}

void AssembleIn(MainWindow& window, const QString& source) {
    Child<QLineEdit>(&window, "txtInFile")->setText(source);
    QTest::mouseClick(Child<QPushButton>(&window, "cmdAssemble"), Qt::LeftButton);
}

// Runs `action` once the window's run is under way, from inside the run.
void WhenRunning(MainWindow& window, std::function<void()> action, int triesLeft = 2000) {
    QTimer::singleShot(1, &window, [&window, action, triesLeft] {
        if (window.IsRunning())
            action();
        else if (triesLeft > 0)
            WhenRunning(window, action, triesLeft - 1);
    });
}

int RunBatchTool(const QStringList& arguments) {
    QProcess tool;
    tool.start(QStringLiteral(TRIDENT_BIN_DIR "/trident-asm"), arguments);
    tool.waitForFinished(60000);
    return tool.exitCode();
}

QString Setting(const char* key) {
    return MainWindow::Settings()->value(QLatin1String(key)).toString();
}

QString LabelText(MainWindow& window, const char* name) {
    return Child<QLabel>(&window, name)->text();
}

QColor LabelInk(MainWindow& window, const char* name) {
    return Child<QLabel>(&window, name)->palette().color(QPalette::WindowText);
}

QPoint IndicatorCentre(QRadioButton& button) {
    QStyleOptionButton option;
    option.initFrom(&button);
    return button.style()
        ->subElementRect(QStyle::SE_RadioButtonIndicator, &option, &button)
        .center();
}

// What the save dialog showed before it was answered with `target`.
struct SaveDialogSeen {
    QString Title;
    QString Proposed;
    QString Filter;
};

SaveDialogSeen SaveVia(MainWindow& window, const QString& target) {
    SaveDialogSeen seen;
    WhenModal<QFileDialog>([&seen, target](QFileDialog* dialog) {
        seen.Title = dialog->windowTitle();
        seen.Proposed = dialog->selectedFiles().value(0);
        seen.Filter = dialog->selectedNameFilter();
        dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(target);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    QTest::mouseClick(Child<QPushButton>(&window, "cmdSave"), Qt::LeftButton);
    return seen;
}

} // namespace

class WindowTest : public QObject {
    Q_OBJECT

  private:
    QTemporaryDir pConfig;
    QTemporaryDir pDir;
    QString pLongSource;
    QString pStoppedSource;

    QString Source(const QString& name, const QByteArray& text) {
        const QString path = pDir.filePath(name);
        guitest::WriteAll(path, text);
        return path;
    }

    static std::unique_ptr<MainWindow> NewWindow() {
        auto window = std::make_unique<MainWindow>();
        window->show();
        window->activateWindow();
        if (!QTest::qWaitForWindowActive(window.get())) qWarning("the window is not active");
        return window;
    }

  private slots:
    void initTestCase() {
        QVERIFY(pConfig.isValid() && pDir.isValid());
        QStandardPaths::setTestModeEnabled(true);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, pConfig.path());
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, pConfig.path());
        // Long enough that the run is still in its first pass when the
        // window first serves its events; the last line emits a word.
        QByteArray text;
        for (int line = 0; line < 200000; ++line) text += " ; statement\n";
        text += " lxi h,1234h\n";
        pLongSource = Source(QStringLiteral("long.asm"), text);
        // Three million expanded lines a pass: still in pass 1 when the
        // window first serves its events, however fast the machine.
        pStoppedSource = Source(QStringLiteral("stopped.asm"),
                                " rept 30000\n rept 100\n ; statement\n endm\n endm\n");
    }

    void init() { MainWindow::Settings()->clear(); }

    void assembleFillsEveryViewAsTheBatchToolWritesIt() {
        const QString source = Source(QStringLiteral("prog.asm"), Program);
        const QString out = pDir.filePath(QStringLiteral("batch"));
        QCOMPARE(RunBatchTool({source, QStringLiteral("--listing"), out + ".ls",
                               QStringLiteral("--hex"), out + ".hex", QStringLiteral("--srec"),
                               out + ".mx", QStringLiteral("--loader"), out + ".txt"}),
                 0);
        const auto window = NewWindow();
        AssembleIn(*window, source);

        QVERIFY(ViewOf(*window, "rtbListing").contains(QStringLiteral("0000\t3E05\tstart\tmvi")));
        QCOMPARE(WithCrLf(ViewOf(*window, "rtbListing")), ReadAll(out + ".ls"));
        QCOMPARE(WithCrLf(ViewOf(*window, "rtbHex")), ReadAll(out + ".hex"));
        QCOMPARE(WithCrLf(ViewOf(*window, "rtbSRec")), ReadAll(out + ".mx"));
        QCOMPARE(WithCrLf(ViewOf(*window, "rtbSDe")), ReadAll(out + ".txt"));
        QCOMPARE(ViewOf(*window, "txtBinary"), QStringLiteral("0000  3E 05 21 34 12 C3 00 00\n"));

        // The emitted bytes keep their colour in the view.
        const QTextBlock line =
            Child<QPlainTextEdit>(window.get(), "rtbListing")->document()->findBlockByNumber(0);
        const int bytesAt = int(line.text().indexOf(QStringLiteral("3E05")));
        QVERIFY(bytesAt > 0);
        QTextCursor cursor(line);
        cursor.setPosition(line.position() + bytesAt + 1);
        QCOMPARE(cursor.charFormat().foreground().color(), QColor(128, 64, 0));

        QCOMPARE(LabelText(*window, "lblMIN"), QStringLiteral("0x0000"));
        QCOMPARE(LabelText(*window, "lblMAX"), QStringLiteral("0x0007"));
        QCOMPARE(LabelText(*window, "lblSizeBytes"), QStringLiteral("0x8 - 8"));
        QCOMPARE(LabelText(*window, "lblErrors"), QStringLiteral("0"));
        QCOMPARE(LabelInk(*window, "lblErrors"), QColor(Qt::black));
        QCOMPARE(LabelText(*window, "lblPass"), QStringLiteral("0"));
        QCOMPARE(LabelText(*window, "lblLineCount"), QStringLiteral("3"));
        QVERIFY(window->windowTitle().contains(QStringLiteral("prog.asm")));
        QVERIFY(Child<QPushButton>(window.get(), "cmdAssemble")->isEnabled());
        QVERIFY(!Child<QPushButton>(window.get(), "cmdAbort")->isEnabled());
        QVERIFY(!QApplication::overrideCursor());
    }

    void anEmptyProgramShowsZeroAddressesAndAMissingOneChangesNothing() {
        const auto window = NewWindow();
        AssembleIn(*window, Source(QStringLiteral("empty.asm"), "; nothing here\n"));
        QCOMPARE(LabelText(*window, "lblMIN"), QStringLiteral("0x0000"));
        QCOMPARE(LabelText(*window, "lblMAX"), QStringLiteral("0x0000"));
        QCOMPARE(LabelText(*window, "lblSizeBytes"), QStringLiteral("0x0 - 0"));
        QCOMPARE(ViewOf(*window, "txtBinary"), QString());
        const QString listing = ViewOf(*window, "rtbListing");
        QVERIFY(!listing.isEmpty());
        for (const QString& missing : {pDir.filePath(QStringLiteral("none.asm")), QString()}) {
            Child<QLabel>(window.get(), "lblMIN")->setText(QStringLiteral("kept"));
            AssembleIn(*window, missing);
            QCOMPARE(ViewOf(*window, "rtbListing"), listing);
            QCOMPARE(LabelText(*window, "lblMIN"), QStringLiteral("kept"));
        }
    }

    void diagnosticsAreCountedInTheirColoursAndStepped() {
        const auto window = NewWindow();
        Child<QAbstractButton>(window.get(), "optHex")->click();
        AssembleIn(*window, Source(QStringLiteral("bad.asm"), TwoBadLines));
        QCOMPARE(LabelText(*window, "lblErrors"), QStringLiteral("2"));
        QCOMPARE(LabelText(*window, "lblWarnings"), QStringLiteral("1"));
        QCOMPARE(LabelInk(*window, "lblErrors"), QColor(200, 0, 0));
        QCOMPARE(LabelInk(*window, "lblWarnings"), QColor(100, 100, 0));

        auto* listing = Child<QPlainTextEdit>(window.get(), "rtbListing");
        const auto caretLine = [listing] { return listing->textCursor().block().text(); };
        const auto press = [&window](const char* name) {
            QTest::mouseClick(Child<QPushButton>(window.get(), name), Qt::LeftButton);
        };
        const QString foo = QStringLiteral("~Invalid Directive, Operation or Macro ~ foo");
        const QString bar = QStringLiteral("~Invalid Directive, Operation or Macro ~ bar");
        const QString ldir = QStringLiteral("~Z80 Warning ~ ldir");

        press("cmdNextError");
        QCOMPARE(qobject_cast<QStackedWidget*>(listing->parentWidget())->currentWidget(), listing);
        QVERIFY(Child<QRadioButton>(window.get(), "optList")->isChecked());
        QCOMPARE(caretLine(), foo);
        press("cmdNextError");
        QCOMPARE(caretLine(), bar);
        press("cmdNextError");
        QCOMPARE(caretLine(), foo); // on again from the top
        press("cmdNextWarning");
        QCOMPARE(caretLine(), ldir);

        listing->moveCursor(QTextCursor::Start);
        press("cmdNextBoth");
        QCOMPARE(caretLine(), foo);
        press("cmdNextBoth");
        QCOMPARE(caretLine(), ldir);
        press("cmdNextBoth");
        QCOMPARE(caretLine(), bar);

        listing->moveCursor(QTextCursor::Start);
        QTest::keyClick(window.get(), Qt::Key_F8);
        QCOMPARE(caretLine(), foo);
    }

    void optionBoxesAreReadLiveDuringARun() {
        const auto window = NewWindow();
        bool boxEnabled = false;
        bool assembleEnabled = true;
        WhenRunning(*window, [&window, &boxEnabled, &assembleEnabled] {
            auto* box = Child<QCheckBox>(window.get(), "chkBigEndCode");
            boxEnabled = box->isEnabled();
            assembleEnabled = Child<QPushButton>(window.get(), "cmdAssemble")->isEnabled();
            box->click();
        });
        AssembleIn(*window, pLongSource);
        QVERIFY(boxEnabled);
        QVERIFY(!assembleEnabled);
        const QTextDocument* listing =
            Child<QPlainTextEdit>(window.get(), "rtbListing")->document();
        const QTextBlock word = listing->find(QStringLiteral("lxi")).block();
        QVERIFY2(word.text().contains(QStringLiteral("\t211234\t")), qPrintable(word.text()));
    }

    void stopEndsTheRunAfterTheCurrentStatement() {
        const auto window = NewWindow();
        for (bool byKey : {false, true}) {
            bool stopEnabled = false;
            QString pass;
            WhenRunning(*window, [&window, &stopEnabled, &pass, byKey] {
                auto* stop = Child<QPushButton>(window.get(), "cmdAbort");
                stopEnabled = stop->isEnabled();
                pass = LabelText(*window, "lblPass");
                if (byKey)
                    QTest::keyClick(window.get(), Qt::Key_Escape);
                else
                    QTest::mouseClick(stop, Qt::LeftButton);
            });
            AssembleIn(*window, pStoppedSource);
            QVERIFY(stopEnabled);
            QCOMPARE(pass, QStringLiteral("1"));
            // Stopped in pass 1: no output texts and no reports.
            QCOMPARE(ViewOf(*window, "rtbListing"), QString());
            QCOMPARE(ViewOf(*window, "rtbHex"), QString());
            QVERIFY(!window->IsRunning());
            QVERIFY(Child<QPushButton>(window.get(), "cmdAssemble")->isEnabled());
            QVERIFY(!Child<QPushButton>(window.get(), "cmdAbort")->isEnabled());
        }
    }

    void processorDirectivesTickTheProcessorBoxes() {
        const auto window = NewWindow();
        auto* z80 = Child<QCheckBox>(window.get(), "chkZ80");
        auto* z180 = Child<QCheckBox>(window.get(), "chkz180");
        AssembleIn(*window, Source(QStringLiteral("z180.asm"), " .z80\n ldir\n z180\n"));
        QVERIFY(z80->isChecked());
        QVERIFY(z180->isChecked());
        QCOMPARE(LabelText(*window, "lblWarnings"), QStringLiteral("0"));
        AssembleIn(*window, Source(QStringLiteral("i8080.asm"), " i8080\n ldir\n"));
        QVERIFY(!z80->isChecked());
        QVERIFY(!z180->isChecked());
        QCOMPARE(LabelText(*window, "lblWarnings"), QStringLiteral("1"));
    }

    void aRunThatFailsAsAWholeIsReportedInAMessageBox() {
        const auto window = NewWindow();
        QByteArray crowded = " nop";
        for (int statement = 0; statement < 32; ++statement) crowded += " ! nop";
        QString message;
        WhenModal<QMessageBox>([&message](QMessageBox* box) {
            message = box->text();
            box->accept();
        });
        AssembleIn(*window, Source(QStringLiteral("crowded.asm"), crowded + "\n"));
        QVERIFY2(message.contains(QStringLiteral("32")), qPrintable(message));
        QVERIFY(Child<QPushButton>(window.get(), "cmdAssemble")->isEnabled());
    }

    void aClickOnTheLoaderCaptionSwitchesTheDialect() {
        const QString source = Source(QStringLiteral("prog.asm"), Program);
        const QString sde = pDir.filePath(QStringLiteral("sde.txt"));
        QCOMPARE(RunBatchTool({source, QStringLiteral("--loader-style"), QStringLiteral("sde"),
                               QStringLiteral("--loader"), sde}),
                 0);
        const auto window = NewWindow();
        auto* loader = Child<QRadioButton>(window.get(), "optSDE");
        QTest::mouseClick(loader, Qt::LeftButton, {}, IndicatorCentre(*loader));
        QCOMPARE(loader->text(), QStringLiteral("DDT"));
        QVERIFY(loader->isChecked());
        QTest::mouseClick(loader, Qt::LeftButton, {},
                          QPoint(loader->width() - 4, loader->height() / 2));
        QCOMPARE(loader->text(), QStringLiteral("SDE"));

        AssembleIn(*window, source);
        QCOMPARE(WithCrLf(ViewOf(*window, "rtbSDe")), ReadAll(sde));
        QVERIFY(ViewOf(*window, "rtbSDe").endsWith(QLatin1Char('.')));

        QTest::mouseClick(loader, Qt::LeftButton, {},
                          QPoint(loader->width() - 4, loader->height() / 2));
        QCOMPARE(loader->text(), QStringLiteral("DDT"));
        AssembleIn(*window, source);
        QVERIFY(ViewOf(*window, "rtbSDe").endsWith(QStringLiteral(".\n")));
    }

    void eachViewIsSavedAsTheBatchToolWritesIt() {
        // The proposed name ends at the first dot of the source's name.
        const QString source = Source(QStringLiteral("prog.v2.asm"), TwoBadLines);
        const QString batch = pDir.filePath(QStringLiteral("b"));
        RunBatchTool({source, QStringLiteral("--listing"), batch + ".ls", QStringLiteral("--hex"),
                      batch + ".hex", QStringLiteral("--srec"), batch + ".mx",
                      QStringLiteral("--loader"), batch + ".txt", QStringLiteral("--bin"),
                      batch + ".bin", QStringLiteral("--keep-outputs")});
        RunBatchTool(
            {source, QStringLiteral("--rtf"), QStringLiteral("--listing"), batch + ".rtf"});
        const auto window = NewWindow();
        AssembleIn(*window, source);

        struct Case {
            const char* View;
            const char* Format;
            const char* Proposed;
            const char* Filter;
            const char* Batch;
        };
        const Case cases[] = {
            {"optList", "optText", "prog.ls", "Listing (*.ls)", ".ls"},
            {"optHex", "optText", "prog.hex", "Intel Hex Record (*.hex)", ".hex"},
            {"optSrec", "optText", "prog.mx", "Motorola S-record (*.mx)", ".mx"},
            {"optSDE", "optText", "prog.txt", "Text (*.txt)", ".txt"},
            {"optBin", "optBinary", "prog.bin", "Binary (*.bin)", ".bin"},
            {"optList", "optRtf", "prog.ls", "Listing (*.ls)", ".rtf"},
        };
        int saved = 0;
        for (const Case& c : cases) {
            Child<QAbstractButton>(window.get(), c.View)->click();
            auto* format = Child<QRadioButton>(window.get(), c.Format);
            QVERIFY(format->isEnabled());
            format->click();
            const QString target = pDir.filePath(QStringLiteral("saved%1").arg(saved++));
            const SaveDialogSeen seen = SaveVia(*window, target);
            QCOMPARE(seen.Title, QStringLiteral("Save File"));
            QCOMPARE(seen.Proposed, pDir.filePath(QLatin1String(c.Proposed)));
            QVERIFY2(seen.Filter.startsWith(QLatin1String(c.Filter)), qPrintable(seen.Filter));
            QCOMPARE(ReadAll(target), ReadAll(batch + QLatin1String(c.Batch)));
        }
        // The binary image has the binary format only; back on a text view
        // it gives way to plain text.
        Child<QAbstractButton>(window.get(), "optBin")->click();
        QVERIFY(Child<QRadioButton>(window.get(), "optBinary")->isChecked());
        QVERIFY(!Child<QRadioButton>(window.get(), "optRtf")->isEnabled());
        Child<QAbstractButton>(window.get(), "optHex")->click();
        QVERIFY(Child<QRadioButton>(window.get(), "optText")->isChecked());
        QVERIFY(!Child<QRadioButton>(window.get(), "optBinary")->isEnabled());
    }

    void aFailedSaveIsReportedAndWritesNothing() {
        const auto window = NewWindow();
        AssembleIn(*window, Source(QStringLiteral("prog.asm"), Program));
        const QString target = pDir.filePath(QStringLiteral("no/such/directory/prog.ls"));
        QString message;
        WhenModal<QMessageBox>([&message](QMessageBox* box) {
            message = box->text();
            box->accept();
        });
        SaveVia(*window, target);
        QVERIFY2(message.contains(QStringLiteral("not saved")), qPrintable(message));
        QVERIFY(!QFile::exists(target));
    }

    void theOpenDialogOffersTheSourceFilters() {
        const QString source = Source(QStringLiteral("picked.asm"), Program);
        const auto window = NewWindow();
        QString title;
        QStringList filters;
        WhenModal<QFileDialog>([&](QFileDialog* dialog) {
            title = dialog->windowTitle();
            filters = dialog->nameFilters();
            dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(source);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        QTest::mouseDClick(Child<QLineEdit>(window.get(), "txtInFile"), Qt::LeftButton);
        QCOMPARE(title, QStringLiteral("Input File"));
        QCOMPARE(filters.size(), 8);
        QCOMPARE(filters.value(5), QStringLiteral("Mac (*.mac) (*.asm)"));
        QCOMPARE(Child<QLineEdit>(window.get(), "txtInFile")->text(), source);
        QVERIFY(window->windowTitle().contains(QStringLiteral("picked.asm")));

        WhenModal<QFileDialog>([](QFileDialog* dialog) { dialog->reject(); });
        QTest::mouseClick(Child<QPushButton>(window.get(), "cmdOpen"), Qt::LeftButton);
        QCOMPARE(Child<QLineEdit>(window.get(), "txtInFile")->text(), source);
    }

    void aDroppedFileBecomesTheSourceAndARecentFile() {
        const QString source = Source(QStringLiteral("dropped.asm"), Program);
        const auto window = NewWindow();
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(source)});
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(window.get(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &drop);
        QCOMPARE(Child<QLineEdit>(window.get(), "txtInFile")->text(), source);
        QVERIFY(window->windowTitle().startsWith(QStringLiteral("dropped.asm")));
        const QList<QAction*> recent = Child<QMenu>(window.get(), "mnuRecent")->actions();
        QVERIFY(!recent.isEmpty());
        QCOMPARE(recent.first()->data().toString(), source);
    }

    void aRunWithErrorsInTwoFilesFillsThePanelAndLeadsToTheirLines() {
        Source(QStringLiteral("part.inc"), " db 1\n bar 2\n");
        const QString source =
            Source(QStringLiteral("main.asm"), " nop\n include part.inc\n nop\n foo\n");
        const auto window = NewWindow();
        AssembleIn(*window, source);
        auto* panel = Child<QTreeWidget>(window.get(), "lstDiagnostics");
        auto* view = Child<SourceView>(window.get(), "rtbSource");
        auto* listing = Child<QPlainTextEdit>(window.get(), "rtbListing");
        QCOMPARE(panel->topLevelItemCount(), 2);

        const struct {
            const char* File;
            int Line;
            const char* Detail;
            const char* Text;
        } rows[] = {{"part.inc", 2, "bar", " bar 2"}, {"main.asm", 4, "foo", " foo"}};
        Child<QAbstractButton>(window.get(), "optHex")->click();
        for (int row = 0; row < 2; ++row) {
            const auto& r = rows[row];
            QTreeWidgetItem* item = panel->topLevelItem(row);
            const QStringList columns = {
                QStringLiteral("Error"), QLatin1String(r.File), QString::number(r.Line),
                QStringLiteral("Invalid Directive, Operation or Macro"), QLatin1String(r.Detail)};
            for (int column = 0; column < columns.size(); ++column)
                QCOMPARE(item->text(column), columns[column]);

            panel->setFocus();
            panel->setCurrentItem(item);
            QTest::keyClick(panel, Qt::Key_Return);
            QCOMPARE(QFileInfo(view->File()), QFileInfo(pDir.filePath(QLatin1String(r.File))));
            QCOMPARE(view->CurrentLine(), r.Line);
            QCOMPARE(view->textCursor().selectedText(), QLatin1String(r.Text));
            // The listing is shown at the diagnostic's own "~" line.
            QVERIFY(Child<QRadioButton>(window.get(), "optList")->isChecked());
            QCOMPARE(listing->textCursor().block().text(),
                     QStringLiteral("~Invalid Directive, Operation or Macro ~ ") +
                         QLatin1String(r.Detail));
        }
        // Next Error goes on from the line the panel led to.
        QTest::mouseClick(Child<QPushButton>(window.get(), "cmdNextError"), Qt::LeftButton);
        QVERIFY(listing->textCursor().block().text().endsWith(QStringLiteral("~ bar")));
        QVERIFY(LabelText(*window, "lblLastRun").contains(QStringLiteral("2 errors")));
    }

    void aChangeOnDiskStartsANewRunWhenAssembleOnSaveIsOn() {
        const QString part = Source(QStringLiteral("watched.inc"), " bar 2\n");
        const QString source =
            Source(QStringLiteral("watcher.asm"), " include watched.inc\n foo\n");
        const auto window = NewWindow();
        auto* onSave = Child<QAction>(window.get(), "mnuAssembleOnSave");
        auto* panel = Child<QTreeWidget>(window.get(), "lstDiagnostics");
        AssembleIn(*window, source);
        QCOMPARE(panel->topLevelItemCount(), 2);

        const struct {
            bool On;
            QString File;
            QByteArray Text;
            int Errors;
        } cases[] = {
            {false, part, " db 2\n", 2},                 // off: nothing happens
            {true, part, " db 2\n", 1},                  // an included file changed
            {true, source, " include watched.inc\n", 0}, // the source itself
            {true, part, " bar\n baz\n", 2},             // and the include again, once re-read
        };
        for (const auto& c : cases) {
            if (onSave->isChecked() != c.On) onSave->trigger();
            guitest::WriteAll(c.File, c.Text);
            if (c.On)
                QTRY_COMPARE(panel->topLevelItemCount(), c.Errors);
            else
                QTest::qWait(3 * ChangeWatcher::QuietTime);
            QCOMPARE(panel->topLevelItemCount(), c.Errors);
            QCOMPARE(LabelText(*window, "lblErrors"), QString::number(c.Errors));
        }
    }

    void aChangeDuringARunStopsItAndAssemblesAgain() {
        const QString source =
            Source(QStringLiteral("busy.asm"), ReadAll(pStoppedSource)); // long in every pass
        const auto window = NewWindow();
        Child<QAction>(window.get(), "mnuAssembleOnSave")->trigger();
        window->OpenSource(source);
        QString pass;
        WhenRunning(*window, [&window, &pass, source] {
            pass = LabelText(*window, "lblPass");
            guitest::WriteAll(source, "short: nop\n");
        });
        AssembleIn(*window, source);
        QCOMPARE(pass, QStringLiteral("1"));
        // The first run ended in its first pass; the second read the new text.
        QTRY_VERIFY(ViewOf(*window, "rtbListing").contains(QStringLiteral("short\tnop")));
        QVERIFY(!window->IsRunning());
    }

    void settingsPersistBetweenSessions() {
        const QString source = Source(QStringLiteral("kept.asm"), Program);
        {
            const auto window = NewWindow();
            QVERIFY(!Child<QCheckBox>(window.get(), "chkBigEndCode")->isChecked());
            Child<QCheckBox>(window.get(), "chkBigEndCode")->click();
            Child<QCheckBox>(window.get(), "chkListMacExp")->click();
            Child<QCheckBox>(window.get(), "chkZilog")->click();
            Child<QAction>(window.get(), "mnuAssembleOnSave")->trigger();
            Child<QLineEdit>(window.get(), "txtDefines")->setText(QStringLiteral("LIMIT=3, DEBUG"));
            Child<QCheckBox>(window.get(), "chkDwTextOrder")->click();
            auto* loader = Child<QRadioButton>(window.get(), "optSDE");
            QTest::mouseClick(loader, Qt::LeftButton, {}, QPoint(loader->width() - 4, 5));
            window->OpenSource(source);
            window->resize(1150, 820);
            window->close();
        }
        const QList<std::pair<const char*, QString>> expected = {
            {"Options/BigEndCode", "1"},
            {"Options/StripParity", "0"},
            {"Options/ListMacExp", "1"},
            {"Options/Loader", "sde"},
            {"Options/Zilog", "1"},
            {"Options/IncludeDir", ""},
            {"Main/Width", "1150"},
            {"Main/Height", "820"},
            {"Main/WindowState", "0"},
            {"Paths/Source", pDir.path()},
            {"Options/Defines", "LIMIT=3, DEBUG"},
            {"Options/DwTextOrder", "1"},
            {"Options/AssembleOnSave", "1"},
        };
        for (const auto& [key, value] : expected) QCOMPARE(Setting(key), value);
        QVERIFY(!Setting("Main/Top").isEmpty() && !Setting("Main/Left").isEmpty());
        {
            const auto window = NewWindow();
            QVERIFY(Child<QCheckBox>(window.get(), "chkBigEndCode")->isChecked());
            QVERIFY(Child<QCheckBox>(window.get(), "chkListMacExp")->isChecked());
            QVERIFY(Child<QCheckBox>(window.get(), "chkZilog")->isChecked());
            QVERIFY(Child<QCheckBox>(window.get(), "chkDwTextOrder")->isChecked());
            QVERIFY(Child<QAction>(window.get(), "mnuAssembleOnSave")->isChecked());
            QVERIFY(!Child<QCheckBox>(window.get(), "chkStripParity")->isChecked());
            QCOMPARE(Child<QLineEdit>(window.get(), "txtDefines")->text(),
                     QStringLiteral("LIMIT=3, DEBUG"));
            QCOMPARE(Child<QRadioButton>(window.get(), "optSDE")->text(), QStringLiteral("SDE"));
            QCOMPARE(window->size(), QSize(1150, 820));
            QCOMPARE(Child<QMenu>(window.get(), "mnuRecent")->actions().value(0)->data().toString(),
                     source);
            // The restored big-endian box reaches the run.
            AssembleIn(*window, source);
            QVERIFY(ViewOf(*window, "rtbListing").contains(QStringLiteral("\t211234\t")));

            // A maximised window keeps the normal placement it had.
            window->showMaximized();
            QTRY_VERIFY(window->isMaximized());
            window->close();
        }
        QCOMPARE(Setting("Main/WindowState"), QStringLiteral("2"));
        QCOMPARE(Setting("Main/Width"), QStringLiteral("1150"));
    }
};

} // namespace trident

QTEST_MAIN(trident::WindowTest)
#include "MainWindow_test.moc"
