#include "frontend/MainWindow.h"

#include "assembler/ListingColours.h"
#include "frontend/DirectoryDialog.h"
#include "frontend/FileFilters.h"
#include "output/AtomicFile.h"
#include "output/RtfText.h"

#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTextBlock>
#include <QTimer>
#include <QVBoxLayout>
#include <array>

namespace trident {

namespace {

// An option check box: its name, caption, tool tip, settings key and the
// run option it drives.
struct OptionBox {
    const char* Name;
    const char* Caption;
    const char* ToolTip;
    const char* Key;
    bool RunOptions::*Option;
};

constexpr std::array OptionBoxes{
    OptionBox{"chkBigEndCode", "Bigend Code", "", "BigEndCode", &RunOptions::BigEndianCode},
    OptionBox{"chkStripParity", "Strip Parity", "", "StripParity", &RunOptions::StripParity},
    OptionBox{"chkCompASM", "Compatible",
              "Read CP/M-era sources as their own assemblers did (see docs/compatible.md)",
              "Compatible", &RunOptions::CompatibleMode},
    OptionBox{"chkListMacDef", "List Mac Def", "", "ListMacDef", &RunOptions::ListMacroDefinitions},
    OptionBox{"chkListMacExp", "List Mac Exp", "", "ListMacExp", &RunOptions::ListMacroExpansions},
    OptionBox{"chkListMacLibs", "List MacLibs", "", "ListMacLibs", &RunOptions::ListMacLibs},
    OptionBox{"chkSymCaseSense", "Case Sensitive", "", "CaseSensitive",
              &RunOptions::CaseSensitiveSymbols},
    OptionBox{"chkz180", "Z180", "Check to turn off Z180 warnings", "Z180", &RunOptions::Z180},
    OptionBox{"chkZ80", "Z80", "Check to turn off Z80 warnings", "Z80", &RunOptions::Z80},
    OptionBox{"chkAllPasses", "List All Passes", "For Testing Assembler", "AllPasses",
              &RunOptions::ListAllPasses},
    OptionBox{"chkZilog", "Zilog Mnemonics", "Read instructions in Zilog notation", "Zilog",
              &RunOptions::ZilogMnemonics},
};

// The run is allowed to hold the window's events back this long, so that
// a large source assembles at full speed and Stop still answers at once.
constexpr qint64 EventInterval = 25;
constexpr int ProgressInterval = 100;
constexpr int MaxRecentFiles = 6;

// The views as the option buttons offer them: button name, caption, save
// extension and the save dialog's filter caption.
struct ViewChoice {
    const char* Name;
    const char* Caption;
    const char* Extension;
    const char* FilterCaption;
};
constexpr std::array ViewChoices{
    ViewChoice{"optList", "Listing", ".ls", "Listing (*.ls)"},
    ViewChoice{"optHex", "iHex", ".hex", "Intel Hex Record (*.hex)"},
    ViewChoice{"optSrec", "sRec", ".mx", "Motorola S-record (*.mx)"},
    ViewChoice{"optSDE", "DDT", ".txt", "Text (*.txt)"},
    ViewChoice{"optBin", "Binary", ".bin", "Binary (*.bin)"},
};

QString Hex(int value, int digits) {
    return QStringLiteral("%1").arg(value, digits, 16, QLatin1Char('0')).toUpper();
}

QString Flag(bool on) {
    return on ? QStringLiteral("1") : QStringLiteral("0");
}

std::string NativePath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

QString FromNative(const std::string& path) {
    return QFile::decodeName(path.c_str());
}

QLabel* ValueLabel(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setMinimumWidth(110);
    return label;
}

void Paint(QLabel& label, const QColor& ink) {
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, ink);
    label.setPalette(palette);
}

QFont DefaultViewFont() {
    if (QFontDatabase::hasFamily(QStringLiteral("Courier New")))
        return QFont(QStringLiteral("Courier New"), 10);
    return QFontDatabase::systemFont(QFontDatabase::FixedFont);
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), pAssembly(std::make_unique<Assembly>(static_cast<FrontEnd*>(this))) {
    setObjectName(QStringLiteral("frmAssembler"));
    pAssembly->Options().OpcodeTableFile =
        NativePath(QCoreApplication::applicationDirPath() + QStringLiteral("/OpTable.def"));

    CreateActions();
    CreateMenus();
    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->addWidget(CreateCommandRow());
    auto* body = new QHBoxLayout;
    body->addWidget(CreateSidePanel());
    body->addWidget(CreateViews(), 1);
    layout->addLayout(body, 1);
    setCentralWidget(central);
    statusBar();

    pTimer = new QTimer(this);
    pTimer->setObjectName(QStringLiteral("Timer1"));
    pTimer->setInterval(ProgressInterval);
    connect(pTimer, &QTimer::timeout, this, &MainWindow::RefreshProgress);

    setAcceptDrops(true);
    resize(1100, 740);
    SetViewFont(DefaultViewFont());
    ReadSettings();
    SaveFormatFollowsView();
    SetRunning(false);
    ShowCounts();
    UpdateTitle();
}

MainWindow::~MainWindow() = default;

std::unique_ptr<QSettings> MainWindow::Settings() {
    return std::make_unique<QSettings>(QStringLiteral("Trident"), QStringLiteral("Trident"));
}

// --- Building the window ---------------------------------------------------

void MainWindow::CreateActions() {
    auto action = [this](const char* name, const QString& text, auto slot) {
        auto* created = new QAction(text, this);
        created->setObjectName(QLatin1String(name));
        connect(created, &QAction::triggered, this, slot);
        return created;
    };
    pOpenAction = action("mnuOpen", tr("Open"), &MainWindow::ChooseSource);
    pOpenAction->setShortcut(QKeySequence::Open);
    pSaveAction = action("mnuSave", tr("Save"), &MainWindow::Save);
    pSaveAction->setShortcut(QKeySequence::Save);
    pExitAction = action("mnuExit", tr("Exit"), &QWidget::close);
    pExitAction->setShortcut(QKeySequence::Quit);
    pAssembleAction = action("mnuAssemble", tr("Assemble"), &MainWindow::Assemble);
    pAssembleAction->setShortcuts({QKeySequence(Qt::Key_F5), QKeySequence(tr("Ctrl+R"))});
    pStopAction = action("mnuStop", tr("Stop"), &MainWindow::Stop);
    pStopAction->setShortcut(QKeySequence(Qt::Key_Escape));
    pNextErrorAction = action("mnuNextError", tr("Next Error"), &MainWindow::NextError);
    pNextErrorAction->setShortcut(QKeySequence(Qt::Key_F8));
    pNextWarningAction = action("mnuNextWarning", tr("Next Warning"), &MainWindow::NextWarning);
    pNextWarningAction->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F8));
    pFontAction = action("mnuFont", tr("Font ..."), &MainWindow::ChooseFont);
    pFixedFontsAction = new QAction(tr("Fixed Fonts Only"), this);
    pFixedFontsAction->setObjectName(QStringLiteral("mnuFixedFontsOnly"));
    pFixedFontsAction->setCheckable(true);
    pFixedFontsAction->setChecked(true);
    pMaclibAction = action("mnuSetMaclibDirectory", tr("Maclib Directory ..."),
                           &MainWindow::ChooseMaclibDirectory);
    pIncludeAction = action("mnuStIncludeDirectory", tr("Include Directory ..."),
                            &MainWindow::ChooseIncludeDirectory);
    pIdleActions = {pOpenAction,       pSaveAction,        pAssembleAction,
                    pNextErrorAction,  pNextWarningAction, pFontAction,
                    pFixedFontsAction, pMaclibAction,      pIncludeAction};
}

