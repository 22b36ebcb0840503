#include "encoder/RegisterTable.h"

#include "encoder/NameKey.h"

#include <algorithm>

namespace trident {
namespace {

using enum RegisterWidthClass;
constexpr std::uint8_t Ix = RegisterTable::IxPrefix;
constexpr std::uint8_t Iy = RegisterTable::IyPrefix;

// ix, iy, x and y share the code of hl and differ by their prefix; the
// indexed forms share the code of m.
constexpr std::array<RegisterEntry, RegisterTable::Bound + 1> Registers{{
    {"b", 0, {}, ByteOrPair}, {"c", 1, {}, Byte},       {"d", 2, {}, ByteOrPair},
    {"e", 3, {}, Byte},       {"h", 4, {}, ByteOrPair}, {"l", 5, {}, Byte},
    {"m", 6, {}, Byte},       {"a", 7, {}, Byte},       {"bc", 0, {}, Pair},
    {"de", 2, {}, Pair},      {"hl", 4, {}, Pair},      {"sp", 6, {}, Pair},
    {"psw", 6, {}, Pair},     {"ix", 4, Ix, Pair},      {"iy", 4, Iy, Pair},
    {"(ix)", 6, Ix, Byte},    {"(iy)", 6, Iy, Byte},    {"(hl)", 6, {}, Byte},
    {"x", 4, Ix, Pair},       {"y", 4, Iy, Pair},       {"(x)", 6, Ix, Byte},
    {"(y)", 6, Iy, Byte},
}};

static_assert(std::ranges::all_of(Registers, [](const RegisterEntry& entry) {
    return entry.Name.size() <= RegisterTable::LongestName;
}));
// Equal keys are then equal names.
static_assert(RegisterTable::LongestName <= PackedNameLength);

constexpr auto Keys = [] {
    std::array<std::uint64_t, Registers.size()> keys{};
    for (std::size_t index = 0; index < Registers.size(); ++index)
        keys[index] = NameKey(Registers[index].Name);
    return keys;
}();

// Every register operand of every pass is looked up: the entries are spread
// over a table of slots by their keys, an entry whose slot is taken going to
// the next free one, so that a look-up ends at its name or at a free slot.
constexpr unsigned SlotBits = 6;
constexpr auto Slots = [] {
    std::array<std::int8_t, std::size_t{1} << SlotBits> slots{};
    slots.fill(-1);
    for (std::size_t index = 0; index < Keys.size(); ++index) {
        std::size_t slot = KeySlot(Keys[index], SlotBits);
        while (slots[slot] >= 0) slot = (slot + 1) % slots.size();
        slots[slot] = static_cast<std::int8_t>(index);
    }
    return slots;
}();
static_assert(Registers.size() < Slots.size());

} // namespace

std::span<const RegisterEntry> RegisterTable::Entries() {
    return Registers;
}

const RegisterEntry* RegisterTable::Find(std::string_view name) {
    if (name.size() > LongestName) return nullptr;
    const std::uint64_t key = NameKey(name);
    for (std::size_t slot = KeySlot(key, SlotBits);; slot = (slot + 1) % Slots.size()) {
        const int index = Slots[slot];
        if (index < 0) return nullptr;
        if (Keys[static_cast<std::size_t>(index)] == key)
            return &Registers[static_cast<std::size_t>(index)];
    }
}

} // namespace trident
