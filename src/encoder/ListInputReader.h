#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace trident {

// Reads the fields of a list file one by one: fields are separated by
// commas or line ends, blanks ahead of a field are skipped, and a field in
// double quotes may hold commas and blanks. Line ends carry no other
// meaning, so a record may span lines or share one.
class ListInputReader {
  public:
    explicit ListInputReader(std::string_view text) : pText(text) {}

    // Whether the text is used up; blanks and empty lines ahead of the next
    // record are passed over.
    bool AtEnd();
    // The next field without its quotes, or nothing past the end of the text.
    std::optional<std::string> ReadField();

  private:
    bool At(char c) const { return pPosition < pText.size() && pText[pPosition] == c; }
    bool AtLineEnd() const { return At('\r') || At('\n'); }
    void SkipBlanks();
    std::string TakeQuoted();
    std::string TakeUnquoted();
    void SkipSeparator();

    std::string_view pText;
    std::size_t pPosition = 0;
    // A comma ended the last field, so one more (perhaps empty) follows.
    bool pFieldPending = false;
};

} // namespace trident
