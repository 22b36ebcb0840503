#include "macros/ParameterMap.h"

#include "assembler/LineScanner.h"

#include <array>

namespace trident {
namespace {

char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

std::string ParameterMap::Key(std::string_view name) {
    return LineScanner::LowerCase(name);
}

void ParameterMap::Bind(std::string_view name, std::string text) {
    pTexts.insert_or_assign(Key(name), std::move(text));
}

const std::string* ParameterMap::Find(std::string_view name) const {
    if (pTexts.empty()) return nullptr;
    // Names are short; a longer word is lowered into a string.
    std::array<char, 32> buffer;
    std::string longName;
    std::string_view key;
    if (name.size() <= buffer.size()) {
        for (std::size_t i = 0; i < name.size(); ++i) buffer[i] = LowerAscii(name[i]);
        key = std::string_view(buffer.data(), name.size());
    } else {
        longName = Key(name);
        key = longName;
    }
    const auto found = pTexts.find(key);
    return found == pTexts.end() ? nullptr : &found->second;
}

} // namespace trident
