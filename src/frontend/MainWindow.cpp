#include "frontend/MainWindow.h"

#include "assembler/ListingColours.h"
#include "assembler/WordKind.h"
#include "encoder/OpcodeTableError.h"
#include "encoder/OpcodeTablePlace.h"
#include "frontend/ChangeWatcher.h"
#include "frontend/DiagnosticsPanel.h"
#include "frontend/DirectoryDialog.h"
#include "frontend/EditorCommand.h"
#include "frontend/FileFilters.h"
#include "frontend/SourceHighlighter.h"
#include "frontend/SourceView.h"
#include "output/AtomicFile.h"
#include "output/RtfText.h"

#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDir>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSettings>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTextBlock>
#include <QTime>
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
    OptionBox{"chkDwTextOrder", "DW Text Order",
              "dw 'AB' stores 41 42, as Altair-era sources expect", "DwTextOrder",
              &RunOptions::WordStringsInTextOrder},
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
        FindOpcodeTable(NativePath(QCoreApplication::applicationDirPath())).string();

    try {
        pWordTable.LoadOpcodeTable(pAssembly->Options().OpcodeTableFile);
    } catch (const OpcodeTableError&) {
        // Assemble reports it; until then no word is an instruction.
    }

    CreateActions();
    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->addWidget(CreateCommandRow());
    pSplitter = new QSplitter(Qt::Horizontal, this);
    pSplitter->setObjectName(QStringLiteral("splViews"));
    pSplitter->addWidget(CreateSourcePane());
    pSplitter->addWidget(CreateViews());
    pSplitter->setStretchFactor(1, 1);
    pSplitter->setSizes({400, 600});
    layout->addWidget(pSplitter, 1);
    setCentralWidget(central);
    CreateDockWindows();
    CreateMenus();
    pLastRun = new QLabel(this);
    pLastRun->setObjectName(QStringLiteral("lblLastRun"));
    statusBar()->addPermanentWidget(pLastRun);

    pWatcher = new ChangeWatcher(this);
    connect(pWatcher, &ChangeWatcher::Settled, this, &MainWindow::AssembleAfterChange);

    pTimer = new QTimer(this);
    pTimer->setObjectName(QStringLiteral("Timer1"));
    pTimer->setInterval(ProgressInterval);
    connect(pTimer, &QTimer::timeout, this, &MainWindow::RefreshProgress);

    setAcceptDrops(true);
    resize(1240, 860);
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
    pOpenInEditorAction =
        action("mnuOpenInEditor", tr("Open in Editor"), &MainWindow::OpenInEditor);
    pOpenInEditorAction->setShortcut(QKeySequence(tr("Ctrl+E")));
    pOpenInEditorAction->setToolTip(
        tr("Open the file at the line of the selected diagnostic in your editor"));
    pEditorAction = action("mnuEditor", tr("Editor ..."), &MainWindow::ChooseEditor);
    pAssembleOnSaveAction = new QAction(tr("Assemble on Save"), this);
    pAssembleOnSaveAction->setObjectName(QStringLiteral("mnuAssembleOnSave"));
    pAssembleOnSaveAction->setCheckable(true);
    pAssembleOnSaveAction->setToolTip(
        tr("Assemble again when the source or a file it read changes on disk"));
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
    file->addAction(pOpenInEditorAction);
    file->addSeparator();
    file->addAction(pExitAction);

    QMenu* run = menuBar()->addMenu(tr("&Assemble"));
    run->addAction(pAssembleAction);
    run->addAction(pStopAction);
    run->addAction(pAssembleOnSaveAction);
    run->addSeparator();
    run->addAction(pNextErrorAction);
    run->addAction(pNextWarningAction);

    QMenu* settings = menuBar()->addMenu(tr("&Settings"));
    settings->addAction(pFontAction);
    settings->addAction(pFixedFontsAction);
    settings->addSeparator();
    settings->addAction(pMaclibAction);
    settings->addAction(pIncludeAction);
    settings->addSeparator();
    settings->addAction(pEditorAction);

    QMenu* view = menuBar()->addMenu(tr("&View"));
    view->addAction(pDiagnosticsDock->toggleViewAction());
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
    // Names defined before the source's first statement, as -D does; in
    // the cell after the last box.
    auto* defines = new QWidget(group);
    auto* row = new QHBoxLayout(defines);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new QLabel(tr("Defines"), defines));
    pDefines = new QLineEdit(defines);
    pDefines->setObjectName(QStringLiteral("txtDefines"));
    pDefines->setToolTip(tr("Names defined before the source: NAME or NAME=VALUE, "
                            "separated by blanks or commas"));
    connect(pDefines, &QLineEdit::textChanged, this, [this](const QString& text) {
        std::vector<std::string>& defines = pAssembly->Options().Defines;
        defines.clear();
        for (const QString& define :
             text.split(QRegularExpression(QStringLiteral("[\\s,]+")), Qt::SkipEmptyParts))
            defines.push_back(define.toStdString());
    });
    row->addWidget(pDefines, 1);
    layout->addWidget(defines, index / 2, index % 2);
    pIdleWidgets.push_back(pDefines);
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

