#pragma once

#include "assembler/ConditionalStack.h"
#include "assembler/CrossReference.h"
#include "assembler/Emitter.h"
#include "assembler/FrontEnd.h"
#include "assembler/Listing.h"
#include "assembler/ListingReports.h"
#include "assembler/SourcePlace.h"
#include "assembler/SourceStack.h"
#include "encoder/EncoderContext.h"
#include "encoder/OpcodeTable.h"
#include "encoder/ZilogHandler.h"
#include "expression/ExpressionEvaluator.h"
#include "macros/ExpansionLevel.h"
#include "macros/MacroContext.h"
#include "macros/MacroProcessor.h"
#include "macros/MacroTable.h"
#include "output/ObjectOutputs.h"
#include "source/RunState.h"
#include "source/Signedness.h"
#include "source/SourceStatement.h"
#include "source/Statement.h"
#include "source/StatementMemo.h"
#include "symbols/SymbolTable.h"
#include "symbols/Value.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

class DirectiveTable;

// One assembly: the run state, the tables and texts it owns, and the pass
// driver that turns a source file into them. Many assemblies may live in
// one process; nothing is shared between them.
class Assembly final : public EncoderContext, public MacroContext {
  public:
    enum class Outcome {
        NoSource,   // the source path is empty or names no file: nothing was done
        Completed,  // every pass ran, the final pass included
        Stopped,    // Stop was requested; no further pass was started
        Terminated, // a value needed at once was not known, or a budget was spent
        Failed,     // a fixed limit of the assembler was passed
    };

    static constexpr std::string_view TerminalMessage =
        "  *** Terminal ~ Value must be Resolved NOW **** ";
    // The error that names a spent budget of the run (RunOptions).
    static constexpr std::string_view LimitMessage = "Limit reached";
    static constexpr std::string_view InvalidOperation = "Invalid Directive, Operation or Macro";
    static constexpr int MaxIncludeFiles = 9;
    static constexpr int MaxMacroDepth = SourceStack::MaxMacroDepth;

    explicit Assembly(FrontEnd* frontEnd = nullptr);
    ~Assembly();
    Assembly(const Assembly&) = delete;
    Assembly& operator=(const Assembly&) = delete;

    RunOptions& Options() { return pState.Options; }

    // Runs passes 1, 2, ... while a pass creates a new resolved symbol, then
    // the final pass 0.
    Outcome Assemble(const std::filesystem::path& source);
    // One complete pass; returns whether another resolving pass is needed.
    bool RunPass(std::int16_t pass, const std::filesystem::path& source);
    // Honoured at the next statement boundary.
    void RequestStop() { pState.StopRequested = true; }

    const RunState& State() const override { return pState; }
    RunState& State() { return pState; }
    const Listing& GetListing() const { return pListing; }
    SymbolTable& Symbols() { return *pSymbols; }
    // The instruction set, read from Options().OpcodeTableFile at every Assemble.
    const OpcodeTable& Opcodes() const { return pOpcodes; }
    // The open conditional levels; they keep State().Skipping up to date.
    ConditionalStack& Conditionals() { return pConditionals; }
    // Why the run failed as a whole (Outcome::Failed) or passed a limit of
    // its budget (Outcome::Terminated), with the source line.
    const std::string& FailureMessage() const { return pFailureMessage; }
    FrontEnd& Front() { return pFrontEnd; }
    // Intel HEX, S-record and loader texts of the final pass.
    const ObjectOutputs& Outputs() const { return pEmitter.Outputs(); }
    // The object image from the lowest to the highest used address, gaps as
    // zero bytes; empty when nothing was emitted.
    std::string BinaryImage() const { return pEmitter.BinaryImage(); }
    // Every symbol with its value, kind, definition and references, sorted
    // by name (the location counter "$" left out).
    std::vector<ListingReports::SymbolRow> SymbolReport();
    MacroTable& Macros() override { return *pMacros; }
    // The macros defined so far; null before the first assembly.
    const MacroTable* DefinedMacros() const { return pMacros.get(); }
    // The collection of macro and repeat bodies, and macro calls.
    MacroProcessor& MacroBlocks() { return pMacroBlocks; }