void MainWindow::CreateMenus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(pOpenAction);
    pRecentMenu = file->addMenu(tr("Recent Files"));
    pRecentMenu->setObjectName(QStringLiteral("mnuRecent"));
    file->addAction(pSaveAction);
    file->addSeparator();
    file->addAction(pExitAction);

    QMenu* run = menuBar()->addMenu(tr("&Assemble"));
    run->addAction(pAssembleAction);
    run->addAction(pStopAction);
    run->addSeparator();
    run->addAction(pNextErrorAction);
    run->addAction(pNextWarningAction);

    QMenu* settings = menuBar()->addMenu(tr("&Settings"));
    settings->addAction(pFontAction);
    settings->addAction(pFixedFontsAction);
    settings->addSeparator();
    settings->addAction(pMaclibAction);
    settings->addAction(pIncludeAction);
}

QWidget* MainWindow::CreateCommandRow() {
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto button = [row, layout](const char* name, const QString& caption) {
        auto* created = new QPushButton(caption, row);
        created->setObjectName(QLatin1String(name));
        layout->addWidget(created);
        return created;
    };
    layout->addWidget(new QLabel(tr("Source"), row));
    pInFile = new QLineEdit(row);
    pInFile->setObjectName(QStringLiteral("txtInFile"));
    pInFile->setToolTip(tr("Double click to Open File"));
    pInFile->installEventFilter(this);
    connect(pInFile, &QLineEdit::textChanged, this, &MainWindow::UpdateTitle);
    connect(pInFile, &QLineEdit::returnPressed, this, &MainWindow::Assemble);
    layout->addWidget(pInFile, 1);
    pOpenButton = button("cmdOpen", tr("Open"));
    pAssembleButton = button("cmdAssemble", tr("Assemble"));
    pAbortButton = button("cmdAbort", tr("Stop"));
    pSaveButton = button("cmdSave", tr("Save"));
    pOpenButton->setToolTip(tr("Choose the source file (Ctrl+O)"));
    pAssembleButton->setToolTip(tr("Assemble the source file (F5)"));
    pAbortButton->setToolTip(tr("Stop after the current statement (Esc)"));
    pSaveButton->setToolTip(tr("Save the view shown (Ctrl+S)"));
    connect(pOpenButton, &QPushButton::clicked, this, &MainWindow::ChooseSource);
    connect(pAssembleButton, &QPushButton::clicked, this, &MainWindow::Assemble);
    connect(pAbortButton, &QPushButton::clicked, this, &MainWindow::Stop);
    connect(pSaveButton, &QPushButton::clicked, this, &MainWindow::Save);
    pIdleWidgets = {pInFile, pOpenButton, pAssembleButton, pSaveButton};
    return row;
}

