#include "macros/MacroTable.h"

#include "base/Text.h"

#include <algorithm>

namespace trident {
namespace {

bool IsLineEnd(char c) {
    return c == '\r' || c == '\n';
}

} // namespace

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

bool MacroTable::Delete(std::string_view name) {
    const std::string key = Key(name);
    if (pBodies.erase(key) > 0) {
        const auto stored = std::find_if(pOrder.begin(), pOrder.end(),
                                         [&](const std::string& n) { return Key(n) == key; });
        if (stored != pOrder.end()) pOrder.erase(stored);
    }
    return true;
}

std::string MacroTable::GetLine(std::string_view name) {
    return ReadLine(name, MacroDefinition(name));
}

std::string MacroTable::GetLine(int entryNumber) {
    const bool known = entryNumber >= 1 && static_cast<std::size_t>(entryNumber) <= pOrder.size();
    static const std::string none;
    const std::string& body =
        known ? MacroDefinition(pOrder[static_cast<std::size_t>(entryNumber - 1)]) : none;
    return ReadLine(std::to_string(entryNumber), body);
}

std::string MacroTable::ReadLine(std::string_view key, const std::string& body) {
    if (key != pMacroName) {
        pMacroName = key;
        pReadPosition = 0;
        pMacroDefStr = body;
    }
    const std::size_t length = pMacroDefStr.size();
    std::string line;
    // Stops one short of the end: a body without a final line end keeps its
    // last character to itself.
    while (pReadPosition + 1 < length && !IsLineEnd(pMacroDefStr[pReadPosition]))
        line += pMacroDefStr[pReadPosition++];
    while (pReadPosition < length && IsLineEnd(pMacroDefStr[pReadPosition]))
        line += pMacroDefStr[pReadPosition++];
    return line;
}

} // namespace trident
