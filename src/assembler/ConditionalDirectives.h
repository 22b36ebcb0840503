#pragma once

#include "assembler/StatementHandler.h"

#include <string_view>

namespace trident {

// The IF family, else and endif. They are looked at in every state, so that
// levels opened inside a skipped region pair with their own else and endif;
// the levels themselves live in the run's ConditionalStack.
class ConditionalDirectives : public StatementHandler {
  public:
    bool RunsWhileSkipping() const override { return true; }
    std::vector<std::string_view> OperationWords() const override { return {"else", "endif"}; }
    std::vector<std::string_view> OperationPrefixes() const override { return {"if"}; }
    void StartPass(Assembly& run) override;
    bool Handle(Assembly& run, Statement& statement) override;

  private:
    static void Endif(Assembly& run, const Statement& statement);
    // Opens the level of a conditional met while lines are assembled.
    static void Test(Assembly& run, Statement& statement);
    // The forms whose operand is an expression.
    static void TestNumber(Assembly& run, Statement& statement);
};

} // namespace trident