QWidget* MainWindow::CreateSidePanel() {
    auto* panel = new QWidget(this);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(CreateOptionBoxes());
    layout->addWidget(CreateViewChoice());
    layout->addWidget(CreateSaveFormat());
    layout->addWidget(CreateDiagnostics());
    layout->addWidget(CreateStatistics());
    layout->addWidget(CreateProgress());
    pVersion = new QLabel(QStringLiteral("V %1.%2.%3")
                              .arg(TRIDENT_VERSION_MAJOR)
                              .arg(TRIDENT_VERSION_MINOR)
                              .arg(TRIDENT_VERSION_PATCH),
                          panel);
    pVersion->setObjectName(QStringLiteral("lblVersion"));
    pVersion->setToolTip(tr("Version"));
    layout->addWidget(pVersion);
    layout->addStretch(1);
    return panel;
}

QGroupBox* MainWindow::CreateOptionBoxes() {
    auto* group = new QGroupBox(tr("Options"), this);
    auto* layout = new QGridLayout(group);
    int index = 0;
    for (const OptionBox& option : OptionBoxes) {
        auto* box = new QCheckBox(tr(option.Caption), group);
        box->setObjectName(QLatin1String(option.Name));
        if (*option.ToolTip) box->setToolTip(tr(option.ToolTip));
        // The run reads its options live: a box changed during a run
        // counts from the next statement on.
        connect(box, &QCheckBox::toggled, this,
                [this, member = option.Option](bool on) { pAssembly->Options().*member = on; });
        layout->addWidget(box, index / 2, index % 2);
        pOptionBoxes.push_back(box);
        ++index;
    }
    pZ80 = group->findChild<QCheckBox*>(QStringLiteral("chkZ80"));
    pZ180 = group->findChild<QCheckBox*>(QStringLiteral("chkz180"));
    return group;
}

QGroupBox* MainWindow::CreateViewChoice() {
    auto* group = new QGroupBox(tr("View"), this);
    auto* layout = new QHBoxLayout(group);
    pViewChoice = new QButtonGroup(group);
    int id = 0;
    for (const ViewChoice& choice : ViewChoices) {
        auto* button = new QRadioButton(tr(choice.Caption), group);
        button->setObjectName(QLatin1String(choice.Name));
        pViewChoice->addButton(button, id++);
        layout->addWidget(button);
    }
    pViewChoice->button(int(View::Listing))->setChecked(true);
    pLoaderButton = qobject_cast<QRadioButton*>(pViewChoice->button(int(View::Loader)));
    pLoaderButton->setToolTip(tr("Click to change type - SDE or DDT"));
    pLoaderButton->installEventFilter(this);
    connect(pViewChoice, &QButtonGroup::idClicked, this, &MainWindow::ShowView);
    pIdleWidgets.push_back(group);
    return group;
}

QGroupBox* MainWindow::CreateSaveFormat() {
    auto* group = new QGroupBox(tr("Save Format"), this);
    auto* layout = new QVBoxLayout(group);
    auto format = [group, layout](const char* name, const QString& caption) {
        auto* button = new QRadioButton(caption, group);
        button->setObjectName(QLatin1String(name));
        layout->addWidget(button);
        return button;
    };
    pTextFormat = format("optText", tr("Save in Plain Text Format"));
    pRtfFormat = format("optRtf", tr("Save in RTF format"));
    pBinaryFormat = format("optBinary", tr("Save in Binary File Format"));
    pTextFormat->setChecked(true);
    pIdleWidgets.push_back(group);
    return group;
}

