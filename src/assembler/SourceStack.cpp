#include "assembler/SourceStack.h"

#include "base/Text.h"
#include "macros/MacroText.h"
#include "source/RunFailure.h"

#include <algorithm>
#include <array>
#include <string>

namespace trident {
namespace {

// Many sources were written on systems that separate directories with a
// backslash; it separates them here too.
std::filesystem::path SourcePath(std::string_view name) {
    std::string text(name);
    std::replace(text.begin(), text.end(), '\\', '/');
    return std::filesystem::path(text);
}

// The entry of `path`'s directory whose name matches its file name in
// another letter case (sources written on systems that ignore case name
// `Z80.LIB` as `z80.lib`); empty when there is none.
std::filesystem::path OtherCase(const std::filesystem::path& path) {
    const std::string wanted = LowerCase(path.filename().string());
    const std::filesystem::path directory =
        path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
    std::error_code error;
    for (std::filesystem::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error))
        if (LowerCase(entry->path().filename().string()) == wanted)
            return path.has_parent_path() ? entry->path() : entry->path().filename();
    return {};
}

// The name as written (relative to the current directory, or absolute),
// then beside the file that holds the directive, then in the directory the
// user chose for such files; in each place first as written, then in any
// letter case.
std::optional<SourceFile> FindSourceFile(std::string_view name, std::string_view includingFile,
                                         std::string_view chosenDirectory) {
    if (name.empty()) return std::nullopt;
    const std::filesystem::path path = SourcePath(name);
    const std::array<std::filesystem::path, 3> candidates{
        path,
        includingFile.empty() ? std::filesystem::path{}
                              : SourcePath(includingFile).parent_path() / path,
        chosenDirectory.empty() ? std::filesystem::path{} : SourcePath(chosenDirectory) / path,
    };
    for (const std::filesystem::path& candidate : candidates) {
        if (candidate.empty()) continue;
        if (std::optional<SourceFile> file = SourceFile::Open(candidate)) return file;
        if (const std::filesystem::path other = OtherCase(candidate); !other.empty())
            if (std::optional<SourceFile> file = SourceFile::Open(other)) return file;
    }
    return std::nullopt;
}

} // namespace

void SourceStack::StartPass(std::int16_t pass, const std::filesystem::path& source) {
    pExpansions.clear();
    pIncludeFiles.clear();
    pMaclib.reset();
    pState.MaclibOpen = false;
    pState.IncludeDepth = 0;
    pStatements = {};
    pKeywords = {};
    pOperands = {};
    pPrepared = {};
    pNextStatement = 0;
    pLineFromMainFile = false;
    const bool stripParity = pState.Options.StripParity;
    if (pass == 1) {
        pFilesRead.clear();
        pState.LinesReadInRun = 0;
    }
    pLineBudget = std::min<std::int64_t>(pState.Options.MaxLinesPerPass,
                                         pState.Options.MaxLinesPerRun - pState.LinesReadInRun);
    const Dialect dialect = LineDialect();
    if (pass == 1 || !pMainFile || pMainFile->Name() != source.string()) {
        pMainFile = SourceFile::Open(source);
        if (!pMainFile) throw RunFailure("cannot read the source file " + source.string());
        NoteFileRead(pMainFile->Name());
        pMainLines.Load(*pMainFile, stripParity, dialect);
    } else if (pMainLines.StrippedParity() != stripParity || pMainLines.CutDialect() != dialect) {
        // The parity or Compatible option changed since the lines were cut.
        pMainLines.Load(*pMainFile, stripParity, dialect);
    } else {
        pMainFile->Rewind();
    }
}

void SourceStack::EndPass() {
    pState.LinesReadInRun += pState.LinesRead;
    pIncludeFiles.clear();
    pMaclib.reset();
    pState.MaclibOpen = false;
    pState.IncludeDepth = 0;
}

void SourceStack::CloseMainFile() {
    pMainLines.Clear();
    pStatements = {};
    pKeywords = {};
    pOperands = {};
    pPrepared = {};
    pMainFile.reset();
}

// A repeat level with iterations left starts its text again instead of
// being left.
void SourceStack::LeaveFinishedExpansions() {
    while (!pExpansions.empty() && pExpansions.back().UsedUp() &&
           !pExpansions.back().StartNextIteration())
        pExpansions.pop_back();
}

void SourceStack::PrepareOtherLine() {
    pPrepared = {};
    pLineFromMainFile = false;
    ReadOtherLine();
    pLine.Clear();
    PrepareLine(pLineText, pState.Options.StripParity, LineDialect(), pLine);
    pStatements = pLine.Statements;
    pKeywords = pLine.Keywords;
    pOperands = pLine.Operands;
}

// The main file's lines were prepared when it was opened.
void SourceStack::TakeMainLine() {
    ++pState.LinesReadFromFile;
    const auto index = static_cast<std::size_t>(pMainFile->LineNumber());
    pMainFile->SkipLine(pMainLines.NextLineStart(index));
    SetMainFilePosition();
    CountLine();
    if (pMainLines.CutFailed(index)) pMainLines.RethrowCutFailure(index);
    pStatements = pMainLines.Statements(index);
    pKeywords = pMainLines.Keywords(index);
    pOperands = pMainLines.Operands();
    pPrepared = pMainLines.PreparedOf(index);
}

