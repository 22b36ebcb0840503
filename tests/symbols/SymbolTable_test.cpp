#include "symbols/SymbolTable.h"

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
using Reports = std::vector<std::pair<std::string, std::string>>;

// The used slots as the cursor properties show them.
std::vector<Entry> Contents(SymbolTable& table) {
    std::vector<Entry> entries;
    for (std::int16_t slot = 0; slot < SymbolTable::SlotCount; ++slot) {
        table.SetIndex(slot);
        if (table.Mnemonic().empty()) break;
        entries.emplace_back(table.Mnemonic(), table.SymVal());
    }
    return entries;
}

std::string Lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

TEST(SymbolTable, NameComparisonFollowsCaseOptionAndIgnoresDollars) {
    struct Case {
        bool CaseSensitive;
        const char* Stored; // lands in slot 0; slot 1 is the first unused
        const char* Query;
        int Slot;
    };
    for (const Case& c : {Case{false, "LOOP", "Loop", 0}, Case{true, "LOOP", "Loop", -1},
                          Case{true, "AB", "A$B", 0}, Case{true, "LOOP$1", "$LOOP1$", 0},
                          Case{false, "Lo$op", "LOOP", 0}, Case{true, "$", "$", 0},
                          Case{true, "X", "$", -1}, Case{true, "$", "X", -1},
                          // Nothing but "$" strips to "", which an unused slot's name equals.
                          Case{true, "X", "$$", 1}, Case{true, "X", "", 1}}) {
        SymbolTable table;
        table.SetCaseSensitive(c.CaseSensitive);
        table.SetVariable(c.Stored, std::int16_t{7});
        EXPECT_EQ(table.VariableExists(c.Query), c.Slot >= 0) << c.Stored << " " << c.Query;
        EXPECT_EQ(table.Index(), c.Slot) << c.Stored << " " << c.Query;
        EXPECT_EQ(table.Variable(c.Query), c.Slot == 0 ? Value{std::int16_t{7}} : Value{});
    }
}

TEST(SymbolTable, ForwardReferenceIsReportedButStillResolves) {
    struct Case {
        const char* Stored;
        const char* Query;
        std::int16_t DefinedPass;
        bool Reported;
    };
    for (const Case& c : {Case{"..X", "..X", 1, true}, Case{"..X", "..x", -1, true},
                          Case{"..X", "..X", 2, false}, Case{".X", ".X", 1, false},
                          // The rule looks at the name as the caller wrote it.
                          Case{"..X", "$..X", 1, false}, Case{".$.X", "..X", 1, true}}) {
        SymbolTable table;
        table.SetCaseSensitive(false);
        Reports reports;
        table.SetErrorSink([&](std::string_view message, std::string_view detail) {
            reports.emplace_back(message, detail);
        });
        table.SetVariable("other", std::int16_t{1});
        table.SetVariable(c.Stored, std::int32_t{42});
        table.SetPass(c.DefinedPass);
        table.CurrentPass = 2;
        EXPECT_TRUE(table.VariableExists(c.Query));
        EXPECT_FALSE(table.Refed());
        EXPECT_TRUE(reports.empty()) << "an existence test never reports";
        table.SetIndex(0);
        EXPECT_EQ(table.Variable(c.Query), Value{std::int32_t{42}});
        EXPECT_EQ(table.Index(), 1);
        EXPECT_TRUE(table.Refed());
        EXPECT_EQ(reports,
                  (c.Reported ? Reports{{"Invalid forward reference", c.Query}} : Reports{}))
            << c.Query;
    }
}

TEST(SymbolTable, RedefinitionReplacesOnlyTheValue) {
    SymbolTable table;
    table.SetVariable("X", std::int16_t{1});
    EXPECT_EQ(std::vector({table.SymType(), table.SymSubType1(), table.SymSubType2()}),
              std::vector({1, 13, 0}));
    table.SetPass(2);
    table.SetSymType(9);
    table.SetVariable("X$", std::string("new"));
    EXPECT_EQ(table.Index(), 0);
    EXPECT_EQ(table.Mnemonic(), "X");
    EXPECT_EQ(table.SymVal(), Value{std::string("new")});
    EXPECT_EQ(table.Pass(), 2);
    EXPECT_EQ(table.SymType(), 9);
}

