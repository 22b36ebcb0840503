#include "macros/ParameterMap.h"

#include "base/Text.h"

#include <array>

namespace trident {
namespace {} // namespace

void ParameterMap::Bind(std::string_view name, std::string text) {
    std::string key = LowerCase(name);
    const std::size_t at = IndexOf(key);
    if (at < pBindings.size())
        pBindings[at].Text = std::move(text);
    else
        pBindings.push_back({std::move(key), std::move(text)});
}

const std::string* ParameterMap::Find(std::string_view name) const {
    if (pBindings.empty()) return nullptr;
    // Names are short; a longer word is lowered into a string.
    std::array<char, 32> buffer;
    std::string longName;
    std::string_view key;
    if (name.size() <= buffer.size()) {
        for (std::size_t i = 0; i < name.size(); ++i) buffer[i] = ToLowerAscii(name[i]);
        key = std::string_view(buffer.data(), name.size());
    } else {
        longName = LowerCase(name);
        key = longName;
    }
    const std::size_t at = IndexOf(key);
    return at < pBindings.size() ? &pBindings[at].Text : nullptr;
}

std::size_t ParameterMap::IndexOf(std::string_view key) const {
    for (std::size_t at = 0; at < pBindings.size(); ++at)
        if (pBindings[at].Name == key) return at;
    return pBindings.size();
}

} // namespace trident
