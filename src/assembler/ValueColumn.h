#pragma once

#include "symbols/Value.h"

#include <string>

namespace trident {

struct Statement;

// The value column of a listing line: the value as four upper-case
// hexadecimal digits (its low 16 bits, fractions dropped) and two spaces.
// A value that is not a number shows as 0000.
std::string ValueColumnText(const Value& value);

// Puts the value ahead of whatever the statement's value column held.
void ShowInValueColumn(Statement& statement, const Value& value);

// The integer form of a truth value: true -1 (FFFF), false 0.
Value TruthValue(bool truth);

} // namespace trident
