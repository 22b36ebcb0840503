#pragma once

#include "assembler/Directive.h"

#include <span>

namespace trident {

// The data and storage directives: bytes and characters (db, dm, dz, dc and
// their synonyms), words (dw), reserved space (ds), single text operands
// (text, texz, texts) and IEEE 754 numbers (i3es, i3ed). Every byte goes
// through the run's EmitValue; an operand without a value in this pass emits
// 0, so a statement has the same size in every pass.
std::span<const Directive> DataDirectiveTable();
// Compatible mode's rows, looked up before those: plain dm / defm, and
// ds with a fill value.
std::span<const Directive> CompatibleDataDirectiveTable();

} // namespace trident