QGroupBox* MainWindow::CreateDiagnostics() {
    auto* group = new QGroupBox(tr("Next"), this);
    auto* layout = new QGridLayout(group);
    auto button = [group](const char* name, const QString& caption, const QString& tip) {
        auto* created = new QPushButton(caption, group);
        created->setObjectName(QLatin1String(name));
        created->setToolTip(tip);
        return created;
    };
    QPushButton* errors = button("cmdNextError", tr("Errors"), tr("Move to the next error (F8)"));
    QPushButton* warnings =
        button("cmdNextWarning", tr("Warnings"), tr("Move to the next warning (Shift+F8)"));
    QPushButton* both = button("cmdNextBoth", tr("Both"), tr("Move to the next error or warning"));
    connect(errors, &QPushButton::clicked, this, &MainWindow::NextError);
    connect(warnings, &QPushButton::clicked, this, &MainWindow::NextWarning);
    connect(both, &QPushButton::clicked, this, &MainWindow::NextBoth);
    pErrorsLabel = ValueLabel("lblErrors", group);
    pWarningsLabel = ValueLabel("lblWarnings", group);
    pErrorsLabel->setToolTip(tr("Errors"));
    pWarningsLabel->setToolTip(tr("Warnings"));
    layout->addWidget(errors, 0, 0);
    layout->addWidget(pErrorsLabel, 0, 1);
    layout->addWidget(warnings, 1, 0);
    layout->addWidget(pWarningsLabel, 1, 1);
    layout->addWidget(both, 2, 0);
    for (QPushButton* next : {errors, warnings, both}) pIdleWidgets.push_back(next);
    return group;
}

QGroupBox* MainWindow::CreateStatistics() {
    auto* group = new QGroupBox(tr("Statistics"), this);
    auto* layout = new QGridLayout(group);
    pLowest = ValueLabel("lblMIN", group);
    pHighest = ValueLabel("lblMAX", group);
    pSize = ValueLabel("lblSizeBytes", group);
    layout->addWidget(new QLabel(tr("Lowest Address"), group), 0, 0);
    layout->addWidget(pLowest, 0, 1);
    layout->addWidget(new QLabel(tr("Highest Address"), group), 1, 0);
    layout->addWidget(pHighest, 1, 1);
    layout->addWidget(new QLabel(tr("Size in Bytes"), group), 2, 0);
    layout->addWidget(pSize, 2, 1);
    return group;
}

QGroupBox* MainWindow::CreateProgress() {
    auto* group = new QGroupBox(tr("Progress"), this);
    auto* layout = new QGridLayout(group);
    pPass = ValueLabel("lblPass", group);
    pLineCount = ValueLabel("lblLineCount", group);
    pMaclib = ValueLabel("lblMaclib", group);
    layout->addWidget(new QLabel(tr("Pass"), group), 0, 0);
    layout->addWidget(pPass, 0, 1);
    layout->addWidget(new QLabel(tr("Lines"), group), 1, 0);
    layout->addWidget(pLineCount, 1, 1);
    layout->addWidget(new QLabel(tr("MacLib"), group), 2, 0);
    layout->addWidget(pMaclib, 2, 1);
    return group;
}

QPlainTextEdit* MainWindow::CreateView(const char* name) {
    auto* view = new QPlainTextEdit(pViews);
    view->setObjectName(QLatin1String(name));
    view->setReadOnly(true);
    // Read-only, but with a caret: Next Error moves it and the keys scroll.
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setLineWrapMode(QPlainTextEdit::NoWrap);
    view->setUndoRedoEnabled(false);
    pViews->addWidget(view);
    return view;
}

QWidget* MainWindow::CreateViews() {
    pViews = new QStackedWidget(this);
    pListing = CreateView("rtbListing");
    pHex = CreateView("rtbHex");
    pSrec = CreateView("rtbSRec");
    pLoader = CreateView("rtbSDe");
    pBinary = CreateView("txtBinary");
    return pViews;
}

// --- Settings --------------------------------------------------------------

