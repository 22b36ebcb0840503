#include "assembler/Emitter.h"

#include "source/RunFailure.h"

#include <algorithm>

namespace trident {

void Emitter::EmitByte(std::uint8_t byte) {
    // In a .phase block the bytes go where the real location counter is,
    // while labels and "$" count from the phase address.
    const std::int32_t address = pState.LocationCounter + pState.PhaseOffset;
    if (address < 0 || address >= RunState::ImageSize)
        throw RunFailure("address past FFFF: the program does not fit in 64 KiB");
    pState.ObjectImage[static_cast<std::size_t>(address)] = byte;
    pState.LowestAddress = std::min(pState.LowestAddress, address);
    pState.HighestAddress = std::max(pState.HighestAddress, address);
    ++pState.LocationCounter;
    ++pState.BytesEmitted;
}

std::string Emitter::EmitValue(const Value& value, int width, bool listed) {
    std::string text;
    EmitBits(WholeBits(value), width, listed, text);
    return text;
}

std::string Emitter::BinaryImage() const {
    if (pState.LowestAddress > pState.HighestAddress) return {};
    const auto first = pState.ObjectImage.begin() + pState.LowestAddress;
    const auto last = pState.ObjectImage.begin() + pState.HighestAddress + 1;
    return std::string(first, last);
}

} // namespace trident
