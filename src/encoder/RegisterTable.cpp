#include "encoder/RegisterTable.h"

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

} // namespace

std::span<const RegisterEntry> RegisterTable::Entries() {
    return Registers;
}

const RegisterEntry* RegisterTable::Find(std::string_view name) {
    for (const RegisterEntry& entry : Registers)
        if (entry.Name == name) return &entry;
    return nullptr;
}

} // namespace trident
