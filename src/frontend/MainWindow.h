#pragma once

#include "assembler/Assembly.h"
#include "assembler/FrontEnd.h"
#include "encoder/OpcodeTable.h"
#include "frontend/ViewText.h"
#include "output/LoaderStyle.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

class QAction;
class QButtonGroup;
class QCheckBox;
class QDockWidget;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QSettings;
class QSplitter;
class QStackedWidget;
class QTimer;

namespace trident {

class ChangeWatcher;
class DiagnosticsPanel;
class SourceHighlighter;
class SourceView;

// The main window: the source box, the option boxes, the views of the
// listing and the object texts, and the commands that assemble, stop, step
// through diagnostics and save; beside them the source with its line
// numbers, and a panel of the run's diagnostics that leads to their lines.
// All assembling is done by Assembly, in the
// window's own thread: the run yields to the event loop between statements,
// so the window stays live and Stop is heard.
class MainWindow : public QMainWindow, private FrontEnd {
    Q_OBJECT

  public:
    // The views, in the order of their option buttons.
    enum class View { Listing, Hex, Srec, Loader, Binary };

    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    // Puts `path` into the source box as if it had been opened.
    void OpenSource(const QString& path);
    bool IsRunning() const { return pRunning; }
    // The settings store of the window, under the program's own name.
    static std::unique_ptr<QSettings> Settings();

  public slots:
    void Assemble();
    void Stop();
    void Save();
    void NextError();
    void NextWarning();
    void NextBoth();
    // Shows the place of the panel's row `row` in the source and the listing.
    void GoToDiagnostic(int row);
    // Opens the selected diagnostic's file at its line (else the source) in
    // the user's editor, or with the desktop's default application.
    void OpenInEditor();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // What the run shows through the window.
    void Yield() override;
    void ShowPass(int pass) override;
    void ShowDiagnosticCounts(int errors, int warnings) override;
    void ShowProcessorChecks(bool z80, bool z180) override;
    void ShowDiagnostic(const Diagnostic& diagnostic) override;
    void ShowMessage(std::string_view text) override;

    void CreateActions();
    void CreateMenus();
    QWidget* CreateCommandRow();
    QWidget* CreateSidePanel();
    QGroupBox* CreateOptionBoxes();
    QGroupBox* CreateViewChoice();
    QGroupBox* CreateSaveFormat();
    QGroupBox* CreateStatistics();
    QGroupBox* CreateProgress();
    QGroupBox* CreateDiagnostics();
    QWidget* CreateViews();
    QPlainTextEdit* CreateView(const char* name);
    QWidget* CreateSourcePane();
    void CreateDockWindows();

    void ReadSettings();
    void WriteSettings() const;

    void ChooseSource();
    void RememberRecent(const QString& path);
    void RebuildRecentMenu();
    void ChooseFont();
    void ChooseMaclibDirectory();
    void ChooseIncludeDirectory();
    void ChooseEditor();
    // Shows `path` in the source view unless it is shown already.
    void ShowSourceFile(const QString& path);
    // Reads the shown source again, keeping the place (it may have changed).
    void ReloadSourceFile();
    void WatchFilesRead();
    void AssembleAfterChange();
    void ShowLastRun();
    void ToggleLoaderStyle();
    void SetLoaderStyle(LoaderStyle style);
    void ShowView(int view);
    void SaveFormatFollowsView();
    void UpdateTitle();
    void SetViewFont(const QFont& font);

    void SetRunning(bool running);
    void ClearResults();
    void ShowResults(Assembly::Outcome outcome);
    void RefreshProgress();
    void ShowCounts();
    void ShowExtent();
    void FindDiagnostic(ViewText::Diagnostics kind);
    void SelectListingLine(int line);
    View ShownView() const;
    QString ProposedSaveName() const;
    // Writes `contents` to `target` without ever losing an existing file;
    // a failure is reported in a message box.
    bool WriteSaved(const QString& target, std::string_view contents);

    std::unique_ptr<Assembly> pAssembly;
    bool pRunning = false;
    bool pCloseAfterRun = false;
    QElapsedTimer pSinceEvents;
    int pErrors = 0;
    int pWarnings = 0;
    std::string pLastMessage;
    LoaderStyle pLoaderStyle = LoaderStyle::Ddt;
    QString pSourceDirectory;
    QStringList pRecent;
    QString pEditorCommand;
    // A change on disk stopped the run: assemble again once it has ended.
    bool pAssembleAgain = false;
    // The instruction set, read once for colouring the source before any run.
    OpcodeTable pWordTable;

    QLineEdit* pInFile = nullptr;
    QPushButton* pOpenButton = nullptr;
    QPushButton* pAssembleButton = nullptr;
    QPushButton* pAbortButton = nullptr;
    QPushButton* pSaveButton = nullptr;
    std::vector<QCheckBox*> pOptionBoxes;
    QCheckBox* pZ80 = nullptr;
    QCheckBox* pZ180 = nullptr;
    QLineEdit* pDefines = nullptr;
    QButtonGroup* pViewChoice = nullptr;
    QRadioButton* pLoaderButton = nullptr;
    QRadioButton* pTextFormat = nullptr;
    QRadioButton* pRtfFormat = nullptr;
    QRadioButton* pBinaryFormat = nullptr;
    QStackedWidget* pViews = nullptr;
    QPlainTextEdit* pListing = nullptr;
    QPlainTextEdit* pHex = nullptr;
    QPlainTextEdit* pSrec = nullptr;
    QPlainTextEdit* pLoader = nullptr;
    QPlainTextEdit* pBinary = nullptr;
    QSplitter* pSplitter = nullptr;
    SourceView* pSourceView = nullptr;
    QLabel* pSourceLabel = nullptr;
    SourceHighlighter* pHighlighter = nullptr;
    DiagnosticsPanel* pDiagnostics = nullptr;
    QDockWidget* pDiagnosticsDock = nullptr;
    ChangeWatcher* pWatcher = nullptr;
    QLabel* pLastRun = nullptr;
    QLabel* pErrorsLabel = nullptr;
    QLabel* pWarningsLabel = nullptr;
    QLabel* pLowest = nullptr;
    QLabel* pHighest = nullptr;
    QLabel* pSize = nullptr;
    QLabel* pPass = nullptr;
    QLabel* pLineCount = nullptr;
    QLabel* pMaclib = nullptr;
    QLabel* pVersion = nullptr;
    QTimer* pTimer = nullptr;
    // The widgets and commands that must not be used while a run is on.
    std::vector<QWidget*> pIdleWidgets;
    std::vector<QAction*> pIdleActions;

    QAction* pOpenAction = nullptr;
    QAction* pSaveAction = nullptr;
    QAction* pExitAction = nullptr;
    QAction* pAssembleAction = nullptr;
    QAction* pStopAction = nullptr;
    QAction* pNextErrorAction = nullptr;
    QAction* pNextWarningAction = nullptr;
    QAction* pFontAction = nullptr;
    QAction* pFixedFontsAction = nullptr;
    QAction* pMaclibAction = nullptr;
    QAction* pIncludeAction = nullptr;
    QAction* pEditorAction = nullptr;
    QAction* pOpenInEditorAction = nullptr;
    QAction* pAssembleOnSaveAction = nullptr;
    QMenu* pRecentMenu = nullptr;
};

} // namespace trident
