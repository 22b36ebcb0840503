#include "assembler/LineScanner.h"

#include "assembler/RunFailure.h"

#include <algorithm>

namespace trident::LineScanner {
namespace {

constexpr char StatementSeparator = '!';
constexpr char CommentStarter = ';';

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

bool IsTrailingJunk(char c) {
    return IsBlank(c) || c == '\r' || c == '\n';
}

std::string_view TrimTrailing(std::string_view text) {
    while (!text.empty() && IsTrailingJunk(text.back())) text.remove_suffix(1);
    return text;
}

// Quote and bracket state while walking an operand field. Only an odd run of
// backslashes escapes the quote that follows it, and only inside quotes of
// the same kind.
class QuoteState {
  public:
    void Feed(char c) {
        if (c == '"' && !pInSingle) {
            if (!(pInDouble && pEscape)) pInDouble = !pInDouble;
        } else if (c == '\'' && !pInDouble) {
            if (!(pInSingle && pEscape)) pInSingle = !pInSingle;
        } else if (!InQuotes()) {
            if (c == '<') ++pDepth;
            if (c == '>') --pDepth;
        }
        pEscape = (c == '\\') ? !pEscape : false;
    }
    bool InQuotes() const { return pInDouble || pInSingle; }
    int Depth() const { return pDepth; }

  private:
    bool pInDouble = false;
    bool pInSingle = false;
    bool pEscape = false;
    int pDepth = 0;
};

class Cursor {
  public:
    explicit Cursor(std::string_view text) : pText(text) {}

    bool AtEnd() const { return pPos >= pText.size(); }
    char Peek() const { return AtEnd() ? '\0' : pText[pPos]; }
    bool At(char c) const { return !AtEnd() && pText[pPos] == c; }
    void Advance() { ++pPos; }

    // Skips blanks, never past a statement separator; true if any was skipped.
    bool SkipBlanks() {
        const std::size_t start = pPos;
        while (!AtEnd() && IsBlank(pText[pPos])) ++pPos;
        return pPos != start;
    }

    // Up to the next `stop` character or the end, found with one search:
    // comments make up much of a program's text.
    std::string_view TakeUntilChar(char stop) {
        const std::size_t start = pPos;
        pPos = std::min(pText.find(stop, start), pText.size());
        return pText.substr(start, pPos - start);
    }

    template <typename Stop> std::string_view TakeUntil(Stop stop) {
        const std::size_t start = pPos;
        while (!AtEnd() && !stop(pText[pPos])) ++pPos;
        return pText.substr(start, pPos - start);
    }

  private:
    std::string_view pText;
    std::size_t pPos = 0;
};

std::string_view TakeOperandField(Cursor& cursor) {
    QuoteState quotes;
    return cursor.TakeUntil([&quotes](char c) {
        if (!quotes.InQuotes() && (c == CommentStarter || c == StatementSeparator)) return true;
        quotes.Feed(c);
        return false;
    });
}

// Scans one statement starting at the cursor; leaves the cursor on the
// separator that ends it (or at the end of the line).
SourceStatement ScanStatement(Cursor& cursor) {
    SourceStatement statement;
    auto takeComment = [&] { statement.Comment = cursor.TakeUntilChar(StatementSeparator); };
    if (cursor.At('*')) {
        takeComment();
        return statement;
    }
    const bool indented = cursor.SkipBlanks();
    if (cursor.At(CommentStarter)) {
        takeComment();
        return statement;
    }
    const std::string_view token = cursor.TakeUntil([](char c) {
        return IsBlank(c) || c == ':' || c == CommentStarter || c == StatementSeparator;
    });
    const bool colon = cursor.At(':');
    if (colon) cursor.Advance();
    if (colon || !indented) {
        statement.Label = token;
        cursor.SkipBlanks();
        if (cursor.At(CommentStarter)) {
            takeComment();
            return statement;
        }
        statement.Operation = cursor.TakeUntil(
            [](char c) { return IsBlank(c) || c == CommentStarter || c == StatementSeparator; });
    } else {
        statement.Operation = token;
    }
    cursor.SkipBlanks();
    if (!cursor.At(CommentStarter)) {
        statement.Operands = TrimTrailing(TakeOperandField(cursor));
        cursor.SkipBlanks();
    }
    if (cursor.At(CommentStarter)) takeComment();
    return statement;
}

// Items are strings (refilled in place, keeping their storage from one
// statement to the next) or views into the field.
template <class Item>
int SplitList(std::string_view field, std::vector<Item>& items, bool protectBrackets) {
    std::size_t count = 0;
    Cursor cursor(field);
    while (!cursor.AtEnd()) {
        cursor.SkipBlanks();
        bool took = false;
        std::string_view item;
        if (cursor.At(',')) {
            took = true;
        } else {
            QuoteState quotes;
            item = cursor.TakeUntil([&](char c) {
                if (c == ',' && !quotes.InQuotes() && (!protectBrackets || quotes.Depth() == 0))
                    return true;
                quotes.Feed(c);
                return false;
            });
            took = !item.empty();
        }
        if (took && count >= static_cast<std::size_t>(MaxOperands)) {
            items.resize(count);
            throw RunFailure("more than " + std::to_string(MaxOperands) +
                             " operands in one statement");
        }
        if (took) {
            if (count < items.size())
                items[count] = TrimTrailing(item);
            else
                items.emplace_back(TrimTrailing(item));
            ++count;
        }
        if (cursor.At(',')) cursor.Advance();
    }
    items.resize(count);
    return static_cast<int>(count);
}

} // namespace

int SplitSourceLine(std::string_view line, std::vector<SourceStatement>& statements) {
    statements.clear();
    Cursor cursor(line);
    do {
        if (statements.size() >= static_cast<std::size_t>(MaxStatements))
            throw RunFailure("more than " + std::to_string(MaxStatements) +
                             " statements on one line");
        statements.push_back(ScanStatement(cursor));
        cursor.Advance(); // the "!" that ended the statement
    } while (!cursor.AtEnd());
    return static_cast<int>(statements.size());
}

int SplitOperands(std::string_view field, std::vector<std::string_view>& operands) {
    return SplitList(field, operands, false);
}

int SplitMacroArguments(std::string_view field, std::vector<std::string>& arguments) {
    return SplitList(field, arguments, true);
}

std::string TabsToSpaces(std::string_view text) {
    std::string result(text);
    std::replace(result.begin(), result.end(), '\t', ' ');
    return result;
}

void StripParityBits(std::string& text) {
    for (char& c : text) c = static_cast<char>(static_cast<unsigned char>(c) & 0x7F);
}

std::string LowerCase(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return result;
}

std::string TrimBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return std::string(text);
}

} // namespace trident::LineScanner
