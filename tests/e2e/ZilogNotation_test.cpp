// One program written twice, in 8080 style and in Zilog notation: the batch
// tool makes the same binary of both, whether --zilog or .zilog asks for it.
#include "e2e/ToolDir.h"

#include <gtest/gtest.h>
#include <sstream>

namespace trident {
namespace {

// Each statement in 8080 style, then after '|' in Zilog notation; the label
// field is the first eight columns.
constexpr std::string_view BothPrograms = R"( org 100h
start:  lxi h,table       | ld hl,table
        mvi b,count       | ld b,count
        xra a             | xor a
sum:    add m             | add a,(hl)
        inx h             | inc hl
        djnz sum          | djnz sum
        sta total         | ld (total),a
        lxi ix,table      | ld ix,table
        mov c,2(ix)       | ld c,(ix+2)
        bit 3,count(ix)   | bit 3,(ix+count)
        jrz start         | jr z,start
        lixd vector       | ld ix,(vector)
        dadx de           | add ix,de
        pcix              | jp (ix)
        cpi 10            | cp 10
        exaf              | ex af,af'
        push psw          | push af
        rst 7             | rst 38h
        out 80h           | out (80h),a
        in0 d,40h         | in0 d,(40h)
        mlt h             | mlt hl
table:  db 1,2,3,4
count   equ $-table
total:  ds 1
vector: dw start
)";

// The program in one notation: each line up to '|', or its label field and
// the part after '|'.
std::string Program(bool zilog) {
    std::istringstream lines{std::string(BothPrograms)};
    std::string program;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t bar = line.find('|');
        if (bar != std::string::npos)
            line = zilog ? line.substr(0, 8) + line.substr(bar + 1) : line.substr(0, bar);
        program += line + '\n';
    }
    return program;
}

// Assembles `source` as `name` with `flags` and returns the binary image.
std::string Binary(const std::string& name, const std::string& source, const std::string& flags) {
    testing::ToolDir dir;
    dir.Write(name + ".asm", source);
    const auto result =
        dir.Run("{" + name + ".asm} --quiet --z180 --bin {" + name + ".bin}" + flags);
    EXPECT_EQ(result.Exit, 0) << result.Err;
    return dir.Read(name + ".bin");
}

TEST(ZilogProgram, BothNotationsMakeTheSameBinary) {
    const std::string intel = Binary("intel", Program(false), "");
    EXPECT_EQ(intel.size(), 53u);
    EXPECT_EQ(Binary("option", Program(true), " --zilog"), intel);
    EXPECT_EQ(Binary("directive", " .zilog\n" + Program(true), ""), intel);
}

} // namespace
} // namespace trident
