#include "assembler/SymbolDirectives.h"

#include "assembler/Assembly.h"
#include "assembler/ValueColumn.h"
#include "base/Text.h"
#include "encoder/OperandReader.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace trident {
namespace {

constexpr std::array<std::string_view, 4> RedefiningWords{"set", "aset", "defl", "dl"};

// The groups of the symbol table's predefined names: 0 logic constants,
// 1 mathematical constants, 2 integer limits, 3 Z80 registers, 4 8080
// mnemonics.
struct PredefGroup {
    std::string_view Name; // lower case
    std::span<const std::int16_t> Groups;
};

constexpr std::array<std::int16_t, 5> AllGroups{1, 0, 2, 3, 4};
constexpr std::array<std::int16_t, 1> MathGroup{1};
constexpr std::array<std::int16_t, 1> LogicGroup{0};
constexpr std::array<std::int16_t, 1> LimitsGroup{2};
constexpr std::array<std::int16_t, 1> Z80RegistersGroup{3};
constexpr std::array<std::int16_t, 1> MnemonicsGroup{4};

constexpr std::array<PredefGroup, 6> PredefGroups{{
    {"all", AllGroups},
    {"math", MathGroup},
    {"logic", LogicGroup},
    {"limits", LimitsGroup},
    {"z80regs", Z80RegistersGroup},
    {"8080mnems", MnemonicsGroup},
}};

const PredefGroup* FindPredefGroup(std::string_view operand) {
    const std::string name = LowerCase(operand);
    const auto found = std::find_if(PredefGroups.begin(), PredefGroups.end(),
                                    [&](const PredefGroup& group) { return group.Name == name; });
    return found == PredefGroups.end() ? nullptr : &*found;
}

void LoadGroups(Assembly& run, std::span<const std::int16_t> groups) {
    for (const std::int16_t group : groups) run.Symbols().LoadPreDefinedValues(group);
}

std::string_view FirstOperand(const Statement& statement) {
    return statement.OperandList.empty() ? std::string_view{} : statement.OperandList.front();
}

} // namespace

std::vector<std::string_view> SymbolDirectives::OperationWords() const {
    std::vector<std::string_view> words{"equ", "predef"};
    words.insert(words.end(), RedefiningWords.begin(), RedefiningWords.end());
    return words;
}

bool SymbolDirectives::Handle(Assembly& run, Statement& statement) {
    const std::string_view word = statement.Keyword;
    if (word == "equ") {
        Equate(run, statement);
    } else if (std::find(RedefiningWords.begin(), RedefiningWords.end(), word) !=
               RedefiningWords.end()) {
        if (statement.OperandCount() != 1) return false;
        Redefine(run, statement);
    } else if (word == "predef") {
        LoadPredefinedGroups(run, statement);
    } else {
        return false;
    }
    statement.Category = LineCategory::Equates;
    // The label names the value (or, for predef, nothing), never the address.
    statement.LabelTaken = true;
    return true;
}

void SymbolDirectives::Equate(Assembly& run, Statement& statement) {
    if (statement.Label.empty()) {
        run.ListError("Missing Label for ", statement.Operation);
        return;
    }
    OperandReader(run, statement).CheckOperandCount(1);
    const Value value = run.Evaluate(FirstOperand(statement));
    run.DefineSymbol(statement.Label, value, "equ");
    ShowInValueColumn(statement, value);
}

void SymbolDirectives::Redefine(Assembly& run, Statement& statement) {
    if (statement.Label.empty()) {
        run.ListError("Missing Label for ", statement.Operation);
        return;
    }
    const Value value = run.Evaluate(FirstOperand(statement));
    run.RedefineSymbol(statement.Label, value);
    ShowInValueColumn(statement, value);
}

void SymbolDirectives::LoadPredefinedGroups(Assembly& run, const Statement& statement) {
    if (statement.OperandList.empty()) {
        LoadGroups(run, AllGroups);
        return;
    }
    for (const std::string_view operand : statement.OperandList) {
        if (const PredefGroup* group = FindPredefGroup(operand))
            LoadGroups(run, group->Groups);
        else
            run.ListError("Invalid Operand", operand);
    }
}

} // namespace trident
