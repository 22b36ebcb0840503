#include "assembler/Listing.h"

#include "assembler/ListingColours.h"
#include "output/ColouredLine.h"
#include "output/HexText.h"

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

constexpr std::string_view LineEnd = "\r\n";

// The address column: the address, inside a macro expansion its depth
// (" +01", at least two digits), and the tab that ends the column.
class AddressColumn {
  public:
    AddressColumn(std::int32_t address, int macroDepth)
        : pAddress(static_cast<std::uint32_t>(address)), pDepth(macroDepth),
          pAddressDigits(HexWidth(pAddress, 4)) {}

    std::size_t Width() const {
        return static_cast<std::size_t>(pAddressDigits) + (pDepth > 0 ? 2 + DepthDigits() : 0) + 1;
    }
    // Writes the column's Width() characters.
    void Write(char* out) const {
        out = WriteHexDigits(out, pAddress, pAddressDigits);
        if (pDepth > 0) {
            *out++ = ' ';
            *out++ = '+';
            if (pDepth < 10) *out++ = '0';
            out = std::to_chars(out, out + 16, pDepth).ptr;
        }
        *out = '\t';
    }

  private:
    std::size_t DepthDigits() const {
        std::size_t digits = 2;
        for (int rest = pDepth / 100; rest > 0; rest /= 10) ++digits;
        return digits;
    }

    std::uint32_t pAddress;
    int pDepth;
    int pAddressDigits;
};

} // namespace

void Listing::WriteLine(const Statement& statement, int macroDepth) {
    const AddressColumn address(pState.LineAddress, macroDepth);
    const Colour addressInk = macroDepth > 0 ? ListingColours::Directive : ListingColours::Plain;
    const Colour fieldsInk = CategoryColour(statement);
    // A tab after the address column, so that the rows of four bytes that
    // long data statements continue on line up under the first one. This
    // runs for every listed statement: the line is stored straight into the
    // listing, which grows once.
    constexpr std::size_t separators = std::string_view("\t\t\t\t\t\r\n").size();
    ColouredLine line(pText, address.Width() + statement.ValueText.size() +
                                 statement.BytesText.size() + statement.Label.size() +
                                 statement.Operation.size() + statement.Operands.size() +
                                 statement.Comment.size() + separators);
    address.Write(line.Take(address.Width(), addressInk));
    line.Put(statement.ValueText, ListingColours::Bytes);
    line.Put(statement.BytesText, ListingColours::Bytes);
    line.Put('\t', ListingColours::Bytes);
    line.Put(statement.Label, fieldsInk);
    line.Put('\t', fieldsInk);
    line.Put(statement.Operation, fieldsInk);
    line.Put('\t', fieldsInk);
    line.Put(statement.Operands, fieldsInk);
    line.Put('\t', fieldsInk);
    line.Put(statement.Comment, ListingColours::Comment);
    line.Put('\t', ListingColours::Comment);
    line.Put(LineEnd, ListingColours::Plain);
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
    const std::size_t offset = pText.Text().size();
    pText.Append(line, error ? ListingColours::Error : ListingColours::Warning);
    pDiagnostics.push_back(
        Diagnostic{kind, std::string(message), std::string(detail), where, offset});
    pFrontEnd.ShowDiagnostic(pDiagnostics.back());
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
