#pragma once

#include "assembler/StatementHandler.h"
#include "base/TextHash.h"

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
    // Operation words are short: one of up to PackedLength characters is
    // looked up as one number, its bytes below its length, in a table of
    // open addresses; longer words go through a hash map.
    static constexpr std::size_t PackedLength = 7;
    static std::uint64_t Packed(std::string_view word);
    std::size_t FirstSlot(std::uint64_t key) const;
    void AddWord(std::string_view word, StepSet step);
    StepSet ListedSteps(std::uint64_t key) const;
    StepSet LongWordSteps(std::string_view word) const;

    struct Slot {
        std::uint64_t Key = 0; // 0: empty (a packed word has a length)
        StepSet Steps = 0;
    };
    StepSet pUnlisted = 0;
    StepSet pWhileSkipping = 0;
    StepSet pForEmptyOperations = 0;
    std::vector<Slot> pSlots;
    std::size_t pSlotMask = 0;
    unsigned pSlotShift = 64;
    std::unordered_map<std::string_view, StepSet, TextHash> pLongWords;
    // A word begins with a prefix when the bits of its packed form under
    // Mask are those of the prefix.
    struct PrefixSteps {
        std::string_view Prefix;
        std::uint64_t Mask = 0;
        std::uint64_t Bits = 0;
        StepSet Steps = 0;
    };
    std::vector<PrefixSteps> pPrefixedSteps;
};

} // namespace trident
