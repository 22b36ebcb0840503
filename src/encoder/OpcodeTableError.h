#pragma once

#include <stdexcept>
#include <string>

namespace trident {

// Why the opcode table could not be loaded. Without the table no assembly
// starts; the user sees Message() in a message box.
class OpcodeTableError : public std::runtime_error {
  public:
    // Numbers of the faults found in the file's text; a file that cannot be
    // opened or read carries the system's error number instead.
    static constexpr int RowCutShort = 1001;
    static constexpr int NotANumber = 1002;
    static constexpr int OutOfRange = 1003;

    OpcodeTableError(int number, std::string component, std::string description);

    int Number() const { return pNumber; }
    const std::string& Component() const { return pComponent; }
    const std::string& Description() const { return pDescription; }
    // The whole text shown to the user.
    std::string Message() const;

  private:
    int pNumber;
    std::string pComponent;
    std::string pDescription;
};

} // namespace trident
