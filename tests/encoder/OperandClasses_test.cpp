// Class rules that the shipped table does not exercise, through a table of
// made-up rows.
#include "encoder/EncoderRun.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* Rows = "ldr,64,1,regs,NO,8080\n"
                             "ldd8,6,1,regd,NO,8080\n"
                             "none1,1,1,mems,NO,8080\n"
                             "none2,1,1,memd,NO,8080\n"
                             "none3,1,1,regreg,NO,8080\n"
                             "none4,1,1,regmem,NO,8080\n"
                             "none5,1,1,memreg,NO,8080\n"
                             "none6,1,1,memdata,NO,8080\n"
                             "none7,1,1,regdata,NO,8080\n"
                             "none8,1,1,bogus,NO,8080\n"
                             "big,1,1,blank,70000,8080\n"
                             "zed,0,1,blank,NO,Z80\n"
                             "zedz,0,1,blank,NO,Z180\n"
                             "stx,2,1,rp1,237,8080\n"
                             "djx,16,1,disp,221,8080\n"
                             "pushz,197,1,rp3,NO,z80\n"
                             "incz,4,1,regormemd,NO,z80\n"
                             "incy,4,1,regormemd,NO,Z180\n"
                             "mviz,6,1,regormemdata,NO,z80\n"
                             "mviy,6,1,regormemdata,NO,z180\n"
                             "addp,128,1,regormems,237,8080\n"
                             "ldix,1,3,rpdata16,237,8080\n";

struct ClassCase {
    const char* Name;
    const char* Source;
    const char* Bytes;
    Texts Diagnostics;
};

class OperandClassTest : public ::testing::TestWithParam<ClassCase> {};

TEST_P(OperandClassTest, EncodesByTheRowsClass) {
    testing::TempDir dir;
    testing::EncoderRun run(dir.Write("OpTable.def", Rows).string());
    run.Options().Z80 = true;
    EXPECT_EQ(run.Assemble(GetParam().Source), Assembly::Outcome::Completed);
    EXPECT_EQ(run.Bytes(), GetParam().Bytes);
    EXPECT_EQ(run.DiagnosticTexts(), GetParam().Diagnostics);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rows, OperandClassTest, ::testing::Values(
    ClassCase{"RegsSourceField", " ldr c", "41", {}},
    ClassCase{"RegsRejectsMemory", " ldr m", "46", {"Memory Not Allowed  ~ m"}},
    ClassCase{"RegsDropsTheIndex", " ldr 3(ix)", "46", {"Memory Not Allowed  ~ 3(ix)"}},
    ClassCase{"RegdDestinationField", " ldd8 c", "0E", {}},
    ClassCase{"RegdRejectsMemory", " ldd8 (hl)", "36", {"Memory Not Allowed  ~ (hl)"}},
    ClassCase{"NoEncodingClasses", " none1 a\n none2\n none3 a,b\n none4 1\n none5\n none6\n none7 x,y\n none8\n", "", {}},
    ClassCase{"PrefixTooLargeIsNoPrefix", " big", "01", {}},
    ClassCase{"UpperCaseCpuStillWarns", " zed\n zedz", "00 00", {"Z180 Warning ~ zedz"}},
    ClassCase{"Rp1IgnoresRowPrefix", " stx d", "12", {}},
    ClassCase{"DispCountsTwoDespitePrefix", " djx 0", "DD 10 FE", {}},
    ClassCase{"IndexInZ80PairRow", " pushz x", "E5", {"Illegal use of  ~ pushz"}},
    ClassCase{"IndexOnZ80RegOrMemD", " incz 1(x)", "DD 34 01", {}},
    ClassCase{"IndexOnZ180RegOrMemD", " incy 1(x)", "DD 34 01", {"Z180 Warning ~ incy", "ix or iy NOT allowed ~ incy"}},
    ClassCase{"IndexOnZ80RegOrMemData", " mviz (iy),2", "FD 36 00 02", {}},
    ClassCase{"IndexOnZ180RegOrMemData", " mviy (iy),2", "FD 36 00 02", {"Z180 Warning ~ mviy", "ix or iy NOT allowed ~ mviy"}},
    ClassCase{"IndexPrefixBeforeRowPrefix", " addp 4(y)", "FD ED 86 04", {}},
    ClassCase{"RpData16IndexThenRowPrefix", " ldix x,1", "DD ED 21 01 00", {}}),
    [](const auto& info) { return std::string(info.param.Name); });
// clang-format on

TEST(OperandClasses, UpperCaseCpuColoursButDoesNotMarkUse) {
    testing::TempDir dir;
    testing::EncoderRun run(dir.Write("OpTable.def", Rows).string());
    run.Assemble(" zed\n");
    EXPECT_EQ(run.DiagnosticTexts(), Texts{"Z80 Warning ~ zed"});
    EXPECT_FALSE(run.Run().State().Z80Used);
}

} // namespace
} // namespace trident
