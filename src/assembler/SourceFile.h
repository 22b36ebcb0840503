#pragma once

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace trident {

// One open source channel: the main file, an include file or a macro
// library. The file is read whole when opened; lines are then cut from it
// with the assembler's own line-end rule.
class SourceFile {
  public:
    // Nothing when the path names no readable regular file.
    static std::optional<SourceFile> Open(const std::filesystem::path& path);
    static SourceFile FromText(std::string name, std::string text);

    bool AtEnd() const { return pPos >= pData.size(); }

    // Reads up to a carriage return or line feed (not included). After a
    // carriage return exactly one more character is consumed, whatever it
    // is: that is how CR LF pairs go, and it is deliberately not checked.
    // The view stays valid as long as this file is open. Inline: the main
    // file is cut in one loop over its lines.
    std::string_view ReadSourceLine() {
        const std::size_t start = pPos;
        const std::size_t size = pData.size();
        const char* const text = pData.data();
        const void* lineFeed = std::memchr(text + start, '\n', size - start);
        std::size_t end =
            lineFeed ? static_cast<std::size_t>(static_cast<const char*>(lineFeed) - text) : size;
        if (pNextReturn < start) pNextReturn = NextReturn(start);
        end = std::min(end, pNextReturn);
        pPos = end;
        if (end < size) pPos += text[end] == '\r' && end + 1 < size ? 2 : 1;
        ++pLine;
        return {text + start, end - start};
    }

    // Where the next line starts in the text.
    std::size_t Position() const { return pPos; }
    // Passes over a line already read once, whose successor starts at
    // `nextLineStart` (a Position taken after reading it).
    void SkipLine(std::size_t nextLineStart) {
        pPos = nextLineStart;
        ++pLine;
    }

    // Back to the first line.
    void Rewind() {
        pPos = 0;
        pLine = 0;
        pNextReturn = NextReturn(0);
    }

    const std::string& Name() const { return pName; }
    // The whole text as read.
    std::string_view Text() const { return pData; }
    // Number of the line last read, from 1.
    int LineNumber() const { return pLine; }

  private:
    SourceFile(std::string name, std::string data)
        : pName(std::move(name)), pData(std::move(data)), pNextReturn(NextReturn(0)) {}

    // Where the first carriage return at or after `from` is (the size of
    // the text when there is none).
    std::size_t NextReturn(std::size_t from) const;

    std::string pName;
    std::string pData;
    std::size_t pPos = 0;
    int pLine = 0;
    // The first carriage return at or after the line last read. Most texts
    // have none, or one at the end of every line: each is searched for
    // once, instead of once for every line.
    std::size_t pNextReturn;
};

} // namespace trident
