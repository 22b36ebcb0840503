#include "symbols/clsSymbolTable.h"

#include <algorithm>
#include <cctype>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace trident {
namespace {

using Entry = std::pair<std::string, Value>;

// The used slots as the cursor properties show them.
std::vector<Entry> Contents(clsSymbolTable& table) {
    std::vector<Entry> entries;
    for (int slot = 0; slot < clsSymbolTable::SlotCount; ++slot) {
        table.SetIndex(static_cast<std::int16_t>(slot));
        if (table.Mnemonic().empty()) break;
        entries.emplace_back(table.Mnemonic(), table.SymVal());
    }
    return entries;
}

std::vector<std::string> Names(clsSymbolTable& table) {
    std::vector<std::string> names;
    for (auto& [name, value] : Contents(table)) names.push_back(name);
    return names;
}

struct Comparison {
    bool CaseSensitive;
    const char* Stored;
    const char* Query;
    int ExpectedSlot; // the stored name sits in slot 0, slot 1 is the first unused
};

class NameComparison : public testing::TestWithParam<Comparison> {};

TEST_P(NameComparison, FindsTheSlotALinearScanWouldFind) {
    const Comparison& c = GetParam();
    clsSymbolTable table;
    table.SetCaseSensitive(c.CaseSensitive);
    table.SetVariable(c.Stored, std::int16_t{7});
    EXPECT_EQ(table.VariableExists(c.Query), c.ExpectedSlot >= 0);
    EXPECT_EQ(table.Index(), c.ExpectedSlot);
    EXPECT_EQ(table.Variable(c.Query), c.ExpectedSlot == 0 ? Value{std::int16_t{7}} : Value{});
    if (c.ExpectedSlot == 0) {
        EXPECT_EQ(table.Mnemonic(), c.Stored);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rules, NameComparison,
    testing::Values(Comparison{false, "LOOP", "Loop", 0}, Comparison{true, "LOOP", "Loop", -1},
                    Comparison{true, "AB", "A$B", 0}, Comparison{true, "A$B", "AB", 0},
                    Comparison{true, "LOOP$1", "$LOOP1$", 0}, Comparison{false, "Lo$op", "LOOP", 0},
                    Comparison{true, "$", "$", 0}, Comparison{true, "X", "$", -1},
                    Comparison{true, "$", "X", -1}, Comparison{true, "X", "x$", -1},
                    // A name of nothing but "$" strips to "", which an unused slot's name equals.
                    Comparison{true, "X", "$$", 1}, Comparison{true, "X", "", 1}));

struct ForwardReference {
    const char* Stored;
    const char* Query;
    std::int16_t DefinedPass;
    std::int16_t CurrentPass;
    bool Reported;
};

class ForwardReferenceRule : public testing::TestWithParam<ForwardReference> {};

TEST_P(ForwardReferenceRule, ReportsButStillResolves) {
    const ForwardReference& f = GetParam();
    clsSymbolTable table;
    table.SetCaseSensitive(false);
    std::vector<std::pair<std::string, std::string>> reports;
    table.SetErrorSink([&](std::string_view message, std::string_view detail) {
        reports.emplace_back(message, detail);
    });
    table.SetVariable("other", std::int16_t{1});
    table.SetVariable(f.Stored, std::int32_t{42});
    table.SetPass(f.DefinedPass);
    table.CurrentPass = f.CurrentPass;
    table.SetIndex(0);

    EXPECT_EQ(table.Variable(f.Query), Value{std::int32_t{42}});
    EXPECT_EQ(table.Index(), 1);
    EXPECT_TRUE(table.Refed());
    if (f.Reported) {
        ASSERT_EQ(reports.size(), 1u);
        EXPECT_EQ(reports[0].first, "Invalid forward reference");
        EXPECT_EQ(reports[0].second, f.Query);
    } else {
        EXPECT_TRUE(reports.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, ForwardReferenceRule,
                         testing::Values(ForwardReference{"..X", "..X", 1, 2, true},
                                         ForwardReference{"..X", "..x", -1, 1, true},
                                         ForwardReference{"..X", "..X", 2, 2, false},
                                         ForwardReference{".X", ".X", 1, 2, false},
                                         // The rule looks at the name as the caller wrote it.
                                         ForwardReference{"..X", "$..X", 1, 2, false},
                                         ForwardReference{".$.X", "..X", 1, 2, true}));

TEST(SymbolTable, ExistenceTestNeitherMarksNorReports) {
    clsSymbolTable table;
    int reports = 0;
    table.SetErrorSink([&](std::string_view, std::string_view) { ++reports; });
    table.SetVariable("..A", std::int16_t{1});
    table.CurrentPass = 3;
    EXPECT_TRUE(table.VariableExists("..A"));
    EXPECT_FALSE(table.Refed());
    EXPECT_EQ(reports, 0);
}

TEST(SymbolTable, RedefinitionReplacesOnlyTheValue) {
    clsSymbolTable table;
    table.SetVariable("X", std::int16_t{1});
    EXPECT_EQ(table.SymType(), 1);
    EXPECT_EQ(table.SymSubType1(), 13);
    EXPECT_EQ(table.SymSubType2(), 0);
    EXPECT_EQ(table.Pass(), -1);
    table.SetPass(2);
    table.SetSymType(9);
    table.Variable("X");
    table.SetVariable("X$", std::string("new"));
    EXPECT_EQ(table.Index(), 0);
    EXPECT_EQ(table.Mnemonic(), "X");
    EXPECT_EQ(table.SymVal(), Value{std::string("new")});
    EXPECT_EQ(table.Pass(), 2);
    EXPECT_EQ(table.SymType(), 9);
    EXPECT_TRUE(table.Refed());
}

TEST(SymbolTable, FullTableRefusesANewNameSilently) {
    clsSymbolTable table;
    int reports = 0;
    table.SetErrorSink([&](std::string_view, std::string_view) { ++reports; });
    EXPECT_EQ(clsSymbolTable::MaximumSymbols(), 10000);
    for (int i = 0; i < clsSymbolTable::SlotCount; ++i) {
        table.SetVariable("S" + std::to_string(i), std::int32_t{i});
        ASSERT_EQ(table.Index(), i);
    }
    table.SetVariable("one too many", std::int16_t{1});
    EXPECT_EQ(table.Index(), -1);
    EXPECT_FALSE(table.VariableExists("one too many"));
    table.SetVariable("S10000", std::int16_t{5});
    EXPECT_EQ(table.Index(), 10000);
    EXPECT_EQ(table.Variable("S9999"), Value{std::int32_t{9999}});
    EXPECT_EQ(reports, 0);
}

// Three symbols whose slots carry distinguishable type fields.
clsSymbolTable ThreeTypedSymbols() {
    clsSymbolTable table;
    for (int i = 0; i < 3; ++i) {
        table.SetVariable(std::string(1, static_cast<char>('A' + i)), std::int16_t(10 + i));
        table.SetPass(static_cast<std::int16_t>(i + 1));
        table.SetSymType(100 + i);
        table.SetSymSubType1(200 + i);
        table.SetSymSubType2(300 + i);
        table.SetSymTag(std::string("tag") + std::to_string(i));
    }
    return table;
}

TEST(SymbolTable, DeletionMovesNamesButLeavesTypeFieldsWithTheirSlots) {
    for (const bool byName : {true, false}) {
        clsSymbolTable table = ThreeTypedSymbols();
        if (byName) {
            table.DeleteByName("b");
            EXPECT_EQ(Names(table), (std::vector<std::string>{"A", "B", "C"})) << "case-sensitive";
            table.DeleteByName("B");
        } else {
            table.DeleteByIndex(1);
        }
        EXPECT_EQ(Names(table), (std::vector<std::string>{"A", "C"}));
        ASSERT_TRUE(table.VariableExists("C"));
        EXPECT_EQ(table.Index(), 1);
        EXPECT_EQ(table.SymVal(), Value{std::int16_t{12}});
        EXPECT_EQ(table.Pass(), 3);
        EXPECT_EQ(table.SymType(), 101);
        EXPECT_EQ(table.SymSubType1(), 201);
        EXPECT_EQ(table.SymSubType2(), 301);
        EXPECT_EQ(table.SymTag(), Value{std::string("tag1")});
        EXPECT_FALSE(table.VariableExists("B"));
        table.SetVariable("D", std::int16_t{1});
        EXPECT_EQ(table.Index(), 2);
    }
}

TEST(SymbolTable, DeletionOutsideTheTableChangesNothing) {
    clsSymbolTable table = ThreeTypedSymbols();
    table.DeleteByName("Z");
    table.DeleteByIndex(-1);
    table.DeleteByIndex(10001);
    table.DeleteByIndex(5);
    EXPECT_EQ(Names(table), (std::vector<std::string>{"A", "B", "C"}));
}

TEST(SymbolTable, DeleteAllKeepsTypeFieldsAndCursor) {
    clsSymbolTable table = ThreeTypedSymbols();
    table.SetIndex(2);
    table.DeleteAll();
    EXPECT_EQ(table.Index(), 2);
    EXPECT_EQ(table.Mnemonic(), "");
    EXPECT_EQ(table.SymVal(), Value{});
    EXPECT_EQ(table.Pass(), -1);
    EXPECT_EQ(table.SymType(), 102);
    EXPECT_FALSE(table.VariableExists("A"));
    table.SetVariable("N", std::int16_t{1});
    EXPECT_EQ(table.Index(), 0);
}

TEST(SymbolTable, SortOrdersCaseBlindAndMovesWholeSlots) {
    clsSymbolTable table;
    for (const char* name : {"b", "A", "a2"}) {
        table.SetVariable(name, std::string(name));
        table.SetSymType(name[0]);
    }
    table.Sort();
    EXPECT_EQ(Names(table), (std::vector<std::string>{"A", "a2", "b"}));
    for (int slot = 0; slot < 3; ++slot) {
        table.SetIndex(static_cast<std::int16_t>(slot));
        EXPECT_EQ(table.SymVal(), Value{table.Mnemonic()});
        EXPECT_EQ(table.SymType(), table.Mnemonic()[0]);
    }
    EXPECT_TRUE(table.VariableExists("b"));
    EXPECT_EQ(table.Index(), 2);
}

TEST(SymbolTable, CursorOutOfRangeIsIgnoredAndReadsNeutral) {
    clsSymbolTable table;
    table.SetVariable("X", std::int16_t{1});
    for (const std::int16_t bad : {10001, -5, -1, 32767}) {
        table.SetIndex(0);
        table.SetIndex(bad);
        EXPECT_EQ(table.Index(), 0) << bad;
    }
    EXPECT_FALSE(table.VariableExists("missing"));
    EXPECT_EQ(table.Index(), -1);
    table.SetMnemonic("Y");
    table.SetSymVal(std::int16_t{9});
    table.SetSymType(5);
    table.SetPass(5);
    table.SetRefed(true);
    EXPECT_EQ(table.Mnemonic(), "");
    EXPECT_EQ(table.SymVal(), Value{});
    EXPECT_EQ(table.SymTag(), Value{});
    EXPECT_EQ(table.SymType(), 0);
    EXPECT_EQ(table.SymSubType1(), 0);
    EXPECT_EQ(table.SymSubType2(), 0);
    EXPECT_EQ(table.Pass(), -1);
    EXPECT_FALSE(table.Refed());
    EXPECT_EQ(Names(table), std::vector<std::string>{"X"});
    table.SetIndex(10000);
    EXPECT_EQ(table.Pass(), 0) << "a fresh slot";
    EXPECT_EQ(table.SymType(), -1);
}

TEST(SymbolTable, RenamingASlotThroughTheCursorReindexesIt) {
    clsSymbolTable table;
    table.SetVariable("OLD", std::int16_t{1});
    table.SetMnemonic("NEW");
    EXPECT_FALSE(table.VariableExists("OLD"));
    EXPECT_TRUE(table.VariableExists("NEW"));
}

TEST(SymbolTable, DebugPrintTraceOneLinePerUsedSlot) {
    clsSymbolTable table;
    int lines = 0;
    table.SetIndex(4);
    table.DebugPrintTable([&](std::string_view) { ++lines; });
    EXPECT_EQ(lines, 0);
    EXPECT_EQ(table.Index(), -1);
    table.LoadPreDefinedValues(0);
    table.SetIndex(0);
    table.DebugPrintTable([&](std::string_view line) {
        ++lines;
        EXPECT_NE(line.find(lines == 1 ? "TRUE" : "FALSE"), std::string_view::npos);
    });
    EXPECT_EQ(lines, 2);
    EXPECT_EQ(table.Index(), 1);
}

TEST(SymbolTable, ToSigned32WrapsIntoTheSignedRange) {
    const std::vector<std::pair<double, double>> cases{{0, 0},
                                                       {1.9, 1},
                                                       {-1.9, -1},
                                                       {2147483647, 2147483647},
                                                       {-1, -1},
                                                       {4294967295, -1},
                                                       {4294967301.5, 5},
                                                       {2147483648, -2147483648.0},
                                                       {65535, 65535},
                                                       {-2147483649.0, 2147483647},
                                                       {-4294967296.0, 0}};
    for (const auto& [x, expected] : cases) {
        EXPECT_EQ(clsSymbolTable::ToSigned32(x), expected) << x;
    }
}

// A literal slot-by-slot table, kept deliberately naive, against which the
// indexed table is checked under random sequences of operations.
class ReferenceTable {
  public:
    bool CaseSensitive = true;
    std::vector<Entry> Slots;

    int Find(const std::string& name) const {
        for (std::size_t i = 0; i < Slots.size(); ++i) {
            if (Key(Slots[i].first) == Key(name)) return static_cast<int>(i);
        }
        return -1;
    }
    void Define(const std::string& name, const Value& value) {
        if (const int slot = Find(name); slot >= 0) {
            Slots[slot].second = value;
        } else {
            Slots.emplace_back(name, value);
        }
    }
    void Erase(int slot) {
        if (slot >= 0 && slot < static_cast<int>(Slots.size())) Slots.erase(Slots.begin() + slot);
    }

  private:
    std::string Key(std::string name) const {
        if (!CaseSensitive) {
            for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
        if (name != "$") std::erase(name, '$');
        return name;
    }
};

std::string Lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

TEST(SymbolTable, IndexAgreesWithALinearScanUnderRandomOperations) {
    const std::vector<std::string> pool{"a",  "A", "a$",   "$A",   "b",     "B", "b$b",
                                        "bb", "$", "Loop", "LOOP", "lo$op", "c", "C$"};
    std::mt19937 random(12345);
    clsSymbolTable table;
    ReferenceTable reference;
    for (int step = 0; step < 3000; ++step) {
        const std::string& name = pool[random() % pool.size()];
        switch (random() % 8) {
        case 0:
        case 1:
        case 2:
            table.SetVariable(name, std::int32_t{step});
            reference.Define(name, std::int32_t{step});
            break;
        case 3:
            table.DeleteByName(name);
            reference.Erase(reference.Find(name));
            break;
        case 4: {
            const int slot = static_cast<int>(random() % (reference.Slots.size() + 2));
            table.DeleteByIndex(static_cast<std::int16_t>(slot));
            reference.Erase(slot);
            break;
        }
        case 5: {
            table.Sort();
            std::vector<Entry> sorted = Contents(table);
            ASSERT_TRUE(std::is_sorted(sorted.begin(), sorted.end(), [](auto& x, auto& y) {
                return Lower(x.first) < Lower(y.first);
            }));
            ASSERT_TRUE(std::is_permutation(sorted.begin(), sorted.end(), reference.Slots.begin(),
                                            reference.Slots.end()));
            reference.Slots = sorted;
            break;
        }
        case 6:
            reference.CaseSensitive = !reference.CaseSensitive;
            table.SetCaseSensitive(reference.CaseSensitive);
            break;
        default:
            break;
        }
        ASSERT_EQ(Contents(table), reference.Slots) << "step " << step;
        for (const std::string& probe : pool) {
            const int expected = reference.Find(probe);
            ASSERT_EQ(table.VariableExists(probe), expected >= 0) << probe << " step " << step;
            ASSERT_EQ(table.Index(), expected) << probe << " step " << step;
        }
    }
}

} // namespace
} // namespace trident
