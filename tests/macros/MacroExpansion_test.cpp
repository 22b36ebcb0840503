#include "encoder/EncoderRun.h"

#include <gtest/gtest.h>
#include <optional>
#include <span>

namespace trident {
namespace {

using testing::EncoderRun;
using Texts = std::vector<std::string>;

struct ExpansionCase {
    const char* Source;
    const char* Bytes;
    Texts Diagnostics = {};
    // Symbols the run leaves behind; nothing where the name is undefined.
    std::vector<std::pair<const char*, std::optional<double>>> Symbols = {};
    Assembly::Outcome Outcome = Assembly::Outcome::Completed;
};

void ExpectExpansions(std::span<const ExpansionCase> cases) {
    for (const ExpansionCase& c : cases) {
        EncoderRun run;
        EXPECT_EQ(run.Assemble(c.Source), c.Outcome) << c.Source;
        EXPECT_EQ(run.Bytes(), c.Bytes) << c.Source;
        EXPECT_EQ(run.DiagnosticTexts(), c.Diagnostics) << c.Source;
        for (const auto& [name, value] : c.Symbols) EXPECT_EQ(run.Symbol(name), value) << name;
    }
}

TEST(Macros, ExpandIntoTheirBytes) {
    const ExpansionCase cases[] = {
        // Parameters join to text and match case-blind.
        {"m macro a,b\nlbl&A db a,B\n endm\n M 1,2\n dw lbl1\n", "01 02 00 00"},
        {"m macro list,x\n db list\n db x\n endm\n m <1,2>,3\n", "01 02 03"},
        {"m macro a,b\n db a b\n endm\n m 3\n m 3,+4\n", "03 07"},
        {"m macro a\n db a\n endm\n m 1,2\n", "01", {"Surplus Macro Arguments ignored ~ m"}},
        // "%" binds the decimal text of the value, not the expression.
        {"k equ 6\nm macro v\n ifs_cs v,eq,12\n db v\n endif\n endm\n m %k*2\n m k*2\n", "0C"},
        {"m macro v\n db v\n endm\n m %later\nlater equ 9\n", "09"},
        {"inner macro x\n db x+1\n endm\nouter macro y\n inner y*2\n db y\n endm\n outer 3\n",
         "07 03"},
        {"down macro n\n db n\n ifgt n\n down %n-1\n endif\n endm\n down 3\n db 9\n",
         "03 02 01 00 09"},
        // "exitm" leaves the macro and the conditionals open inside it.
        {"m macro a\n db 1\n ifz a\n exitm\n endif\n db 2\n endm\n m 0\n m 1\n db 3\n",
         "01 01 02 03"},
        {"m macro\n db 2^3, 'A^&B'\n endm\n m\n", "17 41 26 42"},
        // A redefinition is no duplicate symbol.
        {"m macro\n db 1\n endm\nm macro\n db 2\n endm\n m\n", "02"},
        {" macro\n db 1\n endm\n db 2\n", "02", {"Macros must have a name ~ macro"}},
        {" if 0\nm macro\n db 1\n endm\n endif\n m\n",
         "",
         {"Invalid Directive, Operation or Macro ~ m"}},
        {" local x\n exitm\n endm\n db 1\n",
         "01",
         {"Not valid outside Macros ~ local", "Not valid outside Macros ~ exitm"}},
        // A macro named like an instruction is never called.
        {"nop macro\n db 5\n endm\n nop\n", "00"},
        // Each expansion numbers its local names on from the last; the
        // numbering restarts every pass, so a forward reference resolves.
        {"m macro\n local l,k\n dw l\nl db 0\n endm\n m\n m\n",
         "02 00 00 05 00 00",
         {},
         {{"??000001", 2}, {"??000003", 5}, {"??000005", std::nullopt}}},
    };
    ExpectExpansions(cases);
}

TEST(Macros, RepeatBlocks) {
    const ExpansionCase cases[] = {
        {" rept 3\n db 7\n endm\n", "07 07 07"},
        {"n set 2\n rept n\nn set n+1\n db n\n endm\n", "03 04"},
        {" rept 0\n db 1\n endm\n rept -2\n db 2\n endm\n db 3\n", "03"},
        {" irp x,<1,2,3>\n db x*2\n endm\n", "02 04 06"},
        {" irp x,4,<5,6>\n db x\n endm\n", "04 05 06"},
        {" irp x,<>\n db 1\n endm\n", ""},
        {" irpc c,abc\n db 'c'\n endm\n", "61 62 63"},
        {" irpc c,<a b>\n db \"c\"\n endm\n", "61 20 62"},
        {"n equ 4\n irp x,<%n+1,2>\n db x\n endm\n irpc d,%n*3\n db d\n endm\n", "05 02 01 02"},
        // "exitm" ends the whole block.
        {"c set 0\n rept 5\nc set c+1\n db c\n ifz c-2\n exitm\n endif\n endm\n db 0ffh\n",
         "01 02 FF"},
        {"m macro n,v\n rept n\n db v\n endm\n endm\n m 2,9\n", "09 09"},
        {"m macro v\n db v,v\n endm\n irp x,<4,5>\n m x\n endm\n", "04 04 05 05"},
        {" rept 2\n irp x,<1,2>\n db x\n endm\n endm\n", "01 02 01 02"},
        {" irp\n db 1\n endm\n irpc x\n endm\n rept\n endm\n",
         "",
         {"Missing Operands ~ irp", "Missing Operands ~ irpc", "Missing Operands ~ rept"}},
        // Local names are renewed in every repetition.
        {" rept 2\n local here\nhere dw here\n endm\n", "00 00 02 00", {}, {{"??000002", 2}}},
        // A count that cannot be resolved stops the run.
        {" rept later\n db 1\n endm\nlater equ 2\n",
         "",
         {std::string(Assembly::TerminalMessage) + " ~ later"},
         {},
         Assembly::Outcome::Terminated},
    };
    ExpectExpansions(cases);
}

} // namespace
} // namespace trident
