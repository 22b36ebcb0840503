#pragma once

#include "assembler/Directive.h"

#include <span>
#include <string_view>

namespace trident {

// equ, the redefinable set / aset / defl / dl, and predef: the row of
// `word`, or nullptr. Their labels name a value (or, for predef, nothing),
// never the address.
const Directive* FindSymbolDirective(std::string_view word);
// Whether `word` is one of the redefining forms, which share their name
// with the Z80 bit instruction set.
bool IsRedefinition(std::string_view word);
// Compatible mode's symbol-defining rows: `name = value`.
std::span<const Directive> CompatibleSymbolDirectiveTable();

} // namespace trident
