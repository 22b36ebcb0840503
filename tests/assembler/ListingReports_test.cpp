#include "assembler/ListingReports.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

TEST(ListingReports, StatisticsSymbolsAndMacrosReadAsAligned) {
    ListingReports::Statistics statistics;
    statistics.LinesReadFromFile = 12;
    statistics.Statements = 14;
    statistics.ResolvingPasses = 2;
    statistics.Warnings = 1;
    statistics.LowestAddress = 0x100;
    statistics.HighestAddress = 0x1A3;
    const std::string main = "main.asm";
    const std::string library = "lib.inc";
    const SourcePlace bdosReferences[] = {{&main, 15}, {&library, 3}};
    const SourcePlace piReference[] = {{&main, 2}};
    const std::vector<ListingReports::SymbolRow> symbols = {
        {"bdos", Value{std::int32_t{5}}, "equ", {&main, 6}, bdosReferences},
        {"unused", Value{std::int32_t{0x1234}}, "label", {&main, 9}, {}},
        {"PI", Value{3.14159}, "constant", {}, piReference}};
    ColouredText out;
    ListingReports::Append(out, statistics, symbols, {{"twice", "\tnop\t\r\n\tnop\t\r\n"}},
                           "main.asm");
    for (const char* piece :
         {"Statistics\r\n==========\r\n", "  Statements                               14\r\n",
          "Size in bytes                    164 (00A4h)",
          "  bdos                     0005     equ        6        15 lib.inc:3\r\n",
          "* unused                   1234     label      9        \r\n",
          "  PI                       3.14159  constant   -        2\r\n", "  * never referenced",
          "Macros (1)\r\n==========\r\n  twice\r\n      \tnop\t\r\n      \tnop\t\r\n"})
        EXPECT_NE(out.Text().find(piece), std::string::npos) << piece << "\n" << out.Text();
}

TEST(ListingReports, NothingEmittedShowsZeroSize) {
    ColouredText out;
    ListingReports::Append(out, {}, {}, {}, "x.asm");
    for (const char* piece : {"Size in bytes                     0 (0000h)", "Symbols (0)"})
        EXPECT_NE(out.Text().find(piece), std::string::npos) << piece << "\n" << out.Text();
}

} // namespace
} // namespace trident
