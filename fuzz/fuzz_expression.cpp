// Any bytes as an expression and a literal: the first byte picks the
// evaluator's settings, the rest is the text.
#include "FuzzEntries.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    trident::fuzz::EvaluateText(
        data[0], std::string_view(reinterpret_cast<const char*>(data + 1), size - 1));
    return 0;
}
