#include "macros/MacroArguments.h"

#include "base/Text.h"
#include "macros/MacroContext.h"
#include "macros/MacroTable.h"
#include "source/LineScanner.h"
#include "source/Statement.h"

namespace trident::MacroArguments {
namespace {

constexpr char EvaluateMark = '%';

bool Bracketed(std::string_view text) {
    return text.size() >= 2 && text.front() == '<' && text.back() == '>';
}

std::string_view Unbracketed(std::string_view text) {
    return Bracketed(text) ? text.substr(1, text.size() - 2) : text;
}

} // namespace

std::string BoundText(MacroContext& run, std::string_view argument) {
    std::string text = std::string(TrimBlanks(argument));
    if (text.empty() || text.front() != EvaluateMark) return text;
    const Value value = run.EvaluateOperand(std::string_view(text).substr(1), 16);
    const std::optional<double> number = AsNumber(value);
    return std::to_string(number ? static_cast<long long>(*number) : 0);
}

std::vector<std::string> ListItems(MacroContext& run, std::span<const std::string> arguments) {
    std::vector<std::string> written;
    if (arguments.size() == 1 && Bracketed(TrimBlanks(arguments.front())))
        LineScanner::SplitMacroArguments(Unbracketed(TrimBlanks(arguments.front())), written);
    else
        written.assign(arguments.begin(), arguments.end());
    std::vector<std::string> items;
    items.reserve(written.size());
    for (const std::string& item : written) items.push_back(BoundText(run, item));
    return items;
}

std::vector<std::string> TextCharacters(MacroContext& run, std::string_view text) {
    const std::string trimmed = std::string(TrimBlanks(text));
    // Blanks inside the brackets are characters of the text.
    const std::string_view written = Unbracketed(trimmed);
    const std::string characters =
        written.starts_with(EvaluateMark) ? BoundText(run, written) : std::string(written);
    std::vector<std::string> items;
    items.reserve(characters.size());
    for (const char c : characters) items.emplace_back(1, c);
    return items;
}

} // namespace trident::MacroArguments
