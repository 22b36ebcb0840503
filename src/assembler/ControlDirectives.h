#pragma once

#include "assembler/Directive.h"

#include <span>
#include <string_view>

namespace trident {

// The directives that steer the run rather than emit code: org, the listing
// switch, the angle unit, the processor selection, user diagnostics, include
// files, macro libraries and end, and the accepted but unsupported title and
// segment words.
std::span<const Directive> ControlDirectiveTable();
// Opens an include file for the lines that follow (include, .in, and
// Intel's $INCLUDE control line); an error when it cannot.
void IncludeFile(Assembly& run, std::string_view name);
// Compatible mode's rows, looked up before those: the era's processor,
// listing and segment words, .comment blocks, .phase and .dephase.
std::span<const Directive> CompatibleControlDirectiveTable();

} // namespace trident
