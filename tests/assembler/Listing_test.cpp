#include "assembler/Listing.h"
#include "assembler/ListingColours.h"
#include "support/ListingBody.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::InkOf;

class ListingTest : public ::testing::Test {
  protected:
    ListingTest() {
        state.CurrentPass = 0;
        state.ListThisLine = true;
        statement.Label = "lbl";
        statement.Operation = "op";
        statement.Operands = "x,y";
        statement.Comment = "; c";
    }

    RunState state;
    FrontEnd frontEnd;
    Listing listing{state, frontEnd};
    Statement statement;
};

// The value column stands ahead of the bytes; expansion lines show their level.
TEST_F(ListingTest, LineLayout) {
    statement.ValueText = "0005  ";
    listing.ListLine(statement, 0);
    state.LineAddress = 0x1A;
    statement.ValueText = "";
    statement.BytesText = "3E05";
    listing.ListLine(statement, 1);
    EXPECT_EQ(listing.Text().Text(), "0000\t0005  \tlbl\top\tx,y\t; c\t\r\n"
                                     "001A +01\t3E05\tlbl\top\tx,y\t; c\t\r\n");
    EXPECT_EQ(InkOf(listing.Text(), "001A"), ListingColours::Directive);
    EXPECT_EQ(InkOf(listing.Text(), "3E05"), ListingColours::Bytes);
    EXPECT_EQ(InkOf(listing.Text(), "; c"), ListingColours::Comment);
}

TEST_F(ListingTest, FieldsTakeTheCategoryColour) {
    struct Case {
        LineCategory Category;
        bool Z80Row, Z180Row, IndexUsed;
        Colour Expected;
    };
    namespace C = ListingColours;
    using L = LineCategory;
    const Case cases[] = {{L::None, false, false, false, C::Plain},
                          {L::Equates, false, false, false, C::Equates},
                          {L::MacDef, false, false, false, C::MacroDefinition},
                          {L::MacInvoke, false, false, false, C::MacroCall},
                          {L::Directive, false, false, false, C::Directive},
                          {L::Control, false, false, false, C::Directive},
                          {L::Define, false, false, false, C::Directive},
                          {L::Ifs, false, false, false, C::Conditional},
                          {L::Instruction, false, false, false, C::Plain},
                          {L::Instruction, true, false, false, C::Z80Instruction},
                          {L::Instruction, false, false, true, C::Z80Instruction},
                          {L::Instruction, true, true, true, C::Z180Instruction}};
    for (const Case& c : cases) {
        Listing fresh{state, frontEnd};
        statement.Category = c.Category;
        statement.Z80Row = c.Z80Row;
        statement.Z180Row = c.Z180Row;
        statement.IndexUsed = c.IndexUsed;
        fresh.ListLine(statement, 0);
        EXPECT_EQ(InkOf(fresh.Text(), "lbl"), c.Expected) << static_cast<int>(c.Category);
    }
}

TEST_F(ListingTest, WhenLinesAreListed) {
    struct Case {
        std::int16_t Pass;
        bool ListThisLine, ListAllPasses, ListMacLibs, MaclibOpen, Suppressed, Listed;
    };
    const Case cases[] = {
        {0, true, false, false, false, false, true},
        {0, true, false, false, false, true, false},   // error / warning directives
        {0, false, false, false, false, false, false}, // nolist
        {2, false, true, false, false, false, true},
        {1, false, false, true, true, false, true}, // macro library lines in pass 1
        {2, false, false, true, true, false, false},
        {1, false, false, true, false, false, false},
    };
    for (const Case& c : cases) {
        RunState s;
        s.CurrentPass = c.Pass;
        s.ListThisLine = c.ListThisLine;
        s.Options.ListAllPasses = c.ListAllPasses;
        s.Options.ListMacLibs = c.ListMacLibs;
        s.MaclibOpen = c.MaclibOpen;
        Listing l(s, frontEnd);
        Statement st;
        st.SuppressListing = c.Suppressed;
        l.ListLine(st, 0);
        EXPECT_EQ(!l.Text().Empty(), c.Listed) << "pass " << c.Pass;
    }
}

TEST_F(ListingTest, DiagnosticsAreCountedOnlyWhenListedOrForced) {
    state.ListThisLine = false;
    listing.ListError("quiet", "x", false, {});
    EXPECT_EQ(state.ErrorCount, 0);
    EXPECT_TRUE(listing.Text().Empty());
    listing.ListError("  *** Terminal ~ Value must be Resolved NOW **** ", "org", true,
                      {"f.asm", 3, {}});
    listing.ListWarning("loud", "", true, {});
    EXPECT_EQ(state.ErrorCount, 1);
    EXPECT_EQ(state.WarningCount, 1);
    EXPECT_EQ(listing.Text().Text(),
              "~  *** Terminal ~ Value must be Resolved NOW ****  ~ org\r\n~loud ~ \r\n");
    EXPECT_EQ(InkOf(listing.Text(), "~loud"), ListingColours::Warning);
    ASSERT_EQ(listing.Diagnostics().size(), 2u);
    EXPECT_EQ(listing.Diagnostics()[0].Where.Line, 3);
    EXPECT_EQ(listing.Diagnostics()[1].Kind, Severity::Warning);
}

// A front end hears of each diagnostic as it is listed, and finds its "~"
// line in the listing text by the offset it carries.
TEST_F(ListingTest, EachListedDiagnosticReachesTheFrontEndWithItsPlaceInTheText) {
    struct Shown : FrontEnd {
        void ShowDiagnostic(const Diagnostic& d) override { Seen.push_back(d); }
        std::vector<Diagnostic> Seen;
    } shown;
    Listing l{state, shown};
    l.ListLine(statement, 0);
    l.ListError("first", "a", false, {"main.asm", 2, {}});
    l.ListLine(statement, 0);
    l.ListWarning("second", "b", false, {"lib.inc", 7, "m"});
    state.ListThisLine = false;
    l.ListError("unlisted", "c", false, {});
    ASSERT_EQ(shown.Seen.size(), 2u);
    for (const Diagnostic& d : shown.Seen)
        EXPECT_EQ(l.Text().Text().substr(d.ListingOffset, d.Message.size() + 1), "~" + d.Message);
    EXPECT_EQ(shown.Seen[1].Where.File, "lib.inc");
    EXPECT_EQ(shown.Seen[1].Where.Line, 7);
    EXPECT_EQ(shown.Seen[1].Detail, "b");
}

} // namespace
} // namespace trident
