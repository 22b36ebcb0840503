#include "output/RtfText.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace trident {
namespace {

std::vector<Colour> ColourTable(const ColouredText& text) {
    std::vector<Colour> table;
    for (const auto& run : text.Runs())
        if (std::find(table.begin(), table.end(), run.Ink) == table.end()) table.push_back(run.Ink);
    return table;
}

// Appends one piece of text with RTF's escapes: the control characters, line
// ends as paragraphs, tabs, and bytes above 127 as hexadecimal escapes.
void AppendEscaped(std::string& rtf, std::string_view piece) {
    for (std::size_t i = 0; i < piece.size(); ++i) {
        const auto c = static_cast<unsigned char>(piece[i]);
        switch (c) {
        case '\\':
            rtf += "\\\\";
            break;
        case '{':
            rtf += "\\{";
            break;
        case '}':
            rtf += "\\}";
            break;
        case '\t':
            rtf += "\\tab ";
            break;
        case '\r':
            if (i + 1 < piece.size() && piece[i + 1] == '\n') ++i;
            rtf += "\\par\n";
            break;
        case '\n':
            rtf += "\\par\n";
            break;
        default:
            if (c > 127 || c < 32) {
                char escape[8];
                std::snprintf(escape, sizeof escape, "\\'%02x", c);
                rtf += escape;
            } else {
                rtf += static_cast<char>(c);
            }
        }
    }
}

} // namespace

std::string ToRtf(const ColouredText& text, std::string_view fontName, int pointSize) {
    const std::vector<Colour> table = ColourTable(text);
    std::string rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fmodern ";
    rtf.append(fontName).append(";}}\n{\\colortbl ;");
    for (const Colour& c : table) {
        rtf += "\\red" + std::to_string(c.Red) + "\\green" + std::to_string(c.Green) + "\\blue" +
               std::to_string(c.Blue) + ";";
    }
    rtf += "}\n\\f0\\fs" + std::to_string(pointSize * 2) + " ";
    for (const auto& run : text.Runs()) {
        const auto index = std::find(table.begin(), table.end(), run.Ink) - table.begin();
        rtf += "\\cf" + std::to_string(index + 1) + " ";
        std::string_view piece = std::string_view(text.Text()).substr(run.Start, run.Length);
        // A CR LF split across two runs still makes one paragraph.
        if (!piece.empty() && piece.front() == '\n' && run.Start > 0 &&
            text.Text()[run.Start - 1] == '\r')
            piece.remove_prefix(1);
        AppendEscaped(rtf, piece);
    }
    rtf += "}";
    return rtf;
}

} // namespace trident
