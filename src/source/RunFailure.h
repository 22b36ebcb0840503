#pragma once

#include <stdexcept>
#include <string>

namespace trident {

// A failure of the whole run: a fixed limit of the assembler was passed
// (statements on a line, operands, addresses, nesting). The pass driver
// catches it, names the source line, and ends the assembly.
class RunFailure : public std::runtime_error {
  public:
    explicit RunFailure(const std::string& message) : std::runtime_error(message) {}
};

// A budget of the work one source may cause was spent (lines read, the
// length of an expanded line, the text of the open expansions): the source
// grows without end. The run ends as at a terminal stop, with an error on
// the line that passed it.
class LimitReached : public RunFailure {
  public:
    explicit LimitReached(const std::string& message) : RunFailure(message) {}
};

} // namespace trident
