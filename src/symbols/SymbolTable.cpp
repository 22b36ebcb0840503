#include "symbols/SymbolTable.h"

#include "base/Text.h"

#include <algorithm>
#include <utility>

namespace trident {

SymbolTable::SymbolTable() = default;

void SymbolTable::SetCaseSensitive(bool caseSensitive) {
    if (caseSensitive == pCaseSensitive) return;
    pCaseSensitive = caseSensitive;
    RebuildIndex();
}

std::string SymbolTable::NormalisedName(std::string_view name) const {
    std::string key;
    NormaliseInto(key, name);
    return key;
}

void SymbolTable::NormaliseInto(std::string& key, std::string_view name) const {
    // "$" alone is the location counter; anywhere else the character is
    // only a visual separator.
    key.clear();
    if (name == "$") {
        key.push_back('$');
        return;
    }
    for (char c : name) {
        if (c == '$') continue;
        if (!pCaseSensitive) c = ToLowerAscii(c);
        key += c;
    }
}

const std::string& SymbolTable::LookUpKey(std::string_view name) const {
    NormaliseInto(pKeyBuffer, name);
    return pKeyBuffer;
}

int SymbolTable::LowestSlotWithKey(const std::string& key) const {
    int lowest = pSlotByName.Find(key);
    // An unused slot's name "" compares equal to any name that normalises
    // to nothing.
    if (key.empty() && pUsed < SlotCount && (lowest < 0 || pUsed < lowest)) lowest = pUsed;
    return lowest;
}

int SymbolTable::SlotOf(std::string_view name) const {
    const int slot = LowestSlotWithKey(LookUpKey(name));
    // A scan compares the first unused slot before it stops there.
    return slot <= pUsed ? slot : -1;
}

int SymbolTable::FindSlot(SymbolName& name) const {
    if (const int slot = RememberedSlot(name.pFound); slot != -2) return slot;
    if (!name.pHasKey || name.pKeyCaseSensitive != pCaseSensitive) {
        NormaliseInto(name.pKey, name.pName);
        name.pHasKey = true;
        name.pKeyCaseSensitive = pCaseSensitive;
    }
    return LowestSlotRemembered(name.pKey, name.pFound);
}

int SymbolTable::SlotOf(std::string_view name, SymbolSlot& found) const {
    if (const int slot = RememberedSlot(found); slot != -2) return slot;
    return LowestSlotRemembered(LookUpKey(name), found);
}

int SymbolTable::RememberedSlot(const SymbolSlot& found) const {
    if (found.pTable != this || found.pLayout != pLayout) return -2;
    // A scan compares the first unused slot before it stops there.
    return found.pSlot <= pUsed ? found.pSlot : -1;
}

int SymbolTable::LowestSlotRemembered(const std::string& key, SymbolSlot& found) const {
    const int slot = LowestSlotWithKey(key);
    if (slot >= 0 && !key.empty()) Remember(found, slot);
    return slot <= pUsed ? slot : -1;
}

void SymbolTable::Remember(SymbolSlot& found, int slot) const {
    found.pTable = this;
    found.pLayout = pLayout;
    found.pSlot = slot;
}

void SymbolTable::RebuildIndex() {
    ++pLayout;
    pLocationSlot = -1;
    pSlotByName.Clear();
    // Past the stored slots every name is "".
    pUsed = pSlots.size() < SlotCount ? static_cast<int>(pSlots.size()) : SlotCount;
    for (int slot = 0; slot < static_cast<int>(pSlots.size()); ++slot) {
        const std::string& name = pSlots[slot].Name;
        if (name.empty()) {
            pUsed = std::min(pUsed, slot);
        } else {
            // Add keeps an existing entry, so the lowest slot wins.
            pSlotByName.Add(NormalisedName(name), slot);
        }
    }
}

void SymbolTable::AdvanceFirstUnused() {
    while (pUsed < SlotCount && !Read(pUsed).Name.empty()) ++pUsed;
}

const Value* SymbolTable::VariableInPlace(SymbolName& name) {
    return TakeValue(FindSlot(name), name.pName);
}

const Value* SymbolTable::TakeValue(int slot, std::string_view name) {
    if (slot < 0) return nullptr;
    Slot& entry = Write(slot);
    if (name.starts_with("..") && entry.Pass != CurrentPass && pErrorSink) {
        pErrorSink("Invalid forward reference", name);
    }
    if (pReferenceSink) pReferenceSink(slot);
    return &entry.Val;
}

int SymbolTable::SetVariable(std::string_view name, const Value& value) {
    // The location counter is set before every statement: its slot is
    // remembered until slots move.
    if (name == "$" && pLocationSlot >= 0) {
        Write(pLocationSlot).Val = value;
        return pLocationSlot;
    }
    return AddSymbol(name, value, 1, -1);
}

void SymbolTable::SetLocationSlowly(std::int32_t address) {
    if (pLocationSlot < 0) {
        SetVariable("$", Value{address});
        return;
    }
    Write(pLocationSlot).Val = address;
}

int SymbolTable::SetVariable(std::string_view name, const Value& value, SymbolSlot& found) {
    const int slot = SetVariable(name, value);
    // Adding the name left its key in the look-up buffer. The location
    // counter, set through its own slot, and names without a key are not
    // remembered.
    if (slot >= 0 && name != "$" && !pKeyBuffer.empty()) Remember(found, slot);
    return slot;
}

int SymbolTable::AddSymbol(std::string_view name, const Value& value, std::int32_t symType,
                           std::int16_t pass) {
    const std::string& key = LookUpKey(name);
    const int existing = LowestSlotWithKey(key);
    if (existing >= 0 && existing <= pUsed) {
        Write(existing).Val = value;
        if (key == "$" && existing < pUsed) pLocationSlot = existing;
        return existing;
    }
    if (pUsed >= SlotCount) return -1;
    const int slot = pUsed;
    Slot made{std::string(name), value, pass, symType};
    // Most symbols go just past the stored slots.
    if (static_cast<std::size_t>(slot) == pSlots.size())
        pSlots.push_back(std::move(made));
    else
        Write(slot) = std::move(made);
    // No scan matched, so any slot holding this key lies beyond the new one.
    if (!pSlotByName.Set(key, slot)) ++pLayout;
    AdvanceFirstUnused();
    return slot;
}

} // namespace trident
