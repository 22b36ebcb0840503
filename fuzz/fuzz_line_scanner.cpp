// Any bytes as one source line.
#include "FuzzEntries.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    trident::fuzz::ScanLine(std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
