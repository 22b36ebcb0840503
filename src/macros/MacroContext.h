#pragma once

#include "macros/ExpansionLevel.h"
#include "source/RunState.h"
#include "source/Signedness.h"
#include "symbols/Value.h"

#include <string_view>
#include <vector>

namespace trident {

class MacroTable;

// What the macro processor needs of the run: its counters and options, the
// macro table, the open expansions and conditional levels, operand values
// and diagnostics. The run provides it; the processor knows nothing else of
// the run.
class MacroContext {
  public:
    virtual const RunState& State() const = 0;
    virtual MacroTable& Macros() = 0;
    virtual void ListError(std::string_view message, std::string_view detail,
                           bool force = false) = 0;
    virtual void ListWarning(std::string_view message, std::string_view detail,
                             bool force = false) = 0;
    virtual Value EvaluateOperand(std::string_view text, int width,
                                  Signedness signedness = Signedness::Either,
                                  bool force = false) = 0;
    // Ends the pass and the assembly: the value needed now is not resolved.
    virtual void TerminalStop(std::string_view detail) = 0;

    // The macro and repeat expansions being read, innermost last.
    virtual int MacroDepth() const = 0;
    virtual std::vector<ExpansionLevel>& Expansions() = 0;
    virtual void PushExpansion(ExpansionLevel level) = 0;
    // The open conditional levels: an expansion closes those it opened.
    virtual int ConditionalDepth() const = 0;
    virtual void CloseConditionalsTo(int depth) = 0;

  protected:
    ~MacroContext() = default;
};

} // namespace trident
