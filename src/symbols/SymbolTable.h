#pragma once

#include "symbols/SymbolIndex.h"
#include "symbols/SymbolSlot.h"
#include "symbols/Value.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

class SymbolTable;

// A name that is looked up again and again, as the operands of a statement
// are in every pass: normalised once, and the slot it was found in
// remembered for as long as no slot of its table changes place or name.
class SymbolName {
  public:
    explicit SymbolName(std::string_view name) : pName(name) {}
    // The name as written.
    const std::string& Text() const { return pName; }

  private:
    friend class SymbolTable;

    std::string pName;
    std::string pKey; // normalised for the case rule in pKeyCaseSensitive
    bool pHasKey = false;
    bool pKeyCaseSensitive = true;
    SymbolSlot pFound;
};

// Every name an assembly knows: labels, equ/set symbols and the predefined
// groups. A fixed array of 10001 slots filled from the front; a cursor
// (Index) names the slot that the per-slot properties read and write.
// Observable behaviour is that of a linear scan of the slots (first match
// wins, a search stops at the first unused slot); a hash index from the
// normalised name to its slot makes look-ups O(1) on average.
class SymbolTable {
  public:
    // Reports a diagnostic (message, detail) through the run's error line.
    using ErrorSink = std::function<void(std::string_view message, std::string_view detail)>;

    static constexpr int SlotCount = 10001;

    SymbolTable();

    void SetErrorSink(ErrorSink sink) { pErrorSink = std::move(sink); }
    // Told the slot of every successful look-up by name (for cross-references).
    using ReferenceSink = std::function<void(int slot)>;
    void SetReferenceSink(ReferenceSink sink) { pReferenceSink = std::move(sink); }

    std::int16_t CurrentPass = 0;

    void LoadPreDefinedValues(std::int16_t group);
    static std::int16_t MaximumSymbols() { return SlotCount - 1; }

    std::int16_t Index() const { return pIndex; }
    void SetIndex(std::int16_t index);

    bool CaseSensitive() const { return pCaseSensitive; }
    void SetCaseSensitive(bool caseSensitive);

    // Look-up by name: marks the symbol referenced, applies the ".." forward
    // reference rule, moves the cursor; empty when the name is unknown.
    Value Variable(std::string_view name);
    // The same for a name met before: its normalised form and its slot are
    // reused while they hold.
    Value Variable(SymbolName& name);
    // Variable(name) without a copy: the stored value, which holds until the
    // table next changes; nullptr when the name is unknown.
    const Value* VariableInPlace(SymbolName& name);
    // Define or update: an existing name gets only its value replaced.
    void SetVariable(std::string_view name, const Value& value);
    // SetVariable("$", address): the location counter, set before every
    // statement, through its remembered slot while that holds a whole number.
    void SetLocation(std::int32_t address) {
        if (pLocationSlot >= 0) {
            if (auto* held = std::get_if<std::int32_t>(&pSlots[pLocationSlot].Val)) {
                *held = address;
                pIndex = static_cast<std::int16_t>(pLocationSlot);
                return;
            }
        }
        SetLocationSlowly(address);
    }
    bool VariableExists(std::string_view name);
    // VariableExists for a name looked up again and again: `found`, kept by
    // the caller with the name, remembers its slot while it holds.
    bool VariableExists(std::string_view name, SymbolSlot& found);
    // SetVariable, remembering the name's slot in `found` as well.
    void SetVariable(std::string_view name, const Value& value, SymbolSlot& found);

    void DeleteByName(std::string_view name);
    void DeleteByIndex(std::int16_t index);
    void DeleteAll();
    void Sort();
    void DebugPrintTable(const std::function<void(std::string_view line)>& trace);

    // Per-slot properties of the slot named by Index; neutral values (and
    // ignored sets) while Index is out of range.
    std::string Mnemonic() const;
    void SetMnemonic(std::string_view name);
    Value SymVal() const;
    void SetSymVal(const Value& value);
    Value SymTag() const;
    void SetSymTag(const Value& tag);
    std::int32_t SymType() const;
    void SetSymType(std::int32_t type);
    std::int32_t SymSubType1() const;
    void SetSymSubType1(std::int32_t subType);
    std::int32_t SymSubType2() const;
    void SetSymSubType2(std::int32_t subType);
    std::int16_t Pass() const;
    void SetPass(std::int16_t pass);
    bool Refed() const;
    void SetRefed(bool refed);