void MainWindow::ReadSettings() {
    const auto settings = Settings();
    settings->beginGroup(QStringLiteral("Options"));
    for (std::size_t i = 0; i < OptionBoxes.size(); ++i)
        pOptionBoxes[i]->setChecked(
            settings->value(QLatin1String(OptionBoxes[i].Key), QStringLiteral("0")).toString() ==
            QLatin1String("1"));
    SetLoaderStyle(settings->value(QStringLiteral("Loader"), QStringLiteral("ddt"))
                               .toString()
                               .compare(QLatin1String("sde"), Qt::CaseInsensitive) == 0
                       ? LoaderStyle::Sde
                       : LoaderStyle::Ddt);
    pAssembly->Options().IncludeDirectory =
        NativePath(settings->value(QStringLiteral("IncludeDir")).toString());
    pAssembly->Options().MaclibDirectory =
        NativePath(settings->value(QStringLiteral("MaclibDir")).toString());
    settings->endGroup();

    settings->beginGroup(QStringLiteral("Main"));
    const int savedWidth = settings->value(QStringLiteral("Width"), width()).toInt();
    const int savedHeight = settings->value(QStringLiteral("Height"), height()).toInt();
    if (savedWidth > 0 && savedHeight > 0) resize(savedWidth, savedHeight);
    if (settings->contains(QStringLiteral("Left")) && settings->contains(QStringLiteral("Top")))
        move(settings->value(QStringLiteral("Left")).toInt(),
             settings->value(QStringLiteral("Top")).toInt());
    // A window left minimised comes back normal: there is no use in
    // starting a program out of sight.
    if (settings->value(QStringLiteral("WindowState"), QStringLiteral("0")).toString() ==
        QLatin1String("2"))
        setWindowState(Qt::WindowMaximized);
    QFont font;
    if (settings->contains(QStringLiteral("Font")) &&
        font.fromString(settings->value(QStringLiteral("Font")).toString()))
        SetViewFont(font);
    pFixedFontsAction->setChecked(
        settings->value(QStringLiteral("FixedFontsOnly"), QStringLiteral("1")).toString() ==
        QLatin1String("1"));
    settings->endGroup();

    settings->beginGroup(QStringLiteral("Paths"));
    pSourceDirectory = settings->value(QStringLiteral("Source")).toString();
    pRecent = settings->value(QStringLiteral("Recent")).toStringList();
    settings->endGroup();
    RebuildRecentMenu();
}

void MainWindow::WriteSettings() const {
    const auto settings = Settings();
    settings->beginGroup(QStringLiteral("Options"));
    for (std::size_t i = 0; i < OptionBoxes.size(); ++i)
        settings->setValue(QLatin1String(OptionBoxes[i].Key), Flag(pOptionBoxes[i]->isChecked()));
    settings->setValue(QStringLiteral("Loader"), pLoaderStyle == LoaderStyle::Sde
                                                     ? QStringLiteral("sde")
                                                     : QStringLiteral("ddt"));
    settings->setValue(QStringLiteral("IncludeDir"),
                       FromNative(pAssembly->Options().IncludeDirectory));
    settings->setValue(QStringLiteral("MaclibDir"),
                       FromNative(pAssembly->Options().MaclibDirectory));
    settings->endGroup();

    settings->beginGroup(QStringLiteral("Main"));
    const Qt::WindowStates state = windowState();
    settings->setValue(QStringLiteral("WindowState"),
                       state & Qt::WindowMinimized   ? QStringLiteral("1")
                       : state & Qt::WindowMaximized ? QStringLiteral("2")
                                                     : QStringLiteral("0"));
    if (!(state & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen))) {
        settings->setValue(QStringLiteral("Top"), QString::number(y()));
        settings->setValue(QStringLiteral("Left"), QString::number(x()));
        settings->setValue(QStringLiteral("Width"), QString::number(width()));
        settings->setValue(QStringLiteral("Height"), QString::number(height()));
    }
    settings->setValue(QStringLiteral("Font"), pListing->font().toString());
    settings->setValue(QStringLiteral("FixedFontsOnly"), Flag(pFixedFontsAction->isChecked()));
    settings->endGroup();

    settings->beginGroup(QStringLiteral("Paths"));
    settings->setValue(QStringLiteral("Source"), pSourceDirectory);
    settings->setValue(QStringLiteral("Recent"), pRecent);
    settings->endGroup();
}

// --- Events ------------------------------------------------------------------

void MainWindow::closeEvent(QCloseEvent* event) {
    if (pRunning) {
        // The run lives on this thread's stack: let it end first, then close.
        pCloseAfterRun = true;
        Stop();
        event->ignore();
        return;
    }
    WriteSettings();
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!pRunning && urls.size() == 1 && urls.first().isLocalFile()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (pRunning || urls.isEmpty() || !urls.first().isLocalFile()) return;
    OpenSource(urls.first().toLocalFile());
    event->acceptProposedAction();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == pInFile && event->type() == QEvent::MouseButtonDblClick && !pRunning) {
        ChooseSource();
        return true;
    }
    if (watched == pLoaderButton && event->type() == QEvent::MouseButtonRelease && !pRunning) {
        // A click on the caption, not on the round indicator, switches the
        // monitor dialect; either one also shows the loader text.
        const auto* mouse = static_cast<QMouseEvent*>(event);
        QStyleOptionButton option;
        option.initFrom(pLoaderButton);
        const QRect indicator = pLoaderButton->style()->subElementRect(
            QStyle::SE_RadioButtonIndicator, &option, pLoaderButton);
        const QPoint at = mouse->position().toPoint();
        if (mouse->button() == Qt::LeftButton && pLoaderButton->rect().contains(at) &&
            at.x() > indicator.right())
            ToggleLoaderStyle();
    }
    return QMainWindow::eventFilter(watched, event);
}

