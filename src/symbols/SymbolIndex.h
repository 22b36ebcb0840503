#pragma once

#include "base/TextHash.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

// The symbol table's index from a normalised name to a slot. Names are
// looked up for every label, equ and new operand name of a pass, so the
// index is one flat array probed linearly from the name's hash, with the
// names themselves side by side in one text: a look-up touches an entry or
// two and one name, and divides nothing. Names are never taken out one by
// one; the table clears the index and builds it again instead.
class SymbolIndex {
  public:
    // The slot stored for `key`, or -1.
    int Find(std::string_view key) const {
        if (pEntries.empty()) return -1;
        return pEntries[Locate(TextHash{}(key), key)].Slot;
    }

    // Stores `slot` for `key` unless the key has one already; returns
    // whether it stored it.
    bool Add(std::string_view key, int slot) { return Store(key, slot, false); }
    // Stores `slot` for `key`, replacing what it had; returns whether the
    // key is new.
    bool Set(std::string_view key, int slot) { return Store(key, slot, true); }

    void Clear() {
        pEntries.clear();
        pKeys.clear();
        pCount = 0;
    }

  private:
    struct Entry {
        std::uint64_t Hash = 0;
        std::uint32_t KeyStart = 0; // in pKeys
        std::uint32_t KeyLength = 0;
        int Slot = -1; // -1: the entry is free
    };

    static constexpr std::size_t FirstSize = 256;

    bool Store(std::string_view key, int slot, bool replace) {
        // At most half the entries are taken, so that every probe ends soon.
        if (2 * (pCount + 1) > pEntries.size()) Grow();
        const std::uint64_t hash = TextHash{}(key);
        Entry& entry = pEntries[Locate(hash, key)];
        if (entry.Slot >= 0) {
            if (replace) entry.Slot = slot;
            return false;
        }
        entry = Entry{hash, static_cast<std::uint32_t>(pKeys.size()),
                      static_cast<std::uint32_t>(key.size()), slot};
        pKeys.append(key);
        ++pCount;
        return true;
    }

    // The entry holding `key`, or the free entry where it would go.
    std::size_t Locate(std::uint64_t hash, std::string_view key) const {
        const std::size_t mask = pEntries.size() - 1;
        for (std::size_t index = hash & mask;; index = (index + 1) & mask) {
            const Entry& entry = pEntries[index];
            if (entry.Slot < 0) return index;
            if (entry.Hash == hash &&
                std::string_view(pKeys).substr(entry.KeyStart, entry.KeyLength) == key)
                return index;
        }
    }

    void Grow() {
        std::vector<Entry> old(pEntries.empty() ? FirstSize : 2 * pEntries.size());
        old.swap(pEntries);
        const std::size_t mask = pEntries.size() - 1;
        for (const Entry& entry : old) {
            if (entry.Slot < 0) continue;
            std::size_t index = entry.Hash & mask;
            while (pEntries[index].Slot >= 0) index = (index + 1) & mask;
            pEntries[index] = entry;
        }
    }

    std::vector<Entry> pEntries; // a power of two of them, or none
    std::string pKeys;
    std::size_t pCount = 0;
};

} // namespace trident
