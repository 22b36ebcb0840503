// What a run leaves behind besides the listing lines: the object texts
// finished, and the reports with the symbol cross-reference.
#include "assembler/Assembly.h"

#include <algorithm>
#include <cstdint>

namespace trident {

// The cross-reference follows the final pass only.
void Assembly::RecordReference(int slot) {
    if (pState.CurrentPass == 0)
        pCrossReference.RecordReference(slot, pStatement.Where, pStatementNamesVersion);
}

void Assembly::RecordDefinition(int slot, std::string_view kind) {
    if (pState.CurrentPass == 0)
        pCrossReference.RecordDefinition(slot, kind, pStatement.Where, pStatementNamesVersion);
}

std::vector<ListingReports::SymbolRow> Assembly::SymbolReport() {
    return pCrossReference.SymbolReport(*pSymbols);
}

void Assembly::FinishOutputs() {
    pEmitter.Outputs().Finish(pState.StartAddress);
    const bool listedPass = pState.CurrentPass == 0 || pState.Options.ListAllPasses;
    if (pState.StopRequested || !listedPass) return;

    ListingReports::Statistics statistics;
    statistics.LinesReadFromFile = pState.LinesReadFromFile;
    statistics.IncludedLines = pState.IncludedLines;
    statistics.ExpandedMacroLines = pState.ExpandedMacroLines;
    statistics.MaclibLinesRead = pState.MaclibLinesRead;
    statistics.Statements = pState.TotalLines;
    statistics.ResolvingPasses = pState.HighestPass;
    statistics.Errors = pState.ErrorCount;
    statistics.Warnings = pState.WarningCount;
    statistics.LowestAddress = pState.LowestAddress;
    statistics.HighestAddress = pState.HighestAddress;
    statistics.BytesEmitted = pState.BytesEmitted;

    std::vector<ListingReports::MacroRow> macros;
    for (const std::string& name : pMacros->Names())
        macros.push_back({name, pMacros->MacroDefinition(name)});
    ListingReports::Append(pListing.Text(), statistics, SymbolReport(), macros,
                           pSources.MainFileName());
}

} // namespace trident
