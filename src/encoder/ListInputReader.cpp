#include "encoder/ListInputReader.h"

#include "base/Text.h"

namespace trident {
bool ListInputReader::AtEnd() {
    while (pPosition < pText.size() && (IsBlank(pText[pPosition]) || AtLineEnd())) ++pPosition;
    pFieldPending = false;
    return pPosition >= pText.size();
}

std::optional<std::string> ListInputReader::ReadField() {
    SkipBlanks();
    if (pPosition >= pText.size() && !pFieldPending) return std::nullopt;
    std::string field = At('"') ? TakeQuoted() : TakeUnquoted();
    SkipSeparator();
    return field;
}

void ListInputReader::SkipBlanks() {
    while (pPosition < pText.size() && IsBlank(pText[pPosition])) ++pPosition;
}

std::string ListInputReader::TakeQuoted() {
    ++pPosition;
    const std::size_t close = pText.find('"', pPosition);
    const std::size_t end = close == std::string_view::npos ? pText.size() : close;
    std::string field(pText.substr(pPosition, end - pPosition));
    pPosition = close == std::string_view::npos ? end : end + 1;
    // Whatever follows the closing quote up to the separator is not data.
    while (pPosition < pText.size() && !At(',') && !AtLineEnd()) ++pPosition;
    return field;
}

std::string ListInputReader::TakeUnquoted() {
    const std::size_t start = pPosition;
    while (pPosition < pText.size() && !At(',') && !AtLineEnd()) ++pPosition;
    std::size_t end = pPosition;
    while (end > start && IsBlank(pText[end - 1])) --end;
    return std::string(pText.substr(start, end - start));
}

void ListInputReader::SkipSeparator() {
    pFieldPending = At(',');
    if (pFieldPending) {
        ++pPosition;
        return;
    }
    if (At('\r')) ++pPosition;
    if (At('\n')) ++pPosition;
}

} // namespace trident
