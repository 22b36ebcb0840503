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
    std::vector<ListingReports::SymbolRow> symbols = {
        {"bdos",
         Value{std::int32_t{5}},
         "equ",
         {"main.asm", 6, {}},
         {{"main.asm", 15, {}}, {"lib.inc", 3, {}}}},
        {"unused", Value{std::int32_t{0x1234}}, "label", {"main.asm", 9, {}}, {}},
        {"PI", Value{3.14159}, "constant", {}, {{"main.asm", 2, {}}}},
    };
    std::vector<ListingReports::MacroRow> macros = {{"twice", "\tnop\t\r\n\tnop\t\r\n"}};
    ColouredText out;
    ListingReports::Append(out, statistics, symbols, macros, "main.asm");
    const std::string& text = out.Text();

    EXPECT_NE(text.find("Statistics\r\n==========\r\n"), std::string::npos);
    EXPECT_NE(text.find("  Statements                               14\r\n"), std::string::npos)
        << text;
    EXPECT_NE(text.find("Size in bytes                    164 (00A4h)"), std::string::npos) << text;
    EXPECT_NE(text.find("  bdos                     0005     equ        6        15 lib.inc:3\r\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("* unused                   1234     label      9        \r\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("  PI                       3.14159  constant   -        2\r\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("  * never referenced"), std::string::npos);
    EXPECT_NE(
        text.find("Macros (1)\r\n==========\r\n  twice\r\n      \tnop\t\r\n      \tnop\t\r\n"),
        std::string::npos)
        << text;
}

TEST(ListingReports, NothingEmittedShowsZeroSize) {
    ColouredText out;
    ListingReports::Append(out, {}, {}, {}, "x.asm");
    EXPECT_NE(out.Text().find("Size in bytes                     0 (0000h)"), std::string::npos)
        << out.Text();
    EXPECT_NE(out.Text().find("Symbols (0)"), std::string::npos);
}

} // namespace
} // namespace trident
