#include "assembler/DispatchIndex.h"

#include <stdexcept>

namespace trident {

DispatchIndex::DispatchIndex(const std::vector<std::unique_ptr<StatementHandler>>& steps) {
    if (steps.size() > MaxSteps) throw std::length_error("too many dispatch steps");
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const StepSet step = StepSet{1} << i;
        const std::vector<std::string_view> words = steps[i]->OperationWords();
        const std::vector<std::string_view> prefixes = steps[i]->OperationPrefixes();
        if (words.empty() && prefixes.empty()) pUnlisted |= step;
        for (const std::string_view prefix : prefixes) pPrefixedSteps.push_back({prefix, step});
        if (steps[i]->RunsWhileSkipping()) pWhileSkipping |= step;
        if (steps[i]->TakesEmptyOperations()) pForEmptyOperations |= step;
        for (const std::string_view word : words) pListedSteps[word] |= step;
    }
}

DispatchIndex::StepSet DispatchIndex::StepsFor(std::string_view word) const {
    if (word.empty()) return pUnlisted;
    StepSet steps = pUnlisted;
    if (const auto found = pListedSteps.find(word); found != pListedSteps.end())
        steps |= found->second;
    for (const PrefixSteps& prefixed : pPrefixedSteps)
        if (word.starts_with(prefixed.Prefix)) steps |= prefixed.Steps;
    return steps;
}

} // namespace trident
