#include "assembler/Assembly.h"
#include "assembler/ListingColours.h"
#include "assembler/RunFailure.h"
#include "support/ListingBody.h"
#include "support/TempSource.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

// Records what the run shows a front end, and can press Stop.
class RecordingFrontEnd : public FrontEnd {
  public:
    void ShowPass(int pass) override { Passes.push_back(pass); }
    void ShowDiagnosticCounts(int errors, int warnings) override {
        LastErrors = errors;
        LastWarnings = warnings;
    }
    void Yield() override {
        ++Yields;
        if (Run && Yields == StopAtYield) Run->RequestStop();
    }

    std::vector<int> Passes;
    int LastErrors = -1;
    int LastWarnings = -1;
    int Yields = 0;
    int StopAtYield = -1;
    Assembly* Run = nullptr;
};

class AssemblyTest : public ::testing::Test {
  protected:
    Assembly::Outcome Assemble(std::string_view text) {
        source = dir.Write("prog.asm", text);
        return run.Assemble(source);
    }
    std::string ListingText() const {
        return testing::StatementLines(run.GetListing().Text().Text());
    }

    testing::TempDir dir;
    RecordingFrontEnd frontEnd;
    Assembly run{&frontEnd};
    std::filesystem::path source;
};

TEST_F(AssemblyTest, MissingSourceDoesNothing) {
    EXPECT_EQ(run.Assemble(dir.Path() / "nosuch.asm"), Assembly::Outcome::NoSource);
    EXPECT_EQ(run.Assemble(""), Assembly::Outcome::NoSource);
    EXPECT_TRUE(frontEnd.Passes.empty());
}

struct PassCase {
    const char* Name;
    const char* Source;
    std::vector<int> Passes;
};

class PassSequenceTest : public AssemblyTest, public ::testing::WithParamInterface<PassCase> {};

TEST_P(PassSequenceTest, RunsResolvingPassesThenTheFinalPass) {
    EXPECT_EQ(Assemble(GetParam().Source), Assembly::Outcome::Completed);
    EXPECT_EQ(frontEnd.Passes, GetParam().Passes);
}

INSTANTIATE_TEST_SUITE_P(
    Sources, PassSequenceTest,
    ::testing::Values(PassCase{"Empty", "", {1, 0}},
                      PassCase{"CommentsOnly", "; nothing\n* at all\n\n", {1, 0}},
                      // A new label in pass 1 asks for one more pass to settle.
                      PassCase{"OneLabel", "start:\n", {1, 2, 0}},
                      PassCase{"LabelsOnSeveralStatements", "a: ! b: ! c:\n", {1, 2, 0}}),
    [](const auto& info) { return std::string(info.param.Name); });

TEST_F(AssemblyTest, EmptySourceEmitsNothing) {
    Assemble("");
    EXPECT_EQ(run.State().LowestAddress, 65535);
    EXPECT_EQ(run.State().HighestAddress, 0);
    EXPECT_EQ(run.State().HighestPass, 0);
    EXPECT_EQ(ListingText(), "");
}

TEST_F(AssemblyTest, ListingLineLayout) {
    Assemble("start: ; first\n   ; indented comment\n");
    EXPECT_EQ(ListingText(), "0000\t\tstart\t\t\t; first\t\r\n"
                             "0000\t\t\t\t\t; indented comment\t\r\n");
}

TEST_F(AssemblyTest, LabelNamesItsAddressAndDollarIsDefined) {
    Assemble("here:\n");
    clsSymbolTable& symbols = run.Symbols();
    ASSERT_TRUE(symbols.VariableExists("here"));
    EXPECT_EQ(AsNumber(symbols.SymVal()), 0.0);
    EXPECT_EQ(symbols.Pass(), 0);
    EXPECT_TRUE(symbols.VariableExists("$"));
}

TEST_F(AssemblyTest, DiagnosticsOnlyInTheFinalPass) {
    Assemble("x:\n  bogus 1,2\n");
    EXPECT_EQ(frontEnd.Passes, (std::vector<int>{1, 2, 0}));
    EXPECT_EQ(ListingText(), "0000\t\tx\t\t\t\t\r\n"
                             "~Invalid Directive, Operation or Macro ~ bogus\r\n"
                             "0000\t\t\tbogus\t1,2\t\t\r\n");
    EXPECT_EQ(run.State().ErrorCount, 1);
    EXPECT_EQ(frontEnd.LastErrors, 1);
    ASSERT_EQ(run.GetListing().Diagnostics().size(), 1u);
    const Diagnostic& d = run.GetListing().Diagnostics()[0];
    EXPECT_EQ(d.Where.File, source.string());
    EXPECT_EQ(d.Where.Line, 2);
    EXPECT_EQ(d.Detail, "bogus");
}