    // --- Services for the statement handlers -------------------------------
    void ListError(std::string_view message, std::string_view detail, bool force = false) override;
    void ListWarning(std::string_view message, std::string_view detail,
                     bool force = false) override;
    // Evaluates an expression; its faults become diagnostics of the statement.
    Value Evaluate(std::string_view text) override;
    // Evaluates an operand of `width` bits (3, 8 or 16) with the range rules;
    // the result is an integer reduced to the width, or empty (unresolved).
    Value EvaluateOperand(std::string_view text, int width,
                          Signedness signedness = Signedness::Either, bool force = false) override;
    ExpressionEvaluator& Evaluator() { return *pEvaluator; }
    // The characters of a quoted string operand (either kind of quotes, with
    // escapes); conversion faults become diagnostics of the statement.
    std::string ConvertQuotedString(std::string_view text);
    // Opens an include file (OpenInclude) or the macro library (OpenMaclib)
    // whose lines are read next. The name is tried as written, then beside
    // the file holding the directive, then in the chosen directory; "\" in
    // it separates directories too, and a name not found as written is
    // looked for in any letter case. The name of the file opened, or
    // nullptr when no such file can be read.
    const std::string* OpenInclude(std::string_view name);
    const std::string* OpenMaclib(std::string_view name);
    // The file that OpenMaclib would open, without opening it.
    std::optional<std::string> FindMaclib(std::string_view name) const;
    // Whether the statement under way met a name without a value (rather
    // than only malformed text).
    bool UnresolvedName() const { return !pUnresolvedNames.empty(); }
    // Ends the pass and the assembly: the value needed now is not resolved.
    void TerminalStop(std::string_view detail) override;
    // The processor directives: the options are the window's check boxes,
    // "warnings off for this processor's instructions", and the selection
    // outlives the run, as ticking a box would.
    void SelectProcessor(bool z80Quiet, bool z180Quiet) {
        pState.Options.Z80 = z80Quiet;
        pState.Options.Z180 = z180Quiet;
        pFrontEnd.ShowProcessorChecks(z80Quiet, z180Quiet);
    }
    // The names that had no value in the statement that stopped the run.
    const std::vector<std::string>& TerminalUnresolved() const { return pTerminalNames; }
    // Every file the assembly read, each once: the source first.
    const std::vector<std::string>& FilesRead() const { return pSources.FilesRead(); }
    // Labels and equ names: defined once, duplicates reported in the final
    // pass. `kind` names the definition in the symbol report.
    void DefineSymbol(std::string_view name, const Value& value, std::string_view kind = "label");
    // set / defl names: redefinable at will.
    void RedefineSymbol(std::string_view name, const Value& value);
    // A name defined before gets this pass's value (Compatible mode).
    void MoveSymbol(int slot, const Value& value);
    // The emission address jumped (org, reserved space): every output
    // format starts a new record there.
    // `address` counts as the location counter does (in a .phase block, the
    // bytes' real place is elsewhere).
    void RestartOutputRecords(std::uint16_t address) {
        pEmitter.Outputs().Restart(static_cast<std::uint16_t>(address + pState.PhaseOffset));
    }
    // The one route of every emitted byte and word (width 8 or 16) into the
    // object image and the output writers; returns the listing text of the
    // value (a word low byte first, or as a number with big-endian code), or
    // nothing when the statement will not be listed.
    std::string EmitValue(const Value& value, int width);
    // EmitValue for a value already reduced to its whole bits, appending the
    // listing text to `text` (nothing when the line will not be listed).
    void EmitBits(std::uint32_t whole, int width, std::string& text) override;

    void SetLocation(std::int32_t address) override { pSymbols->SetLocation(address); }
    void WatchChangeable() override { pMetChangeable = false; }
    bool MetChangeable() const override { return pMetChangeable; }
    void LogEmissions(KeptEncoding* log) override { pEmitter.LogEmissions(log); }
    KeptEncoding* EmissionLog() const override { return pEmitter.EmissionLog(); }

    int MacroDepth() const override { return pSources.MacroDepth(); }
    std::vector<ExpansionLevel>& Expansions() override { return pSources.Expansions(); }
    void PushExpansion(ExpansionLevel level) override { pSources.PushExpansion(std::move(level)); }
    int ConditionalDepth() const override { return pConditionals.Depth(); }
    void CloseConditionalsTo(int depth) override { pConditionals.CloseTo(depth); }
    const SourcePosition& CurrentPosition() const { return pStatement.Where; }