QWidget* MainWindow::CreateSourcePane() {
    auto* pane = new QWidget(this);
    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    pSourceLabel = new QLabel(tr("Source"), pane);
    pSourceLabel->setObjectName(QStringLiteral("lblSourceFile"));
    pSourceView = new SourceView(pane);
    pSourceView->setObjectName(QStringLiteral("rtbSource"));
    pHighlighter = new SourceHighlighter(pSourceView->document(), [this](std::string_view word) {
        return ClassifyWord(word, pWordTable, pAssembly->DefinedMacros());
    });
    layout->addWidget(pSourceLabel);
    layout->addWidget(pSourceView, 1);
    return pane;
}

void MainWindow::CreateDockWindows() {
    // The option boxes stand left of everything, the diagnostics under the
    // source and the views only: the side panel is a fixed dock of its own.
    auto* side = new QDockWidget(this);
    side->setObjectName(QStringLiteral("dockOptions"));
    side->setTitleBarWidget(new QWidget(side));
    side->setFeatures(QDockWidget::NoDockWidgetFeatures);
    side->setWidget(CreateSidePanel());
    addDockWidget(Qt::LeftDockWidgetArea, side);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);

    pDiagnosticsDock = new QDockWidget(tr("Diagnostics"), this);
    pDiagnosticsDock->setObjectName(QStringLiteral("dockDiagnostics"));
    pDiagnosticsDock->setAllowedAreas(Qt::BottomDockWidgetArea | Qt::TopDockWidgetArea);
    pDiagnostics = new DiagnosticsPanel(pDiagnosticsDock);
    pDiagnostics->addAction(pOpenInEditorAction);
    pDiagnostics->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(pDiagnostics, &DiagnosticsPanel::DiagnosticActivated, this,
            &MainWindow::GoToDiagnostic);
    pDiagnosticsDock->setWidget(pDiagnostics);
    addDockWidget(Qt::BottomDockWidgetArea, pDiagnosticsDock);
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
    pDefines->setText(settings->value(QStringLiteral("Defines")).toString());
    pAssembleOnSaveAction->setChecked(
        settings->value(QStringLiteral("AssembleOnSave"), QStringLiteral("0")).toString() ==
        QLatin1String("1"));
    pEditorCommand = settings->value(QStringLiteral("Editor")).toString();
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
    restoreState(settings->value(QStringLiteral("Docks")).toByteArray());
    pSplitter->restoreState(settings->value(QStringLiteral("Splitter")).toByteArray());
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
    settings->setValue(QStringLiteral("Defines"), pDefines->text());
    settings->setValue(QStringLiteral("AssembleOnSave"), Flag(pAssembleOnSaveAction->isChecked()));
    settings->setValue(QStringLiteral("Editor"), pEditorCommand);
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
    settings->setValue(QStringLiteral("Docks"), saveState());
    settings->setValue(QStringLiteral("Splitter"), pSplitter->saveState());
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
    ShowSourceFile(path);
    pWatcher->Watch({QFileInfo(path).absoluteFilePath()});
}

void MainWindow::ShowSourceFile(const QString& path) {
    if (!pSourceView->File().isEmpty() && QFileInfo(pSourceView->File()) == QFileInfo(path)) return;
    const bool shown = pSourceView->ShowFile(path);
    const QString name = QDir::toNativeSeparators(path);
    pSourceLabel->setText(shown ? name : tr("%1 cannot be read").arg(name));
}

void MainWindow::ReloadSourceFile() {
    const QString file = pSourceView->File();
    const int line = pSourceView->CurrentLine();
    const int scroll = pSourceView->verticalScrollBar()->value();
    pSourceView->ShowFile(file);
    if (const QTextBlock block = pSourceView->document()->findBlockByNumber(line - 1);
        block.isValid())
        pSourceView->setTextCursor(QTextCursor(block));
    pSourceView->verticalScrollBar()->setValue(scroll);
}

