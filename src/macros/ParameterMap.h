#pragma once

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

    std::unordered_map<std::string, std::string> pTexts;
};

} // namespace trident