// --- Source, font and directories ----------------------------------------------

void MainWindow::OpenSource(const QString& path) {
    pInFile->setText(path);
    pSourceDirectory = QFileInfo(path).absolutePath();
    RememberRecent(QFileInfo(path).absoluteFilePath());
}

void MainWindow::ChooseSource() {
    if (pRunning) return;
    const QStringList filters = FileFilters::ToNameFilters(QLatin1String(FileFilters::InputFile));
    QString selected = filters.value(2);
    const QString file = QFileDialog::getOpenFileName(this, tr("Input File"), pSourceDirectory,
                                                      filters.join(QStringLiteral(";;")), &selected,
                                                      QFileDialog::HideNameFilterDetails);
    if (!file.isEmpty()) OpenSource(file);
}

void MainWindow::RememberRecent(const QString& path) {
    pRecent.removeAll(path);
    pRecent.prepend(path);
    while (pRecent.size() > MaxRecentFiles) pRecent.removeLast();
    RebuildRecentMenu();
}

void MainWindow::RebuildRecentMenu() {
    pRecentMenu->clear();
    for (const QString& path : pRecent) {
        QAction* entry = pRecentMenu->addAction(QDir::toNativeSeparators(path));
        entry->setData(path);
        connect(entry, &QAction::triggered, this, [this, path] { OpenSource(path); });
    }
    pRecentMenu->setEnabled(!pRecent.isEmpty() && !pRunning);
}

void MainWindow::UpdateTitle() {
    const QString name = QFileInfo(pInFile->text().trimmed()).fileName();
    setWindowTitle(name.isEmpty() ? tr("Trident") : tr("%1 - Trident").arg(name));
}

void MainWindow::SetViewFont(const QFont& font) {
    for (QPlainTextEdit* view : {pListing, pHex, pSrec, pLoader, pBinary}) view->setFont(font);
}

void MainWindow::ChooseFont() {
    bool chosen = false;
    const QFont font =
        QFontDialog::getFont(&chosen, pListing->font(), this, tr("Font"),
                             pFixedFontsAction->isChecked() ? QFontDialog::MonospacedFonts
                                                            : QFontDialog::FontDialogOptions());
    if (chosen) SetViewFont(font);
}

void MainWindow::ChooseMaclibDirectory() {
    DirectoryDialog chooser(this);
    const QString directory = chooser.ShowChooseDirectory(
        tr("Maclib Directory"), FromNative(pAssembly->Options().MaclibDirectory));
    if (directory.isEmpty()) return;
    pAssembly->Options().MaclibDirectory = NativePath(directory);
    statusBar()->showMessage(tr("Macro libraries are read from %1").arg(directory));
}

void MainWindow::ChooseIncludeDirectory() {
    DirectoryDialog chooser(this);
    const QString directory = chooser.ShowChooseDirectory(
        tr("Include Directory"), FromNative(pAssembly->Options().IncludeDirectory));
    if (directory.isEmpty()) return;
    pAssembly->Options().IncludeDirectory = NativePath(directory);
    statusBar()->showMessage(tr("Include files are read from %1").arg(directory));
}

// --- Views -------------------------------------------------------------------

void MainWindow::ToggleLoaderStyle() {
    SetLoaderStyle(pLoaderStyle == LoaderStyle::Sde ? LoaderStyle::Ddt : LoaderStyle::Sde);
    statusBar()->showMessage(
        tr("Loader text in the %1 style from the next assembly on").arg(pLoaderButton->text()));
}

void MainWindow::SetLoaderStyle(LoaderStyle style) {
    pLoaderStyle = style;
    pAssembly->Options().Loader = style;
    pLoaderButton->setText(style == LoaderStyle::Sde ? QStringLiteral("SDE")
                                                     : QStringLiteral("DDT"));
}

MainWindow::View MainWindow::ShownView() const {
    return static_cast<View>(pViewChoice->checkedId());
}

void MainWindow::ShowView(int view) {
    pViews->setCurrentIndex(view);
    SaveFormatFollowsView();
}

