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

void Equate(Assembly& run, Statement& statement) {
    statement.LabelTaken = true;
    if (statement.Label.empty()) {
        run.ListError("Missing Label for ", statement.Operation);
        return;
    }
    OperandReader(run, statement).CheckOperandCount(1);
    const Value value = run.Evaluate(FirstOperand(statement));
    run.DefineSymbol(statement.Label, value, "equ");
    ShowInValueColumn(statement, value);
}

void Redefine(Assembly& run, Statement& statement) {
    statement.LabelTaken = true;
    if (statement.Label.empty()) {
        run.ListError("Missing Label for ", statement.Operation);
        return;
    }
    const Value value = run.Evaluate(FirstOperand(statement));
    run.RedefineSymbol(statement.Label, value);
    ShowInValueColumn(statement, value);
}

void LoadPredefinedGroups(Assembly& run, Statement& statement) {
    statement.LabelTaken = true;
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

constexpr std::array<Directive, 6> SymbolDirectives{{
    {"equ", LineCategory::Equates, Equate},
    {"set", LineCategory::Equates, Redefine},
    {"aset", LineCategory::Equates, Redefine},
    {"defl", LineCategory::Equates, Redefine},
    {"dl", LineCategory::Equates, Redefine},
    {"predef", LineCategory::Equates, LoadPredefinedGroups},
}};

// `name = value`, the Microsoft-style set (Compatible mode).
constexpr std::array<Directive, 1> CompatibleSymbolDirectives{{
    {"=", LineCategory::Equates, Redefine},
}};

} // namespace

std::span<const Directive> CompatibleSymbolDirectiveTable() {
    return CompatibleSymbolDirectives;
}

const Directive* FindSymbolDirective(std::string_view word) {
    const auto found = std::find_if(SymbolDirectives.begin(), SymbolDirectives.end(),
                                    [&](const Directive& row) { return row.Word == word; });
    return found == SymbolDirectives.end() ? nullptr : &*found;
}

bool IsRedefinition(std::string_view word) {
    const Directive* row = FindSymbolDirective(word);
    return row && row->Execute == Redefine;
}

} // namespace trident
