#include "expression/ProgramCache.h"

#include "base/TextHash.h"

#include <utility>

namespace trident::expr {

namespace {

constexpr std::size_t kFirstSlotCount = 1024;

// Operand texts are a few characters long: comparing them in place costs
// less than calling the library's comparison.
bool SameText(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i]) return false;
    }
    return true;
}

} // namespace

// The slot holding text, or the free slot where it would go.
std::size_t ProgramCache::SlotFor(std::uint64_t hash, std::string_view text) const {
    const std::size_t mask = pSlots.size() - 1;
    std::size_t index = hash & mask;
    while (pSlots[index].Target != nullptr &&
           (pSlots[index].Hash != hash || !SameText(pSlots[index].Target->Text, text))) {
        index = (index + 1) & mask;
    }
    return index;
}

Program* ProgramCache::Find(std::string_view text) {
    if (pSlots.empty()) return nullptr;
    Entry* entry = pSlots[SlotFor(TextHash{}(text), text)].Target;
    return entry == nullptr ? nullptr : &entry->Code;
}

Program* ProgramCache::Keep(std::string_view text, Program&& program, std::size_t budget) {
    const std::size_t bytes = sizeof(Entry) + 2 * sizeof(Slot) + text.size() + program.Footprint();
    if (pBytes + bytes > budget) return nullptr;
    pBytes += bytes;
    if (2 * (pEntries.size() + 1) > pSlots.size()) Grow();
    Entry& entry = pEntries.emplace_back(Entry{std::string(text), std::move(program)});
    const std::uint64_t hash = TextHash{}(text);
    pSlots[SlotFor(hash, text)] = Slot{hash, &entry};
    return &entry.Code;
}

void ProgramCache::Clear() {
    ++pGeneration;
    pSlots.clear();
    pEntries.clear();
    pBytes = 0;
}

void ProgramCache::Grow() {
    std::vector<Slot> old(pSlots.empty() ? kFirstSlotCount : 2 * pSlots.size());
    old.swap(pSlots);
    const std::size_t mask = pSlots.size() - 1;
    for (const Slot& slot : old) {
        if (slot.Target == nullptr) continue;
        std::size_t index = slot.Hash & mask;
        while (pSlots[index].Target != nullptr) index = (index + 1) & mask;
        pSlots[index] = slot;
    }
}

} // namespace trident::expr
