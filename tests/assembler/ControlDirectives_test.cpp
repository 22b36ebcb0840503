#include "encoder/EncoderRun.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::EncoderRun;
using Texts = std::vector<std::string>;

TEST(Org, MovesTheCounterNamesItsLabelAndStartsNewRecords) {
    EncoderRun run;
    run.Assemble(" org 100h\nhere: db 1\nthere: org 200h\n db 2\n");
    EXPECT_EQ(run.Symbol("here"), 0x100);
    EXPECT_EQ(run.Symbol("there"), 0x200) << "the label takes the new value";
    EXPECT_EQ(run.Run().Outputs().Hex().Text(), ":0101000001FD\r\n:0102000002FB\r\n:0000000000");
    EXPECT_EQ(run.Assemble(" org start\nstart: nop\n"), Assembly::Outcome::Terminated);
    EXPECT_EQ(run.DiagnosticTexts(), Texts{std::string(Assembly::TerminalMessage) + " ~ start"});
}

TEST(ListingSwitch, LinesBetweenNolistAndListAreOnlyEmitted) {
    EncoderRun run;
    run.Assemble(" db 1\n nolist\n db 2\n .list\n db 3\n .xlist\n");
    EXPECT_EQ(run.Bytes(), "01 02 03");
    EXPECT_EQ(run.StatementLines(), (Texts{"0000\t01\t\tdb\t1\t\t", "0001\t\t\tnolist\t\t\t",
                                           "0002\t03\t\tdb\t3\t\t", "0003\t\t\t.xlist\t\t\t"}));
}

TEST(UnsupportedWords, WarnNotImplementedOnceInTheFinalPass) {
    for (const char* word : {"page", "TITLE", ".title", "subttl", ".sbttl", "aseg", "dseg", "cseg",
                             "common", "public", "global", "external", "extrn", "ext"}) {
        EncoderRun run;
        run.Assemble(std::string(" ") + word + " x\nlater:\n");
        EXPECT_EQ(run.DiagnosticTexts(), Texts{std::string("not implemented ~ ") + word});
    }
}

TEST(AngleUnit, DegreesAndRadiansSwitchTheEvaluator) {
    EncoderRun run;
    run.Assemble("r0 equ sin(90)\n degrees\nd equ sin(90)\n .rad\n .deg\nc equ cos(180)\n"
                 " radians 1\n");
    EXPECT_NEAR(*run.Symbol("r0"), 0.893997, 1e-6) << "every pass starts in radians";
    EXPECT_NEAR(*run.Symbol("d"), 1.0, 1e-12);
    EXPECT_NEAR(*run.Symbol("c"), -1.0, 1e-12);
    EXPECT_EQ(run.DiagnosticTexts(), Texts{"No operands allowed ~ radians"});
}

TEST(UserDiagnostics, OnlyTheirDiagnosticLineIsListed) {
    EncoderRun run;
    run.Assemble(" error Stack too small\n warning \"check\"\n db 1\n");
    EXPECT_EQ(run.DiagnosticTexts(), (Texts{"Stack too small ~ ", "\"check\" ~ "}));
    EXPECT_EQ(run.StatementLines(), Texts{"0000\t01\t\tdb\t1\t\t"});
}

TEST(End, StopsReadingAndSetsTheStartAddress) {
    EncoderRun run;
    run.Assemble(" org 10h\nstart: db 1\nfin: end start\n db 2\n");
    EXPECT_EQ(run.Symbol("fin"), 0x11);
    EXPECT_EQ(run.Run().State().StartAddress, 0x10);
    EXPECT_EQ(run.Run().State().HighestAddress, 0x10) << "db 2 is never read";
    EXPECT_EQ(run.StatementLines().size(), 3u);
    run.Assemble(" db 1\n end\n");
    EXPECT_EQ(run.Run().State().StartAddress, 0);
}

// The window's Z80 and Z180 boxes after each directive, in pass 1.
TEST(Processor, DirectivesSetTheCheckBoxesAndTellTheWindow) {
    testing::SourceRun run(" z180\n .Z80\n .hd64\n i8080\n .180\n");
    using Boxes = std::vector<std::pair<bool, bool>>;
    ASSERT_GE(run.Checks().size(), 5u);
    EXPECT_EQ(Boxes(run.Checks().begin(), run.Checks().begin() + 5),
              (Boxes{{false, true}, {true, false}, {true, true}, {false, false}, {false, true}}));
    EXPECT_FALSE(run.Options().Z80);
    EXPECT_TRUE(run.Options().Z180);
}

