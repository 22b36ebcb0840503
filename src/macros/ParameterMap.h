#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace trident {

// The replacement texts of one expansion level: macro parameters, the
// parameter of an irp or irpc block and the names made by `local`. Names are
// compared without regard to case; a name that is not bound has no entry.
class ParameterMap {
  public:
    // Binds `name` to `text`, replacing an earlier binding of that name.
    void Bind(std::string_view name, std::string text);
    // The text bound to `name`, or nothing.
    const std::string* Find(std::string_view name) const;
    bool Empty() const { return pTexts.empty(); }
    void Clear() { pTexts.clear(); }

  private:
    static std::string Key(std::string_view name);

    // Found by a view of the name: every word of every replayed line is
    // looked up, and most are no parameter at all.
    struct ViewHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>{}(text);
        }
    };

    std::unordered_map<std::string, std::string, ViewHash, std::equal_to<>> pTexts;
};

} // namespace trident
