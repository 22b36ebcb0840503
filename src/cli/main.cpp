// trident-asm: the batch front end of the assembler, for scripts and builds.
#include "cli/BatchTool.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

namespace {

std::string VersionText() {
    return "trident-asm " + std::to_string(TRIDENT_VERSION_MAJOR) + "." +
           std::to_string(TRIDENT_VERSION_MINOR) + "." + std::to_string(TRIDENT_VERSION_PATCH);
}

} // namespace

int main(int argc, char** argv) {
    trident::BatchOptions options;
    CLI::App app{"Cross-assembler for the 8080, Z80 and Z180", "trident-asm"};
    app.set_version_flag("--version", VersionText());
    app.add_option("SOURCE", options.Source, "Assembler source file")->required();
    app.add_option("--listing", options.ListingFile, "Write the listing to FILE")
        ->type_name("FILE");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        const int code = app.exit(e);
        return code == 0 ? 0 : static_cast<int>(trident::ExitStatus::RunFailed);
    }
    return static_cast<int>(trident::RunBatch(options, std::cout, std::cerr));
}
