// The messages of operand reading and encoding, with the bytes that are
// emitted all the same: an error never changes a statement's size.
#include "assembler/ListingColours.h"
#include "encoder/EncoderRun.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using Texts = std::vector<std::string>;

std::string NameOf(const auto& info) {
    return info.param.Name;
}

struct DiagnosticCase {
    std::string Name;
    std::string Source;
    std::string Bytes;
    Texts Diagnostics;
};

class EncoderDiagnosticsTest : public ::testing::TestWithParam<DiagnosticCase> {};

TEST_P(EncoderDiagnosticsTest, ReportsAndStillEmits) {
    testing::EncoderRun run;
    EXPECT_EQ(run.QuietBytes(GetParam().Source), GetParam().Bytes);
    EXPECT_EQ(run.DiagnosticTexts(), GetParam().Diagnostics);
}

std::string Nops(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += " nop\n";
    return text;
}

// The bytes of `count` nops, each after a blank.
std::string Zeros(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += " 00";
    return text;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Messages, EncoderDiagnosticsTest, ::testing::Values(
    DiagnosticCase{"NoOperandsAllowed", " nop 3", "00", {"No operands allowed ~ nop"}},
    DiagnosticCase{"TooManyReportedOnce", " add b,c", "80", {"Too many operands ~ add"}},
    DiagnosticCase{"TooManyForTwo", " lxi b,1,2", "01 01 00", {"Too many operands ~ lxi"}},
    DiagnosticCase{"MissingOperand", " inr", "04", {"Missing operand ~ inr", "Bad register ~ "}},
    DiagnosticCase{"TooFewOperands", " mov a", "78", {"Too few operands ~ mov", "Bad register ~ "}},
    DiagnosticCase{"PairWhereByteNeeded", " inr bc", "04", {"Register NOT 8 bits ~ bc"}},
    DiagnosticCase{"IndexWhereByteNeeded", " add IX", "DD 84 00", {"Register NOT 8 bits ~ IX"}},
    DiagnosticCase{"ByteWherePairNeeded", " inx c", "03", {"Register NOT 16 bits ~ c"}},
    DiagnosticCase{"MemoryWherePairNeeded", " dcx m", "3B", {"Register NOT 16 bits ~ m"}},
    DiagnosticCase{"HlWhereBcOrDeNeeded", " ldax hl", "0A", {"Only bc or de allowed ~ hl"}},
    DiagnosticCase{"HWhereBcOrDeNeeded", " stax h", "02", {"Only bc or de allowed ~ h"}},
    DiagnosticCase{"ByteWhereBcOrDeNeeded", " ldax a", "1A", {"Register NOT 16 bits ~ a", "Only bc or de allowed ~ a"}},
    DiagnosticCase{"UnknownName", " add q", "80", {"Bad register ~ q"}},
    DiagnosticCase{"ZilogIndexNotation", " inr (ix+5)", "04", {"Bad register ~ (ix+5)"}},
    DiagnosticCase{"DisplacementTooLarge", " mov a,128(ix)", "DD 7E 80", {"Signed Value out of Range ~ 128 = 128"}},
    DiagnosticCase{"DisplacementTooSmall", " mov a,-129(iy)", "FD 7E 7F", {"Signed Value out of Range ~ -129 = -129"}},
    DiagnosticCase{"MemoryToMemory", " mov m,m", "76", {"Memory to Memory NOT allowed ~ mov"}},
    DiagnosticCase{"IndexedToIndexed", " mov 1(ix),2(iy)", "DD FD 76 01 02", {"Memory to Memory NOT allowed ~ mov"}},
    DiagnosticCase{"PushSp", " push sp", "F5", {"sp NOT allowed ~ push"}},
    DiagnosticCase{"PopSp", " pop SP", "F1", {"sp NOT allowed ~ pop"}},
    DiagnosticCase{"DadIx", " dad ix", "DD 29", {"ix NOT allowed ~ dad"}},
    DiagnosticCase{"DadIy", " dad IY", "FD 29", {"iy NOT allowed ~ dad"}},
    DiagnosticCase{"DadxHl", " dadx hl", "DD 29", {"hl NOT allowed ~ dadx"}},
    DiagnosticCase{"DadyHl", " dady hl", "FD 29", {"hl NOT allowed ~ dady"}},
    DiagnosticCase{"IndexInZ80PairRow", " dadc ix", "ED 6A", {"Illegal use of  ~ dadc"}},
    DiagnosticCase{"IndexInZ180PairRow", " mlt y", "ED 6C", {"Illegal use of  ~ mlt"}},
    DiagnosticCase{"IndexedInp", " inp 5(ix)", "DD ED 70 05", {"ix or iy NOT allowed ~ inp"}},
    DiagnosticCase{"IndexedOutp", " outp (y)", "FD ED 71 00", {"ix or iy NOT allowed ~ outp"}},
    DiagnosticCase{"IndexedTst", " tst -1(iy)", "FD ED 34 FF", {"ix or iy NOT allowed ~ tst"}},
    DiagnosticCase{"IndexedIn0", " in0 2(x),10h", "DD ED 30 02 10", {"ix or iy NOT allowed ~ in0"}},
    DiagnosticCase{"IndexedOut0", " out0 10h,(ix)", "DD ED 31 00 10", {"ix or iy NOT allowed ~ out0"}},
    DiagnosticCase{"RestartOutOfRange", " rst 8", "C7", {"Value out of Range ~ 8 = 8"}},
    DiagnosticCase{"BitOutOfRange", " bit 9,a", "CB 4F", {"Value out of Range ~ 9 = 9"}},
    DiagnosticCase{"ImmediateTooLarge", " mvi a,256", "3E 00", {"Value out of Range ~ 256 = 256"}},
    // Relative jumps between labels, at the limits of the range.
    DiagnosticCase{"JumpToItself", "here: jr here\n", "18 FE", {}},
    DiagnosticCase{"JumpBackward", "back: nop\n nop\n djnz back\n", "00 00 10 FC", {}},
    DiagnosticCase{"JumpForward", " jrnc fwd\n nop\nfwd: nop\n", "30 01 00 00", {}},
    DiagnosticCase{"BackwardLimit", "start:\n" + Nops(126) + " jrc start\n", "00" + Zeros(125) + " 38 80", {}},
    DiagnosticCase{"BackwardTooFar", "start:\n" + Nops(127) + " jrz start\n", "00" + Zeros(126) + " 28 7F", {"Bad Range ~ -129"}},
    DiagnosticCase{"ForwardLimit", " jr fwd\n" + Nops(127) + "fwd:\n", "18 7F" + Zeros(127), {}},
    DiagnosticCase{"ForwardTooFar", " jr 130", "18 80", {"Bad Range ~ 128"}}),
    NameOf<::testing::TestParamInfo<DiagnosticCase>>);
