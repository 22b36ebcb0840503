#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

class MacroContext;

// What macro arguments and repeat lists bind to their parameters.
namespace MacroArguments {

// An argument written "%expr" binds the decimal text of the expression's
// 16-bit value (0 while it is unresolved, as in a first pass before the
// symbol is defined); any other argument binds its text without the blanks
// around it.
std::string BoundText(MacroContext& run, std::string_view argument);

// The items of an irp block, from the arguments after its parameter name:
// a single list in angle brackets is opened and split on its commas, any
// other arguments are the items themselves.
std::vector<std::string> ListItems(MacroContext& run, std::span<const std::string> arguments);

// The characters of an irpc text, one item each; the text may be written in
// angle brackets, and "%expr" stands for the digits of the value.
std::vector<std::string> TextCharacters(MacroContext& run, std::string_view text);

} // namespace MacroArguments
} // namespace trident
