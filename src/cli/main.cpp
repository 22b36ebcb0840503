// trident-asm: the batch front end of the assembler, for scripts and builds.
#include "cli/BatchTool.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <string>

namespace {

std::string VersionText() {
    return "trident-asm " + std::to_string(TRIDENT_VERSION_MAJOR) + "." +
           std::to_string(TRIDENT_VERSION_MINOR) + "." + std::to_string(TRIDENT_VERSION_PATCH);
}

// The opcode table lies beside the program, wherever it was started from.
std::string DefaultOpcodeTable(const char* argv0) {
    std::error_code error;
    std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) program = std::filesystem::absolute(argv0, error);
    return (program.parent_path() / "OpTable.def").string();
}

} // namespace

int main(int argc, char** argv) {
    trident::BatchOptions options;
    options.Run.OpcodeTableFile = DefaultOpcodeTable(argv[0]);
    CLI::App app{"Cross-assembler for the 8080, Z80 and Z180", "trident-asm"};
    app.set_version_flag("--version", VersionText());
    app.add_option("SOURCE", options.Source, "Assembler source file")->required();
    app.add_option("--listing", options.ListingFile, "Write the listing to FILE")
        ->type_name("FILE");
    app.add_option("--optable", options.Run.OpcodeTableFile, "Read the opcode table from FILE")
        ->type_name("FILE");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        const int code = app.exit(e);
        return code == 0 ? 0 : static_cast<int>(trident::ExitStatus::RunFailed);
    }
    return static_cast<int>(trident::RunBatch(options, std::cout, std::cerr));
}
