#include "assembler/Assembly.h"

#include "assembler/LineScanner.h"
#include "assembler/RunFailure.h"
#include "base/Text.h"
#include "encoder/OpcodeTableError.h"
#include "output/HexText.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <system_error>

namespace trident {

Assembly::Assembly(FrontEnd* frontEnd)
    : pFrontEnd(frontEnd ? *frontEnd : pSilentFrontEnd), pListing(pState, pFrontEnd),
      pSymbols(std::make_unique<SymbolTable>()),
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
    pOrigins.clear();
    pReferences.clear();
    pSortedReferences.clear();
    pPlaceFile = nullptr;
    pPlaceFiles.clear();
    pMacros = std::make_unique<MacroTable>();
    pOutputs.Clear();
    pFailureMessage.clear();
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
    pOutputs.SetLoaderStyle(pState.Options.Loader);
    pOutputs.Select(pState.Options.Objects);
    pOutputs.KeepColours(pState.Options.ColourRuns);
    pListing.Text().KeepColours(pState.Options.ColourRuns);
    pOutputs.StartPass(pass == 0);
    pMacroBlocks.StartPass(*this);
    pConditionals.Reset();
    // Every pass starts in radians, so that all passes evaluate alike.
    pEvaluator->SetDRG(AngleUnit::Radians);
    pEvaluator->SetRadix(10);
    pState.ZilogNotation = pState.Options.ZilogMnemonics;

    // The main file is read from disk and its lines are cut into statements
    // once an assembly; every later pass reads it from the top.
    pSources.StartPass(pass, source);
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
// every pass and have one caller each, the statement loop of RunPass: made
// inline, the loop no longer saves and restores its registers three times
// a statement.
inline void Assembly::ProcessStatement() {
    RecomputeListThisLine(pState);
    pState.LineAddress = pState.LocationCounter;
    pSymbols->SetLocation(pState.LocationCounter);

    if (pSources.LineDone()) {
        pLineMacroDepth = MacroDepth();
        ReadNextLine();
    }
    ++pState.TotalLines;
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
    if (!accepted && !statement.Operation.empty())
        ListError("Invalid Directive, Operation or Macro", statement.Operation);
    if (!statement.Label.empty() && !statement.LabelTaken)
        DefineSymbol(statement.Label, Value{pState.LineAddress});
}

void Assembly::ListError(std::string_view message, std::string_view detail, bool force) {
    ++pDiagnosticsRaised;
    pListing.ListError(message, detail, force, pStatement.Where);
}

void Assembly::ListWarning(std::string_view message, std::string_view detail, bool force) {
    ++pDiagnosticsRaised;
    pListing.ListWarning(message, detail, force, pStatement.Where);
}

void Assembly::TerminalStop(std::string_view detail) {
    // The pass ends after this statement; the main file stays open until
    // the assembly ends, since the statement's fields are views into it.
    ListError(TerminalMessage, detail, true);
    pState.TerminalStop = true;
}

void Assembly::EmitByte(std::uint8_t byte) {
    const std::int32_t address = pState.LocationCounter + pState.PhaseOffset;
    if (address < 0 || address >= RunState::ImageSize)
        throw RunFailure("address past FFFF: the program does not fit in 64 KiB");
    pState.ObjectImage[static_cast<std::size_t>(address)] = byte;
    pState.LowestAddress = std::min(pState.LowestAddress, address);
    pState.HighestAddress = std::max(pState.HighestAddress, address);
    ++pState.LocationCounter;
}

std::string Assembly::EmitValue(const Value& value, int width) {
    std::string text;
    EmitBits(WholeBits(value), width, text);
    return text;
}

void Assembly::EmitBits(std::uint32_t whole, int width, std::string& text) {
    pOutputs.WriteBits(whole, width);
    if (pEmissionLog) pEmissionLog->AddValue(whole, width);
    const std::uint32_t word = whole & 0xFFFFu;
    if (width == 16) {
        EmitByte(static_cast<std::uint8_t>(word & 0xFFu));
        EmitByte(static_cast<std::uint8_t>(word >> 8));
    } else {
        EmitByte(static_cast<std::uint8_t>(word & 0xFFu));
    }
    // The text is made only for a line that will be listed: the passes
    // before the final one list nothing.
    if (!pListing.ListsLines()) return;
    const auto low = static_cast<std::uint8_t>(word & 0xFFu);
    if (width != 16) {
        AppendHexByte(text, low);
        return;
    }
    // A word reads as a number with big-endian code, else low byte first.
    const auto high = static_cast<std::uint8_t>(word >> 8);
    const bool bigEndian = pState.Options.BigEndianCode;
    AppendHexByte(text, bigEndian ? high : low);
    AppendHexByte(text, bigEndian ? low : high);
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
