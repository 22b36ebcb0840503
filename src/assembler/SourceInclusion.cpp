// Finding and opening include files and macro libraries.
#include "assembler/Assembly.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>

namespace trident {
namespace {

// Many sources were written on systems that separate directories with a
// backslash; it separates them here too.
std::filesystem::path SourcePath(std::string_view name) {
    std::string text(name);
    std::replace(text.begin(), text.end(), '\\', '/');
    return std::filesystem::path(text);
}

// The name as written (relative to the current directory, or absolute),
// then beside the file that holds the directive, then in the directory the
// user chose for such files.
std::optional<SourceFile> FindSourceFile(std::string_view name, std::string_view includingFile,
                                         std::string_view chosenDirectory) {
    if (name.empty()) return std::nullopt;
    const std::filesystem::path path = SourcePath(name);
    const std::array<std::filesystem::path, 3> candidates{
        path,
        includingFile.empty() ? std::filesystem::path{}
                              : SourcePath(includingFile).parent_path() / path,
        chosenDirectory.empty() ? std::filesystem::path{} : SourcePath(chosenDirectory) / path,
    };
    for (const std::filesystem::path& candidate : candidates) {
        if (candidate.empty()) continue;
        if (std::optional<SourceFile> file = SourceFile::Open(candidate)) return file;
    }
    return std::nullopt;
}

} // namespace

bool Assembly::OpenInclude(std::string_view name) {
    std::optional<SourceFile> file =
        FindSourceFile(name, CurrentPosition().File, pState.Options.IncludeDirectory);
    if (!file) return false;
    pIncludeFiles.push_back(std::move(*file));
    pState.IncludeDepth = static_cast<std::int32_t>(pIncludeFiles.size());
    return true;
}

bool Assembly::OpenMaclib(std::string_view name) {
    std::optional<SourceFile> file =
        FindSourceFile(name, CurrentPosition().File, pState.Options.MaclibDirectory);
    if (!file) return false;
    pMaclib = std::move(file);
    pState.MaclibOpen = true;
    RecomputeListThisLine();
    return true;
}

} // namespace trident
