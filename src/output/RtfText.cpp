#include "output/RtfText.h"

#include <algorithm>
#include <array>
#include <vector>

namespace trident {
namespace {

std::vector<Colour> ColourTable(const ColouredText& text) {
    std::vector<Colour> table;
    for (const auto& run : text.Runs())
        if (std::find(table.begin(), table.end(), run.Ink) == table.end()) table.push_back(run.Ink);
    return table;
}

// Characters that RTF writes otherwise: its own control characters, line
// ends (paragraphs), tabs, and every byte outside printable ASCII.
constexpr std::array<bool, 256> NeedsEscape = [] {
    std::array<bool, 256> table{};
    for (int c = 0; c < 256; ++c) table[c] = c < 32 || c > 127 || c == '\\' || c == '{' || c == '}';
    return table;
}();

constexpr char HexDigits[] = "0123456789abcdef";

// Appends one piece of text with RTF's escapes. Listings are mostly plain
// characters: stretches of them go in as one append.
void AppendEscaped(std::string& rtf, std::string_view piece) {
    std::size_t i = 0;
    while (i < piece.size()) {
        std::size_t plain = i;
        while (plain < piece.size() && !NeedsEscape[static_cast<unsigned char>(piece[plain])])
            ++plain;
        rtf.append(piece.data() + i, plain - i);
        if (plain == piece.size()) return;
        const auto c = static_cast<unsigned char>(piece[plain]);
        i = plain + 1;
        switch (c) {
        case '\\':
        case '{':
        case '}':
            rtf += '\\';
            rtf += static_cast<char>(c);
            break;
        case '\t':
            rtf += "\\tab ";
            break;
        case '\r':
            if (i < piece.size() && piece[i] == '\n') ++i;
            rtf += "\\par\n";
            break;
        case '\n':
            rtf += "\\par\n";
            break;
        default:
            rtf += "\\'";
            rtf += HexDigits[c >> 4];
            rtf += HexDigits[c & 0xF];
        }
    }
}

} // namespace

std::string ToRtf(const ColouredText& text, std::string_view fontName, int pointSize) {
    const std::vector<Colour> table = ColourTable(text);
    std::string rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fmodern ";
    rtf.append(fontName).append(";}}\n{\\colortbl ;");
    // The colour switch of each table entry, made once: a listing switches
    // colour several times a line.
    std::vector<std::string> switches;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const Colour& c = table[i];
        rtf += "\\red" + std::to_string(c.Red) + "\\green" + std::to_string(c.Green) + "\\blue" +
               std::to_string(c.Blue) + ";";
        switches.push_back("\\cf" + std::to_string(i + 1) + " ");
    }
    rtf += "}\n\\f0\\fs" + std::to_string(pointSize * 2) + " ";
    // Escapes make the document somewhat longer than the text.
    rtf.reserve(rtf.size() + text.Size() + text.Size() / 4 + 8 * text.Runs().size());
    const std::string_view characters = text.Text();
    for (const auto& run : text.Runs()) {
        const auto index = std::find(table.begin(), table.end(), run.Ink) - table.begin();
        rtf += switches[static_cast<std::size_t>(index)];
        std::string_view piece = characters.substr(run.Start, run.Length);
        // A CR LF split across two runs still makes one paragraph.
        if (!piece.empty() && piece.front() == '\n' && run.Start > 0 &&
            characters[run.Start - 1] == '\r')
            piece.remove_prefix(1);
        AppendEscaped(rtf, piece);
    }
    rtf += "}";
    return rtf;
}

} // namespace trident
