#include "assembler/StatementHandlers.h"

#include "assembler/ConditionalDirectives.h"
#include "assembler/SymbolDirectives.h"
#include "encoder/InstructionHandler.h"

namespace trident {

std::vector<std::unique_ptr<StatementHandler>> MakeStatementHandlers() {
    std::vector<std::unique_ptr<StatementHandler>> handlers;
    handlers.push_back(std::make_unique<SymbolDirectives>());
    handlers.push_back(std::make_unique<ConditionalDirectives>());
    handlers.push_back(std::make_unique<InstructionHandler>());
    return handlers;
}

} // namespace trident
