#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

// The replacement texts of one expansion level: macro parameters, the
// parameter of an irp or irpc block and the names made by `local`. Names are
// compared without regard to case; a name that is not bound has no entry.
// A level binds a handful of names, and every word of every replayed line is
// looked up, most of them no parameter at all: the bindings are one short
// array searched in order, by length before text.
class ParameterMap {
  public:
    // Binds `name` to `text`, replacing an earlier binding of that name.
    void Bind(std::string_view name, std::string text);
    // The text bound to `name`, or nothing.
    const std::string* Find(std::string_view name) const;
    bool Empty() const { return pBindings.empty(); }
    // The characters of all names and texts bound.
    std::size_t TextSize() const {
        std::size_t size = 0;
        for (const Binding& binding : pBindings) size += binding.Name.size() + binding.Text.size();
        return size;
    }
    void Clear() { pBindings.clear(); }

  private:
    struct Binding {
        std::string Name; // lower case
        std::string Text;
    };

    // Where `key` (lower case) is bound; the count of bindings when nowhere.
    std::size_t IndexOf(std::string_view key) const;

    std::vector<Binding> pBindings;
};

} // namespace trident
