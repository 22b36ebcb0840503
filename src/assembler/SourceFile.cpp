#include "assembler/SourceFile.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <system_error>

namespace trident {

std::optional<SourceFile> SourceFile::Open(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    // One read of the whole file: the main file is read again in every pass.
    std::string data;
    const auto size = std::filesystem::file_size(path, error);
    if (!error) data.reserve(static_cast<std::size_t>(size));
    char buffer[1 << 16];
    while (in.read(buffer, sizeof buffer) || in.gcount() > 0)
        data.append(buffer, static_cast<std::size_t>(in.gcount()));
    if (in.bad()) return std::nullopt;
    return SourceFile(path.string(), std::move(data));
}

SourceFile SourceFile::FromText(std::string name, std::string text) {
    return SourceFile(std::move(name), std::move(text));
}

std::size_t SourceFile::NextReturn(std::size_t from) const {
    const void* found = std::memchr(pData.data() + from, '\r', pData.size() - from);
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - pData.data())
                 : pData.size();
}

} // namespace trident
