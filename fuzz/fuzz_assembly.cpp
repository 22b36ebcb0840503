// Any bytes as a whole source file, assembled with the built opcode table in
// a scratch directory of its own, which is also the current directory: the
// source is written there and include files and macro libraries are found
// there.
#include "FuzzEntries.h"

#include <cstdlib>
#include <unistd.h>

namespace {

std::filesystem::path& Scratch() {
    static std::filesystem::path scratch;
    return scratch;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    char scratch[] = "/tmp/trident-fuzz-XXXXXX";
    if (::mkdtemp(scratch) == nullptr || ::chdir(scratch) != 0) std::abort();
    Scratch() = scratch;
    std::atexit([] {
        std::error_code ignored;
        std::filesystem::remove_all(Scratch(), ignored);
    });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    // An input that could open files outside the scratch directory is not
    // run, and not kept in the corpus.
    if (!trident::fuzz::StaysInScratch(text)) return -1;
    trident::fuzz::AssembleSource(Scratch(), text, TRIDENT_OPCODE_TABLE);
    return 0;
}
