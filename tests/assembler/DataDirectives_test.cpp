#include "encoder/EncoderRun.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::EncoderRun;
using Texts = std::vector<std::string>;

TEST(DataDirectives, EmitTheBytesOfEachFamily) {
    struct Case {
        const char* Source;
        const char* Bytes;
        Texts Diagnostics = {};
    };
    // clang-format off
    const Case cases[] = {
        {" db 'AB',0", "41 42 00"}, {" db 'A'+1", "42"}, {" db 'it''s'", "69 74 27 73"},
        {" db \"a\\tb\"", "61 09 62"}, {" DM 'AB'", "41 C2"}, {" defm \"AB\",'CD'", "41 42 43 C4"},
        {" dm 'AB',1", "41 42 01"}, {" .ascii 'AB'", "41 42"}, {" dc 'AB'", "41 C2"},
        {" defc 'AB',1", "41 42 81"}, {" .ascis ''", ""}, {" dz 'AB'", "41 42 00"},
        {" defz 1", "01 00"}, {" .asciz \"\"", "00"}, {" dw 1234h,-1", "34 12 FF FF"},
        {" defw 'AB'", "42 41"}, {" text 'hi'", "68 69"}, {" texz 'hi'", "68 69 00"},
        {" texts 'hi'", "68 E9"}, {" i3es 1.0", "00 00 80 3F"}, {" i3es_le -2", "00 00 00 C0"},
        {" i3es_be 1.0", "3F 80 00 00"}, {" i3es 1.5e2", "00 00 16 43"},
        {" i3es 2*0.25", "00 00 00 3F"}, {" i3es 0.1", "CD CC CC 3D"},
        {" i3ed 1.0", "00 00 00 00 00 00 F0 3F"}, {" i3ed_be 1.0", "3F F0 00 00 00 00 00 00"},
        {" i3ed_le 0.5e-1", "9A 99 99 99 99 99 A9 3F"},
        {" db", "", {"Missing Operands ~ db"}}, {" i3ed", "", {"Missing Operands ~ i3ed"}},
        {" db 256", "00", {"Value out of Range ~ 256 = 256"}},
        {" db 3.5", "03", {"Value Truncated to Integer ~ 3.5 = 3.5"}},
        {" db 'ab", "61", {"MismatchedOpenAndCloseQuotes ~ 'ab"}},
        {" text 'a','b'", "61", {"Too many operands ~ text"}},
        {" i3es \"ab\"", "00 00 00 00", {"Invalid Operand ~ \"ab\""}}};
    // clang-format on
    for (const Case& c : cases) {
        EncoderRun run;
        EXPECT_EQ(run.Assemble(c.Source), Assembly::Outcome::Completed);
        EXPECT_EQ(run.Bytes(), c.Bytes) << c.Source;
        EXPECT_EQ(run.DiagnosticTexts(), c.Diagnostics) << c.Source;
    }
}

TEST(DataListing, BytesRunInRowsOfFourIndentedByATab) {
    EncoderRun run;
    run.Assemble(" db 1,2,3,4,5,6,7,8,9\n dw 1,2,3\n db 1,2,3,4\n");
    EXPECT_EQ(run.StatementLines(),
              (Texts{"0000\t01 02 03 04", "\t05 06 07 08", "\t09\t\tdb\t1,2,3,4,5,6,7,8,9\t\t",
                     "0009\t0100 0200", "\t0300\t\tdw\t1,2,3\t\t",
                     "000F\t01 02 03 04\t\tdb\t1,2,3,4\t\t"}));
}

TEST(DataListing, ForwardReferenceEmitsZeroUntilTheFinalPass) {
    EncoderRun run;
    run.Options().ListAllPasses = true;
    run.Assemble(" db later\nlater:\n");
    // Every pass is listed, each followed by its reports.
    const std::string_view all = run.Run().GetListing().Text().Text();
    const std::size_t pass1 = all.find("0000\t00\t\tdb\tlater");
    const std::size_t last = all.rfind("0000\t01\t\tdb\tlater");
    ASSERT_NE(pass1, std::string::npos);
    ASSERT_NE(last, std::string::npos);
    EXPECT_LT(pass1, last);
}

TEST(Storage, ReservesSpaceAndRestartsEveryRecord) {
    EncoderRun run;
    ASSERT_EQ(run.Assemble(" org 100h\n db 1\n ds 10\nnext: db 2\n"), Assembly::Outcome::Completed);
    EXPECT_EQ(run.Symbol("next"), 0x10B);
    EXPECT_EQ(run.Run().Outputs().Hex().Text(), ":0101000001FD\r\n:01010B0002F1\r\n:0000000000");
    EXPECT_EQ(run.Run().Outputs().Srec().Text(), "S104010001F9\r\nS104010B02ED\r\nS9030000FC");
}

TEST(Storage, UnresolvedSizeStopsTheAssembly) {
    EncoderRun run;
    EXPECT_EQ(run.Assemble(" ds size\nsize equ 4\n"), Assembly::Outcome::Terminated);
    EXPECT_EQ(run.DiagnosticTexts().back(), std::string(Assembly::TerminalMessage) + " ~ size");
}

} // namespace
} // namespace trident
