#pragma once

#include <array>
#include <filesystem>

namespace trident {

// Where a program looks for OpTable.def when none is named: beside itself,
// as in a build tree, then in ../share/trident/ from there, as installed.
std::array<std::filesystem::path, 2>
OpcodeTablePlaces(const std::filesystem::path& programDirectory);

// The first of OpcodeTablePlaces that holds a file; when none does, the one
// beside the program, so that the failed read names the usual place.
std::filesystem::path FindOpcodeTable(const std::filesystem::path& programDirectory);

} // namespace trident
