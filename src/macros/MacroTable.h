#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace trident {

// The body of every macro of the assembly, keyed by name without regard to
// case. It lives through all passes, so a macro defined in pass 1 is known at
// the top of pass 2. A body is the definition's lines, each ending in CR LF.
class MacroTable {
  public:
    // Stores `body` under `name`; an earlier body of that name is removed and
    // the new entry goes to the end of the storing order.
    void SetMacroDefinition(std::string_view name, std::string body);
    // The body stored under `name`, or the empty string.
    const std::string& MacroDefinition(std::string_view name) const;
    // Removes the entry if there is one; always true.
    bool Delete(std::string_view name);

    // The next line of a stored body, with its line end (a run of line ends
    // stays with the line before it). The key is a name or a 1-based entry
    // number in storing order. The read position survives between calls and
    // restarts only when the key changes; the last character of a body that
    // does not end in a line end is never returned.
    std::string GetLine(std::string_view name);
    std::string GetLine(int entryNumber);

    std::size_t Count() const { return pOrder.size(); }
    // Names in storing order, as they were written when stored.
    const std::vector<std::string>& Names() const { return pOrder; }

  private:
    static std::string Key(std::string_view name);
    std::string ReadLine(std::string_view key, const std::string& body);

    std::unordered_map<std::string, std::string> pBodies;
    std::vector<std::string> pOrder;
    std::string pMacroName;
    std::string pMacroDefStr;
    std::size_t pReadPosition = 0;
};

} // namespace trident
