#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace trident::testing {

// A scratch directory for one test, removed with the object.
class TempDir {
  public:
    TempDir() {
        static std::atomic<int> counter{0};
        pPath = std::filesystem::temp_directory_path() /
                ("trident-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
        std::filesystem::create_directories(pPath);
    }
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(pPath, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& Path() const { return pPath; }

    // Writes `text` byte for byte (no line-end translation) and returns the path.
    std::filesystem::path Write(std::string_view name, std::string_view text) const {
        const std::filesystem::path file = pPath / name;
        std::ofstream out(file, std::ios::binary);
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
        return file;
    }

  private:
    std::filesystem::path pPath;
};

} // namespace trident::testing
