#include "assembler/StatementHandlers.h"

#include "assembler/ConditionalDirectives.h"
#include "assembler/ControlDirectives.h"
#include "assembler/DataDirectives.h"
#include "assembler/SymbolDirectives.h"
#include "encoder/InstructionHandler.h"
#include "encoder/ZilogHandler.h"

namespace trident {

std::vector<std::unique_ptr<StatementHandler>> MakeStatementHandlers() {
    std::vector<std::unique_ptr<StatementHandler>> handlers;
    handlers.push_back(std::make_unique<SymbolDirectives>());
    handlers.push_back(std::make_unique<ConditionalDirectives>());
    handlers.push_back(std::make_unique<DataDirectives>());
    handlers.push_back(std::make_unique<ControlDirectives>());
    handlers.push_back(std::make_unique<ZilogHandler>());
    handlers.push_back(std::make_unique<InstructionHandler>());
    return handlers;
}

} // namespace trident
