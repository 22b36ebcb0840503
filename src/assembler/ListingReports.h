#pragma once

#include "assembler/SourcePlace.h"
#include "output/ColouredText.h"
#include "symbols/Value.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

// What the end of a listed pass appends to the listing: statistics, the
// symbol table with its cross-reference, and the macro table.
namespace ListingReports {

struct Statistics {
    std::int32_t LinesReadFromFile = 0;
    std::int32_t IncludedLines = 0;
    std::int32_t ExpandedMacroLines = 0;
    std::int32_t MaclibLinesRead = 0;
    std::int32_t Statements = 0;
    std::int32_t ResolvingPasses = 0;
    std::int32_t Errors = 0;
    std::int32_t Warnings = 0;
    std::int32_t LowestAddress = 65535;
    std::int32_t HighestAddress = 0;
    std::int32_t BytesEmitted = 0;
};

// A row views the run's records of the symbol (its kind and places): it is
// valid while they are, until the next assembly.
struct SymbolRow {
    std::string Name;
    Value Val;
    std::string_view Kind;
    SourcePlace DefinedAt; // not in the source for symbols the source did not define
    std::span<const SourcePlace> References;
};

struct MacroRow {
    std::string Name;
    std::string Body;
};

// `symbols` are expected sorted by name; `mainFile` is the source file, whose
// name the cross-reference leaves out for brevity.
void Append(ColouredText& listing, const Statistics& statistics,
            const std::vector<SymbolRow>& symbols, const std::vector<MacroRow>& macros,
            const std::string& mainFile);

} // namespace ListingReports
} // namespace trident
