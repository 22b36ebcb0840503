#include "assembler/Assembly.h"

#include "base/Text.h"
#include "encoder/OpcodeTableError.h"
#include "encoder/ZilogTranslator.h"
#include "source/LineScanner.h"
#include "source/RunFailure.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <system_error>

namespace trident {

Assembly::Assembly(FrontEnd* frontEnd)
    : EncoderContext(pState, pOpcodes), pFrontEnd(frontEnd ? *frontEnd : pSilentFrontEnd),
      pListing(pState, pFrontEnd), pSymbols(std::make_unique<SymbolTable>()),
      pEvaluator(std::make_unique<ExpressionEvaluator>()), pMacros(std::make_unique<MacroTable>()) {
    pEvaluator->SetVariables(pSymbols.get());
}

Assembly::~Assembly() = default;

Assembly::Outcome Assembly::Assemble(const std::filesystem::path& source) {
    std::error_code error;
    if (source.empty() || !std::filesystem::exists(source, error)) return Outcome::NoSource;

    if (!ResetForAssembly()) return Outcome::Failed;
    try {
        std::int16_t pass = 1;
        bool another = RunPass(pass, source);
        while (another && !pState.StopRequested && !pState.TerminalStop) {
            if (pass == std::numeric_limits<std::int16_t>::max())
                throw RunFailure("more than 32767 resolving passes");
            ++pass;
            another = RunPass(pass, source);
        }
        if (!pState.StopRequested && !pState.TerminalStop) RunPass(0, source);
    } catch (const LimitReached& limit) {
        // The source grows without end: it ends as at a terminal stop.
        pFailureMessage = DescribeFailure(limit.what());
        pListing.ListError(LimitMessage, pFailureMessage, true, pStatement.Where);
        pState.TerminalStop = true;
        CloseMainFile();
        return Outcome::Terminated;
    } catch (const RunFailure& failure) {
        pFailureMessage = DescribeFailure(failure.what());
        pListing.ListError("Assembly stopped", pFailureMessage, true, pStatement.Where);
        CloseMainFile();
        return Outcome::Failed;
    }
    CloseMainFile();
    if (pState.TerminalStop) return Outcome::Terminated;
    if (pState.StopRequested) return Outcome::Stopped;
    return Outcome::Completed;
}

bool Assembly::ResetForAssembly() {
    const RunOptions options = pState.Options;
    pState = RunState{};
    pState.Options = options;
    pListing.Clear();
    pSymbols = std::make_unique<SymbolTable>();
    pSymbols->SetCaseSensitive(options.CaseSensitiveSymbols);
    // The evaluator of the previous assembly looked its names up in the
    // table just replaced.
    pEvaluator = std::make_unique<ExpressionEvaluator>();
    pEvaluator->SetVariables(pSymbols.get());
    pSymbols->SetErrorSink(
        [this](std::string_view message, std::string_view detail) { ListError(message, detail); });
    pSymbols->SetReferenceSink([this](int slot) { RecordReference(slot); });
    pCrossReference.Clear();
    pMacros = std::make_unique<MacroTable>();
    pEmitter.Outputs().Clear();
    pFailureMessage.clear();
    pTerminalNames.clear();
    return LoadOpcodeTable();
}

bool Assembly::LoadOpcodeTable() {
    pOpcodes.Clear();
    // No table configured: every operation word stays unknown to the encoder.
    if (pState.Options.OpcodeTableFile.empty()) return true;
    try {
        pOpcodes.LoadOpcodeTable(pState.Options.OpcodeTableFile);
    } catch (const OpcodeTableError& error) {
        pFailureMessage = error.Message();
        pFrontEnd.ShowMessage(pFailureMessage);
        return false;
    }
    return true;
}

bool Assembly::RunPass(std::int16_t pass, const std::filesystem::path& source) {
    StartPass(pass, source);
    while (!pState.EndSeen && !pState.StopRequested && !pState.TerminalStop) {
        if (pSources.LineDone() && !pSources.MoreInput()) break;
        ProcessStatement();
        pFrontEnd.Yield();
    }
    EndPass();
    return pState.AnotherPassNeeded;
}

void Assembly::StartPass(std::int16_t pass, const std::filesystem::path& source) {
    pFrontEnd.ShowPass(pass);
    pListing.ResetCounts();
    static_cast<PassState&>(pState) = PassState{};
    pState.CurrentPass = pass;
    pSymbols->CurrentPass = pass;
    pSymbols->SetCaseSensitive(pState.Options.CaseSensitiveSymbols);
    if (pass == 1) {
        pState.MaclibLinesRead = 0;
        pState.HighestPass = 0;
    } else {
        pState.HighestPass = std::max<std::int32_t>(pState.HighestPass, pass);
    }
    pEmitter.Outputs().SetLoaderStyle(pState.Options.Loader);
    pEmitter.Outputs().SetStandardRecords(pState.Options.StandardRecords);
    pEmitter.Outputs().Select(pState.Options.Objects);
    pEmitter.Outputs().KeepColours(pState.Options.ColourRuns);
    pListing.Text().KeepColours(pState.Options.ColourRuns);
    pEmitter.Outputs().StartPass(pass == 0);
    pMacroBlocks.StartPass(*this);
    pConditionals.Reset();
    // Every pass starts in radians, so that all passes evaluate alike.
    pEvaluator->SetDRG(AngleUnit::Radians);
    pEvaluator->SetDialect(pState.Options.CompatibleMode ? expr::Dialect::Compatible
                                                         : expr::Dialect::Standard);
    pEvaluator->SetRadix(10);
    pState.ZilogNotation = pState.Options.ZilogMnemonics;

    // The main file is read from disk and its lines are cut into statements
    // once an assembly; every later pass reads it from the top.
    pSources.StartPass(pass, source);
    DefineGivenNames();
    // A listing is somewhat longer than its source: its room is made once.
    // (Memory reserved but never written costs nothing.)
    if (pass == 0) pListing.Text().Reserve(pListing.Text().Size() + 2 * pSources.MainTextSize());
}

void Assembly::EndPass() {
    if (!pState.TerminalStop) FinishOutputs();
    // The main file stays open for the next pass.
    pSources.EndPass();
}

void Assembly::CloseMainFile() {
    pStatement.Memo = nullptr;
    pSources.CloseMainFile();
}

// ProcessStatement, PrepareStatement and Dispatch run for every statement of
// every pass and have one caller each, the statement loop of RunPass: they
// are inline in it (docs/performance.md).
inline void Assembly::ProcessStatement() {
    RecomputeListThisLine(pState);
    pState.LineAddress = pState.LocationCounter;
    pSymbols->SetLocation(pState.LocationCounter);

    if (pSources.LineDone()) {
        pLineMacroDepth = MacroDepth();
        ReadNextLine();
    }
    ++pState.TotalLines;
    if (!pUnresolvedNames.empty()) pUnresolvedNames.clear();
    PrepareStatement(pSources.TakeStatement());
    Dispatch(pStatement);
    pListing.ListLine(pStatement, pLineMacroDepth);
}

void Assembly::ReadNextLine() {
    try {
        pSources.ReadNextLine();
    } catch (const RunFailure&) {
        PositionStatement();
        throw;
    }
}

// A position is copied for every statement, and its file and macro names
// change only when the line comes from another source.
void Assembly::PositionStatement() {
    const SourcePosition& line = pSources.Position();
    if (pStatementNamesVersion != pSources.NamesVersion()) {
        pStatement.Where.File = line.File;
        pStatement.Where.Macro = line.Macro;
        pStatementNamesVersion = pSources.NamesVersion();
    }
    pStatement.Where.Line = line.Line;
}

inline void Assembly::PrepareStatement(const SourceStack::Next& next) {
    const SourceStatement& fields = next.Fields;
    pStatement.ClearResults();
    PositionStatement();
    // Views of the line: the scanner's label and operation words hold no
    // blanks, so they are listed as they stand.
    pStatement.Label = fields.Label;
    pStatement.Operation = fields.Operation;
    pStatement.Keyword = next.Keyword;
    pStatement.Operands = fields.Operands;
    pStatement.Comment = fields.Comment;
    pStatement.Marks = fields.Marks;
    if (fields.TooManyOperands) LineScanner::FailTooManyOperands();
    pStatement.OperandList = {pSources.Operands().data() + fields.FirstOperand,
                              fields.OperandCount};
    pStatement.Memo = next.Kept ? &next.Kept->Memo : nullptr;
}

inline void Assembly::Dispatch(Statement& statement) {
    const bool skipping = pState.Skipping;
    const bool accepted = Execute(statement);
    if (skipping) return;
    if (!accepted && !statement.Operation.empty()) ListError(InvalidOperation, statement.Operation);
    if (!statement.Label.empty() && !statement.LabelTaken)
        DefineSymbol(statement.Label, Value{pState.LineAddress});
}

void Assembly::ListError(std::string_view message, std::string_view detail, bool force) {
    pMetChangeable = true;
    const std::int32_t before = pState.ErrorCount;
    pListing.ListError(message, detail, force, pStatement.Where);
    if (pState.ErrorCount != before && !pState.ZilogNotation) [[unlikely]]
        CountZilogWordError(message);
}

// A source in Zilog notation read as 8080 code fails on its Zilog words.
void Assembly::CountZilogWordError(std::string_view message) {
    if (!ZilogTranslator::IsZilogMnemonic(pStatement.Keyword)) return;
    ++pState.ZilogWordErrors;
    if (message == InvalidOperation) ++pState.UnknownZilogWords;
}

void Assembly::ListWarning(std::string_view message, std::string_view detail, bool force) {
    pMetChangeable = true;
    pListing.ListWarning(message, detail, force, pStatement.Where);
}

void Assembly::TerminalStop(std::string_view detail) {
    // The pass ends after this statement; the main file stays open until
    // the assembly ends, since the statement's fields are views into it.
    ListError(TerminalMessage, detail, true);
    pState.TerminalStop = true;
    pTerminalNames = pUnresolvedNames;
}

std::string Assembly::EmitValue(const Value& value, int width) {
    return pEmitter.EmitValue(value, width, pListing.ListsLines());
}

void Assembly::EmitBits(std::uint32_t whole, int width, std::string& text) {
    pEmitter.EmitBits(whole, width, pListing.ListsLines(), text);
}

const std::string* Assembly::OpenInclude(std::string_view name) {
    return pSources.OpenInclude(name, CurrentPosition().File);
}

const std::string* Assembly::OpenMaclib(std::string_view name) {
    return pSources.OpenMaclib(name, CurrentPosition().File);
}

std::optional<std::string> Assembly::FindMaclib(std::string_view name) const {
    return pSources.FindMaclib(name, pStatement.Where.File);
}

std::string Assembly::DescribeFailure(const std::string& what) const {
    const SourcePosition& where = pStatement.Where;
    if (where.File.empty()) return what;
    std::string text = what + " (" + where.File + " line " + std::to_string(where.Line);
    if (!where.Macro.empty()) text += ", in expansion of macro " + where.Macro;
    return text + ")";
}

} // namespace trident