    // X truncated toward zero and reduced to the signed 32-bit range.
    static double ToSigned32(double x);

  private:
    struct Slot {
        std::string Name;
        Value Val;
        bool Refed = false;
        std::int16_t Pass = 0;
        std::int32_t SymType = -1;
        std::int32_t SymSubType1 = -1;
        std::int32_t SymSubType2 = -1;
        Value Tag;
    };

    void AddSymbol(std::string_view name, const Value& value, std::int32_t symType,
                   std::int32_t subType1, std::int32_t subType2, const Value& tag, bool refed,
                   std::int16_t pass);
    // The form in which two names compare equal: lower case when the table is
    // case-blind, every "$" removed unless the name is exactly "$".
    std::string NormalisedName(std::string_view name) const;
    void NormaliseInto(std::string& key, std::string_view name) const;
    // The normalised name in a buffer reused by every look-up, which runs
    // for every name of every statement.
    const std::string& LookUpKey(std::string_view name) const;
    // Lowest slot of the whole table whose name matches the normalised key,
    // unused slots included (they match the empty key); -1 if none.
    int LowestSlotWithKey(const std::string& key) const;
    // The slot a scan from slot 0 matches before it stops at the first
    // unused slot; -1 if none.
    int FindSlot(std::string_view name) const;
    int FindSlot(SymbolName& name) const;
    int FindSlot(std::string_view name, SymbolSlot& found) const;
    // The slot `found` remembers while the layout holds; -2 when it does not.
    int RememberedSlot(const SymbolSlot& found) const;
    // The lowest slot with `key`, remembered in `found` (unless the key is
    // empty: a name that normalises to nothing matches the first unused
    // slot, which moves as names are added).
    int LowestSlotRemembered(const std::string& key, SymbolSlot& found) const;
    void Remember(SymbolSlot& found, int slot) const;
    void SetLocationSlowly(std::int32_t address);
    // The look-up's effects on the slot found (none: -1).
    const Value* TakeValue(int slot, std::string_view name);
    int UsedCount() const { return pUsed; }
    void RebuildIndex();
    void AdvanceFirstUnused();
    // Slots first..last-1 take name, value, Refed and Pass of their successor.
    void ShiftDown(int first, int last);
    bool CursorValid() const { return pIndex >= 0 && pIndex < SlotCount; }
    // Slot `slot` as it stands; slots past the stored ones are all alike.
    const Slot& Read(int slot) const {
        return static_cast<std::size_t>(slot) < pSlots.size() ? pSlots[slot] : pBlank;
    }
    // Slot `slot`, stored from now on.
    Slot& Write(int slot) {
        const auto index = static_cast<std::size_t>(slot);
        if (index >= pSlots.size()) pSlots.resize(index + 1, pBlank);
        return pSlots[index];
    }

    // The slots in use so far: the table behaves as if all SlotCount of them
    // existed, but a run touches only the first few hundred, and storing all
    // of them up front costs a megabyte of fresh memory every assembly.
    std::vector<Slot> pSlots;
    // What every slot past the stored ones holds.
    Slot pBlank;
    // The first slot whose name is "" (SlotCount when none): the end of the
    // part every scan looks at.
    int pUsed = 0;
    // Normalised name -> lowest slot holding a name with that key.
    SymbolIndex pSlotByName;
    // Changes whenever the lowest slot of a name already in the index may
    // change: a SymbolName's remembered slot holds while this stays.
    std::uint64_t pLayout = 0;
    mutable std::string pKeyBuffer;
    // The slot holding "$" once it has been set (a stored one); -1 until
    // then and whenever slots have moved.
    int pLocationSlot = -1;
    std::int16_t pIndex = -1;
    bool pCaseSensitive = true;
    ErrorSink pErrorSink;
    ReferenceSink pReferenceSink;
};

} // namespace trident
