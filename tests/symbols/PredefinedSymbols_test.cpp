#include "symbols/SymbolTable.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace trident {
namespace {

TEST(PredefinedSymbols, EachGroupEntersItsNamesInOrderWithTheirKinds) {
    struct Group {
        std::int16_t Number;
        int Count;
        const char* First;
        const char* Last;
        int Type; // what the listing shows: 1 value, 2 register, 3 mnemonic
    };
    for (const Group& g : {Group{0, 2, "TRUE", "FALSE", 1}, Group{1, 3, "e", "HalfPi", 1},
                           Group{2, 12, "MinU8", "MaxS32", 1}, Group{3, 21, "b", "y", 2},
                           Group{4, 78, "aci", "xthl", 3},
                           // Other group numbers enter nothing.
                           Group{5, 0, "", "", 0}, Group{-1, 0, "", "", 0}}) {
        SymbolTable table;
        table.LoadPreDefinedValues(g.Number);
        std::vector<std::string> names;
        for (int slot = 0; slot <= g.Count; ++slot) {
            if (table.Mnemonic(slot).empty()) break;
            names.push_back(table.Mnemonic(slot));
            EXPECT_EQ(table.SymType(slot), g.Type) << names.back();
            EXPECT_EQ(table.Pass(slot), -1);
        }
        ASSERT_EQ(static_cast<int>(names.size()), g.Count) << "group " << g.Number;
        if (names.empty()) continue;
        EXPECT_EQ(names.front(), g.First);
        EXPECT_EQ(names.back(), g.Last);
        EXPECT_TRUE(g.Number != 4 || std::is_sorted(names.begin(), names.end()));
    }
}

// Exact alternatives matter: the evaluator's arithmetic depends on whether a
// symbol is 16-bit, 32-bit or floating.
TEST(PredefinedSymbols, ValuesHaveTheirExactTypesAndBits) {
    const std::pair<const char*, Value> expected[] = {
        {"MaxU32", 4294967295.0},     {"MinS8", std::int16_t{-128}},
        {"psw", std::int16_t{6}},     {"MaxU16", std::int32_t{65535}},
        {"MinS32", -2147483648.0},    {"MaxS16", std::int16_t{32767}},
        {"mov", std::int16_t{64}},    {"MinS16", std::int32_t{-32768}},
        {"TRUE", std::int16_t{-1}},   {"MaxS32", std::int32_t{2147483647}},
        {"xra", std::int16_t{169}},   {"PI", std::bit_cast<double>(0x400921FB54442D11ULL)},
        {"MinU32", std::int16_t{0}},  {"HalfPi", std::bit_cast<double>(0x3FF921FB54442D28ULL)},
        {"MaxU8", std::int16_t{255}},
    };
    SymbolTable table;
    for (std::int16_t group = 4; group >= 0; --group) table.LoadPreDefinedValues(group);
    const auto valueOf = [&](const char* name) { return table.SymVal(table.SlotOf(name)); };
    for (const auto& [name, value] : expected) EXPECT_EQ(valueOf(name), value) << name;
    // The fifteen-digit decimal, not the double nearest to pi.
    EXPECT_EQ(std::get<double>(valueOf("PI")), 3.14159265358979);
    EXPECT_EQ(valueOf("ixh"), Value{std::int16_t{4}});
}

TEST(PredefinedSymbols, RegisterAndConstantShareTheSlotOfE) {
    const Value constant = std::bit_cast<double>(0x4005BF0A8B145774ULL);
    for (const bool registersLast : {true, false}) {
        SymbolTable table;
        table.LoadPreDefinedValues(registersLast ? 1 : 3);
        table.LoadPreDefinedValues(registersLast ? 3 : 1);
        const int slot = table.SlotOf("e");
        EXPECT_EQ(table.SymVal(slot), registersLast ? Value{std::int16_t{3}} : constant);
        EXPECT_EQ(table.SymType(slot), registersLast ? 1 : 2);
        EXPECT_EQ(table.Mnemonic(23), "") << "3 + 21 names, one of them shared";
    }
}

} // namespace
} // namespace trident
