#pragma once

#include "expression/AngleUnit.h"
#include "expression/BuiltinFunctions.h"
#include "expression/ExpressionToken.h"
#include "expression/OperatorTable.h"
#include "expression/clsErrorList.h"
#include "expression/clsExpressionLexer.h"
#include "symbols/Value.h"

#include <functional>
#include <string_view>
#include <vector>

namespace trident::expr {

// How binary operators of different levels are ordered.
enum class OperatorOrder {
    Levels,     // the six precedence levels, left to right within a level
    LeftToRight // strictly left to right; only parentheses group
};

struct ParserSettings {
    AngleUnit Unit = AngleUnit::Radians;
    OperatorOrder Order = OperatorOrder::Levels;
};

// Evaluates one expression text in a single left-to-right sweep with an
// operand stack and an operator stack, so that deep nesting costs no call
// depth and long expressions cost linear time. Prefix operators bind to the
// operand right after them (a number, name, function call or parenthesised
// group). Binary operators are applied by level, 6 first, and left to right
// within a level. A malformed expression stops with one error and an empty
// result.
class clsExpressionParser {
  public:
    // Gives the value of an Operand or Quoted token (numbers, names,
    // character constants and strings).
    using OperandResolver = std::function<Value(const Token& token)>;

    clsExpressionParser(clsErrorList& errors, OperandResolver resolver);

    // One evaluation. The parser can be run again and again; its stacks keep
    // their storage between runs.
    Value Run(std::string_view text, ParserSettings settings);

  private:
    enum class Step { NeedOperand, NeedOperator, Done, Failed };
    enum class FrameKind { Group, Function, Prefix, Binary };

    struct Frame {
        FrameKind Kind;
        const BinaryOperator* Binary = nullptr;
        const PrefixOperator* Prefix = nullptr;
        const BuiltinFunction* Function = nullptr; // none for an unknown function
    };

    Step OnOperand(const Token& token);
    Step OnOperator(const Token& token);
    Step OpenFunction(std::string_view name);
    Step CloseGroup();
    Step Fail(EvalError code, std::string_view extra);
    void PushValue(Value value);
    Value PopValue();
    void ReduceWhileAtLeast(int level);
    void ReduceTop();
    int LevelOf(const BinaryOperator& op) const;
    Value Finish();

    clsExpressionLexer pLexer{{}};
    clsErrorList& pErrors;
    OperandResolver pResolve;
    ParserSettings pSettings;
    std::vector<Frame> pFrames;
    std::vector<Value> pValues;
};

} // namespace trident::expr
