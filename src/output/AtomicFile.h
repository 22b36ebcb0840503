#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace trident {

// Writes `contents` to a temporary file beside `target` and renames it over
// the target, so that a failed save never destroys an existing file. Returns
// an empty string on success, otherwise the reason.
std::string WriteFileAtomically(const std::filesystem::path& target, std::string_view contents);

} // namespace trident
