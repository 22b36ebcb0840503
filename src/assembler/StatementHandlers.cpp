#include "assembler/StatementHandlers.h"

namespace trident {

std::vector<std::unique_ptr<StatementHandler>> MakeStatementHandlers() {
    std::vector<std::unique_ptr<StatementHandler>> handlers;
    return handlers;
}

} // namespace trident
