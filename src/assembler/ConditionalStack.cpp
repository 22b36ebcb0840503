#include "assembler/ConditionalStack.h"

#include "source/RunFailure.h"

#include <algorithm>
#include <string>

namespace trident {

void ConditionalStack::Reset() {
    pSkipFlags.fill(false);
    pDepth = 0;
    Recompute();
}

void ConditionalStack::Open(bool skip) {
    if (pDepth >= MaxDepth)
        throw RunFailure("conditionals nested deeper than " + std::to_string(MaxDepth) + " levels");
    ++pDepth;
    pSkipFlags[static_cast<std::size_t>(pDepth)] = skip;
    Recompute();
}

void ConditionalStack::Else() {
    bool& flag = pSkipFlags[static_cast<std::size_t>(pDepth)];
    flag = !flag;
    Recompute();
}

bool ConditionalStack::Close() {
    pSkipFlags[static_cast<std::size_t>(pDepth)] = false;
    const bool wasOpen = pDepth > 0;
    if (wasOpen) --pDepth;
    Recompute();
    return wasOpen;
}

void ConditionalStack::CloseTo(int depth) {
    while (pDepth > std::max(depth, 0)) {
        pSkipFlags[static_cast<std::size_t>(pDepth)] = false;
        --pDepth;
    }
    Recompute();
}

void ConditionalStack::Recompute() {
    const auto open = pSkipFlags.begin() + pDepth + 1;
    pSkipping = std::any_of(pSkipFlags.begin(), open, [](bool flag) { return flag; });
}

} // namespace trident
