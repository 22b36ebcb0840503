#pragma once

#include "expression/BuiltinFunctions.h"
#include "expression/EvalError.h"
#include "expression/OperatorTable.h"
#include "symbols/SymbolTable.h"
#include "symbols/Value.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace trident::expr {

enum class StepKind : std::uint8_t {
    Constant, // push Constants[Index]
    Literal,  // push the conversion of Texts[Index], recording its faults again
    Name,     // push the value of Names[Index]
    Prefix,   // apply Prefix to the top value
    Binary,   // replace the two top values by Binary applied to them
    Call,     // apply Function to the top value; an unknown function empties it
    Report,   // record Fault with Texts[Index] as the extra string, and go on
    Fail,     // record Fault with Texts[Index]; the expression has no value
};

struct Step {
    StepKind Kind;
    EvalError Fault = EvalError::None;
    std::uint32_t Index = 0;
    const BinaryOperator* Binary = nullptr;
    const PrefixOperator* Prefix = nullptr;
    const BuiltinFunction* Function = nullptr;
};

// An expression text translated once: the operand values and operator
// applications in the order a left-to-right reading performs them, so that
// running the steps on a value stack looks names up, applies operators and
// records faults exactly as reading the text again would. Literals are
// converted already, unless converting them records a fault.
struct Program {
    std::vector<Step> Steps;
    std::vector<Value> Constants;
    std::vector<SymbolName> Names;
    std::vector<std::string> Texts;

    void Clear() {
        Steps.clear();
        Constants.clear();
        Names.clear();
        Texts.clear();
    }

    // About the memory the program holds, for bounding a cache of programs.
    std::size_t Footprint() const {
        std::size_t bytes = sizeof(Program) + Steps.size() * sizeof(Step) +
                            Constants.size() * sizeof(Value) + Names.size() * sizeof(SymbolName);
        for (const Value& constant : Constants) {
            if (const auto* text = std::get_if<std::string>(&constant)) bytes += text->size();
        }
        for (const SymbolName& name : Names) bytes += 2 * name.Text().size();
        for (const std::string& text : Texts) bytes += sizeof(std::string) + text.size();
        return bytes;
    }
};

} // namespace trident::expr