TEST_F(AssemblyTest, ListAllPassesListsAndReportsEveryPass) {
    run.Options().ListAllPasses = true;
    Assemble("x:\n  bogus\n");
    EXPECT_EQ(run.GetListing().Diagnostics().size(), 3u);
    EXPECT_EQ(run.State().ErrorCount, 1) << "counts describe the last pass";
}

TEST_F(AssemblyTest, DiagnosticLinesAreColoured) {
    Assemble(" bogus\n");
    const auto& runs = run.GetListing().Text().Runs();
    ASSERT_FALSE(runs.empty());
    EXPECT_EQ(runs.front().Ink, ListingColours::Error);
    EXPECT_EQ(ListingText().substr(runs.front().Start, runs.front().Length),
              "~Invalid Directive, Operation or Macro ~ bogus\r\n");
}

TEST_F(AssemblyTest, DuplicateLabelReportedOnceInTheFinalPass) {
    Assemble("x:\nx:\n");
    ASSERT_EQ(run.GetListing().Diagnostics().size(), 1u);
    EXPECT_EQ(run.GetListing().Diagnostics()[0].Message, "Symbol Already Defined");
    EXPECT_EQ(run.GetListing().Diagnostics()[0].Where.Line, 2);
}

TEST_F(AssemblyTest, StopDuringPassOneLeavesNoListing) {
    frontEnd.Run = &run;
    frontEnd.StopAtYield = 1;
    EXPECT_EQ(Assemble("a:\nb:\nc:\n"), Assembly::Outcome::Stopped);
    EXPECT_EQ(frontEnd.Passes, std::vector<int>{1});
    EXPECT_EQ(run.State().TotalLines, 1) << "the pass ends at the next statement boundary";
    EXPECT_EQ(ListingText(), "");
}

TEST_F(AssemblyTest, CountersDescribeTheFinalPass) {
    Assemble("a:\n! ! \n; c\n");
    EXPECT_EQ(run.State().LinesReadFromFile, 3);
    EXPECT_EQ(run.State().TotalLines, 5);
}

TEST_F(AssemblyTest, LostCharacterAfterLoneCarriageReturn) {
    Assemble("a:\rxb:\rxc:");
    EXPECT_TRUE(run.Symbols().VariableExists("b"));
    EXPECT_TRUE(run.Symbols().VariableExists("c"));
    EXPECT_FALSE(run.Symbols().VariableExists("xb"));
}

// Later passes reuse the main file's lines as the first pass read them; a
// new assembly must read the file afresh, with the options it now has.
TEST_F(AssemblyTest, EachAssemblyReadsTheSourceAgain) {
    Assemble(" db 1\n");
    EXPECT_EQ(run.State().ObjectImage[0], 1);
    Assemble(" db 2\n db 3\n");
    EXPECT_EQ(run.State().ObjectImage[0], 2);
    EXPECT_EQ(run.State().ObjectImage[1], 3);

    // "d" with bit 7 set: an unknown word unless the parity bit is stripped.
    source = dir.Write("prog.asm", " \xE4\xE2 4\n");
    run.Assemble(source);
    EXPECT_EQ(run.State().ErrorCount, 1);
    run.Options().StripParity = true;
    run.Assemble(source);
    EXPECT_EQ(run.State().ErrorCount, 0);
    EXPECT_EQ(run.State().ObjectImage[0], 4);
}

struct LimitCase {
    const char* Name;
    std::string Source;
    const char* Limit;
};

class RunLimitTest : public AssemblyTest, public ::testing::WithParamInterface<LimitCase> {};

TEST_P(RunLimitTest, FailsTheRunNamingTheLimitAndTheLine) {
    EXPECT_EQ(Assemble(GetParam().Source), Assembly::Outcome::Failed);
    const std::string& message = run.FailureMessage();
    EXPECT_NE(message.find(GetParam().Limit), std::string::npos) << message;
    EXPECT_NE(message.find("line 2"), std::string::npos) << message;
    EXPECT_NE(ListingText().find("~Assembly stopped ~ "), std::string::npos);
}

std::string Repeated(const std::string& piece, int times, const std::string& separator) {
    std::string text = piece;
    for (int i = 1; i < times; ++i) text += separator + piece;
    return text;
}

