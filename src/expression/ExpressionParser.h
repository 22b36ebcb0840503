#pragma once

#include "expression/BuiltinFunctions.h"
#include "expression/ErrorList.h"
#include "expression/ExpressionLexer.h"
#include "expression/ExpressionProgram.h"
#include "expression/ExpressionToken.h"
#include "expression/OperatorTable.h"
#include "symbols/Value.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace trident::expr {

// The value of a literal operand: a number, a character constant or a
// string, told apart by its first character. In the compatible dialect a
// double-quoted string of one or two characters is a character constant.
// Numbers without a suffix are read in `radix` (see EvalNumber).
Value ConvertLiteral(std::string_view text, ErrorList& errors, Dialect dialect = Dialect::Standard,
                     int radix = 10);

// Translates one expression text into a Program in a single left-to-right
// sweep with an operator stack, so that deep nesting costs no call depth and
// long expressions cost linear time. Prefix operators bind to the operand
// right after them (a number, name, function call or parenthesised group).
// Binary operators are applied by level, 6 first, and left to right within a
// level. A malformed expression ends its program with a Fail step at the
// point where reading stops.
class ExpressionParser {
  public:
    // The program replaces whatever `program` held. The parser can be used
    // again and again; its stacks keep their storage between uses.
    void Compile(std::string_view text, Program& program);
    void SetDialect(Dialect dialect) { pDialect = dialect; }
    // The radix of numbers without a suffix in the texts compiled from now on.
    void SetRadix(int radix) { pRadix = radix; }

  private:
    enum class Stage { NeedOperand, NeedOperator, Done, Failed };
    enum class FrameKind { Group, Function, Prefix, Binary };

    struct Frame {
        FrameKind Kind;
        const BinaryOperator* Binary = nullptr;
        const PrefixOperator* Prefix = nullptr;
        const BuiltinFunction* Function = nullptr; // none for an unknown function
    };

    Stage OnOperand(const Token& token);
    Stage OnOperator(const Token& token);
    Stage OpenFunction(std::string_view name);
    Stage CloseGroup();
    Stage Fail(EvalError code, std::string_view extra);
    void EmitOperand(const Token& token);
    void EmitConstant(Value value);
    void EmitText(StepKind kind, EvalError fault, std::string_view text);
    void CompleteOperand();
    void ReduceWhileAtLeast(int level);
    void Finish();
    void NotePowerOperand(const Token& token);

    ExpressionLexer pLexer{{}};
    Program* pProgram = nullptr;
    std::vector<Frame> pFrames;
    // How many values the program's steps leave on the stack so far.
    std::size_t pDepth = 0;
    // Faults of converting literals, which decide whether a literal can be
    // converted once for all runs.
    ErrorList pLiteralFaults;
    Dialect pDialect = Dialect::Standard;
    // For the warning on "^" beside a character constant: whether the last
    // operand was one, and whether a "^" waits for its right operand.
    bool pOperandQuoted = false;
    bool pPowerPending = false;
    int pRadix = 10;
};

} // namespace trident::expr
