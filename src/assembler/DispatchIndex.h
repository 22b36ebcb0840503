#pragma once

#include "assembler/StatementHandler.h"
#include "symbols/TextHash.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace trident {

// Which steps of the dispatch a statement's operation word is offered to:
// every step that decides by other means, and the steps whose lists of
// words hold it. One look-up per statement replaces a comparison of the
// word with every list in turn.
class DispatchIndex {
  public:
    // Bit i stands for step i.
    using StepSet = std::uint64_t;
    static constexpr std::size_t MaxSteps = 64;

    explicit DispatchIndex(const std::vector<std::unique_ptr<StatementHandler>>& steps);

    StepSet StepsFor(std::string_view word) const;
    // The steps that look at statements while lines are skipped, and those
    // that look at statements without an operation word.
    StepSet WhileSkipping() const { return pWhileSkipping; }
    StepSet ForEmptyOperations() const { return pForEmptyOperations; }

  private:
    StepSet pUnlisted = 0;
    StepSet pWhileSkipping = 0;
    StepSet pForEmptyOperations = 0;
    std::unordered_map<std::string_view, StepSet, TextHash> pListedSteps;
    struct PrefixSteps {
        std::string_view Prefix;
        StepSet Steps = 0;
    };
    std::vector<PrefixSteps> pPrefixedSteps;
};

} // namespace trident
