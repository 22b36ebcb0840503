#pragma once

#include <string>

namespace trident::testing {

// The statement lines of a listing, without the reports appended after them.
inline std::string StatementLines(const std::string& listing) {
    const std::size_t reports = listing.find("\r\nStatistics\r\n");
    return reports == std::string::npos ? listing : listing.substr(0, reports);
}

} // namespace trident::testing
