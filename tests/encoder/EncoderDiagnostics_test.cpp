// The messages of operand reading and encoding, with the bytes that are
// emitted all the same: an error never changes a statement's size.
#include "assembler/ListingColours.h"
#include "encoder/EncoderRun.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using Texts = std::vector<std::string>;

std::string Repeat(std::string_view text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

TEST(EncoderDiagnostics, ReportAndStillEmit) {
    // Nops for the relative jumps between labels, at the limits of the range.
    const auto nops = [](int count) { return Repeat(" nop\n", count); };
    const auto zeros = [](int count) { return Repeat(" 00", count); };
    // clang-format off
    const std::tuple<std::string, std::string, Texts> cases[] = {
        {" nop 3", "00", {"No operands allowed ~ nop"}}, {" .zilog 1", "", {"No operands allowed ~ .zilog"}},
        {" add b,c", "80", {"Too many operands ~ add"}}, {" lxi b,1,2", "01 01 00", {"Too many operands ~ lxi"}},
        {" inr", "04", {"Missing operand ~ inr", "Bad register ~ "}},
        {" mov a", "78", {"Too few operands ~ mov", "Bad register ~ "}},
        {" inr bc", "04", {"Register NOT 8 bits ~ bc"}}, {" add IX", "DD 84 00", {"Register NOT 8 bits ~ IX"}},
        {" inx c", "03", {"Register NOT 16 bits ~ c"}}, {" dcx m", "3B", {"Register NOT 16 bits ~ m"}},
        {" ldax hl", "0A", {"Only bc or de allowed ~ hl"}}, {" stax h", "02", {"Only bc or de allowed ~ h"}},
        {" ldax a", "1A", {"Register NOT 16 bits ~ a", "Only bc or de allowed ~ a"}},
        {" add q", "80", {"Bad register ~ q"}}, {" inr (ix+5)", "04", {"Bad register ~ (ix+5)"}},
        {" mov a,128(ix)", "DD 7E 80", {"Signed Value out of Range ~ 128 = 128"}},
        {" mov a,-129(iy)", "FD 7E 7F", {"Signed Value out of Range ~ -129 = -129"}},
        {" mov m,m", "76", {"Memory to Memory NOT allowed ~ mov"}},
        {" mov 1(ix),2(iy)", "DD FD 76 01 02", {"Memory to Memory NOT allowed ~ mov"}},
        {" push sp", "F5", {"sp NOT allowed ~ push"}}, {" pop SP", "F1", {"sp NOT allowed ~ pop"}},
        {" dad ix", "DD 29", {"ix NOT allowed ~ dad"}}, {" dad IY", "FD 29", {"iy NOT allowed ~ dad"}},
        {" dadx hl", "DD 29", {"hl NOT allowed ~ dadx"}}, {" dady hl", "FD 29", {"hl NOT allowed ~ dady"}},
        {" dadc ix", "ED 6A", {"Illegal use of  ~ dadc"}}, {" mlt y", "ED 6C", {"Illegal use of  ~ mlt"}},
        {" inp 5(ix)", "DD ED 70 05", {"ix or iy NOT allowed ~ inp"}},
        {" outp (y)", "FD ED 71 00", {"ix or iy NOT allowed ~ outp"}},
        {" tst -1(iy)", "FD ED 34 FF", {"ix or iy NOT allowed ~ tst"}},
        {" in0 2(x),10h", "DD ED 30 02 10", {"ix or iy NOT allowed ~ in0"}},
        {" out0 10h,(ix)", "DD ED 31 00 10", {"ix or iy NOT allowed ~ out0"}},
        {" rst 8", "C7", {"Value out of Range ~ 8 = 8"}}, {" bit 9,a", "CB 4F", {"Value out of Range ~ 9 = 9"}},
        {" mvi a,256", "3E 00", {"Value out of Range ~ 256 = 256"}}, {"here: jr here\n", "18 FE", {}},
        {"back: nop\n nop\n djnz back\n", "00 00 10 FC", {}}, {" jrnc fwd\n nop\nfwd: nop\n", "30 01 00 00", {}},
        {"start:\n" + nops(126) + " jrc start\n", "00" + zeros(125) + " 38 80", {}},
        {"start:\n" + nops(127) + " jrz start\n", "00" + zeros(126) + " 28 7F", {"Bad Range ~ -129"}},
        {" jr fwd\n" + nops(127) + "fwd:\n", "18 7F" + zeros(127), {}}, {" jr 130", "18 80", {"Bad Range ~ 128"}}};;
    // clang-format on
    for (const auto& [source, bytes, diagnostics] : cases) {
        SCOPED_TRACE(source.substr(0, 40));
        testing::EncoderRun run;
        EXPECT_EQ(run.QuietBytes(source), bytes);
        EXPECT_EQ(run.DiagnosticTexts(), diagnostics);
    }
}

// Processor warnings, unless the option box of the row's processor is checked
// (a processor directive sets the boxes from its line on).
TEST(EncoderDiagnostics, ProcessorWarnings) {
    // Each source, the Z80 and Z180 boxes, and the warnings.
    // clang-format off
    const std::tuple<const char*, bool, bool, Texts> cases[] = {
        {" nop\n mov a,b\n", false, false, {}}, {" EXX\n", false, false, {"Z80 Warning ~ EXX"}},
        {" exx\n", true, false, {}}, {" exx\n", false, true, {"Z80 Warning ~ exx"}},
        {" slp\n", false, false, {"Z180 Warning ~ slp"}}, {" slp\n", false, true, {}},
        {" slp\n", true, false, {"Z180 Warning ~ slp"}},
        {" mov a,5(ix)\n", false, false, {"z80 warning  ~ 5(ix)"}}, {" inx Y\n", false, false, {"z80 warning  ~ Y"}},
        {" mov a,(IX)\n mov (hl),b\n", false, false, {"z80 warning  ~ (IX)"}},
        {" mov a,5(ix)\n inx y\n", true, false, {}},
        {" bit 1,2(ix)\n", false, false, {"Z80 Warning ~ bit", "z80 warning  ~ 2(ix)"}},
        {" .i8080\n djnz $\n .z80\n djnz $\n", true, false, {"Z80 Warning ~ djnz"}}};
    // clang-format on
    for (const auto& [source, z80, z180, warnings] : cases) {
        SCOPED_TRACE(::testing::Message() << source << z80 << z180);
        testing::EncoderRun run;
        run.Options().Z80 = z80;
        run.Options().Z180 = z180;
        run.Assemble(source);
        EXPECT_EQ(run.DiagnosticTexts(), warnings);
        for (const Diagnostic& d : run.Diagnostics()) EXPECT_EQ(d.Kind, Severity::Warning);
    }
}

// An encoding kept from an earlier pass warns as a fresh one would, with
// the processor boxes as the final pass finds them: a directive further down
// changes them for the passes after its own.
TEST(EncoderDiagnostics, KeptEncodingsWarnWithTheBoxesOfTheFinalPass) {
    // Each source, the Z80 box at the start, the bytes and the warnings.
    const std::tuple<const char*, bool, const char*, Texts> cases[] = {
        {" mov a,5(ix)\n inx y\n i8080\nl: nop\n",
         true,
         "DD 7E 05 FD 23 00",
         {"z80 warning  ~ 5(ix)", "z80 warning  ~ y"}},
        {" exx\n mov a,(x)\n z80\nl: nop\n", false, "D9 DD 7E 00 00", {}},
    };
    for (const auto& [source, z80, bytes, warnings] : cases) {
        SCOPED_TRACE(source);
        testing::EncoderRun run;
        run.Options().Z80 = z80;
        run.Assemble(source);
        EXPECT_EQ(run.Passes(), (std::vector<int>{1, 2, 0}));
        EXPECT_EQ(run.Bytes(), bytes);
        EXPECT_EQ(run.DiagnosticTexts(), warnings);
    }
}

TEST(InstructionListing, ShowsBytesAndProcessorColour) {
    struct Case {
        const char *Source, *Line;
        Colour Ink;
    };
    const Colour plain = ListingColours::Plain, z80 = ListingColours::Z80Instruction;
    // clang-format off
    const Case cases[] = {
        {" nop", "0000\t00\t\tnop\t\t\t", plain}, {" adi 5", "0000\tC605 \t\tadi\t5\t\t", plain},
        {" jmp 1234h", "0000\tC33412 \t\tjmp\t1234h\t\t", plain}, {" mvi b,7", "0000\t0607\t\tmvi\tb,7\t\t", plain},
        {" mov a,(x)", "0000\tDD7E00\t\tmov\ta,(x)\t\t", z80}, {" exx", "0000\tD9\t\texx\t\t\t", z80},
        {" slp", "0000\tED76\t\tslp\t\t\t", ListingColours::Z180Instruction}};
    // clang-format on
    for (const Case& c : cases) {
        testing::EncoderRun run;
        run.QuietBytes(c.Source);
        ASSERT_EQ(run.StatementLines(), Texts{c.Line});
        // The operation field follows the first pair of tabs.
        EXPECT_EQ(testing::InkOf(run.Run().GetListing().Text(), "\t\t", 2), c.Ink) << c.Source;
    }
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

} // namespace
} // namespace trident
