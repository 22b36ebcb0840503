#pragma once

#include "assembler/MainFileLines.h"
#include "assembler/PreparedLine.h"
#include "assembler/SourceFile.h"
#include "macros/ExpansionLevel.h"
#include "source/RunState.h"
#include "source/ScannedLine.h"
#include "source/SourcePosition.h"
#include "source/SourceStatement.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

// The sources that lines are read from: the main file, include files, the
// macro library and macro expansions. The next line comes from the macro
// library while one is open, else from the innermost expansion, else from
// the innermost include file, else from the main file. Every line goes
// through one preparation (PrepareLine); the main file's lines are
// prepared once an assembly, when pass 1 opens it, and kept for every pass.
class SourceStack {
  public:
    static constexpr int MaxMacroDepth = 255;

    explicit SourceStack(RunState& state) : pState(state) {}

    // Opens the main file (reading and cutting it in pass 1, or when it or
    // the parity option changed) or starts it again from the top.
    void StartPass(std::int16_t pass, const std::filesystem::path& source);
    // Closes include files and the macro library; the main file stays.
    void EndPass();
    // The main file and its kept statements, once the assembly is over.
    void CloseMainFile();
    std::string MainFileName() const { return pMainFile ? pMainFile->Name() : std::string(); }
    std::size_t MainTextSize() const { return pMainFile ? pMainFile->Text().size() : 0; }
    // Every file the assembly read (main file, include files, macro
    // libraries), each once, in the order first opened.
    const std::vector<std::string>& FilesRead() const { return pFilesRead; }

    // Whether the line under way has no statements left.
    bool LineDone() const { return pNextStatement >= pStatements.size(); }
    // Leaves used-up expansions; false when no source has lines left.
    bool MoreInput() {
        if (!pExpansions.empty()) LeaveFinishedExpansions();
        return pState.MaclibOpen || !pExpansions.empty() || !pIncludeFiles.empty() ||
               (pMainFile && !pMainFile->AtEnd());
    }
    // Reads and prepares the next line. A failure leaves Position() at it.
    void ReadNextLine() {
        pNextStatement = 0;
        // Most lines come from the main file, whose lines are kept.
        if (pExpansions.empty() && !pState.MaclibOpen && pIncludeFiles.empty())
            TakeMainLine();
        else
            PrepareOtherLine();
    }
    // The next statement of the line, its lower-case word, and what is kept
    // of it (main-file statements only, else nullptr).
    struct Next {
        const SourceStatement& Fields;
        std::string_view Keyword;
        MainFileLines::Prepared* Kept;
    };
    Next TakeStatement() {
        const std::size_t index = pNextStatement++;
        return {pStatements[index], pKeywords[index],
                pPrepared.empty() ? nullptr : &pPrepared[index]};
    }
    // The operand list that the statements' FirstOperand counts in.
    std::span<const std::string_view> Operands() const { return pOperands; }

    // Where the line under way was read; NamesVersion changes whenever its
    // file or macro name does.
    const SourcePosition& Position() const { return pPosition; }
    std::uint64_t NamesVersion() const { return pNamesVersion; }

    // The name of the file opened, or nullptr when none was found.
    const std::string* OpenInclude(std::string_view name, std::string_view includingFile);
    const std::string* OpenMaclib(std::string_view name, std::string_view includingFile);
    // The name of the file that OpenMaclib would open, without opening it.
    std::optional<std::string> FindMaclib(std::string_view name,
                                          std::string_view includingFile) const;
    int MacroDepth() const { return static_cast<int>(pExpansions.size()); }
    std::vector<ExpansionLevel>& Expansions() { return pExpansions; }
    void PushExpansion(ExpansionLevel level);

  private:
    Dialect LineDialect() const {
        return pState.Options.CompatibleMode ? Dialect::Compatible : Dialect::Standard;
    }
    void LeaveFinishedExpansions();
    void TakeMainLine();
    void PrepareOtherLine();
    void ReadOtherLine();
    // Counts a line read against the budget of the pass and of the run.
    // Inline: every line of every pass comes here.
    void CountLine() {
        if (++pState.LinesRead > pLineBudget) [[unlikely]]
            FailLineBudget();
    }
    [[noreturn]] void FailLineBudget() const;
    void NoteFileRead(const std::string& name);
    void ReadFromMaclib();
    void ReadFromInclude();
    void SetPosition(const std::string& file, int line, std::string_view macro);
    void SetMainFilePosition();

    RunState& pState;
    // The lines this pass may read: the budget of a pass, or what is left of
    // the run's.
    std::int64_t pLineBudget = 0;
    std::vector<std::string> pFilesRead;
    std::optional<SourceFile> pMainFile;
    MainFileLines pMainLines;
    std::vector<SourceFile> pIncludeFiles;
    std::optional<SourceFile> pMaclib;
    std::vector<ExpansionLevel> pExpansions;

    // The line under way: its statements are views into pLineText (lines
    // not kept) or into the main file's kept lines.
    std::string pLineText;
    PreparedStatements pLine;
    // The statements of an expansion's line while it is substituted.
    ScannedLine pSubstitution;
    std::span<const SourceStatement> pStatements;
    std::span<const std::string_view> pKeywords;
    std::span<const std::string_view> pOperands;
    // Parallel to pStatements for a main-file line, empty otherwise.
    std::span<MainFileLines::Prepared> pPrepared;
    std::size_t pNextStatement = 0;
    SourcePosition pPosition;
    std::uint64_t pNamesVersion = 1;
    bool pLineFromMainFile = false;
};

// Whether the statement under way is listed: a macro library is read in
// pass 1 only, and its lines (and their diagnostics) are listed when the
// user asked for library listings; else every line of the final pass while
// the listing is on.
inline void RecomputeListThisLine(RunState& state) {
    state.ListThisLine =
        state.MaclibOpen ? state.Options.ListMacLibs : state.CurrentPass == 0 && state.ListingOn;
}

} // namespace trident
