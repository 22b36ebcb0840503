#include "assembler/ConditionalDirectives.h"

#include "assembler/Assembly.h"
#include "assembler/ConditionalStack.h"
#include "assembler/ValueColumn.h"
#include "base/Text.h"
#include "encoder/OperandReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>

namespace trident {
namespace {

std::string_view OperandAt(const Statement& statement, std::size_t index) {
    return index < statement.OperandList.size() ? std::string_view{statement.OperandList[index]}
                                                : std::string_view{};
}

// ifs_ncs / ifs_cs: a, rel, b with rel "eq" or "ne". Quotes stay part of the
// strings; only the blanks around them go.
bool CompareStrings(Assembly& run, const Statement& statement, bool caseBlind) {
    std::string left(TrimBlanks(OperandAt(statement, 0)));
    std::string right(TrimBlanks(OperandAt(statement, 2)));
    if (caseBlind) {
        left = LowerCase(left);
        right = LowerCase(right);
    }
    const std::string relation = LowerCase(OperandAt(statement, 1));
    if (relation == "eq") return left == right;
    if (relation == "ne") return left != right;
    run.ListError("Only eq and ne supported", OperandAt(statement, 1));
    return false;
}

// The forms tested without evaluating an expression, in the order they are
// looked for.
struct NamedForm {
    std::string_view Word;
    std::int16_t Operands;
    bool (*Holds)(Assembly& run, const Statement& statement);
};

constexpr std::array<NamedForm, 6> NamedForms{{
    {"ifdef", 1,
     [](Assembly& run, const Statement& s) {
         return run.Symbols().VariableExists(OperandAt(s, 0));
     }},
    {"ifndef", 1,
     [](Assembly& run, const Statement& s) {
         return !run.Symbols().VariableExists(OperandAt(s, 0));
     }},
    {"ifs_ncs", 3, [](Assembly& run, const Statement& s) { return CompareStrings(run, s, true); }},
    {"ifs_cs", 3, [](Assembly& run, const Statement& s) { return CompareStrings(run, s, false); }},
    {"if1", 0, [](Assembly& run, const Statement&) { return run.State().CurrentPass == 1; }},
    {"ifp1", 0, [](Assembly& run, const Statement&) { return run.State().CurrentPass == 1; }},
}};

// A macro argument as the Microsoft-style conditionals compare it: without
// its angle brackets and blanks.
std::string_view Bracketed(std::string_view text) {
    text = TrimBlanks(text);
    if (text.size() >= 2 && text.front() == '<' && text.back() == '>')
        text = TrimBlanks(text.substr(1, text.size() - 2));
    return text;
}

bool SameArguments(const Statement& s) {
    return Bracketed(OperandAt(s, 0)) == Bracketed(OperandAt(s, 1));
}

// Compatible mode's further named forms, looked for first (-1: any number
// of operands, an empty argument included).
constexpr std::array<NamedForm, 5> CompatibleNamedForms{{
    {"if2", 0, [](Assembly& run, const Statement&) { return run.State().CurrentPass != 1; }},
    {"ifb", -1, [](Assembly&, const Statement& s) { return Bracketed(s.Operands).empty(); }},
    {"ifnb", -1, [](Assembly&, const Statement& s) { return !Bracketed(s.Operands).empty(); }},
    {"ifidn", 2, [](Assembly&, const Statement& s) { return SameArguments(s); }},
    {"ifdif", 2, [](Assembly&, const Statement& s) { return !SameArguments(s); }},
}};

// The forms that test the value of their expression.
struct NumericForm {
    std::string_view Word;
    bool (*Holds)(double value);
};

constexpr std::array<NumericForm, 11> NumericForms{{
    // Bit 0 of the whole part, not "non-zero": if 2 is false, if -3 true.
    {"if", [](double v) { return std::fmod(std::trunc(std::fabs(v)), 2.0) == 1.0; }},
    {"ifz", [](double v) { return v == 0; }},
    {"iff", [](double v) { return v == 0; }},
    {"ifeq", [](double v) { return v == 0; }},
    {"ifnz", [](double v) { return v != 0; }},
    {"ift", [](double v) { return v != 0; }},
    {"ifne", [](double v) { return v != 0; }},
    {"ifgt", [](double v) { return v > 0; }},
    {"ifge", [](double v) { return v >= 0; }},
    {"iflt", [](double v) { return v < 0; }},
    {"ifle", [](double v) { return v <= 0; }},
}};

// Compatible mode: the era's assemblers assemble after `if` when the value
// is not zero; `ife` when it is.
constexpr std::array<NumericForm, 2> CompatibleNumericForms{{
    {"if", [](double v) { return v != 0; }},
    {"ife", [](double v) { return v == 0; }},
}};

template <typename Form, std::size_t Count>
const Form* FindForm(const std::array<Form, Count>& forms, std::string_view word) {
    const auto found =
        std::find_if(forms.begin(), forms.end(), [&](const Form& f) { return f.Word == word; });
    return found == forms.end() ? nullptr : &*found;
}

// A condition's value as a number: a one-character string stands for its
// code, as everywhere an operand is a number.
double ConditionNumber(Assembly& run, const Value& value, std::string_view operand) {
    if (const std::optional<double> number = AsNumber(value)) return *number;
    const std::string& text = std::get<std::string>(value);
    if (text.size() == 1) return static_cast<unsigned char>(text.front());
    run.ListError("Value out of Range", operand);
    return 0;
}

void Endif(Assembly& run, const Statement& statement) {
    if (!run.Conditionals().Close())
        run.ListError("Mismatched IF/ENDIF directives", statement.Operation);
}

// The forms whose operand is an expression.
void TestNumber(Assembly& run, Statement& statement, Dialect dialect) {
    // The expression is evaluated before the word is known to be a form.
    const std::string_view operand = OperandAt(statement, 0);
    const Value value = run.Evaluate(operand);
    if (IsEmpty(value)) {
        // Which lines follow must be known in this pass. A malformed
        // expression (its error listed) or, in Compatible mode, a name not
        // yet known in a resolving pass, makes the condition false; the
        // final pass decides with the real value or lists the name.
        if (run.UnresolvedName() && dialect == Dialect::Standard)
            run.TerminalStop(statement.Operation);
        else
            run.Conditionals().Open(true);
        return;
    }
    const NumericForm* form = dialect == Dialect::Compatible
                                  ? FindForm(CompatibleNumericForms, statement.Keyword)
                                  : nullptr;
    if (!form) form = FindForm(NumericForms, statement.Keyword);
    if (!form) {
        run.ListError("Invalid IF directive", statement.Operation);
        return;
    }
    OperandReader(run, statement).CheckOperandCount(1);
    const bool holds = form->Holds(ConditionNumber(run, value, operand));
    run.Conditionals().Open(!holds);
    ShowInValueColumn(statement, value);
}

// Opens the level of a conditional met while lines are assembled.
void Test(Assembly& run, Statement& statement, Dialect dialect) {
    const NamedForm* form = dialect == Dialect::Compatible
                                ? FindForm(CompatibleNamedForms, statement.Keyword)
                                : nullptr;
    if (!form) form = FindForm(NamedForms, statement.Keyword);
    if (form) {
        if (form->Operands >= 0) OperandReader(run, statement).CheckOperandCount(form->Operands);
        const bool holds = form->Holds(run, statement);
        run.Conditionals().Open(!holds);
        ShowInValueColumn(statement, TruthValue(holds));
        return;
    }
    TestNumber(run, statement, dialect);
}

} // namespace

bool IsConditionalWord(std::string_view word) {
    return word == "else" || word == "endif" || FindForm(NamedForms, word) ||
           FindForm(NumericForms, word) || FindForm(CompatibleNamedForms, word) ||
           FindForm(CompatibleNumericForms, word);
}

bool IsConditional(std::string_view word) {
    return word == "else" || word == "endif" || word.starts_with("if");
}

void ExecuteConditional(Assembly& run, Statement& statement, Dialect dialect) {
    ConditionalStack& levels = run.Conditionals();
    const std::string_view word = statement.Keyword;
    statement.Category = LineCategory::Ifs;
    if (word == "else") {
        levels.Else();
    } else if (word == "endif") {
        Endif(run, statement);
    } else if (levels.Skipping()) {
        // Nothing inside a skipped region is evaluated: the level only keeps
        // its else and endif paired, and stays skipped whatever they say.
        levels.Open(true);
    } else {
        Test(run, statement, dialect);
    }
}

} // namespace trident
