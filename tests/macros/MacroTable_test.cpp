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
}

} // namespace
} // namespace trident