// clang-format on

// --- Processor warnings -----------------------------------------------------------

struct WarningCase {
    std::string Name;
    std::string Source;
    bool Z80Checked;
    bool Z180Checked;
    Texts Diagnostics;
};

class ProcessorWarningTest : public ::testing::TestWithParam<WarningCase> {};

TEST_P(ProcessorWarningTest, WarnsUnlessTheProcessorIsChecked) {
    testing::EncoderRun run;
    run.Options().Z80 = GetParam().Z80Checked;
    run.Options().Z180 = GetParam().Z180Checked;
    run.Assemble(GetParam().Source);
    EXPECT_EQ(run.DiagnosticTexts(), GetParam().Diagnostics);
    for (const Diagnostic& d : run.Diagnostics()) EXPECT_EQ(d.Kind, Severity::Warning);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Options, ProcessorWarningTest, ::testing::Values(
    WarningCase{"Intel8080IsSilent", " nop\n mov a,b\n", false, false, {}},
    WarningCase{"Z80Row", " EXX\n", false, false, {"Z80 Warning ~ EXX"}},
    WarningCase{"Z80RowSilenced", " exx\n", true, false, {}},
    WarningCase{"Z80RowIgnoresZ180Box", " exx\n", false, true, {"Z80 Warning ~ exx"}},
    WarningCase{"Z180Row", " slp\n", false, false, {"Z180 Warning ~ slp"}},
    WarningCase{"Z180RowSilenced", " slp\n", false, true, {}},
    WarningCase{"Z180RowIgnoresZ80Box", " slp\n", true, false, {"Z180 Warning ~ slp"}},
    WarningCase{"IndexedOperand", " mov a,5(ix)\n", false, false, {"z80 warning  ~ 5(ix)"}},
    WarningCase{"IndexRegister", " inx Y\n", false, false, {"z80 warning  ~ Y"}},
    WarningCase{"IndexSilenced", " mov a,5(ix)\n inx y\n", true, false, {}},
    WarningCase{"Z80RowAndIndex", " bit 1,2(ix)\n", false, false, {"Z80 Warning ~ bit", "z80 warning  ~ 2(ix)"}}),
    NameOf<::testing::TestParamInfo<WarningCase>>);
