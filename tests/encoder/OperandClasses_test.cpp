// Class rules that the shipped table does not exercise, through a table of
// made-up rows.
#include "encoder/EncoderRun.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using Texts = std::vector<std::string>;

// clang-format off
constexpr const char* Rows =
    "ldr,64,1,regs,NO,8080\n" "ldd8,6,1,regd,NO,8080\n" "none1,1,1,mems,NO,8080\n"
    "none2,1,1,memd,NO,8080\n" "none3,1,1,regreg,NO,8080\n" "none4,1,1,regmem,NO,8080\n"
    "none5,1,1,memreg,NO,8080\n" "none6,1,1,memdata,NO,8080\n" "none7,1,1,regdata,NO,8080\n"
    "none8,1,1,bogus,NO,8080\n" "big,1,1,blank,70000,8080\n" "zed,0,1,blank,NO,Z80\n"
    "zedz,0,1,blank,NO,Z180\n" "stx,2,1,rp1,237,8080\n" "djx,16,1,disp,221,8080\n"
    "pushz,197,1,rp3,NO,z80\n" "incz,4,1,regormemd,NO,z80\n" "incy,4,1,regormemd,NO,Z180\n"
    "mviz,6,1,regormemdata,NO,z80\n" "mviy,6,1,regormemdata,NO,z180\n"
    "addp,128,1,regormems,237,8080\n" "ldix,1,3,rpdata16,237,8080\n";
// clang-format on

TEST(OperandClasses, EncodeByTheRowsClass) {
    // clang-format off
    const std::tuple<const char*, const char*, Texts> cases[] = {
        {" ldr c", "41", {}}, {" ldr m", "46", {"Memory Not Allowed  ~ m"}},
        {" ldr 3(ix)", "46", {"Memory Not Allowed  ~ 3(ix)"}}, // the index is dropped
        {" ldd8 c", "0E", {}}, {" ldd8 (hl)", "36", {"Memory Not Allowed  ~ (hl)"}},
        // Classes that encode nothing.
        {" none1 a\n none2\n none3 a,b\n none4 1\n none5\n none6\n none7 x,y\n none8\n", "", {}},
        {" big", "01", {}}, // a prefix too large is no prefix
        {" zed\n zedz", "00 00", {"Z180 Warning ~ zedz"}}, // an upper-case cpu still warns
        {" stx d", "12", {}}, // rp1 ignores the row's prefix
        {" djx 0", "DD 10 FE", {}}, // disp counts from two bytes on despite the prefix
        {" pushz x", "E5", {"Illegal use of  ~ pushz"}}, {" incz 1(x)", "DD 34 01", {}},
        {" incy 1(x)", "DD 34 01", {"Z180 Warning ~ incy", "ix or iy NOT allowed ~ incy"}},
        {" mviz (iy),2", "FD 36 00 02", {}},
        {" mviy (iy),2", "FD 36 00 02", {"Z180 Warning ~ mviy", "ix or iy NOT allowed ~ mviy"}},
        {" addp 4(y)", "FD ED 86 04", {}}, // the index prefix before the row's
        {" ldix x,1", "DD ED 21 01 00", {}}};
    // clang-format on
    testing::TempDir dir;
    const std::string table = dir.Write("OpTable.def", Rows).string();
    for (const auto& [source, bytes, diagnostics] : cases) {
        testing::EncoderRun run(table);
        run.Options().Z80 = true;
        EXPECT_EQ(run.Assemble(source), Assembly::Outcome::Completed) << source;
        EXPECT_EQ(run.Bytes(), bytes) << source;
        EXPECT_EQ(run.DiagnosticTexts(), diagnostics) << source;
    }
}

TEST(OperandClasses, UpperCaseCpuColoursButDoesNotMarkUse) {
    testing::TempDir dir;
    testing::EncoderRun run(dir.Write("OpTable.def", Rows).string());
    run.Assemble(" zed\n");
    EXPECT_EQ(run.DiagnosticTexts(), Texts{"Z80 Warning ~ zed"});
    EXPECT_FALSE(run.Run().State().Z80Used);
}

} // namespace
} // namespace trident
