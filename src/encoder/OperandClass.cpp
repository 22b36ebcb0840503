#include "encoder/OperandClass.h"

#include "base/Text.h"

#include <array>
#include <utility>

namespace trident {
namespace {

// regdata is 23 and regormemdata 22 although regdata comes first: tables
// written for the assembler rely on these codes, so the crossing stays.
constexpr std::array<std::pair<std::string_view, OperandClass>, 28> ClassKeywords{{
    {"blank", OperandClass::Blank},
    {"data", OperandClass::Data},
    {"regormems", OperandClass::RegOrMemS},
    {"regormemsrev", OperandClass::RegOrMemSRev},
    {"numberregormems", OperandClass::NumberRegOrMemS},
    {"regormemd", OperandClass::RegOrMemD},
    {"regs", OperandClass::RegS},
    {"mems", OperandClass::MemS},
    {"regd", OperandClass::RegD},
    {"memd", OperandClass::MemD},
    {"label", OperandClass::Label},
    {"disp", OperandClass::Disp},
    {"rp1", OperandClass::Rp1},
    {"rp2", OperandClass::Rp2},
    {"rp3", OperandClass::Rp3},
    {"rpdata16", OperandClass::RpData16},
    {"regreg", OperandClass::RegReg},
    {"regmem", OperandClass::RegMem},
    {"memreg", OperandClass::MemReg},
    {"memregmem", OperandClass::MemRegMem},
    {"memdata", OperandClass::MemData},
    {"regdata", OperandClass::RegData},
    {"regormemdata", OperandClass::RegOrMemData},
    {"number", OperandClass::Number},
    {"address", OperandClass::Address},
    {"port", OperandClass::Port},
    {"portreg", OperandClass::PortReg},
    {"regport", OperandClass::RegPort},
}};

} // namespace

OperandClass OperandClassCode(std::string_view keyword) {
    const std::string folded = LowerCase(keyword);
    for (const auto& [name, code] : ClassKeywords)
        if (name == folded) return code;
    return OperandClass::None;
}

} // namespace trident
