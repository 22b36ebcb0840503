#include "e2e/ToolDir.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

// A fault inside an expansion is reported at the calling line, with the
// macro named; the expansion lines are listed with their level.
TEST(MacrosTool, ReportsFaultsAtTheCallAndListsTheExpansion) {
    testing::ToolDir dir;
    const auto source =
        dir.Write("mac.asm", "fill macro n,v\n rept n\n db v\n endm\n endm\n fill 2,<1,nosuch>\n");
    const auto result = dir.Run("{mac.asm} --listing {mac.ls} --list-macro-expansions");
    EXPECT_EQ(result.Exit, 1);
    const std::string place = source.string() + ":6: ";
    const std::string report = place + "error: Non Existant Variable ~ nosuch\n" + place +
                               "note: in expansion of macro rept\n";
    EXPECT_EQ(result.Err, report + report);
    EXPECT_EQ(dir.Listed("mac.ls"), "0000\t\tfill\tmacro\tn,v\t\t\r\n"
                                    "0000\t\t\tendm\t\t\t\r\n"
                                    "0000\t\t\tfill\t2,<1,nosuch>\t\t\r\n"
                                    "0000 +01\t\t\trept\t2\t\t\r\n"
                                    "0000 +01\t\t\tendm\t\t\t\r\n"
                                    "~Non Existant Variable ~ nosuch\r\n"
                                    "0000 +02\t01 00\t\tdb\t1,nosuch\t\t\r\n"
                                    "~Non Existant Variable ~ nosuch\r\n"
                                    "0002 +02\t01 00\t\tdb\t1,nosuch\t\t\r\n");
}

} // namespace
} // namespace trident
