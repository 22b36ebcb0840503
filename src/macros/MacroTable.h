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
    bool Contains(std::string_view name) const { return pBodies.contains(Key(name)); }
    // Names in storing order, as they were written when stored.
    const std::vector<std::string>& Names() const { return pOrder; }

  private:
    static std::string Key(std::string_view name);
    void Delete(std::string_view name);

    std::unordered_map<std::string, std::string> pBodies;
    std::vector<std::string> pOrder;
};

} // namespace trident
