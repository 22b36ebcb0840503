#pragma once

#include "output/ColouredText.h"

#include <optional>
#include <string>
#include <string_view>

namespace trident::testing {

// The statement lines of a listing, without the reports appended after them.
inline std::string StatementLines(std::string_view listing) {
    return std::string(listing.substr(0, listing.find("\r\nStatistics\r\n")));
}

// The colour of the character `skip` places into the first `piece` of
// `text`; nothing when there is no such piece or no run covers it.
inline std::optional<Colour> InkOf(const ColouredText& text, std::string_view piece,
                                   std::size_t skip = 0) {
    std::size_t at = text.Text().find(piece);
    if (at == std::string_view::npos) return std::nullopt;
    at += skip;
    for (const ColouredText::Run& run : text.Runs())
        if (at >= run.Start && at < run.Start + run.Length) return run.Ink;
    return std::nullopt;
}

} // namespace trident::testing
