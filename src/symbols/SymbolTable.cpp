#include "symbols/SymbolTable.h"

#include "base/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace trident {

namespace {

constexpr int LastSlot = SymbolTable::SlotCount - 1;

std::string FormatValue(const Value& value) {
    if (IsEmpty(value)) return "<empty>";
    if (const auto* text = std::get_if<std::string>(&value)) return '"' + *text + '"';
    if (const auto* d = std::get_if<double>(&value)) {
        char buffer[32];
        const auto result = std::to_chars(buffer, buffer + sizeof buffer, *d);
        return std::string(buffer, result.ptr);
    }
    if (const auto* i16 = std::get_if<std::int16_t>(&value)) return std::to_string(*i16);
    return std::to_string(std::get<std::int32_t>(value));
}

} // namespace

SymbolTable::SymbolTable() = default;

void SymbolTable::SetIndex(std::int16_t index) {
    if (index >= 0 && index < SlotCount) pIndex = index;
}

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

int SymbolTable::FindSlot(std::string_view name) const {
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

int SymbolTable::FindSlot(std::string_view name, SymbolSlot& found) const {
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

Value SymbolTable::Variable(std::string_view name) {
    const Value* value = TakeValue(FindSlot(name), name);
    return value ? *value : Value{};
}

Value SymbolTable::Variable(SymbolName& name) {
    const Value* value = VariableInPlace(name);
    return value ? *value : Value{};
}

const Value* SymbolTable::VariableInPlace(SymbolName& name) {
    return TakeValue(FindSlot(name), name.pName);
}

const Value* SymbolTable::TakeValue(int slot, std::string_view name) {
    if (slot < 0) {
        pIndex = -1;
        return nullptr;
    }
    Slot& entry = Write(slot);
    if (name.starts_with("..") && entry.Pass != CurrentPass && pErrorSink) {
        pErrorSink("Invalid forward reference", name);
    }
    entry.Refed = true;
    pIndex = static_cast<std::int16_t>(slot);
    if (pReferenceSink) pReferenceSink(slot);
    return &entry.Val;
}

void SymbolTable::SetVariable(std::string_view name, const Value& value) {
    // The location counter is set before every statement: its slot is
    // remembered until slots move.
    if (name == "$" && pLocationSlot >= 0) {
        Write(pLocationSlot).Val = value;
        pIndex = static_cast<std::int16_t>(pLocationSlot);
        return;
    }
    AddSymbol(name, value, 1, 13, 0, Value{}, false, -1);
}

void SymbolTable::SetLocationSlowly(std::int32_t address) {
    if (pLocationSlot < 0) return SetVariable("$", Value{address});
    Write(pLocationSlot).Val = address;
    pIndex = static_cast<std::int16_t>(pLocationSlot);
}

bool SymbolTable::VariableExists(std::string_view name) {
    const int slot = FindSlot(name);
    pIndex = static_cast<std::int16_t>(slot);
    return slot >= 0;
}

bool SymbolTable::VariableExists(std::string_view name, SymbolSlot& found) {
    const int slot = FindSlot(name, found);
    pIndex = static_cast<std::int16_t>(slot);
    return slot >= 0;
}

void SymbolTable::SetVariable(std::string_view name, const Value& value, SymbolSlot& found) {
    SetVariable(name, value);
    // Adding the name left its key in the look-up buffer. The location
    // counter, set through its own slot, and names without a key are not
    // remembered.
    if (pIndex >= 0 && name != "$" && !pKeyBuffer.empty()) Remember(found, pIndex);
}

void SymbolTable::AddSymbol(std::string_view name, const Value& value, std::int32_t symType,
                            std::int32_t subType1, std::int32_t subType2, const Value& tag,
                            bool refed, std::int16_t pass) {
    const std::string& key = LookUpKey(name);
    const int existing = LowestSlotWithKey(key);
    if (existing >= 0 && existing <= pUsed) {
        Write(existing).Val = value;
        pIndex = static_cast<std::int16_t>(existing);
        if (key == "$" && existing < pUsed) pLocationSlot = existing;
        return;
    }
    if (pUsed >= SlotCount) {
        pIndex = -1;
        return;
    }
    const int slot = pUsed;
    Slot made{std::string(name), value, refed, pass, symType, subType1, subType2, tag};
    // Most symbols go just past the stored slots.
    if (static_cast<std::size_t>(slot) == pSlots.size())
        pSlots.push_back(std::move(made));
    else
        Write(slot) = std::move(made);
    // No scan matched, so any slot holding this key lies beyond the new one.
    if (!pSlotByName.Set(key, slot)) ++pLayout;
    AdvanceFirstUnused();
    pIndex = static_cast<std::int16_t>(slot);
}

void SymbolTable::ShiftDown(int first, int last) {
    // Past the stored slots each one takes an alike successor's fields.
    last = std::min(last, static_cast<int>(pSlots.size()));
    for (int slot = first; slot < last; ++slot) {
        Slot& to = pSlots[slot];
        Slot& from = Write(slot + 1);
        // The last source stays in place, so it is copied rather than moved.
        if (slot + 1 < last) {
            to.Name = std::move(from.Name);
            to.Val = std::move(from.Val);
        } else {
            to.Name = from.Name;
            to.Val = from.Val;
        }
        to.Refed = from.Refed;
        to.Pass = from.Pass;
    }
}

void SymbolTable::DeleteByName(std::string_view name) {
    const int slot = LowestSlotWithKey(NormalisedName(name));
    if (slot < 0 || slot >= LastSlot) return;
    if (Read(slot + 1).Name.empty() && slot + 1 < LastSlot) {
        ShiftDown(slot, slot + 1);
    } else {
        ShiftDown(slot, LastSlot);
        Write(LastSlot) = Slot{};
        pSlots[LastSlot].Pass = -1;
    }
    RebuildIndex();
}

void SymbolTable::DeleteByIndex(std::int16_t index) {
    if (index < 0 || index >= SlotCount) return;
    int end = index;
    while (end < LastSlot && !Read(end).Name.empty()) ++end;
    ShiftDown(index, end);
    if (end == LastSlot) {
        Slot& last = Write(LastSlot);
        last.Val = Value{};
        last.Name.clear();
        last.Refed = false;
        last.Pass = -1;
    }
    RebuildIndex();
}

void SymbolTable::DeleteAll() {
    for (Slot* slot = pSlots.data(); slot != pSlots.data() + pSlots.size(); ++slot) {
        slot->Name.clear();
        slot->Val = Value{};
        slot->Refed = false;
        slot->Pass = -1;
    }
    pBlank.Pass = -1;
    pSlotByName.Clear();
    ++pLayout;
    pLocationSlot = -1;
    pUsed = 0;
}

void SymbolTable::Sort() {
    const int used = UsedCount();
    std::vector<std::pair<std::string, int>> order;
    order.reserve(used);
    for (int slot = 0; slot < used; ++slot) order.emplace_back(LowerCase(pSlots[slot].Name), slot);
    std::stable_sort(order.begin(), order.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<Slot> sorted;
    sorted.reserve(used);
    for (const auto& [key, slot] : order) sorted.push_back(std::move(pSlots[slot]));
    std::move(sorted.begin(), sorted.end(), pSlots.begin());
    RebuildIndex();
}

void SymbolTable::DebugPrintTable(const std::function<void(std::string_view line)>& trace) {
    int last = -1;
    for (int slot = 0; slot < SlotCount; ++slot) {
        if (Read(slot).Name.empty()) continue;
        last = slot;
        pIndex = static_cast<std::int16_t>(slot);
        const std::string line =
            std::to_string(slot) + " " + Mnemonic() + " = " + FormatValue(SymVal()) +
            " refed=" + (Refed() ? "1" : "0") + " pass=" + std::to_string(Pass()) +
            " type=" + std::to_string(SymType()) + "/" + std::to_string(SymSubType1()) + "/" +
            std::to_string(SymSubType2()) + " tag=" + FormatValue(SymTag());
        if (trace) trace(line);
    }
    pIndex = static_cast<std::int16_t>(last);
}

std::string SymbolTable::Mnemonic() const {
    return CursorValid() ? Read(pIndex).Name : "";
}

void SymbolTable::SetMnemonic(std::string_view name) {
    if (!CursorValid() || Read(pIndex).Name == name) return;
    Write(pIndex).Name = name;
    RebuildIndex();
}

Value SymbolTable::SymVal() const {
    return CursorValid() ? Read(pIndex).Val : Value{};
}

void SymbolTable::SetSymVal(const Value& value) {
    if (CursorValid()) Write(pIndex).Val = value;
}

Value SymbolTable::SymTag() const {
    return CursorValid() ? Read(pIndex).Tag : Value{};
}

void SymbolTable::SetSymTag(const Value& tag) {
    if (CursorValid()) Write(pIndex).Tag = tag;
}

std::int32_t SymbolTable::SymType() const {
    return CursorValid() ? Read(pIndex).SymType : 0;
}

void SymbolTable::SetSymType(std::int32_t type) {
    if (CursorValid()) Write(pIndex).SymType = type;
}

std::int32_t SymbolTable::SymSubType1() const {
    return CursorValid() ? Read(pIndex).SymSubType1 : 0;
}

void SymbolTable::SetSymSubType1(std::int32_t subType) {
    if (CursorValid()) Write(pIndex).SymSubType1 = subType;
}

std::int32_t SymbolTable::SymSubType2() const {
    return CursorValid() ? Read(pIndex).SymSubType2 : 0;
}

void SymbolTable::SetSymSubType2(std::int32_t subType) {
    if (CursorValid()) Write(pIndex).SymSubType2 = subType;
}

std::int16_t SymbolTable::Pass() const {
    return CursorValid() ? Read(pIndex).Pass : -1;
}

void SymbolTable::SetPass(std::int16_t pass) {
    if (CursorValid()) Write(pIndex).Pass = pass;
}

bool SymbolTable::Refed() const {
    return CursorValid() && Read(pIndex).Refed;
}

void SymbolTable::SetRefed(bool refed) {
    if (CursorValid()) Write(pIndex).Refed = refed;
}

double SymbolTable::ToSigned32(double x) {
    constexpr double TwoTo32 = 4294967296.0;
    const double truncated = std::trunc(x);
    double r = (truncated / TwoTo32 - std::floor(truncated / TwoTo32)) * TwoTo32;
    if (r > 2147483647.0) r -= TwoTo32;
    return r;
}

} // namespace trident
