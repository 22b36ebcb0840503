#pragma once

#include <string>
#include <string_view>

namespace trident::testing {

// The statement lines of a listing, without the reports appended after them.
inline std::string StatementLines(std::string_view listing) {
    return std::string(listing.substr(0, listing.find("\r\nStatistics\r\n")));
}

} // namespace trident::testing
