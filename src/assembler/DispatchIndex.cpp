#include "assembler/DispatchIndex.h"

#include <stdexcept>

namespace trident {

DispatchIndex::DispatchIndex(const std::vector<std::unique_ptr<StatementHandler>>& steps) {
    if (steps.size() > MaxSteps) throw std::length_error("too many dispatch steps");
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const StepSet step = StepSet{1} << i;
        const std::vector<std::string_view> words = steps[i]->OperationWords();
        if (words.empty()) pUnlisted |= step;
        if (steps[i]->RunsWhileSkipping()) pWhileSkipping |= step;
        if (steps[i]->TakesEmptyOperations()) pForEmptyOperations |= step;
        for (const std::string_view word : words) pListedSteps[word] |= step;
    }
}

DispatchIndex::StepSet DispatchIndex::StepsFor(std::string_view word) const {
    if (word.empty()) return pUnlisted;
    const auto found = pListedSteps.find(word);
    return found == pListedSteps.end() ? pUnlisted : pUnlisted | found->second;
}

} // namespace trident
