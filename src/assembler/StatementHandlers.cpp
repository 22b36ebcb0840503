#include "assembler/StatementHandlers.h"

#include "assembler/ConditionalDirectives.h"
#include "assembler/ControlDirectives.h"
#include "assembler/DataDirectives.h"
#include "assembler/SymbolDirectives.h"
#include "encoder/InstructionHandler.h"
#include "encoder/ZilogHandler.h"
#include "macros/MacroProcessor.h"
#include "macros/MacroStep.h"

namespace trident {

std::vector<std::unique_ptr<StatementHandler>> MakeStatementHandlers() {
    std::vector<std::unique_ptr<StatementHandler>> handlers;
    const auto macros = std::make_shared<MacroProcessor>();
    handlers.push_back(std::make_unique<MacroStep>(macros, MacroStep::Role::CollectBody));
    handlers.push_back(std::make_unique<SymbolDirectives>());
    handlers.push_back(std::make_unique<ConditionalDirectives>());
    handlers.push_back(std::make_unique<MacroStep>(macros, MacroStep::Role::Directives));
    handlers.push_back(std::make_unique<DataDirectives>());
    handlers.push_back(std::make_unique<ControlDirectives>());
    handlers.push_back(std::make_unique<ZilogHandler>());
    handlers.push_back(std::make_unique<InstructionHandler>());
    handlers.push_back(std::make_unique<MacroStep>(macros, MacroStep::Role::Invoke));
    return handlers;
}

} // namespace trident
