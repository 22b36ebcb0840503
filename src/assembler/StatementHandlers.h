#pragma once

#include "assembler/StatementHandler.h"

#include <memory>
#include <vector>

namespace trident {

// The dispatch order of a statement's handlers, first to last.
std::vector<std::unique_ptr<StatementHandler>> MakeStatementHandlers();

} // namespace trident
