#include "assembler/ListingReports.h"

#include "assembler/ListingColours.h"
#include "output/HexText.h"

#include <algorithm>
#include <charconv>
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

// The symbol's value column: hexadecimal for whole numbers that fit 32 bits.
void AppendValue(std::string& text, const Value& value) {
    if (IsEmpty(value)) {
        text += "----";
        return;
    }
    if (const auto* quoted = std::get_if<std::string>(&value)) {
        text.append(1, '"').append(*quoted) += '"';
        return;
    }
    const double number = *AsNumber(value);
    if (number != std::trunc(number) || std::fabs(number) > 4294967295.0) {
        char digits[32];
        const int length = std::snprintf(digits, sizeof digits, "%.15g", number);
        text.append(digits, static_cast<std::size_t>(length));
        return;
    }
    AppendHex(text, static_cast<std::uint32_t>(static_cast<std::int64_t>(number)), 4);
}

void AppendNumber(std::string& text, int number) {
    char digits[16];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    text.append(std::begin(digits), static_cast<std::size_t>(end - std::begin(digits)));
}

// Places as the cross-reference writes them: a line number, with its file
// unless that is the main file. Nearly every place names the same file as
// the one before, so whether it is the main file is found once for it.
class PlaceText {
  public:
    explicit PlaceText(std::string_view mainFile) : pMainFile(mainFile) {}

    void Append(std::string& text, const SourcePlace& place) {
        if (!place.InSource()) {
            text += '-';
            return;
        }
        if (place.File != pFile) {
            pFile = place.File;
            pInMainFile = *place.File == pMainFile;
        }
        if (!pInMainFile) text.append(*place.File) += ':';
        AppendNumber(text, place.Line);
    }

  private:
    std::string_view pMainFile;
    const std::string* pFile = nullptr;
    bool pInMainFile = false;
};

// Spaces up to `width` characters since `from`, and the column gap.
void PadColumn(std::string& text, std::size_t from, std::size_t width) {
    const std::size_t used = text.size() - from;
    if (used < width) text.append(width - used, ' ');
    text += ' ';
}

// One row composed in `line` (reused from row to row) and appended in one go.
void AppendSymbol(ColouredText& out, std::string& line, const SymbolRow& row, PlaceText& places) {
    line.assign(row.References.empty() ? "* " : "  ");
    line.append(row.Name);
    PadColumn(line, 2, NameColumn);
    const std::size_t valueStart = line.size();
    AppendValue(line, row.Val);
    PadColumn(line, valueStart, 8);
    const std::size_t kindStart = line.size();
    line.append(row.Kind);
    PadColumn(line, kindStart, 10);
    const std::size_t definedStart = line.size();
    places.Append(line, row.DefinedAt);
    PadColumn(line, definedStart, 8);
    const std::size_t referencesStart = line.size();
    for (const SourcePlace& where : row.References) {
        if (line.size() != referencesStart) line += ' ';
        places.Append(line, where);
    }
    line.append(LineEnd);
    const std::string_view text = line;
    out.Append({{text.substr(0, valueStart), ListingColours::Plain},
                {text.substr(valueStart, kindStart - valueStart), ListingColours::Bytes},
                {text.substr(kindStart, referencesStart - kindStart), ListingColours::Equates},
                {text.substr(referencesStart), ListingColours::Plain}});
}

void AppendSymbols(ColouredText& out, const std::vector<SymbolRow>& symbols,
                   const std::string& mainFile) {
    Heading(out, "Symbols (" + std::to_string(symbols.size()) + ")");
    if (symbols.empty()) return;
    out.Append("  " + PadRight("Name", NameColumn) + PadRight("Value", 8) + PadRight("Kind", 10) +
                   PadRight("Defined", 8) + "Referenced on lines" + std::string(LineEnd),
               ListingColours::Directive);
    bool anyUnused = false;
    std::string line;
    PlaceText places(mainFile);
    for (const SymbolRow& row : symbols) {
        anyUnused = anyUnused || row.References.empty();
        AppendSymbol(out, line, row, places);
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
            out.Append({{"      ", ListingColours::MacroDefinition},
                        {line, ListingColours::MacroDefinition},
                        {LineEnd, ListingColours::MacroDefinition}});
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
