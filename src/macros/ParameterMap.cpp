#include "macros/ParameterMap.h"

#include "assembler/LineScanner.h"

namespace trident {

std::string ParameterMap::Key(std::string_view name) {
    return LineScanner::LowerCase(name);
}

void ParameterMap::Bind(std::string_view name, std::string text) {
    pTexts.insert_or_assign(Key(name), std::move(text));
}

const std::string* ParameterMap::Find(std::string_view name) const {
    if (pTexts.empty()) return nullptr;
    const auto found = pTexts.find(Key(name));
    return found == pTexts.end() ? nullptr : &found->second;
}

} // namespace trident
