#include "encoder/OpcodeTablePlace.h"

namespace trident {

namespace {

constexpr const char* TableName = "OpTable.def";

} // namespace

std::array<std::filesystem::path, 2>
OpcodeTablePlaces(const std::filesystem::path& programDirectory) {
    return {programDirectory / TableName,
            (programDirectory / ".." / "share" / "trident" / TableName).lexically_normal()};
}

std::filesystem::path FindOpcodeTable(const std::filesystem::path& programDirectory) {
    const auto places = OpcodeTablePlaces(programDirectory);
    for (const auto& place : places) {
        std::error_code error;
        if (std::filesystem::is_regular_file(place, error)) return place;
    }
    return places.front();
}

} // namespace trident