void SourceStack::SetPosition(const std::string& file, int line, std::string_view macro) {
    if (pPosition.File != file || pPosition.Macro != macro) {
        pPosition.File = file;
        pPosition.Macro = macro;
        ++pNamesVersion;
    }
    pPosition.Line = line;
}

// The main file's name stays put from one of its lines to the next.
void SourceStack::SetMainFilePosition() {
    if (pLineFromMainFile) {
        pPosition.Line = pMainFile->LineNumber();
        return;
    }
    SetPosition(pMainFile->Name(), pMainFile->LineNumber(), {});
    pLineFromMainFile = true;
}

void SourceStack::FailLineBudget() const {
    const RunOptions& options = pState.Options;
    if (pState.LinesRead > options.MaxLinesPerPass)
        throw LimitReached("more than " + std::to_string(options.MaxLinesPerPass) +
                           " source lines read in one pass");
    throw LimitReached("more than " + std::to_string(options.MaxLinesPerRun) +
                       " source lines read in all passes");
}

void SourceStack::ReadOtherLine() {
    if (pState.MaclibOpen) return ReadFromMaclib();
    if (!pExpansions.empty()) {
        ExpansionLevel& level = pExpansions.back();
        ++pState.ExpandedMacroLines;
        SetPosition(level.InvokedAt.File, level.InvokedAt.Line, level.Name);
        CountLine();
        MacroText::SubstituteLine(level.NextLine(), level.Parameters, LineDialect(), pSubstitution,
                                  pLineText, pState.Options.MaxExpandedLineLength);
        pState.ExpandedTextInRun += static_cast<std::int64_t>(pLineText.size());
        if (pState.ExpandedTextInRun > pState.Options.MaxExpandedTextPerRun) [[unlikely]]
            throw LimitReached("more than " + std::to_string(pState.Options.MaxExpandedTextPerRun) +
                               " characters of macro expansion in all passes");
        return;
    }
    ReadFromInclude();
}

void SourceStack::ReadFromMaclib() {
    if (pMaclib && !pMaclib->AtEnd() && !pState.EndSeen) {
        if (pState.CurrentPass == 1) ++pState.MaclibLinesRead;
        pLineText = pMaclib->ReadSourceLine();
        SetPosition(pMaclib->Name(), pMaclib->LineNumber(), {});
        CountLine();
        return;
    }
    pMaclib.reset();
    pState.MaclibOpen = false;
    RecomputeListThisLine(pState);
    pLineText.clear();
}

void SourceStack::ReadFromInclude() {
    ++pState.IncludedLines;
    SourceFile& file = pIncludeFiles.back();
    if (file.AtEnd()) {
        SetPosition(file.Name(), file.LineNumber() + 1, {});
        pIncludeFiles.pop_back();
        pState.IncludeDepth = static_cast<std::int32_t>(pIncludeFiles.size());
        pLineText.clear();
        return;
    }
    pLineText = file.ReadSourceLine();
    SetPosition(file.Name(), file.LineNumber(), {});
    CountLine();
}

const std::string* SourceStack::OpenInclude(std::string_view name, std::string_view includingFile) {
    std::optional<SourceFile> file =
        FindSourceFile(name, includingFile, pState.Options.IncludeDirectory);
    if (!file) return nullptr;
    NoteFileRead(file->Name());
    pIncludeFiles.push_back(std::move(*file));
    pState.IncludeDepth = static_cast<std::int32_t>(pIncludeFiles.size());
    return &pIncludeFiles.back().Name();
}

const std::string* SourceStack::OpenMaclib(std::string_view name, std::string_view includingFile) {
    std::optional<SourceFile> file =
        FindSourceFile(name, includingFile, pState.Options.MaclibDirectory);
    if (!file) return nullptr;
    NoteFileRead(file->Name());
    pMaclib = std::move(file);
    pState.MaclibOpen = true;
    RecomputeListThisLine(pState);
    return &pMaclib->Name();
}

std::optional<std::string> SourceStack::FindMaclib(std::string_view name,
                                                   std::string_view includingFile) const {
    std::optional<SourceFile> file =
        FindSourceFile(name, includingFile, pState.Options.MaclibDirectory);
    if (!file) return std::nullopt;
    return file->Name();
}

void SourceStack::NoteFileRead(const std::string& name) {
    if (++pState.FilesOpened > pState.Options.MaxFilesOpenedPerPass) [[unlikely]]
        throw LimitReached("more than " + std::to_string(pState.Options.MaxFilesOpenedPerPass) +
                           " include files and macro libraries opened in one pass");
    if (std::find(pFilesRead.begin(), pFilesRead.end(), name) == pFilesRead.end())
        pFilesRead.push_back(name);
}

void SourceStack::PushExpansion(ExpansionLevel level) {
    if (MacroDepth() >= MaxMacroDepth)
        throw RunFailure("macro expansion nested deeper than " + std::to_string(MaxMacroDepth) +
                         " levels");
    std::size_t open = level.TextSize();
    for (const ExpansionLevel& outer : pExpansions) open += outer.TextSize();
    if (open > pState.Options.MaxOpenExpansionText)
        throw LimitReached("more than " + std::to_string(pState.Options.MaxOpenExpansionText) +
                           " characters of text in open macro expansions");
    pExpansions.push_back(std::move(level));
}

} // namespace trident
