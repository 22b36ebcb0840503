#pragma once

#include "assembler/StatementHandler.h"

namespace trident {

// The directives that steer the run rather than emit code: org, the listing
// switch, the angle unit, the processor selection, user diagnostics, include
// files, macro libraries and end, and the accepted but unsupported title and
// segment words. Each name maps to its action in one table.
class ControlDirectives : public StatementHandler {
  public:
    // Every pass starts in radians, so that all passes evaluate alike.
    void StartPass(Assembly& run) override;
    std::vector<std::string_view> OperationWords() const override;
    bool Handle(Assembly& run, Statement& statement) override;
};

} // namespace trident
