// What a run leaves behind besides the listing lines: the object texts, the
// binary image, and the reports with the symbol cross-reference.
#include "assembler/Assembly.h"
#include "assembler/LineScanner.h"

#include <algorithm>
#include <numeric>

namespace trident {
namespace {

std::string_view PredefinedKind(std::int32_t symType) {
    switch (symType) {
    case 2:
        return "register";
    case 3:
        return "mnemonic";
    default:
        return "constant";
    }
}

bool SamePlace(const SourcePosition& a, const SourcePosition& b) {
    return a.Line == b.Line && a.File == b.File;
}

} // namespace

std::string Assembly::BinaryImage() const {
    if (pState.LowestAddress > pState.HighestAddress) return {};
    const auto first = pState.ObjectImage.begin() + pState.LowestAddress;
    const auto last = pState.ObjectImage.begin() + pState.HighestAddress + 1;
    return std::string(first, last);
}

void Assembly::RecordReference(int slot) {
    if (pState.CurrentPass != 0 || slot < 0) return;
    if (static_cast<std::size_t>(slot) >= pOrigins.size()) pOrigins.resize(slot + 1);
    auto& references = pOrigins[static_cast<std::size_t>(slot)].References;
    // One mention per statement is enough for the cross-reference.
    if (references.empty() || !SamePlace(references.back(), pStatement.Where))
        references.push_back(pStatement.Where);
}

void Assembly::RecordDefinition(std::string_view kind) {
    const int slot = pSymbols->Index();
    if (pState.CurrentPass != 0 || slot < 0) return;
    if (static_cast<std::size_t>(slot) >= pOrigins.size()) pOrigins.resize(slot + 1);
    SymbolOrigin& origin = pOrigins[static_cast<std::size_t>(slot)];
    if (!origin.DefinedAt.File.empty()) return;
    origin.Kind = kind;
    origin.DefinedAt = pStatement.Where;
}

std::vector<ListingReports::SymbolRow> Assembly::SymbolReport() {
    std::vector<ListingReports::SymbolRow> rows;
    rows.reserve(pOrigins.size());
    clsSymbolTable& symbols = *pSymbols;
    const std::int16_t cursor = symbols.Index();
    for (int slot = 0; slot < clsSymbolTable::SlotCount; ++slot) {
        symbols.SetIndex(static_cast<std::int16_t>(slot));
        std::string name = symbols.Mnemonic();
        if (name.empty()) break;
        if (name == "$") continue;
        ListingReports::SymbolRow row{std::move(name), symbols.SymVal(), {}, {}, {}};
        // The row views the origin's kind and references rather than copying them.
        if (static_cast<std::size_t>(slot) < pOrigins.size()) {
            const SymbolOrigin& origin = pOrigins[static_cast<std::size_t>(slot)];
            row.Kind = origin.Kind;
            row.DefinedAt = origin.DefinedAt;
            row.References = origin.References;
        }
        if (row.Kind.empty())
            row.Kind = symbols.Pass() < 0 ? PredefinedKind(symbols.SymType()) : "label";
        rows.push_back(std::move(row));
    }
    symbols.SetIndex(cursor);
    // By name regardless of case, each name lower-cased once; rows of equal
    // names keep their slot order. The indices are sorted, not the names.
    std::vector<std::string> keys;
    keys.reserve(rows.size());
    for (const ListingReports::SymbolRow& row : rows)
        keys.push_back(LineScanner::LowerCase(row.Name));
    std::vector<std::size_t> order(rows.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&keys](std::size_t a, std::size_t b) {
        const int byName = keys[a].compare(keys[b]);
        return byName < 0 || (byName == 0 && a < b);
    });
    std::vector<ListingReports::SymbolRow> sorted;
    sorted.reserve(rows.size());
    for (const std::size_t index : order) sorted.push_back(std::move(rows[index]));
    return sorted;
}

void Assembly::FinishOutputs() {
    pOutputs.Finish(pState.StartAddress);
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

    std::vector<ListingReports::MacroRow> macros;
    for (const std::string& name : pMacros->Names())
        macros.push_back({name, pMacros->MacroDefinition(name)});
    ListingReports::Append(pListing.Text(), statistics, SymbolReport(), macros,
                           pMainFile ? pMainFile->Name() : std::string());
}

} // namespace trident
