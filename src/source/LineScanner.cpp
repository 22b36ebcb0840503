#include "source/LineScanner.h"

#include "base/Text.h"
#include "expression/CharTests.h"
#include "source/RunFailure.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

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
    bool At(char c) const { return !AtEnd() && pText[pPos] == c; }
    void Advance() { ++pPos; }

    void SkipBlanks() {
        while (!AtEnd() && IsBlank(pText[pPos])) ++pPos;
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

// What the line walk needs to know of a character, as bits.
enum CharClass : std::uint8_t {
    BlankChar = 1,     // separates fields
    EndsLabel = 2,     // ends the first word: blank, ":", ";" or "!"
    EndsOperation = 4, // ends the operation after a label: blank, ";" or "!"
    FieldMark = 8,     // stops the walk over an operand field outside quotes
    Junk = 16,         // trimmed from the end of a field or an operand
};

constexpr std::array<std::uint8_t, 256> CharClasses() {
    std::array<std::uint8_t, 256> classes{};
    const auto mark = [&classes](std::string_view chars, int bits) {
        for (const char c : chars)
            classes[static_cast<unsigned char>(c)] |= static_cast<std::uint8_t>(bits);
    };
    mark(" \t", BlankChar | EndsLabel | EndsOperation | Junk);
    mark("\r\n", Junk);
    mark(":", EndsLabel);
    mark(";!", EndsLabel | EndsOperation | FieldMark);
    mark(",\"'", FieldMark);
    return classes;
}

constexpr std::array<std::uint8_t, 256> Classes = CharClasses();

bool Is(char c, int bits) {
    return (Classes[static_cast<unsigned char>(c)] & bits) != 0;
}

// One walk over a line: each statement's fields and the operands of its
// field are found together, the operands appended to the line's list.
// The dialect is a parameter of the type: the standard walk tests none of
// the Compatible rules.
template <Dialect Rules> class LineWalker {
  public:
    LineWalker(std::string_view line, std::vector<std::string_view>& operands)
        : pPos(line.data()), pEnd(line.data() + line.size()), pOperands(operands) {}

    bool AtEnd() const { return pPos >= pEnd; }
    // Past the "!" that ended a statement (or past the end).
    void Advance() {
        ++pPos;
        pAfterSeparator = true;
    }

    // Scans one statement; leaves the walk on the separator that ends it
    // (or at the end of the line).
    void Statement(SourceStatement& statement) {
        const bool fromComment = pCommentCut;
        pCommentCut = false;
        if (pAfterSeparator && At('=')) statement.Marks |= EqualsAfterSeparator;
        Fields(statement);
        if (fromComment && !(statement.Label.empty() && statement.Operation.empty()))
            statement.Marks |= FromComment;
    }

    // One statement that is all of `text`, read as indented.
    void IndentedStatement(SourceStatement& statement) {
        pAfterSeparator = true;
        Statement(statement);
    }

  private:
    bool At(char c) const { return pPos < pEnd && *pPos == c; }

    void Fields(SourceStatement& statement) {
        if (At('*')) return Comment(statement);
        if (pCompatible && !pAfterSeparator && AtControlLine()) {
            statement.Marks |= ControlLine;
            statement.Comment = View(pPos, pEnd);
            pPos = pEnd;
            return;
        }
        // The era's assemblers start a statement after "!" with its operation.
        const bool indented = SkipBlanks() || (pCompatible && pAfterSeparator);
        if (At(CommentStarter)) return Comment(statement);
        const std::string_view token = TakeUntil(EndsLabel);
        const bool colon = At(':');
        if (colon) ++pPos;
        if (colon || !indented || (pCompatible && NextWordNamesLabel())) {
            statement.Label = token;
            if (!colon && !indented && !pAfterSeparator) statement.Marks |= BareLabel;
            SkipBlanks();
            if (At(CommentStarter)) return Comment(statement);
            statement.Operation = TakeUntil(EndsOperation);
        } else {
            statement.Operation = token;
        }
        SkipBlanks();
        if (!At(CommentStarter)) {
            OperandField(statement);
            SkipBlanks();
        }
        if (At(CommentStarter)) Comment(statement);
    }

    // `$` in column 1 before a letter or one of "+-*".
    bool AtControlLine() const {
        if (!At('$') || pEnd - pPos < 2) return false;
        const char c = ToLowerAscii(pPos[1]);
        return c == '-' || c == '+' || c == '*' || (c >= 'a' && c <= 'z');
    }

    // Whether the word after the current one defines it (`size equ 10`
    // written indented, as Digital Research's assemblers allow).
    bool NextWordNamesLabel() const {
        const char* pos = pPos;
        while (pos < pEnd && Is(*pos, BlankChar)) ++pos;
        const char* const start = pos;
        while (pos < pEnd && !Is(*pos, EndsOperation)) ++pos;
        return IsDefiningWord(View(start, pos));
    }

    // True if any blank was skipped.
    bool SkipBlanks() {
        const char* const start = pPos;
        while (pPos < pEnd && Is(*pPos, BlankChar)) ++pPos;
        return pPos != start;
    }

    std::string_view TakeUntil(int stops) {
        const char* const start = pPos;
        while (pPos < pEnd && !Is(*pPos, stops)) ++pPos;
        return View(start, pPos);
    }

    // Up to the next statement separator, found with one search: comments
    // make up much of a program's text.
    // In Compatible mode a comment runs to the end of the line.
    void Comment(SourceStatement& statement) {
        const char* const start = pPos;
        const void* separator = pCompatible ? nullptr
                                            : std::memchr(start, StatementSeparator,
                                                          static_cast<std::size_t>(pEnd - start));
        pPos = separator ? static_cast<const char*>(separator) : pEnd;
        pCommentCut = separator != nullptr && *start == CommentStarter;
        statement.Comment = View(start, pPos);
    }

    // The field runs to a ";" or "!" outside quotes. Its operands are the
    // stretches between commas outside quotes, without surrounding blanks;
    // a stretch before a comma counts even when empty, the stretch after
    // the last comma only when it holds something.
    void OperandField(SourceStatement& statement) {
        const char* const start = pPos;
        statement.FirstOperand = static_cast<std::uint32_t>(pOperands.size());
        const char* item = start;
        while (true) {
            while (pPos < pEnd && !Is(*pPos, FieldMark)) ++pPos;
            if (pPos >= pEnd) break;
            const char c = *pPos;
            if (c == StatementSeparator && pCompatible && pPos + 1 < pEnd && pPos[1] == '=') {
                pPos += 2; // the not-equal operator
                continue;
            }
            if (c == CommentStarter || c == StatementSeparator) break;
            ++pPos;
            if (c == ',') {
                AddOperand(statement, item, pPos - 1);
                item = pPos;
            } else {
                SkipQuoted(c);
            }
        }
        const char* end = pPos;
        while (end > start && Is(end[-1], Junk)) --end;
        statement.Operands = View(start, end);
        if (item < end) AddOperand(statement, item, end);
    }

    // Past the closing quote, or to the end of the line. Only an odd run of
    // backslashes escapes the quote that follows it, and only inside quotes
    // of the same kind.
    void SkipQuoted(char quote) {
        bool escape = false;
        for (; pPos < pEnd; ++pPos) {
            const char c = *pPos;
            if (c == quote && !escape) {
                ++pPos;
                return;
            }
            escape = c == '\\' && !escape;
        }
    }

    void AddOperand(SourceStatement& statement, const char* begin, const char* end) {
        while (begin < end && Is(*begin, BlankChar)) ++begin;
        while (end > begin && Is(end[-1], Junk)) --end;
        if (statement.OperandCount == MaxOperands) {
            statement.TooManyOperands = true;
            return;
        }
        pOperands.push_back(View(begin, end));
        ++statement.OperandCount;
    }

    static std::string_view View(const char* begin, const char* end) {
        return std::string_view(begin, static_cast<std::size_t>(end - begin));
    }

    const char* pPos;
    const char* const pEnd;
    std::vector<std::string_view>& pOperands;
    static constexpr bool pCompatible = Rules == Dialect::Compatible;
    bool pAfterSeparator = false;
    // The statement before ended in a ";" comment cut at a "!".
    bool pCommentCut = false;
};

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
            FailTooManyOperands();
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

template <Dialect Rules>
int ScanWith(std::string_view line, std::vector<SourceStatement>& statements,
             std::vector<std::string_view>& operands) {
    LineWalker<Rules> walker(line, operands);
    int count = 0;
    do {
        if (count == MaxStatements)
            throw RunFailure("more than " + std::to_string(MaxStatements) +
                             " statements on one line");
        walker.Statement(statements.emplace_back());
        ++count;
        walker.Advance(); // the "!" that ended the statement
    } while (!walker.AtEnd());
    return count;
}

} // namespace

int ScanLine(std::string_view line, std::vector<SourceStatement>& statements,
             std::vector<std::string_view>& operands, Dialect dialect) {
    return dialect == Dialect::Compatible
               ? ScanWith<Dialect::Compatible>(line, statements, operands)
               : ScanWith<Dialect::Standard>(line, statements, operands);
}

void ScanIndentedStatement(std::string_view text, SourceStatement& statement,
                           std::vector<std::string_view>& operands) {
    operands.clear();
    statement = SourceStatement{};
    LineWalker<Dialect::Compatible>(text, operands).IndentedStatement(statement);
}

bool IsDefiningWord(std::string_view word) {
    static constexpr std::array<std::string_view, 5> Words{"equ", "set", "defl", "macro", "="};
    return !word.empty() && word.size() <= 5 &&
           std::any_of(Words.begin(), Words.end(), [&](std::string_view defining) {
               return std::equal(word.begin(), word.end(), defining.begin(), defining.end(),
                                 [](char a, char b) { return ToLowerAscii(a) == b; });
           });
}

void FailTooManyOperands() {
    throw RunFailure("more than " + std::to_string(MaxOperands) + " operands in one statement");
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

} // namespace trident::LineScanner
