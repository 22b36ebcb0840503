#pragma once

#include "output/Colour.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

// Text plus colour runs: what the listing and the output writers produce and
// what a front end renders or saves. Appending is amortised O(1); adjacent
// pieces of one colour share a run.
class ColouredText {
  public:
    // Twelve bytes: a listing has a run for every column of every line.
    // Texts stay far below 4 GiB (the assembler's limits see to that).
    struct Run {
        std::uint32_t Start = 0;
        std::uint32_t Length = 0;
        Colour Ink;
    };

    void Append(std::string_view text, Colour ink);
    void Clear();

    const std::string& Text() const { return pText; }
    const std::vector<Run>& Runs() const { return pRuns; }
    bool Empty() const { return pText.empty(); }
    std::size_t Size() const { return pText.size(); }

  private:
    std::string pText;
    std::vector<Run> pRuns;
};

} // namespace trident
