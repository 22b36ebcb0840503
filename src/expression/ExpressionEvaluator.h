#pragma once

#include "expression/AngleUnit.h"
#include "expression/ErrorList.h"
#include "expression/ExpressionParser.h"
#include "expression/ExpressionProgram.h"
#include "expression/ProgramCache.h"
#include "expression/ProgramHandle.h"
#include "symbols/Value.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

class SymbolTable;

// Evaluates the text of one operand expression: numbers in four radixes,
// character constants, quoted strings, names from the symbol table, six
// levels of binary operators, prefix operators and built-in functions. It
// never stops on bad input: every fault and warning goes to the error list,
// which the caller drains with GetNextError after each evaluation.
//
// Settings:
// - CaseSensitive (default true) is handed to the symbol table before each
//   name look-up.
// - DRG, the angle unit of the trigonometric functions, is Radians by
//   default, the unit of deg2rad's result and of the standard library.
//
// An assembly evaluates the operands of every statement in each pass, so
// each text is translated once into a program (see ExpressionProgram.h)
// that later evaluations of the same text run again; the programs kept are
// bounded in memory.
class ExpressionEvaluator {
  public:
    ExpressionEvaluator() = default;
    // Its programs remember slots of its symbol table: one evaluator each.
    ExpressionEvaluator(const ExpressionEvaluator&) = delete;
    ExpressionEvaluator& operator=(const ExpressionEvaluator&) = delete;

    // The value of `text`; empty when the expression is malformed or uses a
    // name without a value.
    Value Evaluate(std::string_view text);
    // Evaluates `text` through the program that `handle` remembers for it,
    // translating or finding it only when the handle does not hold; the
    // caller keeps the handle with the text.
    Value Evaluate(std::string_view text, ProgramHandle& handle);
    // As Evaluate(text, handle), the result without a copy where there is
    // one to refer to (the constant of a one-constant program, the stored
    // value of a one-name program): it holds until the next evaluation or
    // until the symbol table changes.
    const Value& EvaluateInPlace(std::string_view text, ProgramHandle& handle);
    // Whether `handle` holds a program that is one constant: evaluating its
    // text gives that constant, without a fault.
    bool IsConstant(const ProgramHandle& handle) const;
    // The symbol table that names are looked up in; not owned, may be unset.
    void SetVariables(SymbolTable* variables);

    bool CaseSensitive() const { return pCaseSensitive; }
    void SetCaseSensitive(bool caseSensitive) { pCaseSensitive = caseSensitive; }
    void SetDRG(AngleUnit unit) { pAngleUnit = unit; }
    // The operator rules of the expressions (OperatorTable.h). In the
    // compatible dialect a name the symbol table has no value for may still
    // be a register name or an 8080 mnemonic, which then gives its code; a
    // name the source defines always wins. Programs translated under the
    // other rules are dropped.
    void SetDialect(expr::Dialect dialect);
    expr::Dialect Dialect() const { return pDialect; }
    // The radix of numbers written without a suffix (10 by default).
    void SetRadix(int radix);
    int Radix() const { return pRadix; }

    // Literal conversions, also used by the directives outside expressions;
    // their faults go to the same error list.
    Value EvalNumber(std::string_view text);
    Value SingleQuoteStrToNumber(std::string_view text);
    std::string DoubleQuotedStringToString(std::string_view text);

    // The error list.
    static std::string ErrorString(std::int32_t code) { return ErrorList::ErrorString(code); }
    std::int32_t GetNextError() { return pErrors.GetNextError(); }
    std::string ExtraErrorString() const { return pErrors.ExtraErrorString(); }
    std::int16_t ErrorCount() const { return pErrors.ErrorCount(); }

  private:
    expr::Program& ProgramFor(std::string_view text);
    Value Run(expr::Program& program);
    bool RunStep(const expr::Step& step, expr::Program& program);
    Value LookUpName(SymbolName& name);
    // LookUpName without a copy; nullptr when the name has no value.
    const Value* LookUpNameInPlace(SymbolName& name);
    // A name the table has no value for: a name of the dialect's own, or
    // reported.
    [[gnu::noinline]] const Value* NameWithoutValue(const SymbolName& name);
    expr::Program& ProgramOf(std::string_view text, ProgramHandle& handle);
    bool Holds(const ProgramHandle& handle) const;

    SymbolTable* pVariables = nullptr;
    bool pCaseSensitive = true;
    AngleUnit pAngleUnit = AngleUnit::Radians;
    expr::Dialect pDialect = expr::Dialect::Standard;
    // The value of a name of the compatible dialect's own, while it is used.
    Value pDialectName;
    int pRadix = 10;
    ErrorList pErrors;
    expr::ExpressionParser pParser;
    // The programs of the texts met so far.
    expr::ProgramCache pPrograms;
    // The program of a text that no longer fits among the kept ones.
    expr::Program pUnkeptProgram;
    // The result of EvaluateInPlace when there is nothing to refer to.
    Value pHeld;
    std::vector<Value> pStack;
};

} // namespace trident
