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

// The used slots as the per-slot properties show them.
std::vector<Entry> Contents(const SymbolTable& table) {
    std::vector<Entry> entries;
    for (int slot = 0; slot < SymbolTable::SlotCount; ++slot) {
        if (table.Mnemonic(slot).empty()) break;
        entries.emplace_back(table.Mnemonic(slot), table.SymVal(slot));
    }
    return entries;
}

// The value a look-up by name gives, with its effects; empty when unknown.
Value Variable(SymbolTable& table, std::string_view name) {
    SymbolName looked(name);
    const Value* value = table.VariableInPlace(looked);
    return value ? *value : Value{};
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
        EXPECT_EQ(table.SlotOf(c.Query), c.Slot) << c.Stored << " " << c.Query;
        EXPECT_EQ(Variable(table, c.Query), c.Slot == 0 ? Value{std::int16_t{7}} : Value{});
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
        std::vector<int> referenced;
        table.SetErrorSink([&](std::string_view message, std::string_view detail) {
            reports.emplace_back(message, detail);
        });
        table.SetReferenceSink([&](int slot) { referenced.push_back(slot); });
        table.SetVariable("other", std::int16_t{1});
        table.SetPass(table.SetVariable(c.Stored, std::int32_t{42}), c.DefinedPass);
        table.CurrentPass = 2;
        EXPECT_TRUE(table.VariableExists(c.Query));
        EXPECT_TRUE(reports.empty() && referenced.empty()) << "an existence test never reports";
        EXPECT_EQ(Variable(table, c.Query), Value{std::int32_t{42}});
        EXPECT_EQ(referenced, std::vector{1});
        EXPECT_EQ(reports,
                  (c.Reported ? Reports{{"Invalid forward reference", c.Query}} : Reports{}))
            << c.Query;
    }
}

TEST(SymbolTable, RedefinitionReplacesOnlyTheValue) {
    SymbolTable table;
    EXPECT_EQ(table.SetVariable("X", std::int16_t{1}), 0);
    EXPECT_EQ(table.SymType(0), 1);
    table.SetPass(0, 2);
    EXPECT_EQ(table.SetVariable("X$", std::string("new")), 0);
    EXPECT_EQ(table.Mnemonic(0), "X");
    EXPECT_EQ(table.SymVal(0), Value{std::string("new")});
    EXPECT_EQ(table.Pass(0), 2);
}

TEST(SymbolTable, FullTableRefusesANewNameSilently) {
    SymbolTable table;
    for (int i = 0; i < SymbolTable::SlotCount; ++i)
        ASSERT_EQ(table.SetVariable('S' + std::to_string(i), std::int32_t{i}), i);
    EXPECT_EQ(table.SetVariable("one too many", std::int16_t{1}), -1);
    EXPECT_FALSE(table.VariableExists("one too many"));
    EXPECT_EQ(table.SetVariable("S10000", std::int16_t{5}), 10000);
}

TEST(SymbolTable, UnusedSlotsReadNeutral) {
    const SymbolTable table;
    for (const int slot : {0, 10000}) {
        EXPECT_EQ(table.Mnemonic(slot), "");
        EXPECT_EQ(table.SymVal(slot), Value{});
        EXPECT_EQ(table.Pass(slot), 0);
        EXPECT_EQ(table.SymType(slot), -1);
    }
}

// The index against a naive slot-by-slot scan under random operations,
// with names that collide through case and "$"; names looked up again and
// again (SymbolName, or a name with its SymbolSlot) must see every change
// of case rule.
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
    std::vector<SymbolName> remembered(pool.begin(), pool.end());
    std::vector<SymbolSlot> slots(pool.size());
    std::mt19937 random(12345);
    SymbolTable table;
    for (int step = 0; step < 3000; ++step) {
        const std::size_t index = random() % pool.size();
        const std::string& name = pool[index];
        if (random() % 4 != 0) {
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
        } else {
            caseSensitive = !caseSensitive;
            table.SetCaseSensitive(caseSensitive);
        }
        ASSERT_EQ(Contents(table), model) << "step " << step;
        for (std::size_t probe = 0; probe < pool.size(); ++probe) {
            const std::string& text = pool[probe];
            ASSERT_EQ(table.SlotOf(text), find(text)) << text << " step " << step;
            ASSERT_EQ(table.SlotOf(text, slots[probe]), find(text)) << text << " step " << step;
        }
        for (SymbolName& probe : remembered) {
            const int slot = find(probe.Text());
            const Value* value = table.VariableInPlace(probe);
            ASSERT_EQ(value ? *value : Value{}, slot < 0 ? Value{} : model[slot].second)
                << probe.Text() << " step " << step;
        }
    }
}

} // namespace
} // namespace trident