TEST(Maclib, MissingOrNestedLibrariesAreReported) {
    testing::SourceRun run;
    run.Options().ListAllPasses = true;
    run.Write("outer.lib", " maclib inner\n");
    run.Assemble(" maclib outer\n maclib none\n");
    EXPECT_EQ(run.Messages(), Texts{"Can NOT open .LIB file\nFile = none.lib"});
    Texts found;
    for (const Diagnostic& d : run.Diagnostics()) found.push_back(d.Message);
    EXPECT_EQ(found, (Texts{"Cannot nest", "Macro library error"}));
}

// Include files and libraries live in their own directory, chosen as the
// include and maclib directory unless a test says otherwise.
class InclusionTest : public ::testing::Test {
  protected:
    InclusionTest() {
        run.Options().IncludeDirectory = files.Path().string();
        run.Options().MaclibDirectory = files.Path().string();
    }
    void Write(const std::string& name, std::string_view text) {
        std::filesystem::create_directories((files.Path() / name).parent_path());
        files.Write(name, text);
    }
    testing::TempDir files;
    EncoderRun run;
};

// Nine files may be open, the tenth is refused; a file that includes
// itself stops at the same limit.
TEST_F(InclusionTest, NestingStopsAtNineOpenFiles) {
    for (int n = 1; n <= 10; ++n)
        Write("inc" + std::to_string(n) + ".asm",
              " include inc" + std::to_string(n + 1) + ".asm\n db " + std::to_string(n) + "\n");
    EXPECT_EQ(run.Assemble(" include inc1.asm\n"), Assembly::Outcome::Completed);
    EXPECT_EQ(run.Bytes(), "09 08 07 06 05 04 03 02 01");
    EXPECT_EQ(run.DiagnosticTexts(), Texts{"Cannot nest more than 8 levels ~ inc10.asm"});

    Write("self.asm", " include 'self.asm'\n db 1\n");
    EXPECT_EQ(run.Assemble(" include \"self.asm\"\n"), Assembly::Outcome::Completed);
    EXPECT_EQ(run.Bytes(), "01 01 01 01 01 01 01 01 01");
    EXPECT_EQ(run.DiagnosticTexts(), Texts{"Cannot nest more than 8 levels ~ self.asm"});
}

// As written (here an absolute path with backslashes), beside the including
// file, then in the include directory. An end in an include file ends the
// pass.
TEST_F(InclusionTest, SearchesAsWrittenBesideTheIncluderThenTheDirectory) {
    Write("sub/a.inc", " include b.inc\n db 0Ah\n");
    Write("sub/b.inc", " db 0Bh\n");
    Write("c.inc", " db 0Ch\n end\n db 0Dh\n");
    std::string absolute = (files.Path() / "sub" / "a.inc").string();
    std::replace(absolute.begin(), absolute.end(), '/', '\\');
    run.Assemble(" include none.inc\n include " + absolute + "\n .in c.inc\n db 0Eh\n");
    EXPECT_EQ(run.Bytes(), "0B 0A 0C");
    EXPECT_EQ(run.DiagnosticTexts(), Texts{"Include file error ~ none.inc"});
}

// Libraries are read in pass 1 only; their lines are listed on request.
TEST_F(InclusionTest, LibraryIsReadInPassOneOnly) {
    Write("defs.lib", "libsym equ 5\n");
    Write("MORE.LIB", "other equ 6\n");
    for (const bool listed : {false, true}) {
        run.Options().ListMacLibs = listed;
        run.Assemble(" maclib defs\n maclib MORE.LIB\n db libsym,other\n");
        EXPECT_EQ(run.Bytes(), "05 06");
        EXPECT_EQ(run.Run().State().MaclibLinesRead, 2);
        EXPECT_EQ(run.ListingText().find("libsym\tequ\t5") != std::string::npos, listed);
        EXPECT_EQ(run.DiagnosticTexts(), Texts{});
    }
}

} // namespace
} // namespace trident