TEST(SymbolTable, FullTableRefusesANewNameSilently) {
    SymbolTable table;
    EXPECT_EQ(SymbolTable::MaximumSymbols(), 10000);
    for (int i = 0; i < SymbolTable::SlotCount; ++i) {
        table.SetVariable('S' + std::to_string(i), std::int32_t{i});
        ASSERT_EQ(table.Index(), i);
    }
    table.SetVariable("one too many", std::int16_t{1});
    EXPECT_EQ(table.Index(), -1);
    EXPECT_FALSE(table.VariableExists("one too many"));
    table.SetVariable("S10000", std::int16_t{5});
    EXPECT_EQ(table.Index(), 10000);
}

TEST(SymbolTable, DeletionMovesNamesButLeavesTypeFieldsWithTheirSlots) {
    for (const bool byName : {true, false}) {
        SymbolTable table;
        for (int i = 0; i < 3; ++i) {
            table.SetVariable(std::string(1, static_cast<char>('A' + i)), std::int16_t(10 + i));
            table.SetPass(static_cast<std::int16_t>(i + 1));
            table.SetSymType(100 + i);
            table.SetSymSubType1(200 + i);
            table.SetSymSubType2(300 + i);
            table.SetSymTag(std::int16_t(400 + i));
        }
        table.DeleteByName("b"); // case-sensitive: no such name
        table.DeleteByIndex(-1);
        table.DeleteByIndex(10001);
        table.DeleteByIndex(5);
        ASSERT_EQ(Contents(table).size(), 3u);
        byName ? table.DeleteByName("B") : table.DeleteByIndex(1);
        ASSERT_TRUE(table.VariableExists("C"));
        EXPECT_EQ(table.Index(), 1);
        EXPECT_EQ(table.SymVal(), Value{std::int16_t{12}});
        EXPECT_EQ(table.Pass(), 3);
        EXPECT_EQ(std::vector({table.SymType(), table.SymSubType1(), table.SymSubType2()}),
                  std::vector({101, 201, 301}));
        EXPECT_EQ(table.SymTag(), Value{std::int16_t{401}});
        EXPECT_FALSE(table.VariableExists("B"));
        table.SetVariable("D", std::int16_t{1});
        EXPECT_EQ(table.Index(), 2);

        table.DeleteAll();
        EXPECT_EQ(table.Index(), 2) << "DeleteAll leaves the cursor";
        EXPECT_EQ(table.Pass(), -1);
        EXPECT_EQ(table.SymType(), 1) << "and D's type fields";
        EXPECT_TRUE(Contents(table).empty());
    }
}

TEST(SymbolTable, SortOrdersCaseBlindAndMovesWholeSlots) {
    SymbolTable table;
    for (const char* name : {"b", "A", "a2"}) {
        table.SetVariable(name, std::string(name));
        table.SetSymType(name[0]);
    }
    table.Sort();
    EXPECT_EQ(Contents(table), (std::vector<Entry>{{"A", "A"}, {"a2", "a2"}, {"b", "b"}}));
    table.VariableExists("b");
    EXPECT_EQ(table.Index(), 2);
    EXPECT_EQ(table.SymType(), 'b');
}

TEST(SymbolTable, CursorOutOfRangeIsIgnoredAndReadsNeutral) {
    SymbolTable table;
    table.SetIndex(10000);
    EXPECT_EQ(table.Pass(), 0) << "a fresh slot";
    EXPECT_EQ(table.SymType(), -1);
    for (const std::int16_t bad : {10001, -5, -1, 32767}) {
        table.SetIndex(0);
        table.SetIndex(bad);
        EXPECT_EQ(table.Index(), 0) << bad;
    }
    EXPECT_FALSE(table.VariableExists("missing"));
    table.SetMnemonic("Y");
    table.SetSymVal(std::int16_t{9});
    EXPECT_EQ(table.Mnemonic(), "");
    EXPECT_EQ(table.SymVal(), Value{});
    EXPECT_EQ(table.SymTag(), Value{});
    EXPECT_EQ(std::vector({table.SymType(), table.SymSubType1(), table.SymSubType2()}),
              std::vector({0, 0, 0}));
    EXPECT_EQ(table.Pass(), -1);
    EXPECT_FALSE(table.Refed());
    EXPECT_TRUE(Contents(table).empty());
}

