#pragma once

#include "expression/ErrorList.h"
#include "expression/OperatorTable.h"
#include "symbols/Value.h"

#include <string_view>

namespace trident::expr {

// Applies a binary operator to its left (a) and right (b) operand. An empty
// operand (a name not resolved in this pass) makes the result empty without
// a further error; faults are recorded with the operator text as the extra
// string and give an empty result.
Value ApplyBinary(const BinaryOperator& op, const Value& a, const Value& b, ErrorList& errors);

// Applies a prefix operator, written as text, to its operand.
Value ApplyPrefix(const PrefixOperator& op, const Value& x, ErrorList& errors);

} // namespace trident::expr
