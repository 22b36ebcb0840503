#pragma once

#include "expression/AngleUnit.h"
#include "expression/ErrorList.h"
#include "expression/NumericValue.h"
#include "symbols/Value.h"

#include <optional>
#include <string_view>

namespace trident::expr {

// What a built-in function sees of its call.
struct FunctionCall {
    Number X;       // the argument
    AngleUnit Unit; // angle unit of the trigonometric functions
    ErrorList& Errors;
};

// One built-in function, called as its name immediately followed by "(".
// The handler gives nothing when the function is undefined for the argument.
struct BuiltinFunction {
    std::string_view Name;
    std::optional<Value> (*Apply)(const FunctionCall& call);
};

// The function of the name, case-blind; nothing for an unknown name.
const BuiltinFunction* FindFunction(std::string_view name);

// Calls a function on an argument value. An empty argument gives an empty
// result; a string argument is an invalid operand; an argument outside the
// function's domain, or a result that is no finite number, is an invalid
// math operation. Faults carry the function name as the extra string.
Value CallFunction(const BuiltinFunction& function, const Value& argument, AngleUnit unit,
                   ErrorList& errors);

} // namespace trident::expr
