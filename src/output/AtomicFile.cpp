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
        const bool written =
            std::fwrite(contents.data(), 1, contents.size(), file.get()) == contents.size();
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
    std::error_code error;
    std::filesystem::rename(temporary, target, error);
    if (error) {
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
        return target.string() + ": " + error.message();
    }
    return {};
}

} // namespace trident
