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
    virtual RunState& State() = 0;
    virtual const OpcodeTable& Opcodes() const = 0;
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
    // Emits a value already reduced to its whole bits (width 8 or 16),
    // appending its listing text to `text`.
    virtual void EmitBits(std::uint32_t whole, int width, std::string& text) = 0;

    // For keeping an instruction's encoding: counts that grow with every
    // operand value that is not a constant (and so may differ in a later
    // pass), and with that or any diagnostic raised; and the log that
    // EmitBits adds the values it emits to while one is set.
    virtual std::uint64_t VariableValues() const = 0;
    virtual std::uint64_t ChangeableEvents() const = 0;
    virtual void LogEmissions(KeptEncoding* log) = 0;
    virtual KeptEncoding* EmissionLog() const = 0;

  protected:
    ~EncoderContext() = default;
};

} // namespace trident
