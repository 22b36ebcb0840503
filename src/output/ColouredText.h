#pragma once

#include "output/Colour.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <span>
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

    // One coloured piece of a line or record appended in one go.
    struct Piece {
        std::string_view Text;
        Colour Ink;
    };

    void Append(std::string_view text, Colour ink) {
        if (text.empty()) return;
        Paint(pUsed, text.size(), ink);
        std::memcpy(Grow(text.size()), text.data(), text.size());
    }
    // A whole line or record in one call, its pieces in order: the text
    // grows once (see ColouredLine for lines composed in place).
    void Append(std::span<const Piece> pieces);
    void Append(std::initializer_list<Piece> pieces) {
        Append(std::span<const Piece>(pieces.begin(), pieces.size()));
    }
    void Clear();
    // Whether pieces appended from now on keep their colours. A caller that
    // only saves plain text does without the runs (a listing has several a
    // line).
    void KeepColours(bool keep) { pKeepsColours = keep; }
    bool KeepsColours() const { return pKeepsColours; }
    // Room for `size` characters of text: a text that grows by doubling
    // copies itself, each time onto fresh memory.
    void Reserve(std::size_t size);

    // `length` more characters at the end, for the caller to fill in place
    // (through ColouredLine), and their colours painted with Paint.
    char* Grow(std::size_t length) {
        if (length > pCapacity - pUsed)
            Reserve(std::max({2 * pCapacity, pUsed + length, MinimumRoom}));
        char* const at = pStore.get() + pUsed;
        pUsed += length;
        return at;
    }
    // Colours `length` characters from `start`, where the last run ends;
    // adjacent pieces of one colour share a run. Nothing while the text
    // keeps no colours.
    void Paint(std::size_t start, std::size_t length, Colour ink) {
        if (length == 0 || !pKeepsColours) return;
        if (!pRuns.empty() && pRuns.back().Ink == ink)
            pRuns.back().Length += static_cast<std::uint32_t>(length);
        else
            pRuns.push_back(
                Run{static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(length), ink});
    }

    std::string_view Text() const { return {pStore.get(), pUsed}; }
    const std::vector<Run>& Runs() const { return pRuns; }
    bool Empty() const { return pUsed == 0; }
    std::size_t Size() const { return pUsed; }

  private:
    static constexpr std::size_t MinimumRoom = 256;

    // The text is the first pUsed of the pCapacity characters of pStore.
    // Room is made without clearing it, since every character of a line
    // written in place is stored once, by the line.
    std::unique_ptr<char[]> pStore;
    std::size_t pCapacity = 0;
    std::size_t pUsed = 0;
    std::vector<Run> pRuns;
    bool pKeepsColours = true;
};

} // namespace trident
