#include "assembler/DispatchIndex.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <stdexcept>

namespace trident {

DispatchIndex::DispatchIndex(const std::vector<std::unique_ptr<StatementHandler>>& steps) {
    if (steps.size() > MaxSteps) throw std::length_error("too many dispatch steps");
    std::vector<std::pair<std::string_view, StepSet>> words;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const StepSet step = StepSet{1} << i;
        const std::vector<std::string_view> listed = steps[i]->OperationWords();
        const std::vector<std::string_view> prefixes = steps[i]->OperationPrefixes();
        if (listed.empty() && prefixes.empty()) pUnlisted |= step;
        for (const std::string_view prefix : prefixes) {
            // A prefix longer than a packed word is compared as text.
            const std::size_t shown = std::min(prefix.size(), PackedLength);
            const std::uint64_t mask = shown == 0 ? 0 : ~std::uint64_t{0} >> (64 - 8 * shown);
            pPrefixedSteps.push_back({prefix, mask, Packed(prefix.substr(0, shown)) & mask, step});
        }
        if (steps[i]->RunsWhileSkipping()) pWhileSkipping |= step;
        if (steps[i]->TakesEmptyOperations()) pForEmptyOperations |= step;
        for (const std::string_view word : listed) words.emplace_back(word, step);
    }
    // At most half the slots in use keeps the runs of a missing word short.
    pSlots.resize(std::bit_ceil(2 * words.size() + 2));
    pSlotMask = pSlots.size() - 1;
    pSlotShift = 64 - static_cast<unsigned>(std::countr_zero(pSlots.size()));
    for (const auto& [word, step] : words) AddWord(word, step);
}

// Byte i of the word in bits 8i to 8i+7, the length in the top byte.
std::uint64_t DispatchIndex::Packed(std::string_view word) {
    const std::size_t n = word.size();
    const char* const p = word.data();
    std::uint64_t key = std::uint64_t{n} << 56;
    const auto byte = [p](std::size_t i) {
        return std::uint64_t{static_cast<unsigned char>(p[i])} << (8 * i);
    };
    if constexpr (std::endian::native == std::endian::little) {
        // Two loads that overlap in the middle instead of a loop.
        if (n >= 4) {
            std::uint32_t low = 0, high = 0;
            std::memcpy(&low, p, 4);
            std::memcpy(&high, p + n - 4, 4);
            return key | low | std::uint64_t{high} << (8 * (n - 4));
        }
        if (n > 0) key |= byte(0) | byte(n / 2) | byte(n - 1);
        return key;
    }
    for (std::size_t i = 0; i < n; ++i) key |= byte(i);
    return key;
}

std::size_t DispatchIndex::FirstSlot(std::uint64_t key) const {
    return static_cast<std::size_t>(key * 0x9E3779B97F4A7C15u >> pSlotShift);
}

void DispatchIndex::AddWord(std::string_view word, StepSet step) {
    if (word.size() > PackedLength) {
        pLongWords[word] |= step;
        return;
    }
    const std::uint64_t key = Packed(word);
    std::size_t slot = FirstSlot(key);
    while (pSlots[slot].Key != 0 && pSlots[slot].Key != key) slot = (slot + 1) & pSlotMask;
    pSlots[slot].Key = key;
    pSlots[slot].Steps |= step;
}

DispatchIndex::StepSet DispatchIndex::ListedSteps(std::uint64_t key) const {
    for (std::size_t slot = FirstSlot(key); pSlots[slot].Key != 0; slot = (slot + 1) & pSlotMask)
        if (pSlots[slot].Key == key) return pSlots[slot].Steps;
    return 0;
}

DispatchIndex::StepSet DispatchIndex::LongWordSteps(std::string_view word) const {
    StepSet steps = pUnlisted;
    if (const auto found = pLongWords.find(word); found != pLongWords.end()) steps |= found->second;
    for (const PrefixSteps& prefixed : pPrefixedSteps)
        if (word.starts_with(prefixed.Prefix)) steps |= prefixed.Steps;
    return steps;
}

DispatchIndex::StepSet DispatchIndex::StepsFor(std::string_view word) const {
    if (word.empty()) return pUnlisted;
    if (word.size() > PackedLength) return LongWordSteps(word);
    // A short word begins with a prefix exactly when the masked bits agree,
    // unless the prefix is longer than the bits show.
    const std::uint64_t key = Packed(word);
    StepSet steps = pUnlisted | ListedSteps(key);
    for (const PrefixSteps& prefixed : pPrefixedSteps)
        if ((key & prefixed.Mask) == prefixed.Bits &&
            (prefixed.Prefix.size() <= PackedLength || word.starts_with(prefixed.Prefix)))
            steps |= prefixed.Steps;
    return steps;
}

} // namespace trident
