#include "assembler/ListingReports.h"

#include "assembler/ListingColours.h"
#include "output/ColouredLine.h"
#include "output/HexText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
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
    Row(out, "Bytes emitted",
        std::to_string(s.BytesEmitted) + " (" + Hex(s.BytesEmitted, 4) + "h)");
}

// A symbol row composed in a scratch buffer kept from row to row: the
// buffer is made as long as the row can be, and the pieces are stored into
// it directly.
class RowText {
  public:
    // Starts a row of at most `length` characters.
    void Start(std::size_t length) {
        if (pRoom.size() < length) pRoom.resize(length);
        pOut = pRoom.data();
    }
    void Put(std::string_view text) { pOut = CopyText(pOut, text); }
    void Put(char c) { *pOut++ = c; }
    void PutNumber(int number) { pOut = std::to_chars(pOut, pOut + MaxNumber, number).ptr; }
    void PutHex(std::uint32_t value, int digits) { pOut = WriteHex(pOut, value, digits); }
    // A number in the shortest of the usual notations, %.15g.
    void PutReal(double number) {
        const int length = std::snprintf(pOut, MaxReal + 1, "%.15g", number);
        pOut += std::clamp(length, 0, static_cast<int>(MaxReal));
    }
    // Spaces up to `width` characters since `from`, and the column gap.
    void PadColumn(std::size_t from, std::size_t width) {
        const std::size_t used = Size() - from;
        if (used < width) {
            std::memset(pOut, ' ', width - used);
            pOut += width - used;
        }
        Put(' ');
    }
    std::size_t Size() const { return static_cast<std::size_t>(pOut - pRoom.data()); }
    std::string_view Text() const { return {pRoom.data(), Size()}; }

    static constexpr std::size_t MaxNumber = 11; // a sign and ten digits
    static constexpr std::size_t MaxReal = 24;   // %.15g of any double

  private:
    std::string pRoom;
    char* pOut = nullptr;
};

// The symbol's value column: hexadecimal for whole numbers that fit 32 bits.
void PutValue(RowText& text, const Value& value) {
    if (IsEmpty(value)) {
        text.Put("----");
        return;
    }
    if (const auto* quoted = std::get_if<std::string>(&value)) {
        text.Put('"');
        text.Put(*quoted);
        text.Put('"');
        return;
    }
    const double number = *AsNumber(value);
    if (number != std::trunc(number) || std::fabs(number) > 4294967295.0) {
        text.PutReal(number);
        return;
    }
    text.PutHex(static_cast<std::uint32_t>(static_cast<std::int64_t>(number)), 4);
}

std::size_t MaxValueLength(const Value& value) {
    const auto* quoted = std::get_if<std::string>(&value);
    return quoted ? quoted->size() + 2 : RowText::MaxReal;
}

// Places as the cross-reference writes them: a line number, with its file
// unless that is the main file. Nearly every place names the same file as
// the one before, so whether it is the main file is found once for it.
class PlaceText {
  public:
    explicit PlaceText(std::string_view mainFile) : pMainFile(mainFile) {}

    static std::size_t MaxLength(const SourcePlace& place) {
        return (place.InSource() ? place.File->size() + 1 : 0) + RowText::MaxNumber;
    }
    void Put(RowText& text, const SourcePlace& place) {
        if (!place.InSource()) {
            text.Put('-');
            return;
        }
        if (place.File != pFile) {
            pFile = place.File;
            pInMainFile = *place.File == pMainFile;
        }
        if (!pInMainFile) {
            text.Put(*place.File);
            text.Put(':');
        }
        text.PutNumber(place.Line);
    }

  private:
    std::string_view pMainFile;
    const std::string* pFile = nullptr;
    bool pInMainFile = false;
};

// The longest the row can be: every column at its widest.
std::size_t MaxRowLength(const SymbolRow& row) {
    std::size_t length = 2 + std::max(row.Name.size(), NameColumn) + 1 +
                         std::max(MaxValueLength(row.Val), std::size_t{8}) + 1 +
                         std::max(row.Kind.size(), std::size_t{10}) + 1 +
                         std::max(PlaceText::MaxLength(row.DefinedAt), std::size_t{8}) + 1 +
                         LineEnd.size();
    for (const SourcePlace& where : row.References) length += PlaceText::MaxLength(where) + 1;
    return length;
}

// One row composed in `line` and appended in one go.
void AppendSymbol(ColouredText& out, RowText& line, const SymbolRow& row, PlaceText& places) {
    line.Start(MaxRowLength(row));
    line.Put(row.References.empty() ? "* " : "  ");
    line.Put(row.Name);
    line.PadColumn(2, NameColumn);
    const std::size_t valueStart = line.Size();
    PutValue(line, row.Val);
    line.PadColumn(valueStart, 8);
    const std::size_t kindStart = line.Size();
    line.Put(row.Kind);
    line.PadColumn(kindStart, 10);
    const std::size_t definedStart = line.Size();
    places.Put(line, row.DefinedAt);
    line.PadColumn(definedStart, 8);
    const std::size_t referencesStart = line.Size();
    for (const SourcePlace& where : row.References) {
        if (line.Size() != referencesStart) line.Put(' ');
        places.Put(line, where);
    }
    line.Put(LineEnd);
    const std::string_view text = line.Text();
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
    RowText line;
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
