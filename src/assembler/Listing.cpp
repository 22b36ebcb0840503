#include "assembler/Listing.h"

#include "assembler/ListingColours.h"
#include "output/HexText.h"

#include <cstdio>

namespace trident {
namespace {

Colour CategoryColour(const Statement& statement) {
    switch (statement.Category) {
    case LineCategory::Equates:
        return ListingColours::Equates;
    case LineCategory::MacDef:
        return ListingColours::MacroDefinition;
    case LineCategory::MacInvoke:
        return ListingColours::MacroCall;
    case LineCategory::Directive:
    case LineCategory::Control:
    case LineCategory::Define:
        return ListingColours::Directive;
    case LineCategory::Ifs:
        return ListingColours::Conditional;
    case LineCategory::Instruction:
        if (statement.Z180Row) return ListingColours::Z180Instruction;
        if (statement.Z80Row || statement.IndexUsed) return ListingColours::Z80Instruction;
        return ListingColours::Plain;
    case LineCategory::None:
    case LineCategory::MacExpand:
        break;
    }
    return ListingColours::Plain;
}

std::string DepthText(int depth) {
    char text[16];
    std::snprintf(text, sizeof text, " +%02d", depth);
    return text;
}

} // namespace

bool Listing::ListsLines() const {
    const RunOptions& options = pState.Options;
    return pState.ListThisLine || options.ListAllPasses ||
           (pState.CurrentPass == 1 && options.ListMacLibs && pState.MaclibOpen);
}

void Listing::ListLine(const Statement& statement, int macroDepth) {
    if (statement.SuppressListing || !ListsLines()) return;
    const bool expanding = macroDepth > 0;
    // A tab after the address column, so that the rows of four bytes that
    // long data statements continue on line up under the first one.
    // The line is composed in one reused buffer and appended a colour at a
    // time: this runs for every listed statement.
    std::string& line = pLineBuffer;
    line.clear();
    AppendHex(line, static_cast<std::uint32_t>(pState.LineAddress), 4);
    if (expanding) line += DepthText(macroDepth);
    line += '\t';
    const std::size_t bytesStart = line.size();
    line.append(statement.ValueText).append(statement.BytesText) += '\t';
    const std::size_t fieldsStart = line.size();
    line.append(statement.Label) += '\t';
    line.append(statement.Operation) += '\t';
    line.append(statement.Operands) += '\t';
    const std::size_t commentStart = line.size();
    line.append(statement.Comment) += '\t';
    const std::string_view text = line;
    pText.Append(text.substr(0, bytesStart),
                 expanding ? ListingColours::Directive : ListingColours::Plain);
    pText.Append(text.substr(bytesStart, fieldsStart - bytesStart), ListingColours::Bytes);
    pText.Append(text.substr(fieldsStart, commentStart - fieldsStart), CategoryColour(statement));
    pText.Append(text.substr(commentStart), ListingColours::Comment);
    pText.Append("\r\n", ListingColours::Plain);
}

void Listing::ListError(std::string_view message, std::string_view detail, bool force,
                        const SourcePosition& where) {
    Report(Severity::Error, message, detail, force, where);
}

void Listing::ListWarning(std::string_view message, std::string_view detail, bool force,
                          const SourcePosition& where) {
    Report(Severity::Warning, message, detail, force, where);
}

void Listing::Report(Severity kind, std::string_view message, std::string_view detail, bool force,
                     const SourcePosition& where) {
    if (!force && !pState.ListThisLine && !pState.Options.ListAllPasses) return;
    const bool error = kind == Severity::Error;
    if (error)
        ++pState.ErrorCount;
    else
        ++pState.WarningCount;
    pFrontEnd.ShowDiagnosticCounts(pState.ErrorCount, pState.WarningCount);
    std::string line = "~";
    line.append(message).append(" ~ ").append(detail).append("\r\n");
    pText.Append(line, error ? ListingColours::Error : ListingColours::Warning);
    pDiagnostics.push_back(Diagnostic{kind, std::string(message), std::string(detail), where});
}

void Listing::ResetCounts() {
    pState.ErrorCount = 0;
    pState.WarningCount = 0;
    pFrontEnd.ShowDiagnosticCounts(0, 0);
}

void Listing::Clear() {
    pText.Clear();
    pDiagnostics.clear();
}

} // namespace trident
