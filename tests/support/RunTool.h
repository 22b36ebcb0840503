#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>

namespace trident::testing {

struct ToolResult {
    int Exit = -1;
    std::string Out;
    std::string Err;
};

inline std::string ReadWholeFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// Runs the batch tool from the build tree with `arguments` (already quoted
// for the shell) and collects its exit status and both output streams.
inline ToolResult RunTool(const std::string& arguments, const std::filesystem::path& scratch) {
    const std::filesystem::path out = scratch / "stdout.txt";
    const std::filesystem::path err = scratch / "stderr.txt";
    const std::string command = std::string("'") + TRIDENT_BIN_DIR + "/trident-asm' " + arguments +
                                " >'" + out.string() + "' 2>'" + err.string() + "'";
    const int status = std::system(command.c_str());
    ToolResult result;
    result.Exit = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.Out = ReadWholeFile(out);
    result.Err = ReadWholeFile(err);
    return result;
}

inline std::string Quoted(const std::filesystem::path& path) {
    // Appended, not "'" + path.string(): GCC 12 at -O3 reports a false -Wrestrict there.
    return std::string("'").append(path.string()).append("'");
}

} // namespace trident::testing
