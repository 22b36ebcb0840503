#include "assembler/Listing.h"

#include "assembler/ListingColours.h"
#include "output/HexText.h"

#include <array>
#include <charconv>

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

constexpr std::string_view Tab = "\t";
constexpr std::string_view LineEnd = "\r\n";

// Room for the address column: up to eight digits, a depth of up to three
// digits after " +", and the tab.
using AddressRoom = std::array<char, 16>;

// The address column: the address, inside a macro expansion its depth
// (" +01"), and the tab that ends the column; composed in `room`.
std::string_view AddressText(AddressRoom& room, std::int32_t address, int macroDepth) {
    char* out = WriteHex(room.data(), static_cast<std::uint32_t>(address), 4);
    if (macroDepth > 0) {
        *out++ = ' ';
        *out++ = '+';
        if (macroDepth < 10) *out++ = '0';
        out = std::to_chars(out, room.data() + room.size() - 1, macroDepth).ptr;
    }
    *out++ = '\t';
    return {room.data(), static_cast<std::size_t>(out - room.data())};
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
    AddressRoom address;
    const std::string_view addressText = AddressText(address, pState.LineAddress, macroDepth);
    const Colour addressInk = expanding ? ListingColours::Directive : ListingColours::Plain;
    // A tab after the address column, so that the rows of four bytes that
    // long data statements continue on line up under the first one. The line
    // goes in as one append: this runs for every listed statement.
    const Colour fieldsInk = CategoryColour(statement);
    pText.Append({{addressText, addressInk},
                  {statement.ValueText, ListingColours::Bytes},
                  {statement.BytesText, ListingColours::Bytes},
                  {Tab, ListingColours::Bytes},
                  {statement.Label, fieldsInk},
                  {Tab, fieldsInk},
                  {statement.Operation, fieldsInk},
                  {Tab, fieldsInk},
                  {statement.Operands, fieldsInk},
                  {Tab, fieldsInk},
                  {statement.Comment, ListingColours::Comment},
                  {Tab, ListingColours::Comment},
                  {LineEnd, ListingColours::Plain}});
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