  private:
    // False when the opcode table could not be read: the assembly cannot start.
    bool ResetForAssembly();
    bool LoadOpcodeTable();
    void StartPass(std::int16_t pass, const std::filesystem::path& source);
    void DefineGivenNames();
    void EndPass();
    // The main file and its kept statements, once the assembly is over.
    void CloseMainFile();
    void ProcessStatement();
    // Reads the next line of the sources; a failure names that line.
    void ReadNextLine();
    void PositionStatement();
    // Fills the statement from its fields and lower-case word; `kept` is
    // what was kept of a main-file statement (nothing for other lines).
    void PrepareStatement(const SourceStack::Next& next);
    void Dispatch(Statement& statement);
    // Executes the statement by the first rule that takes it; false when
    // none does.
    bool Execute(Statement& statement);
    bool ExecuteCompatibly(Statement& statement);
    bool ExecuteStatement(Statement& statement, const DirectiveTable& directives);
    bool IsOperationWord(std::string_view word, const DirectiveTable& directives) const;
    bool ReadCompatibly(Statement& statement);
    bool LabelIsOperation(const Statement& statement, const DirectiveTable& directives) const;
    void TakeLabelAsOperation(Statement& statement, std::string_view word);
    void ExpandShortPortForm(Statement& statement);
    void HideExpansionLine(Statement& statement);
    void WarnDialectSlips(Statement& statement);
    // What a kept statement remembers of the operand that holds `text`, its
    // evaluated text, or nullptr.
    StatementMemo::Operand* KeptText(std::string_view text);
    Value Evaluate(std::string_view text, StatementMemo::Operand* kept);
    // Evaluate through a kept program, the value where it lies (see
    // ExpressionEvaluator::EvaluateInPlace).
    const Value& EvaluateInPlace(std::string_view text, ProgramHandle& program);
    // An operand's value reduced to `width` bits with the range rules
    // (EvaluateOperand); `clean` is cleared when that raised a diagnostic.
    std::int32_t ReduceWhole(std::string_view text, std::int32_t value, int width,
                             Signedness signedness, bool force, bool& clean);
    std::int32_t ReduceNumber(std::string_view text, const Value& result, int width,
                              Signedness signedness, bool force, bool& clean);
    void ReportOutOfRange(std::string_view text, std::int32_t value, const char* message,
                          bool force);
    // Turns the evaluator's recorded faults into diagnostics.
    void ReportEvaluatorFaults();
    void NoteUnresolved(std::int32_t code);
    void CountZilogWordError(std::string_view message);
    bool IsEraByte(double value, int width, Signedness signedness) const;
    std::string DescribeFailure(const std::string& what) const;
    void FinishOutputs();
    void RecordReference(int slot);
    void RecordDefinition(int slot, std::string_view kind);

    FrontEnd pSilentFrontEnd;
    FrontEnd& pFrontEnd;
    RunState pState;
    ConditionalStack pConditionals{pState.Skipping};
    Listing pListing;
    std::unique_ptr<SymbolTable> pSymbols;
    std::unique_ptr<ExpressionEvaluator> pEvaluator;
    OpcodeTable pOpcodes;
    std::unique_ptr<MacroTable> pMacros;
    Emitter pEmitter{pState};
    CrossReference pCrossReference;
    MacroProcessor pMacroBlocks;
    ZilogHandler pZilog;

    SourceStack pSources{pState};
    // Statements copy the file and macro names only when the sources'
    // position names others (SourceStack::NamesVersion).
    std::uint64_t pStatementNamesVersion = 0;
    int pLineMacroDepth = 0;
    Statement pStatement;
    // Set by every value that may change between passes and every diagnostic.
    bool pMetChangeable = false;
    // A statement cut again (Compatible mode's column-1 operation words,
    // Zilog notation's short port forms): its operand list and texts.
    std::vector<std::string_view> pColumnOneOperands;
    std::string pColumnOneWord;
    std::string pPortText;
    std::array<std::string_view, 2> pPortOperands;
    std::string pFailureMessage;
    std::vector<std::string> pUnresolvedNames;
    std::vector<std::string> pTerminalNames;
};

} // namespace trident