void MainWindow::WatchFilesRead() {
    QStringList files;
    const QString source = pInFile->text().trimmed();
    if (!source.isEmpty()) files.append(QFileInfo(source).absoluteFilePath());
    for (const std::string& file : pAssembly->FilesRead())
        files.append(QFileInfo(FromNative(file)).absoluteFilePath());
    pWatcher->Watch(files);
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
    pSourceView->setFont(font);
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

void MainWindow::ChooseEditor() {
    bool chosen = false;
    const QString command = QInputDialog::getText(
        this, tr("Editor"),
        tr("Command that opens {file} at {line}, e.g. \"gvim +{line} {file}\".\n"
           "Leave it empty to use the desktop's default application."),
        QLineEdit::Normal, pEditorCommand, &chosen);
    if (chosen) pEditorCommand = command.trimmed();
}

void MainWindow::OpenInEditor() {
    QString file = pSourceView->File();
    int line = pSourceView->CurrentLine();
    const Diagnostic* selected = pDiagnostics->Selected();
    if (selected && !selected->Where.File.empty() && (pDiagnostics->hasFocus() || file.isEmpty())) {
        file = FromNative(selected->Where.File);
        line = selected->Where.Line;
    }
    if (file.isEmpty()) file = pInFile->text().trimmed();
    if (file.isEmpty() || !QFileInfo(file).isFile()) {
        statusBar()->showMessage(tr("There is no source file to open"));
        return;
    }
    file = QFileInfo(file).absoluteFilePath();
    bool started = false;
    if (pEditorCommand.isEmpty()) {
        started = QDesktopServices::openUrl(QUrl::fromLocalFile(file));
    } else if (QStringList words = EditorCommand::Build(pEditorCommand, file, line);
               !words.isEmpty()) {
        const QString program = words.takeFirst();
        started = QProcess::startDetached(program, words);
    }
    statusBar()->showMessage(started ? tr("Opened %1 at line %2").arg(file).arg(line)
                                     : tr("The editor could not be started for %1").arg(file));
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
    if (pCloseAfterRun) {
        close();
        return;
    }
    if (pAssembleAgain) {
        pAssembleAgain = false;
        QTimer::singleShot(0, this, &MainWindow::Assemble);
    }
}

void MainWindow::AssembleAfterChange() {
    if (!pAssembleOnSaveAction->isChecked()) return;
    if (!pRunning) {
        Assemble();
        return;
    }
    // The run lives on this thread's stack: stop it, and start again once
    // it has returned.
    pAssembleAgain = true;
    Stop();
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
    pDiagnostics->Clear();
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
    pDiagnostics->Flush();
    if (outcome != Assembly::Outcome::NoSource) {
        WatchFilesRead();
        // The source may have changed since it was shown; a source shown
        // that the run did not read gives way to the run's own.
        const QStringList read = pWatcher->Files();
        if (!pSourceView->File().isEmpty() &&
            read.contains(QFileInfo(pSourceView->File()).absoluteFilePath()))
            ReloadSourceFile();
        else
            ShowSourceFile(pInFile->text().trimmed());
        ShowLastRun();
    }

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

void MainWindow::ShowLastRun() {
    pLastRun->setText(tr("Last run %1: %2 errors, %3 warnings")
                          .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")))
                          .arg(pErrors)
                          .arg(pWarnings));
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
    pDiagnostics->Flush();
    QCoreApplication::processEvents();
    pSinceEvents.restart();
}

void MainWindow::ShowPass(int pass) {
    pPass->setText(QString::number(pass));
    // When every pass is listed, the panel keeps the last one's.
    pDiagnostics->Clear();
}

void MainWindow::ShowDiagnostic(const Diagnostic& diagnostic) {
    pDiagnostics->Add(diagnostic);
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
    SelectListingLine(line);
    pListing->setFocus();
}

void MainWindow::SelectListingLine(int line) {
    const QTextBlock block = pListing->document()->findBlockByNumber(line);
    if (!block.isValid()) return;
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + block.length() - 1, QTextCursor::KeepAnchor);
    pListing->setTextCursor(cursor);
    pListing->centerCursor();
}

void MainWindow::GoToDiagnostic(int row) {
    if (row < 0 || row >= pDiagnostics->Count()) return;
    const Diagnostic& d = pDiagnostics->At(row);
    pDiagnostics->setCurrentItem(pDiagnostics->topLevelItem(row));
    if (!d.Where.File.empty()) {
        ShowSourceFile(FromNative(d.Where.File));
        pSourceView->GoToLine(d.Where.Line);
    }
    // During a run the listing is not shown yet.
    if (pRunning) return;
    pViewChoice->button(int(View::Listing))->setChecked(true);
    ShowView(int(View::Listing));
    SelectListingLine(ViewText::LineAt(pAssembly->GetListing().Text().Text(), d.ListingOffset));
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
