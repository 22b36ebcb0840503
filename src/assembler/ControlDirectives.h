#pragma once

#include "assembler/Directive.h"

#include <span>

namespace trident {

// The directives that steer the run rather than emit code: org, the listing
// switch, the angle unit, the processor selection, user diagnostics, include
// files, macro libraries and end, and the accepted but unsupported title and
// segment words.
std::span<const Directive> ControlDirectiveTable();
// Compatible mode's rows, looked up before those: the era's processor,
// listing and segment words, .comment blocks, .phase and .dephase.
std::span<const Directive> CompatibleControlDirectiveTable();

} // namespace trident
