#pragma once

#include "assembler/ListingReports.h"
#include "assembler/SourcePlace.h"
#include "source/SourcePosition.h"

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

class SymbolTable;

// The symbol cross-reference of the final pass: where each symbol was
// defined and which statements referred to it, by symbol slot.
class CrossReference {
  public:
    void Clear();
    // `where` is the statement's position; `namesVersion` changes whenever
    // its file or macro name does, so that the file name is looked up only
    // then.
    void RecordReference(int slot, const SourcePosition& where, std::uint64_t namesVersion);
    // `kind` names the definition in the report (label, equ, set...); the
    // first definition stands.
    void RecordDefinition(int slot, std::string_view kind, const SourcePosition& where,
                          std::uint64_t namesVersion);
    // Every symbol with its value, kind, definition and references, sorted
    // by name regardless of case (the location counter "$" left out).
    std::vector<ListingReports::SymbolRow> SymbolReport(const SymbolTable& symbols);

  private:
    struct SymbolOrigin {
        std::string Kind;
        SourcePlace DefinedAt;
        // The latest reference: a statement is mentioned once.
        SourcePlace LastReference;
        // The symbol's references in pSortedReferences.
        std::uint32_t FirstReference = 0;
        std::uint32_t ReferenceCount = 0;
    };
    struct Reference {
        SourcePlace Place;
        int Slot = 0;
    };

    SourcePlace PlaceOf(const SourcePosition& where, std::uint64_t namesVersion);
    SymbolOrigin& OriginOf(int slot);
    // Fills pSortedReferences and every origin's share of it.
    void GroupReferences();

    std::vector<SymbolOrigin> pOrigins;
    // Every reference in the order met, and the same grouped by symbol (made
    // when the report asks for them).
    std::vector<Reference> pReferences;
    std::vector<SourcePlace> pSortedReferences;
    // The file names of the places, each kept once; the latest one found and
    // the names version it was found for.
    std::set<std::string, std::less<>> pPlaceFiles;
    const std::string* pPlaceFile = nullptr;
    std::uint64_t pPlaceFileVersion = 0;
};

} // namespace trident
