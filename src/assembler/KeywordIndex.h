#pragma once

#include <string_view>
#include <unordered_map>

namespace trident {

// A hash index over a table of directives or forms, keyed by each entry's
// Name: every statement asks several tables for its keyword, and a scan of
// each would cost a string comparison per row. The first entry of a name
// wins, as it would in a scan.
template <typename Entry> class KeywordIndex {
  public:
    template <typename Table> explicit KeywordIndex(const Table& table) {
        for (const Entry& entry : table) pIndex.emplace(entry.Name, &entry);
    }

    const Entry* Find(std::string_view keyword) const {
        if (keyword.empty()) return nullptr;
        const auto found = pIndex.find(keyword);
        return found == pIndex.end() ? nullptr : found->second;
    }

  private:
    std::unordered_map<std::string_view, const Entry*> pIndex;
};

} // namespace trident