// clang-format on

// --- Listing line ----------------------------------------------------------------

struct ListingCase {
    std::string Name;
    std::string Source;
    std::string Line;
    Colour Ink;
};

class InstructionListingTest : public ::testing::TestWithParam<ListingCase> {};

// The colour of the listing text at `offset`.
Colour ColourAt(const ColouredText& listing, std::size_t offset) {
    for (const ColouredText::Run& run : listing.Runs())
        if (offset >= run.Start && offset < run.Start + run.Length) return run.Ink;
    return Colour{1, 2, 3};
}

TEST_P(InstructionListingTest, ShowsBytesAndProcessorColour) {
    testing::EncoderRun run;
    run.QuietBytes(GetParam().Source);
    ASSERT_EQ(run.StatementLines(), Texts{GetParam().Line});
    const std::size_t operation = run.ListingText().find("\t\t") + 2;
    EXPECT_EQ(ColourAt(run.Run().GetListing().Text(), operation), GetParam().Ink);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Lines, InstructionListingTest, ::testing::Values(
    ListingCase{"Plain8080", " nop", "0000\t00\t\tnop\t\t\t", ListingColours::Plain},
    ListingCase{"DataHasTrailingBlank", " adi 5", "0000\tC605 \t\tadi\t5\t\t", ListingColours::Plain},
    ListingCase{"WordLowByteFirst", " jmp 1234h", "0000\tC33412 \t\tjmp\t1234h\t\t", ListingColours::Plain},
    ListingCase{"NoBlankAfterRegisterData", " mvi b,7", "0000\t0607\t\tmvi\tb,7\t\t", ListingColours::Plain},
    ListingCase{"IndexMakesZ80", " mov a,(x)", "0000\tDD7E00\t\tmov\ta,(x)\t\t", ListingColours::Z80Instruction},
    ListingCase{"Z80Row", " exx", "0000\tD9\t\texx\t\t\t", ListingColours::Z80Instruction},
    ListingCase{"Z180Row", " slp", "0000\tED76\t\tslp\t\t\t", ListingColours::Z180Instruction}),
    NameOf<::testing::TestParamInfo<ListingCase>>);
// clang-format on

TEST(InstructionListing, BigEndianCodeShowsWordsAsNumbers) {
    testing::EncoderRun run;
    run.Options().BigEndianCode = true;
    EXPECT_EQ(run.QuietBytes(" lxi h,1234h"), "21 34 12");
    EXPECT_EQ(run.StatementLines()[0], "0000\t211234\t\tlxi\th,1234h\t\t");
}

TEST(ProcessorUse, RecordsTheProcessorsMet) {
    testing::EncoderRun run;
    run.QuietBytes(" nop\n mov a,5(ix)\n");
    EXPECT_FALSE(run.Run().State().Z80Used || run.Run().State().Z180Used);
    run.QuietBytes(" Exx\n mlt b\n");
    EXPECT_TRUE(run.Run().State().Z80Used && run.Run().State().Z180Used);
}

// Unresolved operands emit placeholders in the early passes; the statement
// keeps its size, so the label after it lands at the same address.
TEST(ForwardReferences, KeepTheSize) {
    testing::EncoderRun run;
    run.QuietBytes(" jr fwd\n mvi a,val\n lxi h,fwd\n bit val,(ix)\nfwd: nop\nval equ 3\n");
    EXPECT_EQ(run.Bytes(), "18 09 3E 03 21 0B 00 DD CB 00 5E 00");
    EXPECT_EQ(run.DiagnosticTexts(), Texts{});
}

TEST(UnknownOperation, IsLeftToTheLaterSteps) {
    testing::EncoderRun run;
    run.QuietBytes(" ldx a\n");
    EXPECT_EQ(run.DiagnosticTexts(), Texts{"Invalid Directive, Operation or Macro ~ ldx"});
    EXPECT_EQ(run.Bytes(), "");
}

} // namespace
} // namespace trident
