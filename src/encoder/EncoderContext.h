#pragma once

#include "source/RunState.h"
#include "source/Signedness.h"
#include "symbols/Value.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace trident {

class KeptEncoding;
class OpcodeTable;

// What the instruction encoder needs of the run it encodes for: the run's
// counters and options, the instruction set, operand values, diagnostics,
// and the one route of emitted values. The run provides it; the encoder
// knows nothing else of the run.
class EncoderContext {
  public:
    // Read on every instruction: plain references, not calls.
    RunState& State() { return pState; }
    const OpcodeTable& Opcodes() const { return pOpcodes; }

    virtual void ListError(std::string_view message, std::string_view detail,
                           bool force = false) = 0;
    virtual void ListWarning(std::string_view message, std::string_view detail,
                             bool force = false) = 0;
    // An expression's value; its faults become diagnostics of the statement.
    virtual Value Evaluate(std::string_view text) = 0;
    // An operand of `width` bits (3, 8 or 16) with the range rules: an
    // integer reduced to the width, or empty (unresolved).
    virtual Value EvaluateOperand(std::string_view text, int width,
                                  Signedness signedness = Signedness::Either,
                                  bool force = false) = 0;
    // What "$" reads from now on (the statement's address unless changed).
    virtual void SetLocation(std::int32_t address) = 0;
    // Emits a value already reduced to its whole bits (width 8 or 16),
    // appending its listing text to `text`.
    virtual void EmitBits(std::uint32_t whole, int width, std::string& text) = 0;

    // For keeping an instruction's encoding: WatchChangeable clears a flag
    // that every operand value that is not a constant (and so may differ in
    // a later pass) and every diagnostic sets; while a log is set, EmitBits
    // adds the values it emits to it.
    virtual void WatchChangeable() = 0;
    virtual bool MetChangeable() const = 0;
    virtual void LogEmissions(KeptEncoding* log) = 0;
    virtual KeptEncoding* EmissionLog() const = 0;

  protected:
    EncoderContext(RunState& state, const OpcodeTable& opcodes)
        : pState(state), pOpcodes(opcodes) {}
    ~EncoderContext() = default;
    EncoderContext(const EncoderContext&) = delete;
    EncoderContext& operator=(const EncoderContext&) = delete;

  private:
    RunState& pState;
    const OpcodeTable& pOpcodes;
};

} // namespace trident
