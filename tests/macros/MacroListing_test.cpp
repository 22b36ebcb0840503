#include "assembler/ListingColours.h"
#include "encoder/EncoderRun.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::EncoderRun;
using Texts = std::vector<std::string>;

constexpr const char* Source = "m macro a ;; about m\n"
                               " db a ; the byte\n"
                               " db a+1 ;; hidden\n"
                               " endm\n"
                               "here m 5\n";

constexpr const char* Header = "0000\t\tm\tmacro\ta\t;; about m\t";
constexpr const char* Close = "0000\t\t\tendm\t\t\t";
constexpr const char* Call = "0000\t\there\tm\t5\t\t";
constexpr const char* BodyLine1 = "0000\t\t\tdb\ta\t; the byte\t";
constexpr const char* BodyLine2 = "0000\t\t\tdb\ta+1\t;; hidden\t";
constexpr const char* Expanded1 = "0000 +01\t05\t\tdb\t5\t; the byte\t";
constexpr const char* Expanded2 = "0001 +01\t06\t\tdb\t5+1\t\t";

// Definition lines appear only on request, and so do expansion lines, with
// their level after the address; ";;" comments stay out of the expansion and
// out of the stored body, whose fields are separated by tabs.
TEST(MacroListing, ListsBodiesAndExpansionsOnRequest) {
    const struct {
        bool Definitions;
        bool Expansions;
        Texts Lines;
    } cases[] = {
        {false, false, Texts{Header, Close, Call}},
        {true, false, Texts{Header, BodyLine1, BodyLine2, Close, Call}},
        {false, true, Texts{Header, Close, Call, Expanded1, Expanded2}},
    };
    for (const auto& c : cases) {
        EncoderRun run;
        run.Options().ListMacroDefinitions = c.Definitions;
        run.Options().ListMacroExpansions = c.Expansions;
        EXPECT_EQ(run.Assemble(Source), Assembly::Outcome::Completed);
        EXPECT_EQ(run.StatementLines(), c.Lines);
        EXPECT_EQ(run.Bytes(), "05 06");
        EXPECT_EQ(run.Symbol("here"), 0) << "the call's label names its address";
        EXPECT_EQ(run.Run().Macros().MacroDefinition("M"), "\tdb\ta\t; the byte\r\n\tdb\ta+1\r\n");
        if (!c.Definitions) continue;
        // The fields, past the address and the empty bytes column.
        const ColouredText& text = run.Run().GetListing().Text();
        EXPECT_EQ(testing::InkOf(text, Header, 6), ListingColours::MacroDefinition);
        EXPECT_EQ(testing::InkOf(text, BodyLine2, 6), ListingColours::MacroDefinition);
        EXPECT_EQ(testing::InkOf(text, Call, 6), ListingColours::MacroCall);
    }
}

} // namespace
} // namespace trident
