#include "assembler/WordKind.h"
#include "encoder/EncoderRun.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::EncoderRun;

constexpr const char* Invalid = "Invalid Directive, Operation or Macro";

bool Reports(const EncoderRun& run, std::string_view message) {
    for (const std::string& text : run.DiagnosticTexts())
        if (text.starts_with(message)) return true;
    return false;
}

// Which rule takes a statement: words are matched whole and case-blind;
// while a condition skips lines only conditionals and macro bodies are
// looked at; directives and instructions come before macros of the same
// name; a stray endm closes nothing.
TEST(Dispatch, EachStatementGoesToTheFirstRuleThatTakesIt) {
    struct Case {
        const char* Source;
        const char* Bytes;
        bool Invalid = false;
    };
    // clang-format off
    const Case cases[] = {
        {" DB 1\n", "01"},
        {" d 1\n", "", true},
        {" includes x\n", "", true},
        {" incl x\n", "", true},
        {" endm\n db 1\n", "01"},
        {" nop\n", "00"},
        {" NOP\n", "00"},
        {" if 0\n bogus\n db 1\n endif\n db 2\n", "02"},
        {" if 0\n if 1\n else\n db 1\n endif\n endif\n", ""},
        {"db macro\n nop\n endm\n db 5\n", "05"},
        {"nop macro\n db 9\n endm\n nop\n", "00"},
        {"m macro\n db 7\n endm\n m\n", "07"},
        {"n set 1\n db n\n", "01"},
        {"n SET 2\n db n\n", "02"},
        {" set 3,a\n", "CB DF"},
        {" .zilog\n ld a,b\n .intel\n mov a,b\n", "78 78"},
        {" ld a,b\n", "", true},
    };
    // clang-format on
    for (const Case& c : cases) {
        EncoderRun run;
        EXPECT_EQ(run.QuietBytes(c.Source), c.Bytes) << c.Source;
        EXPECT_EQ(Reports(run, Invalid), c.Invalid) << c.Source;
    }
}

// A source viewer colours operation words by the dispatch's own tables: the
// shipped opcode table, every kind of directive, the Zilog words, and the
// macros a run defined (a macro named like an instruction stays one).
TEST(Dispatch, WordsAreClassifiedByTheTablesTheDispatchReads) {
    EncoderRun run;
    run.QuietBytes("twice macro\n nop\n endm\nnop macro\n endm\n twice\n");
    const struct {
        const char* Word;
        WordKind Kind;
    } cases[] = {
        {"mvi", WordKind::Instruction},  {"LDIR", WordKind::Instruction},
        {"djnz", WordKind::Instruction}, {"nop", WordKind::Instruction},
        {"db", WordKind::Directive},     {"Include", WordKind::Directive},
        {"ifdef", WordKind::Directive},  {"endm", WordKind::Directive},
        {"equ", WordKind::Directive},    {".zilog", WordKind::Directive},
        {"twice", WordKind::Macro},      {"TWICE", WordKind::Macro},
        {"thrice", WordKind::Other},     {"", WordKind::Other},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ClassifyWord(c.Word, run.Run().Opcodes(), run.Run().DefinedMacros()), c.Kind)
            << c.Word;
    // Without a run's macros a macro name is no known word.
    EXPECT_EQ(ClassifyWord("twice", run.Run().Opcodes()), WordKind::Other);
}

} // namespace
} // namespace trident
