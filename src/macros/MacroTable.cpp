#include "macros/MacroTable.h"

#include "base/Text.h"

#include <algorithm>

namespace trident {

std::string MacroTable::Key(std::string_view name) {
    return LowerCase(name);
}

void MacroTable::SetMacroDefinition(std::string_view name, std::string body) {
    Delete(name);
    pBodies.emplace(Key(name), std::move(body));
    pOrder.emplace_back(name);
}

const std::string& MacroTable::MacroDefinition(std::string_view name) const {
    static const std::string none;
    const auto found = pBodies.find(Key(name));
    return found == pBodies.end() ? none : found->second;
}

void MacroTable::Delete(std::string_view name) {
    const std::string key = Key(name);
    if (pBodies.erase(key) > 0) {
        const auto stored = std::find_if(pOrder.begin(), pOrder.end(),
                                         [&](const std::string& n) { return Key(n) == key; });
        if (stored != pOrder.end()) pOrder.erase(stored);
    }
}

} // namespace trident
