#include "symbols/clsSymbolTable.h"

#include <bit>
#include <cstdint>
#include <gtest/gtest.h>
#include <numbers>
#include <string>
#include <vector>

namespace trident {
namespace {

struct GroupShape {
    std::int16_t Group;
    int Count;
    const char* First;
    const char* Last;
    std::int32_t SymType;
    std::int32_t SubType1; // -1: varies per entry
    std::int32_t SubType2;
    Value Tag;
};

class PredefinedGroup : public testing::TestWithParam<GroupShape> {};

TEST_P(PredefinedGroup, EntersItsNamesInOrderWithTheirKinds) {
    const GroupShape& g = GetParam();
    clsSymbolTable table;
    table.LoadPreDefinedValues(g.Group);
    table.SetIndex(static_cast<std::int16_t>(g.Count));
    EXPECT_EQ(table.Mnemonic(), "") << "exactly " << g.Count << " entries";
    for (int slot = 0; slot < g.Count; ++slot) {
        table.SetIndex(static_cast<std::int16_t>(slot));
        if (slot == 0) {
            EXPECT_EQ(table.Mnemonic(), g.First);
        }
        if (slot == g.Count - 1) {
            EXPECT_EQ(table.Mnemonic(), g.Last);
        }
        EXPECT_EQ(table.SymType(), g.SymType) << table.Mnemonic();
        if (g.SubType1 >= 0) {
            EXPECT_EQ(table.SymSubType1(), g.SubType1) << table.Mnemonic();
        }
        if (g.SubType2 >= 0) {
            EXPECT_EQ(table.SymSubType2(), g.SubType2) << table.Mnemonic();
        }
        EXPECT_EQ(table.SymTag(), g.Tag) << table.Mnemonic();
        EXPECT_EQ(table.Pass(), -1);
        EXPECT_FALSE(table.Refed());
    }
}

INSTANTIATE_TEST_SUITE_P(Groups, PredefinedGroup,
                         testing::Values(GroupShape{0, 2, "TRUE", "FALSE", 1, 14, 15, Value{}},
                                         GroupShape{1, 3, "e", "HalfPi", 1, 14, 16, Value{}},
                                         GroupShape{2, 12, "MinU8", "MaxS32", 1, 14, 17, Value{}},
                                         GroupShape{3, 21, "b", "y", 2, -1, -1,
                                                    Value{std::string("NO")}},
                                         GroupShape{4, 78, "aci", "xthl", 3, 1, 0, Value{}}));

// Each constant with the exact width of its value: the evaluator's
// arithmetic depends on whether a symbol is 16-bit, 32-bit or floating.
TEST(PredefinedSymbols, ConstantsCarryTheirValueTypes) {
    const std::vector<std::pair<const char*, Value>> expected{
        {"TRUE", std::int16_t{-1}},       {"FALSE", std::int16_t{0}},
        {"MinU8", std::int16_t{0}},       {"MaxU8", std::int16_t{255}},
        {"MinU16", std::int16_t{0}},      {"MaxU16", std::int32_t{65535}},
        {"MinU32", std::int16_t{0}},      {"MaxU32", 4294967295.0},
        {"MinS8", std::int16_t{-128}},    {"MaxS8", std::int16_t{127}},
        {"MinS16", std::int32_t{-32768}}, {"MaxS16", std::int16_t{32767}},
        {"MinS32", -2147483648.0},        {"MaxS32", std::int32_t{2147483647}},
        {"a", std::int16_t{7}},           {"psw", std::int16_t{6}},
        {"mov", std::int16_t{64}},        {"nop", std::int16_t{0}},
        {"xra", std::int16_t{169}},       {"xri", std::int16_t{238}}};
    clsSymbolTable table;
    for (std::int16_t group = 0; group <= 4; ++group) table.LoadPreDefinedValues(group);
    for (const auto& [name, value] : expected) {
        EXPECT_EQ(table.Variable(name), value) << name;
    }
}

TEST(PredefinedSymbols, MathematicalConstantsKeepTheirFifteenDigitBits) {
    const std::vector<std::pair<const char*, std::uint64_t>> expected{
        {"e", 0x4005BF0A8B145774ULL},
        {"PI", 0x400921FB54442D11ULL},
        {"HalfPi", 0x3FF921FB54442D28ULL}};
    clsSymbolTable table;
    table.LoadPreDefinedValues(1);
    for (const auto& [name, bits] : expected) {
        const Value value = table.Variable(name);
        ASSERT_TRUE(std::holds_alternative<double>(value)) << name;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(std::get<double>(value)), bits) << name;
    }
    EXPECT_NE(std::get<double>(table.Variable("PI")), std::numbers::pi);
    EXPECT_EQ(std::get<double>(table.Variable("PI")), 3.14159265358979);
}

TEST(PredefinedSymbols, RegistersCarryCodeClassAndSet) {
    struct Row {
        const char* Name;
        std::int16_t Code;
        std::int32_t Class;
        std::int32_t Set;
    };
    const std::vector<Row> rows{{"b", 0, 7, 1},   {"c", 1, 5, 1},   {"m", 6, 5, 1},
                                {"ixh", 4, 5, 2}, {"iyl", 5, 5, 2}, {"sp", 6, 6, 1},
                                {"de", 2, 6, 1},  {"x", 4, 6, 2},   {"y", 4, 6, 2}};
    clsSymbolTable table;
    table.LoadPreDefinedValues(3);
    for (const Row& row : rows) {
        EXPECT_EQ(table.Variable(row.Name), Value{row.Code}) << row.Name;
        EXPECT_EQ(table.SymSubType1(), row.Class) << row.Name;
        EXPECT_EQ(table.SymSubType2(), row.Set) << row.Name;
    }
}

TEST(PredefinedSymbols, MnemonicsAreEnteredAlphabetically) {
    clsSymbolTable table;
    table.LoadPreDefinedValues(4);
    std::string previous;
    for (std::int16_t slot = 0; slot < 78; ++slot) {
        table.SetIndex(slot);
        EXPECT_LT(previous, table.Mnemonic());
        previous = table.Mnemonic();
    }
}

TEST(PredefinedSymbols, RegisterAndConstantShareTheSlotOfE) {
    struct Order {
        std::int16_t First;
        std::int16_t Second;
        Value ValueOfE;
        std::int32_t SymTypeOfE;
    };
    for (const Order& order : {Order{1, 3, std::int16_t{3}, 1},
                               Order{3, 1, std::bit_cast<double>(0x4005BF0A8B145774ULL), 2}}) {
        clsSymbolTable table;
        table.LoadPreDefinedValues(order.First);
        table.LoadPreDefinedValues(order.Second);
        EXPECT_EQ(table.Variable("e"), order.ValueOfE) << order.First;
        EXPECT_EQ(table.SymType(), order.SymTypeOfE) << order.First;
        table.SetIndex(23);
        EXPECT_EQ(table.Mnemonic(), "") << "3 + 21 names, one of them shared";
    }
}

TEST(PredefinedSymbols, OtherGroupNumbersEnterNothing) {
    for (const std::int16_t group : {5, -1, 100}) {
        clsSymbolTable table;
        table.LoadPreDefinedValues(group);
        table.SetIndex(0);
        EXPECT_EQ(table.Mnemonic(), "") << group;
    }
}

TEST(PredefinedSymbols, CaseBlindTableMeetsSourceSpellings) {
    clsSymbolTable table;
    table.SetCaseSensitive(false);
    table.LoadPreDefinedValues(0);
    table.SetVariable("True", std::int16_t{1});
    EXPECT_EQ(table.Index(), 0);
    EXPECT_EQ(table.Mnemonic(), "TRUE");
    EXPECT_EQ(table.SymSubType1(), 14);
}

} // namespace
} // namespace trident
