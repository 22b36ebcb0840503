// Any bytes as the opcode table file.
#include "FuzzEntries.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    trident::fuzz::ReadOpcodeRows(std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