void MainWindow::SaveFormatFollowsView() {
    // The binary image has one file format, and the text views have no
    // binary one.
    const bool binary = ShownView() == View::Binary;
    pTextFormat->setEnabled(!binary);
    pRtfFormat->setEnabled(!binary);
    pBinaryFormat->setEnabled(binary);
    if (binary)
        pBinaryFormat->setChecked(true);
    else if (pBinaryFormat->isChecked())
        pTextFormat->setChecked(true);
}

// --- The run -------------------------------------------------------------------

void MainWindow::Assemble() {
    if (pRunning) return;
    const QString path = pInFile->text().trimmed();
    if (path.isEmpty() || !QFileInfo(path).isFile()) return;

    RememberRecent(QFileInfo(path).absoluteFilePath());
    SetRunning(true);
    ClearResults();
    QApplication::setOverrideCursor(Qt::BusyCursor);
    statusBar()->showMessage(tr("Assembling %1").arg(path));
    pLastMessage.clear();
    pSinceEvents.start();
    pTimer->start();
    const Assembly::Outcome outcome = pAssembly->Assemble(NativePath(path));
    pTimer->stop();
    ShowResults(outcome);
    QApplication::restoreOverrideCursor();
    SetRunning(false);
    if (pCloseAfterRun) close();
}

void MainWindow::Stop() {
    if (!pRunning) return;
    pAssembly->RequestStop();
    statusBar()->showMessage(tr("Stopping after the current statement"));
}

void MainWindow::SetRunning(bool running) {
    pRunning = running;
    for (QWidget* widget : pIdleWidgets) widget->setEnabled(!running);
    for (QAction* action : pIdleActions) action->setEnabled(!running);
    pRecentMenu->setEnabled(!running && !pRecent.isEmpty());
    pAbortButton->setEnabled(running);
    pStopAction->setEnabled(running);
}

void MainWindow::ClearResults() {
    for (QPlainTextEdit* view : {pListing, pHex, pSrec, pLoader, pBinary}) view->clear();
    for (QLabel* label : {pLowest, pHighest, pSize, pPass, pLineCount, pMaclib}) label->clear();
    pErrors = 0;
    pWarnings = 0;
    ShowCounts();
}

void MainWindow::ShowResults(Assembly::Outcome outcome) {
    RefreshProgress();
    ShowCounts();
    ViewText::Show(*pListing, pAssembly->GetListing().Text());
    ViewText::Show(*pHex, pAssembly->Outputs().Hex());
    ViewText::Show(*pSrec, pAssembly->Outputs().Srec());
    ViewText::Show(*pLoader, pAssembly->Outputs().Loader());
    pBinary->setPlainText(
        ViewText::HexDump(pAssembly->BinaryImage(), pAssembly->State().LowestAddress));

    switch (outcome) {
    case Assembly::Outcome::NoSource:
        statusBar()->clearMessage();
        break;
    case Assembly::Outcome::Completed:
        statusBar()->showMessage(
            tr("Assembled: %1 errors, %2 warnings").arg(pErrors).arg(pWarnings));
        break;
    case Assembly::Outcome::Stopped:
        statusBar()->showMessage(tr("Stopped"));
        break;
    case Assembly::Outcome::Terminated:
        statusBar()->showMessage(tr("Ended: a value had to be resolved at once"));
        break;
    case Assembly::Outcome::Failed:
        statusBar()->showMessage(tr("The assembly failed"));
        if (pAssembly->FailureMessage() != pLastMessage) ShowMessage(pAssembly->FailureMessage());
        break;
    }
}

void MainWindow::RefreshProgress() {
    const RunState& state = pAssembly->State();
    pPass->setText(QString::number(state.CurrentPass));
    pPass->setToolTip(tr("Highest resolving pass: %1").arg(state.HighestPass));
    pLineCount->setText(QString::number(state.TotalLines));
    pMaclib->setText(QString::number(state.MaclibLinesRead));
    ShowExtent();
}

void MainWindow::ShowExtent() {
    const RunState& state = pAssembly->State();
    const bool nothing = state.LowestAddress > state.HighestAddress;
    const int size = nothing ? 0 : state.HighestAddress - state.LowestAddress + 1;
    pLowest->setText(QStringLiteral("0x") + Hex(nothing ? 0 : state.LowestAddress, 4));
    pHighest->setText(QStringLiteral("0x") + Hex(nothing ? 0 : state.HighestAddress, 4));
    pSize->setText(QStringLiteral("0x%1 - %2").arg(Hex(size, 1)).arg(size));
}

void MainWindow::ShowCounts() {
    pErrorsLabel->setText(QString::number(pErrors));
    pWarningsLabel->setText(QString::number(pWarnings));
    Paint(*pErrorsLabel, pErrors ? ViewText::ToQColor(ListingColours::Error) : QColor(Qt::black));
    Paint(*pWarningsLabel,
          pWarnings ? ViewText::ToQColor(ListingColours::WarningCount) : QColor(Qt::black));
}

