#include "macros/MacroTable.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

TEST(MacroTable, NamesAreCaseBlindAndRedefinitionReplacesAtTheEnd) {
    MacroTable table;
    table.SetMacroDefinition("abc", "first\r\n");
    table.SetMacroDefinition("other", "o\r\n");
    table.SetMacroDefinition("ABC", "second\r\n");
    EXPECT_EQ(table.MacroDefinition("Abc"), "second\r\n");
    EXPECT_EQ(table.Names(), (std::vector<std::string>{"other", "ABC"}));
    EXPECT_EQ(table.MacroDefinition("nosuch"), "");
    EXPECT_TRUE(table.Delete("nosuch"));
    EXPECT_TRUE(table.Delete("abc"));
    EXPECT_EQ(table.Count(), 1u);
}

// Lines keep their line ends and swallow the empty lines after them; reading
// goes on until the key (a name as spelt, or an entry number) changes, which
// restarts the body.
TEST(MacroTable, GetLineReadsOnUntilTheKeyChanges) {
    MacroTable table;
    table.SetMacroDefinition("m", "a\r\n\r\nb\r\n");
    table.SetMacroDefinition("n", "xy");
    EXPECT_EQ(table.GetLine("m"), "a\r\n\r\n");
    EXPECT_EQ(table.GetLine("m"), "b\r\n");
    EXPECT_EQ(table.GetLine("M"), "a\r\n\r\n") << "another spelling is another key";
    const std::vector<std::string> byEntry = {table.GetLine(1), table.GetLine(1), table.GetLine(1),
                                              table.GetLine(1)};
    EXPECT_EQ(byEntry, (std::vector<std::string>{"a\r\n\r\n", "b\r\n", "", ""}));
    // A body without a final line end never yields its last character.
    EXPECT_EQ(table.GetLine("n"), "x");
    EXPECT_EQ(table.GetLine("n"), "");
    EXPECT_EQ(table.GetLine(1), "a\r\n\r\n");
    EXPECT_EQ(table.GetLine(7), "");
}

} // namespace
} // namespace trident
