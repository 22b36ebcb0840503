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
// groups. A fixed array of 10001 slots filled from the front; a look-up
// gives the slot of a name, which the per-slot properties then read and
// write. Observable behaviour is that of a linear scan of the slots (first
// match wins, a search stops at the first unused slot); a hash index from
// the normalised name to its slot makes look-ups O(1) on average.
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

    bool CaseSensitive() const { return pCaseSensitive; }
    void SetCaseSensitive(bool caseSensitive);

    // Look-up by name for its value: applies the ".." forward reference
    // rule and tells the reference sink. The stored value, which holds until
    // the table next changes; nullptr when the name is unknown. The name's
    // normalised form and slot are reused while they hold.
    const Value* VariableInPlace(SymbolName& name);
    // The slot of `name`, without the effects of a look-up for its value;
    // -1 when the name is unknown.
    int SlotOf(std::string_view name) const;
    // SlotOf for a name looked up again and again: `found`, kept by the
    // caller with the name, remembers its slot while it holds.
    int SlotOf(std::string_view name, SymbolSlot& found) const;
    bool VariableExists(std::string_view name) const { return SlotOf(name) >= 0; }
    // Define or update: an existing name gets only its value replaced.
    // Returns the name's slot; -1 when the table is full.
    int SetVariable(std::string_view name, const Value& value);
    // SetVariable, remembering the name's slot in `found` as well.
    int SetVariable(std::string_view name, const Value& value, SymbolSlot& found);
    // SetVariable("$", address): the location counter, set before every
    // statement, through its remembered slot while that holds a whole number.
    void SetLocation(std::int32_t address) {
        if (pLocationSlot >= 0) {
            if (auto* held = std::get_if<std::int32_t>(&pSlots[pLocationSlot].Val)) {
                *held = address;
                return;
            }
        }
        SetLocationSlowly(address);
    }

    // Properties of slot `slot` (0 to SlotCount - 1); unused slots read "",
    // empty, pass 0 and type -1.
    const std::string& Mnemonic(int slot) const { return Read(slot).Name; }
    const Value& SymVal(int slot) const { return Read(slot).Val; }
    std::int32_t SymType(int slot) const { return Read(slot).SymType; }
    std::int16_t Pass(int slot) const { return Read(slot).Pass; }
    void SetPass(int slot, std::int16_t pass) { Write(slot).Pass = pass; }

  private:
    struct Slot {
        std::string Name;
        Value Val;
        std::int16_t Pass = 0;
        std::int32_t SymType = -1;
    };

    int AddSymbol(std::string_view name, const Value& value, std::int32_t symType,
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
    int FindSlot(SymbolName& name) const;
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
    void RebuildIndex();
    void AdvanceFirstUnused();
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
    const Slot pBlank{};
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
    bool pCaseSensitive = true;
    ErrorSink pErrorSink;
    ReferenceSink pReferenceSink;
};

} // namespace trident
