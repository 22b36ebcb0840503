#include "macros/MacroStep.h"

#include "assembler/Assembly.h"
#include "macros/MacroProcessor.h"

namespace trident {

void MacroStep::StartPass(Assembly& run) {
    // The processor is shared; the first step resets it for all three.
    if (pRole == Role::CollectBody) pProcessor->StartPass(run);
}

std::vector<std::string_view> MacroStep::OperationWords() const {
    if (pRole != Role::Directives) return {};
    return MacroProcessor::DirectiveWords();
}

bool MacroStep::Handle(Assembly& run, Statement& statement) {
    switch (pRole) {
    case Role::CollectBody:
        // Lines replayed from an expansion are listed only on request; their
        // diagnostics are listed all the same.
        if (!statement.Where.Macro.empty() && !run.Options().ListMacroExpansions)
            statement.SuppressListing = true;
        return pProcessor->Collecting() && pProcessor->CollectBody(run, statement);
    case Role::Directives:
        return pProcessor->ExecuteDirective(run, statement);
    case Role::Invoke:
        return pProcessor->Invoke(run, statement);
    }
    return false;
}

} // namespace trident
