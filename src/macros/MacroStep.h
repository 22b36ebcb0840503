#pragma once

#include "assembler/StatementHandler.h"

#include <memory>

namespace trident {

class MacroProcessor;

// The macro processor's places in the statement dispatch. One processor
// serves three steps: the collection of block bodies comes before every
// other step (and also sees skipped lines, so that a body is taken whole);
// the macro and repeat directives come after the conditionals; a macro call
// is tried last of all. A macro named like an instruction or a directive is
// therefore stored but never called: the earlier step takes the statement.
class MacroStep : public StatementHandler {
  public:
    enum class Role { CollectBody, Directives, Invoke };

    MacroStep(std::shared_ptr<MacroProcessor> processor, Role role)
        : pProcessor(std::move(processor)), pRole(role) {}

    bool RunsWhileSkipping() const override { return pRole == Role::CollectBody; }
    bool TakesEmptyOperations() const override { return pRole == Role::CollectBody; }
    void StartPass(Assembly& run) override;
    // Only the directive step decides by a list of words.
    std::vector<std::string_view> OperationWords() const override;
    bool Handle(Assembly& run, Statement& statement) override;

  private:
    std::shared_ptr<MacroProcessor> pProcessor;
    Role pRole;
};

} // namespace trident