TEST(SymbolTable, ToSigned32WrapsIntoTheSignedRange) {
    const std::pair<double, double> cases[] = {
        {1.9, 1},   {4294967295, -1},  {2147483647, 2147483647},    {-2147483649.0, 2147483647},
        {-1.9, -1}, {4294967301.5, 5}, {2147483648, -2147483648.0},
    };
    for (const auto& [x, expected] : cases) {
        EXPECT_EQ(SymbolTable::ToSigned32(x), expected) << x;
    }
}

// The index against a naive slot-by-slot scan under random operations,
// with names that collide through case and "$"; names looked up again and
// again (SymbolName, or a name with its SymbolSlot) must see every move of
// the slots.
TEST(SymbolTable, IndexAgreesWithALinearScanUnderRandomOperations) {
    const std::vector<std::string> pool{"a",  "A", "a$",   "$A",   "b",     "B", "b$b",
                                        "bb", "$", "Loop", "LOOP", "lo$op", "c", "C$"};
    bool caseSensitive = true;
    std::vector<Entry> model;
    const auto find = [&](const std::string& name) {
        const auto key = [&](std::string text) {
            if (!caseSensitive) text = Lower(text);
            if (text != "$") std::erase(text, '$');
            return text;
        };
        const auto same = [&](const Entry& entry) { return key(entry.first) == key(name); };
        const auto at = std::find_if(model.begin(), model.end(), same);
        return at == model.end() ? -1 : static_cast<int>(at - model.begin());
    };
    const auto erase = [&](int slot) {
        if (slot >= 0 && slot < static_cast<int>(model.size())) model.erase(model.begin() + slot);
    };
    std::vector<SymbolName> remembered(pool.begin(), pool.end());
    std::vector<SymbolSlot> slots(pool.size());
    std::mt19937 random(12345);
    SymbolTable table;
    for (int step = 0; step < 3000; ++step) {
        const std::size_t index = random() % pool.size();
        const std::string& name = pool[index];
        const unsigned operation = random() % 7;
        if (operation < 3) {
            // The location counter's own way in, and the one that remembers
            // the slot, must act as SetVariable does.
            if (name == "$" && step % 2 == 0)
                table.SetLocation(step);
            else if (step % 3 == 0)
                table.SetVariable(name, std::int32_t{step}, slots[index]);
            else
                table.SetVariable(name, std::int32_t{step});
            const int slot = find(name);
            if (slot < 0) model.emplace_back(name, Value{});
            model[slot < 0 ? model.size() - 1 : slot].second = std::int32_t{step};
        } else if (operation == 3) {
            table.DeleteByName(name);
            erase(find(name));
        } else if (operation == 4) {
            const int slot = static_cast<int>(random() % (model.size() + 2));
            table.DeleteByIndex(static_cast<std::int16_t>(slot));
            erase(slot);
        } else if (operation == 5) {
            // Names equal case-blind have no defined order: check the sort,
            // then adopt the table's order.
            table.Sort();
            const std::vector<Entry> sorted = Contents(table);
            ASSERT_TRUE(std::is_sorted(sorted.begin(), sorted.end(), [](auto& x, auto& y) {
                return Lower(x.first) < Lower(y.first);
            }));
            ASSERT_TRUE(
                std::is_permutation(sorted.begin(), sorted.end(), model.begin(), model.end()));
            model = sorted;
        } else {
            caseSensitive = !caseSensitive;
            table.SetCaseSensitive(caseSensitive);
        }
        ASSERT_EQ(Contents(table), model) << "step " << step;
        for (std::size_t probe = 0; probe < pool.size(); ++probe) {
            const std::string& text = pool[probe];
            ASSERT_EQ(table.VariableExists(text), find(text) >= 0) << text << " step " << step;
            ASSERT_EQ(table.Index(), find(text)) << text << " step " << step;
            ASSERT_EQ(table.VariableExists(text, slots[probe]), find(text) >= 0)
                << text << " step " << step;
            ASSERT_EQ(table.Index(), find(text)) << text << " step " << step;
        }
        for (SymbolName& probe : remembered) {
            const int slot = find(probe.Text());
            ASSERT_EQ(table.Variable(probe), slot < 0 ? Value{} : model[slot].second)
                << probe.Text() << " step " << step;
            ASSERT_EQ(table.Index(), slot) << probe.Text() << " step " << step;
        }
    }
}

} // namespace
} // namespace trident
