#pragma once

#include <cstdint>

namespace trident {

class ExpressionEvaluator;
namespace expr {
struct Program;
}

// The program an evaluator translated an expression text into, remembered
// by whoever evaluates the same text again and again (the operands of a
// statement in every pass), so that the evaluator need not find the text
// among its programs. It holds while the evaluator keeps its programs, and
// the evaluator checks that before it trusts it.
class ProgramHandle {
  private:
    friend class ExpressionEvaluator;

    expr::Program* pProgram = nullptr;
    std::uint64_t pGeneration = 0; // of the evaluator's programs; 0 for none
};

} // namespace trident
