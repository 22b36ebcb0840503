// One program written twice, in 8080 style and in Zilog notation: the batch
// tool makes the same binary of both, whether --zilog or .zilog asks for it.
#include "support/RunTool.h"
#include "support/TempSource.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

using testing::Quoted;
using testing::ReadWholeFile;
using testing::RunTool;

constexpr const char* IntelProgram = R"( org 100h
start:  lxi h,table
        mvi b,count
        xra a
sum:    add m
        inx h
        djnz sum
        sta total
        lxi ix,table
        mov c,2(ix)
        bit 3,count(ix)
        jrz start
        lixd vector
        dadx de
        pcix
        cpi 10
        exaf
        push psw
        rst 7
        out 80h
        in0 d,40h
        mlt h
table:  db 1,2,3,4
count   equ $-table
total:  ds 1
vector: dw start
)";

constexpr const char* ZilogBody = R"( org 100h
start:  ld hl,table
        ld b,count
        xor a
sum:    add a,(hl)
        inc hl
        djnz sum
        ld (total),a
        ld ix,table
        ld c,(ix+2)
        bit 3,(ix+count)
        jr z,start
        ld ix,(vector)
        add ix,de
        jp (ix)
        cp 10
        ex af,af'
        push af
        rst 38h
        out (80h),a
        in0 d,(40h)
        mlt hl
table:  db 1,2,3,4
count   equ $-table
total:  ds 1
vector: dw start
)";

class ZilogProgramTest : public ::testing::Test {
  protected:
    // Assembles `source` with `flags` and returns the binary image.
    std::string Binary(const std::string& name, const std::string& source,
                       const std::string& flags) {
        const auto file = dir.Write(name + ".asm", source);
        const auto binary = dir.Path() / (name + ".bin");
        const auto result =
            RunTool(Quoted(file) + " --quiet --z180 --bin " + Quoted(binary) + flags, dir.Path());
        EXPECT_EQ(result.Exit, 0) << result.Err;
        return ReadWholeFile(binary);
    }

    testing::TempDir dir;
};

TEST_F(ZilogProgramTest, BothNotationsMakeTheSameBinary) {
    const std::string intel = Binary("intel", IntelProgram, "");
    EXPECT_EQ(intel.size(), 53u);
    EXPECT_EQ(Binary("option", ZilogBody, " --zilog"), intel);
    EXPECT_EQ(Binary("directive", std::string(" .zilog\n") + ZilogBody, ""), intel);
}

} // namespace
} // namespace trident
