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

} // namespace trident
