#include "output/AtomicFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <system_error>

namespace trident {
namespace {

// Closes the stream on every path out of the save.
struct FileCloser {
    void operator()(std::FILE* file) const {
        if (file) std::fclose(file);
    }
};

std::string Reason(const std::filesystem::path& path) {
    return path.string() + ": " + std::strerror(errno);
}

} // namespace

std::string WriteFileAtomically(const std::filesystem::path& target, std::string_view contents) {
    std::filesystem::path temporary = target;
    temporary += ".tmp~";
    {
        std::unique_ptr<std::FILE, FileCloser> file(std::fopen(temporary.c_str(), "wb"));
        if (!file) return Reason(temporary);
        // An empty view may carry no buffer at all, and fwrite wants one.
        const bool written = contents.empty() || std::fwrite(contents.data(), 1, contents.size(),
                                                             file.get()) == contents.size();
        const bool flushed = std::fflush(file.get()) == 0;
        std::FILE* raw = file.release();
        const bool closed = std::fclose(raw) == 0;
        if (!written || !flushed || !closed) {
            std::string reason = Reason(target);
            std::error_code ignored;
            std::filesystem::remove(temporary, ignored);
            return reason;
        }
    }
    // The finished file takes the target's place. The old file is removed
    // first: renaming over an existing file makes ext4 write the new data
    // out at once (its guard for programs that do not sync), which costs
    // more than the whole assembly of a large listing. A failed write above
    // has left the old file alone either way.
    // (A directory in the way stays, and the rename below reports it.)
    std::error_code error;
    if (!std::filesystem::is_directory(std::filesystem::symlink_status(target, error)))
        std::filesystem::remove(target, error);
    error.clear();
    std::filesystem::rename(temporary, target, error);
    if (error) {
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
        return target.string() + ": " + error.message();
    }
    return {};
}

} // namespace trident
