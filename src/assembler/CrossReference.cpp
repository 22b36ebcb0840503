// The symbol cross-reference and its report rows.
#include "assembler/CrossReference.h"

#include "base/Text.h"
#include "symbols/SymbolTable.h"

#include <algorithm>
#include <cstdint>
#include <span>

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

// The first eight characters of a name, lower-cased, as one number whose
// order is that of the names (shorter names padded with zero bytes).
std::uint64_t NamePrefix(std::string_view name) {
    std::uint64_t prefix = 0;
    for (std::size_t i = 0; i < 8; ++i)
        prefix = prefix << 8 |
                 (i < name.size() ? static_cast<unsigned char>(ToLowerAscii(name[i])) : 0u);
    return prefix;
}

// The order of two names regardless of case, as the bytes of their
// lower-case forms compare.
int CompareLowered(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const auto x = static_cast<unsigned char>(ToLowerAscii(a[i]));
        const auto y = static_cast<unsigned char>(ToLowerAscii(b[i]));
        if (x != y) return x < y ? -1 : 1;
    }
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

// A row's place in the report's order: most names differ in their first
// eight characters, so most comparisons compare two numbers.
struct SortKey {
    std::uint64_t Prefix;
    std::uint32_t Row;
};

} // namespace

void CrossReference::Clear() {
    pOrigins.clear();
    pReferences.clear();
    pSortedReferences.clear();
    pPlaceFile = nullptr;
    pPlaceFiles.clear();
}

// The file name is looked up only when the statement's names change,
// which within a source file they never do.
SourcePlace CrossReference::PlaceOf(const SourcePosition& where, std::uint64_t namesVersion) {
    if (where.File.empty()) return {nullptr, where.Line};
    if (pPlaceFile == nullptr || pPlaceFileVersion != namesVersion) {
        auto found = pPlaceFiles.find(where.File);
        if (found == pPlaceFiles.end()) found = pPlaceFiles.insert(where.File).first;
        pPlaceFile = &*found;
        pPlaceFileVersion = namesVersion;
    }
    return {pPlaceFile, where.Line};
}

CrossReference::SymbolOrigin& CrossReference::OriginOf(int slot) {
    const auto index = static_cast<std::size_t>(slot);
    if (index >= pOrigins.size()) pOrigins.resize(index + 1);
    return pOrigins[index];
}

void CrossReference::RecordReference(int slot, const SourcePosition& where,
                                     std::uint64_t namesVersion) {
    if (slot < 0) return;
    SymbolOrigin& origin = OriginOf(slot);
    // One mention per statement is enough for the cross-reference.
    const SourcePlace place = PlaceOf(where, namesVersion);
    if (origin.ReferenceCount > 0 && origin.LastReference == place) return;
    origin.LastReference = place;
    ++origin.ReferenceCount;
    pReferences.push_back({place, slot});
}

void CrossReference::RecordDefinition(int slot, std::string_view kind, const SourcePosition& where,
                                      std::uint64_t namesVersion) {
    if (slot < 0) return;
    SymbolOrigin& origin = OriginOf(slot);
    if (origin.DefinedAt.InSource()) return;
    origin.Kind = kind;
    origin.DefinedAt = PlaceOf(where, namesVersion);
}

// A counting sort by slot that keeps each symbol's references in order.
void CrossReference::GroupReferences() {
    if (pSortedReferences.size() == pReferences.size()) return;
    std::uint32_t next = 0;
    for (SymbolOrigin& origin : pOrigins) {
        origin.FirstReference = next;
        next += origin.ReferenceCount;
    }
    pSortedReferences.resize(pReferences.size());
    std::vector<std::uint32_t> filled(pOrigins.size(), 0);
    for (const Reference& reference : pReferences) {
        const auto slot = static_cast<std::size_t>(reference.Slot);
        pSortedReferences[pOrigins[slot].FirstReference + filled[slot]++] = reference.Place;
    }
}

std::vector<ListingReports::SymbolRow> CrossReference::SymbolReport(const SymbolTable& symbols) {
    GroupReferences();
    std::vector<ListingReports::SymbolRow> rows;
    rows.reserve(pOrigins.size());
    for (int slot = 0; slot < SymbolTable::SlotCount; ++slot) {
        const std::string& name = symbols.Mnemonic(slot);
        if (name.empty()) break;
        if (name == "$") continue;
        ListingReports::SymbolRow row{name, symbols.SymVal(slot), {}, {}, {}};
        // The row views the origin's kind and references rather than copying them.
        if (static_cast<std::size_t>(slot) < pOrigins.size()) {
            const SymbolOrigin& origin = pOrigins[static_cast<std::size_t>(slot)];
            row.Kind = origin.Kind;
            row.DefinedAt = origin.DefinedAt;
            row.References =
                std::span(pSortedReferences).subspan(origin.FirstReference, origin.ReferenceCount);
        }
        if (row.Kind.empty())
            row.Kind = symbols.Pass(slot) < 0 ? PredefinedKind(symbols.SymType(slot)) : "label";
        rows.push_back(std::move(row));
    }
    // By name regardless of case; rows of equal names keep their slot order.
    // The keys are sorted, not the rows.
    std::vector<SortKey> order;
    order.reserve(rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row)
        order.push_back({NamePrefix(rows[row].Name), static_cast<std::uint32_t>(row)});
    std::sort(order.begin(), order.end(), [&rows](const SortKey& a, const SortKey& b) {
        if (a.Prefix != b.Prefix) return a.Prefix < b.Prefix;
        const int byName = CompareLowered(rows[a.Row].Name, rows[b.Row].Name);
        return byName < 0 || (byName == 0 && a.Row < b.Row);
    });
    std::vector<ListingReports::SymbolRow> sorted;
    sorted.reserve(rows.size());
    for (const SortKey& key : order) sorted.push_back(std::move(rows[key.Row]));
    return sorted;
}

} // namespace trident
