#pragma once

#include <cstdint>
#include <string_view>

namespace trident {

// How an instruction's operands are read and where their fields go. The
// codes are those of the opcode table's class keywords; None (0) stands for
// a keyword the loader did not recognise and selects no encoding.
enum class OperandClass : std::int32_t {
    None = 0,
    Blank = 1,
    Data = 2,
    RegOrMemS = 3,
    RegOrMemSRev = 4,
    NumberRegOrMemS = 5,
    RegOrMemD = 6,
    RegS = 7,
    MemS = 8,
    RegD = 9,
    MemD = 10,
    Label = 11,
    Disp = 12,
    Rp1 = 13,
    Rp2 = 14,
    Rp3 = 15,
    RpData16 = 16,
    RegReg = 17,
    RegMem = 18,
    MemReg = 19,
    MemRegMem = 20,
    MemData = 21,
    RegOrMemData = 22,
    RegData = 23,
    Number = 24,
    Address = 25,
    Port = 26,
    PortReg = 27,
    RegPort = 28,
};

// The class named by an opcode table keyword, compared without regard to
// case; None for any other word.
OperandClass OperandClassCode(std::string_view keyword);

} // namespace trident
