// trident-asm: the batch front end of the assembler, for scripts and builds.
#include "cli/BatchTool.h"
#include "encoder/OpcodeTablePlace.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <string>

#ifdef __GLIBC__
#include <cstdint>
#include <cstdlib>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace {

// The run builds its texts by growing large buffers. By default each large
// block is mapped on its own and unmapped when it grows, so every growth
// starts again on fresh pages, each costing the kernel a fault; kept in the
// heap, freed blocks are reused. The process ends after one run, so nothing
// is gained by giving memory back early either.
//
// The heap is also grown in one large step and offered to the kernel for
// huge pages: a run touches tens of megabytes once, and faulting them in
// 4 KiB at a time costs more than a quarter of the run. Where huge pages are
// not to be had the advice is simply not taken.
void PrepareHeap() {
#ifdef __GLIBC__
    constexpr int Limit = 1 << 30;
    mallopt(M_MMAP_THRESHOLD, Limit);
    mallopt(M_TRIM_THRESHOLD, Limit);
    constexpr std::size_t Step = std::size_t{64} << 20;
    constexpr std::uintptr_t HugePage = std::uintptr_t{2} << 20;
    // A block of the step's size extends the heap; freed, it stays there,
    // untouched, for the run's buffers.
    void* step = std::malloc(Step);
    if (!step) return;
    const auto begin = reinterpret_cast<std::uintptr_t>(step);
    const auto end = reinterpret_cast<std::uintptr_t>(sbrk(0));
    const std::uintptr_t from = (begin + HugePage - 1) & ~(HugePage - 1);
    if (end > from) madvise(reinterpret_cast<void*>(from), end - from, MADV_HUGEPAGE);
    std::free(step);
#endif
}

std::string VersionText() {
    return "trident-asm " + std::to_string(TRIDENT_VERSION_MAJOR) + "." +
           std::to_string(TRIDENT_VERSION_MINOR) + "." + std::to_string(TRIDENT_VERSION_PATCH);
}

// The opcode table is found from where the program lies, wherever it was
// started from: beside it in a build tree, in share/trident/ when installed.
std::string DefaultOpcodeTable(const char* argv0) {
    std::error_code error;
    std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) program = std::filesystem::absolute(argv0, error);
    return trident::FindOpcodeTable(program.parent_path()).string();
}

void AddOptions(CLI::App& app, trident::BatchOptions& options) {
    trident::RunOptions& run = options.Run;
    app.add_option("SOURCE", options.Source, "Assembler source file")->required();
    // Outputs: each is written only when asked for.
    app.add_option("--listing", options.ListingFile, "Write the listing to FILE (default: NAME.ls)")
        ->type_name("FILE");
    app.add_option("--hex", options.HexFile, "Write Intel HEX to FILE")->type_name("FILE");
    app.add_option("--srec", options.SrecFile, "Write Motorola S-records to FILE")
        ->type_name("FILE");
    app.add_option("--loader", options.LoaderFile, "Write the monitor loader text to FILE")
        ->type_name("FILE");
    app.add_option("--loader-style", run.Loader, "Loader dialect: sde or ddt (default ddt)")
        ->transform(CLI::CheckedTransformer(
            std::map<std::string, trident::LoaderStyle>{{"sde", trident::LoaderStyle::Sde},
                                                        {"ddt", trident::LoaderStyle::Ddt}},
            CLI::ignore_case));
    app.add_option("--bin", options.BinaryFile, "Write the binary image to FILE")
        ->type_name("FILE");
    app.add_option("--symbols", options.SymbolsFile, "Write the symbols as NAME EQU 0XXXXH to FILE")
        ->type_name("FILE");
    app.add_option("--depfile", options.DepFile,
                   "Write a make rule: the outputs depend on every file read")
        ->type_name("FILE");
    app.add_flag("--keep-outputs", options.KeepOutputs,
                 "Write object outputs even when the assembly reports errors");
    app.add_flag("--standard-records", run.StandardRecords,
                 "Intel HEX end-of-file record (type 01) and S-record header (S0)");
    app.add_flag("--rtf", options.Rtf, "Write text outputs as RTF, with their colours");
    app.add_option("-D,--define", run.Defines, "Define NAME (as 1, or as VALUE) before the source")
        ->type_name("NAME[=VALUE]")
        ->allow_extra_args(false);
    // The window's option boxes.
    app.add_flag("--big-endian", run.BigEndianCode, "List 16-bit values high byte first");
    app.add_flag("--strip-parity", run.StripParity, "Clear bit 7 of every source character");
    app.add_flag("--compatible", run.CompatibleMode,
                 "Read CP/M-era sources as their own assemblers did");
    app.add_flag("--dw-text-order", run.WordStringsInTextOrder,
                 "dw stores a two-character string in text order ('AB' as 41 42)");
    app.add_flag("--list-macro-definitions", run.ListMacroDefinitions,
                 "List the lines of macro definitions");
    app.add_flag("--list-macro-expansions", run.ListMacroExpansions,
                 "List the lines of macro expansions");
    app.add_flag("--list-maclibs", run.ListMacLibs, "List the lines of macro libraries");
    app.add_flag("--case-sensitive", run.CaseSensitiveSymbols, "Symbol names are case-sensitive");
    app.add_flag("--z180", run.Z180, "Z180 processor: no Z180 warnings");
    app.add_flag("--no-z80-warnings", run.Z80, "No Z80 or index-register warnings");
    app.add_flag("--zilog", run.ZilogMnemonics, "Read instructions in Zilog notation");
    app.add_flag("--list-all-passes", run.ListAllPasses,
                 "List and report every pass (for testing the assembler)");
    app.add_option("--include-dir", run.IncludeDirectory, "Look for include files in DIR")
        ->type_name("DIR");
    app.add_option("--maclib-dir", run.MaclibDirectory, "Look for macro libraries in DIR")
        ->type_name("DIR");
    app.add_option("--optable", run.OpcodeTableFile, "Read the opcode table from FILE")
        ->type_name("FILE");
    app.add_option("--max-lines", run.MaxLinesPerPass,
                   "Fail when one pass reads more than N source lines (default 10000000)")
        ->type_name("N")
        ->check(CLI::PositiveNumber);
    app.add_flag("--quiet", options.Quiet, "Print only diagnostics");
}

} // namespace

int main(int argc, char** argv) {
    PrepareHeap();
    trident::BatchOptions options;
    options.Run.OpcodeTableFile = DefaultOpcodeTable(argv[0]);
    CLI::App app{"Cross-assembler for the 8080, Z80 and Z180", "trident-asm"};
    app.set_version_flag("--version", VersionText());
    AddOptions(app, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        const int code = app.exit(e);
        return code == 0 ? 0 : static_cast<int>(trident::ExitStatus::RunFailed);
    }
    return static_cast<int>(trident::RunBatch(options, std::cout, std::cerr));
}
