#pragma once

#include "source/SourceStatement.h"

#include <string_view>

namespace trident {

class Assembly;
struct Statement;

// The IF family, else and endif. They are executed in every state, so that
// levels opened inside a skipped region pair with their own else and endif;
// the levels themselves live in the run's ConditionalStack.
bool IsConditional(std::string_view word);
// Exactly one of the conditional words (IsConditional takes any word that
// begins with "if").
bool IsConditionalWord(std::string_view word);
// Compatible mode adds the Microsoft-style forms (ife, if2, ifb, ifnb,
// ifidn, ifdif) and reads `if` as "not zero".
void ExecuteConditional(Assembly& run, Statement& statement, Dialect dialect);

} // namespace trident
