#pragma once

#include "source/StatementMemo.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace trident {

// The operand entries of the kept statements' memos: runs of entries in
// blocks that never move, so that a memo points at its run, taken one after
// the other as the first pass meets the statements and dropped all at once.
class OperandMemoStore {
  public:
    std::span<StatementMemo::Operand> Take(std::size_t count) {
        if (count > pFree) {
            pFree = std::max(count, BlockSize);
            pBlocks.push_back(std::make_unique_for_overwrite<StatementMemo::Operand[]>(pFree));
            pNext = pBlocks.back().get();
        }
        const std::span<StatementMemo::Operand> run(pNext, count);
        pNext += count;
        pFree -= count;
        return run;
    }

    void Clear() {
        pBlocks.clear();
        pNext = nullptr;
        pFree = 0;
    }

  private:
    static constexpr std::size_t BlockSize = 2048;

    std::vector<std::unique_ptr<StatementMemo::Operand[]>> pBlocks;
    StatementMemo::Operand* pNext = nullptr; // the first entry not yet taken
    std::size_t pFree = 0;                   // entries from pNext to the block's end
};

} // namespace trident