INSTANTIATE_TEST_SUITE_P(
    Limits, RunLimitTest,
    ::testing::Values(
        LimitCase{"Statements", "ok:\n" + Repeated(" nop", 33, "!") + "\n", "32 statements"},
        LimitCase{"Operands", "ok:\n x " + Repeated("1", 129, ",") + "\n", "128 operands"}),
    [](const auto& info) { return std::string(info.param.Name); });

TEST(AssemblyIndependence, TwoRunsInOneProcessShareNothing) {
    testing::TempDir dir;
    Assembly first;
    Assembly second;
    first.Options().CaseSensitiveSymbols = true;
    EXPECT_EQ(first.Assemble(dir.Write("a.asm", "Alpha:\n")), Assembly::Outcome::Completed);
    EXPECT_EQ(second.Assemble(dir.Write("b.asm", "beta:\n")), Assembly::Outcome::Completed);
    EXPECT_TRUE(first.Symbols().VariableExists("Alpha"));
    EXPECT_FALSE(first.Symbols().VariableExists("alpha"));
    EXPECT_FALSE(second.Symbols().VariableExists("Alpha"));
}

} // namespace
} // namespace trident

namespace trident {
namespace {

TEST(EmitValue, StoresLowByteFirstAndTextFollowsTheByteOrderOption) {
    struct Case {
        Value In;
        int Width;
        bool BigEndian;
        const char* Text;
        std::vector<std::uint8_t> Bytes;
    };
    const Case cases[] = {
        {Value{std::int32_t{0x1234}}, 16, false, "3412", {0x34, 0x12}},
        {Value{std::int32_t{0x1234}}, 16, true, "1234", {0x34, 0x12}},
        {Value{std::int32_t{-1}}, 8, false, "FF", {0xFF}},
        {Value{std::int32_t{0x1FF}}, 8, false, "FF", {0xFF}},
        {Value{-2.0}, 16, false, "FEFF", {0xFE, 0xFF}},
        {Value{}, 16, false, "0000", {0x00, 0x00}},
    };
    for (const Case& c : cases) {
        Assembly run;
        run.Options().BigEndianCode = c.BigEndian;
        run.State().LocationCounter = 0x100;
        run.State().ListThisLine = true;
        EXPECT_EQ(run.EmitValue(c.In, c.Width), c.Text);
        const auto& image = run.State().ObjectImage;
        EXPECT_EQ(std::vector<std::uint8_t>(image.begin() + 0x100,
                                            image.begin() + 0x100 + c.Bytes.size()),
                  c.Bytes);
        EXPECT_EQ(run.State().LowestAddress, 0x100);
        EXPECT_EQ(run.State().HighestAddress, 0x100 + static_cast<int>(c.Bytes.size()) - 1);
        EXPECT_EQ(run.State().LocationCounter, 0x100 + static_cast<int>(c.Bytes.size()));
    }
}

TEST(EmitValue, WholeBitsOfEveryKindOfValue) {
    struct Case {
        Value In;
        std::uint32_t Bits;
    };
    const Case cases[] = {
        {Value{std::int32_t{-1}}, 0xFFFFFFFFu}, {Value{std::int16_t{0x1234}}, 0x1234u},
        {Value{-2.7}, 0xFFFFFFFEu},             {Value{65537.9}, 0x10001u},
        {Value{1e30}, 0u},                      {Value{4294967296.0 * 1e6 + 5.0}, 5u},
        {Value{std::nan("")}, 0u},              {Value{}, 0u},
        {Value{std::string("AB")}, 0u},
    };
    for (const Case& c : cases) EXPECT_EQ(WholeBits(c.In), c.Bits);
}

TEST(EmitValue, AStatementThatIsNotListedGetsNoTextButItsBytes) {
    Assembly run;
    run.State().LocationCounter = 0x100;
    EXPECT_EQ(run.EmitValue(Value{std::int32_t{0x1234}}, 16), "");
    EXPECT_EQ(run.State().ObjectImage[0x100], 0x34);
    EXPECT_EQ(run.State().ObjectImage[0x101], 0x12);
}

TEST(EmitValue, AnAddressPastFFFFFailsTheRun) {
    Assembly run;
    run.State().ListThisLine = true;
    run.State().LocationCounter = 0xFFFF;
    EXPECT_EQ(run.EmitValue(Value{std::int32_t{1}}, 8), "01");
    EXPECT_THROW(run.EmitValue(Value{std::int32_t{1}}, 8), RunFailure);
    run.State().LocationCounter = 0xFFFF;
    EXPECT_THROW(run.EmitValue(Value{std::int32_t{1}}, 16), RunFailure)
        << "the high byte of a word would land past FFFF";
}

} // namespace
} // namespace trident
