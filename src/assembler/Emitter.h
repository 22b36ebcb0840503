#pragma once

#include "output/HexText.h"
#include "output/ObjectOutputs.h"
#include "source/KeptEncoding.h"
#include "source/RunState.h"
#include "symbols/Value.h"

#include <cstdint>
#include <string>

namespace trident {

// The one route of every emitted byte and word: into the run's object image
// at the location counter, to the object output writers, to the log of an
// encoding being kept, and as the listing's hex text.
class Emitter {
  public:
    explicit Emitter(RunState& state) : pState(state) {}

    // A value already reduced to its whole bits (width 8 or 16); its listing
    // text (a word low byte first, or as a number with big-endian code) is
    // appended to `text` only when `listed`.
    void EmitBits(std::uint32_t whole, int width, bool listed, std::string& text);
    std::string EmitValue(const Value& value, int width, bool listed);

    ObjectOutputs& Outputs() { return pOutputs; }
    const ObjectOutputs& Outputs() const { return pOutputs; }
    // The image from the lowest to the highest used address, gaps as zero
    // bytes; empty when nothing was emitted.
    std::string BinaryImage() const;

    // While a log is set, every emitted value is added to it.
    void LogEmissions(KeptEncoding* log) { pLog = log; }
    KeptEncoding* EmissionLog() const { return pLog; }

  private:
    void EmitByte(std::uint8_t byte);

    RunState& pState;
    ObjectOutputs pOutputs;
    KeptEncoding* pLog = nullptr;
};

// Every emitted byte passes here: inline where the run calls it.
inline void Emitter::EmitBits(std::uint32_t whole, int width, bool listed, std::string& text) {
    pOutputs.WriteBits(whole, width);
    if (pLog) pLog->AddValue(whole, width);
    const std::uint32_t word = whole & 0xFFFFu;
    const auto low = static_cast<std::uint8_t>(word & 0xFFu);
    const auto high = static_cast<std::uint8_t>(word >> 8);
    EmitByte(low);
    if (width == 16) EmitByte(high);
    // The passes before the final one list nothing: no text is made.
    if (!listed) return;
    if (width != 16) {
        AppendHexByte(text, low);
        return;
    }
    const bool bigEndian = pState.Options.BigEndianCode;
    AppendHexByte(text, bigEndian ? high : low);
    AppendHexByte(text, bigEndian ? low : high);
}

} // namespace trident