void MainWindow::Yield() {
    if (pSinceEvents.elapsed() < EventInterval) return;
    ShowCounts();
    QCoreApplication::processEvents();
    pSinceEvents.restart();
}

void MainWindow::ShowPass(int pass) {
    pPass->setText(QString::number(pass));
}

void MainWindow::ShowDiagnosticCounts(int errors, int warnings) {
    // Shown at the next yield: a listing full of errors must not spend its
    // time redrawing two labels.
    pErrors = errors;
    pWarnings = warnings;
}

void MainWindow::ShowProcessorChecks(bool z80, bool z180) {
    pZ80->setChecked(z80);
    pZ180->setChecked(z180);
}

void MainWindow::ShowMessage(std::string_view text) {
    pLastMessage = std::string(text);
    QMessageBox::warning(this, tr("Trident"),
                         QString::fromLocal8Bit(text.data(), qsizetype(text.size())));
}

// --- Diagnostics -----------------------------------------------------------------

void MainWindow::NextError() {
    FindDiagnostic(ViewText::Diagnostics::Errors);
}
void MainWindow::NextWarning() {
    FindDiagnostic(ViewText::Diagnostics::Warnings);
}
void MainWindow::NextBoth() {
    FindDiagnostic(ViewText::Diagnostics::Both);
}

void MainWindow::FindDiagnostic(ViewText::Diagnostics kind) {
    if (pRunning) return;
    pViewChoice->button(int(View::Listing))->setChecked(true);
    ShowView(int(View::Listing));
    QTextCursor cursor = pListing->textCursor();
    // At the very top the first line is a candidate too; anywhere else the
    // search starts below the caret's line.
    const int from = cursor.position() == 0 ? 0 : cursor.blockNumber() + 1;
    const int line = ViewText::FindDiagnosticLine(*pListing->document(), from, kind);
    if (line < 0) {
        statusBar()->showMessage(tr("No such diagnostic in the listing"));
        return;
    }
    if (line < from) statusBar()->showMessage(tr("Search went on from the top"));
    const QTextBlock block = pListing->document()->findBlockByNumber(line);
    cursor.setPosition(block.position());
    cursor.setPosition(block.position() + block.length() - 1, QTextCursor::KeepAnchor);
    pListing->setTextCursor(cursor);
    pListing->centerCursor();
    pListing->setFocus();
}

// --- Saving ------------------------------------------------------------------------

QString MainWindow::ProposedSaveName() const {
    const QFileInfo source(pInFile->text().trimmed());
    const QString name = source.fileName().section(QLatin1Char('.'), 0, 0);
    const QString extension = QLatin1String(ViewChoices[std::size_t(ShownView())].Extension);
    if (source.fileName().isEmpty())
        return pSourceDirectory + QStringLiteral("/untitled") + extension;
    return source.absoluteDir().filePath(name + extension);
}

void MainWindow::Save() {
    if (pRunning) return;
    const View view = ShownView();
    const QStringList filters = FileFilters::ToNameFilters(QLatin1String(FileFilters::SaveFile));
    QString selected = FileFilters::NameFilterFor(
        filters, QLatin1String(ViewChoices[std::size_t(view)].FilterCaption));
    const QString target = QFileDialog::getSaveFileName(
        this, tr("Save File"), ProposedSaveName(), filters.join(QStringLiteral(";;")), &selected,
        QFileDialog::HideNameFilterDetails);
    if (target.isEmpty()) return;

    if (view == View::Binary) {
        WriteSaved(target, pAssembly->BinaryImage());
        return;
    }
    const ColouredText& text = view == View::Listing ? pAssembly->GetListing().Text()
                               : view == View::Hex   ? pAssembly->Outputs().Hex()
                               : view == View::Srec  ? pAssembly->Outputs().Srec()
                                                     : pAssembly->Outputs().Loader();
    WriteSaved(target, pRtfFormat->isChecked() ? ToRtf(text) : text.Text());
}

bool MainWindow::WriteSaved(const QString& target, std::string_view contents) {
    const std::string problem = WriteFileAtomically(NativePath(target), contents);
    if (problem.empty()) {
        statusBar()->showMessage(tr("Saved %1").arg(QDir::toNativeSeparators(target)));
        return true;
    }
    QMessageBox::warning(this, tr("Save File"),
                         tr("The file was not saved; any file of that name is unchanged.\n\n%1")
                             .arg(QString::fromLocal8Bit(problem.c_str())));
    return false;
}

} // namespace trident
