#include "encoder/EncoderRun.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::EncoderRun;

// Parity bits set on every character of a text.
std::string WithParity(std::string_view text) {
    std::string marked(text);
    for (char& c : marked)
        if (c != '\n') c = static_cast<char>(c | 0x80);
    return marked;
}

// Every source's lines are prepared alike: upper-case words and parity
// bits read the same in the main file, an include file, a macro library
// and a macro expansion.
TEST(SourceStack, EverySourcePreparesItsLinesAlike) {
    struct Case {
        const char* Main;
        const char* Other; // written as other.asm / lib.lib when set
    };
    const Case cases[] = {
        {" DB 1\n NOP\n", nullptr},
        {" INCLUDE other.asm\n", " DB 1\n NOP\n"},
        {" MACLIB lib\n M\n", "M MACRO\n DB 1\n NOP\n ENDM\n"},
        {"M MACRO\n DB 1\n NOP\n ENDM\n M\n", nullptr},
    };
    for (const Case& c : cases) {
        for (const bool parity : {false, true}) {
            EncoderRun run;
            run.Options().StripParity = parity;
            const auto text = [&](std::string_view t) {
                return parity ? WithParity(t) : std::string(t);
            };
            if (c.Other) {
                run.Write("other.asm", text(c.Other));
                run.Write("lib.lib", text(c.Other));
            }
            EXPECT_EQ(run.QuietBytes(text(c.Main)), "01 00") << c.Main << parity;
            EXPECT_TRUE(run.DiagnosticTexts().empty()) << c.Main << parity;
        }
    }
}

} // namespace
} // namespace trident
