#include "assembler/ListingReports.h"

#include "assembler/ListingColours.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace trident::ListingReports {
namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::size_t NameColumn = 24;

std::string Hex(std::int64_t value, int digits) {
    char text[24];
    std::snprintf(text, sizeof text, "%0*llX", digits,
                  static_cast<unsigned long long>(value) & 0xFFFFFFFFull);
    return text;
}

std::string PadRight(std::string text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), ' ');
    return text + " ";
}

std::string PadLeft(const std::string& text, std::size_t width) {
    return text.size() >= width ? text : std::string(width - text.size(), ' ') + text;
}

void Heading(ColouredText& out, std::string_view title) {
    out.Append(LineEnd, ListingColours::Plain);
    out.Append(std::string(title) + std::string(LineEnd), ListingColours::Directive);
    out.Append(std::string(title.size(), '=') + std::string(LineEnd), ListingColours::Directive);
}

void Row(ColouredText& out, std::string_view label, const std::string& value) {
    out.Append("  " + PadRight(std::string(label), 32), ListingColours::Plain);
    out.Append(PadLeft(value, 10) + std::string(LineEnd), ListingColours::Bytes);
}

void AppendStatistics(ColouredText& out, const Statistics& s) {
    Heading(out, "Statistics");
    Row(out, "Lines read from the source file", std::to_string(s.LinesReadFromFile));
    Row(out, "Lines read from include files", std::to_string(s.IncludedLines));
    Row(out, "Lines from macro expansions", std::to_string(s.ExpandedMacroLines));
    Row(out, "Lines read from macro libraries", std::to_string(s.MaclibLinesRead));
    Row(out, "Statements", std::to_string(s.Statements));
    Row(out, "Resolving passes", std::to_string(std::max(1, s.ResolvingPasses)));
    Row(out, "Errors", std::to_string(s.Errors));
    Row(out, "Warnings", std::to_string(s.Warnings));
    const bool emitted = s.LowestAddress <= s.HighestAddress && s.LowestAddress != 65535;
    const std::int32_t size = emitted ? s.HighestAddress - s.LowestAddress + 1 : 0;
    Row(out, "Lowest address", Hex(emitted ? s.LowestAddress : 0, 4) + "h");
    Row(out, "Highest address", Hex(emitted ? s.HighestAddress : 0, 4) + "h");
    Row(out, "Size in bytes", std::to_string(size) + " (" + Hex(size, 4) + "h)");
}

std::string ValueText(const Value& value) {
    if (IsEmpty(value)) return "----";
    if (const auto* text = std::get_if<std::string>(&value)) return "\"" + *text + "\"";
    const double number = *AsNumber(value);
    if (number != std::trunc(number) || std::fabs(number) > 4294967295.0) {
        char text[32];
        std::snprintf(text, sizeof text, "%.15g", number);
        return text;
    }
    return Hex(static_cast<std::int64_t>(number), 4);
}

std::string PositionText(const SourcePosition& where, const std::string& mainFile) {
    if (where.File.empty()) return "-";
    const std::string line = std::to_string(where.Line);
    return where.File == mainFile ? line : where.File + ":" + line;
}

std::string ReferenceText(const std::vector<SourcePosition>& references,
                          const std::string& mainFile) {
    std::string text;
    for (const SourcePosition& where : references) {
        if (!text.empty()) text += " ";
        text += PositionText(where, mainFile);
    }
    return text;
}

void AppendSymbols(ColouredText& out, const std::vector<SymbolRow>& symbols,
                   const std::string& mainFile) {
    Heading(out, "Symbols (" + std::to_string(symbols.size()) + ")");
    if (symbols.empty()) return;
    out.Append("  " + PadRight("Name", NameColumn) + PadRight("Value", 8) + PadRight("Kind", 10) +
                   PadRight("Defined", 8) + "Referenced on lines" + std::string(LineEnd),
               ListingColours::Directive);
    bool anyUnused = false;
    for (const SymbolRow& row : symbols) {
        const bool unused = row.References.empty();
        anyUnused = anyUnused || unused;
        out.Append((unused ? "* " : "  ") + PadRight(row.Name, NameColumn), ListingColours::Plain);
        out.Append(PadRight(ValueText(row.Val), 8), ListingColours::Bytes);
        out.Append(PadRight(row.Kind, 10) + PadRight(PositionText(row.DefinedAt, mainFile), 8),
                   ListingColours::Equates);
        out.Append(ReferenceText(row.References, mainFile) + std::string(LineEnd),
                   ListingColours::Plain);
    }
    if (anyUnused)
        out.Append("  * never referenced" + std::string(LineEnd), ListingColours::Comment);
}

void AppendMacros(ColouredText& out, const std::vector<MacroRow>& macros) {
    Heading(out, "Macros (" + std::to_string(macros.size()) + ")");
    for (const MacroRow& macro : macros) {
        out.Append("  " + macro.Name + std::string(LineEnd), ListingColours::MacroCall);
        std::string_view body = macro.Body;
        while (!body.empty()) {
            const std::size_t end = body.find_first_of("\r\n");
            const std::string_view line = body.substr(0, end);
            out.Append("      " + std::string(line) + std::string(LineEnd),
                       ListingColours::MacroDefinition);
            if (end == std::string_view::npos) break;
            body.remove_prefix(end);
            // One listing line per body line, whatever its line end.
            if (body.substr(0, 2) == "\r\n")
                body.remove_prefix(2);
            else
                body.remove_prefix(1);
        }
    }
}

} // namespace

void Append(ColouredText& listing, const Statistics& statistics,
            const std::vector<SymbolRow>& symbols, const std::vector<MacroRow>& macros,
            const std::string& mainFile) {
    AppendStatistics(listing, statistics);
    AppendSymbols(listing, symbols, mainFile);
    AppendMacros(listing, macros);
}

} // namespace trident::ListingReports
