// The fixed groups of names a source can ask the table to know in advance:
// logic and mathematical constants, integer limits, register names and the
// 8080 mnemonics with their base opcodes.

#include "symbols/PredefinedSymbols.h"

#include "base/Text.h"
#include "symbols/SymbolTable.h"

#include <array>
#include <bit>
#include <cstdint>
#include <span>
#include <string_view>

namespace trident {

namespace {

// "integer" is 16-bit, "long" 32-bit; the expression evaluator keeps the
// distinction, so each constant carries the width it has always had.
enum class NumberKind { Integer, Long, Double };

struct Constant {
    std::string_view Name;
    NumberKind Kind;
    double Number;
};

struct Register {
    std::string_view Name;
    std::int16_t Code;
};

struct Opcode {
    std::string_view Name;
    std::int16_t Base;
};

constexpr std::int32_t ValueSymbol = 1;
constexpr std::int32_t RegisterSymbol = 2;
constexpr std::int32_t MnemonicSymbol = 3;

constexpr std::array LogicConstants{
    Constant{"TRUE", NumberKind::Integer, -1},
    Constant{"FALSE", NumberKind::Integer, 0},
};

// Fifteen significant digits, as the constants have always been published;
// deliberately not the doubles nearest to e, pi and pi/2.
constexpr std::array MathematicalConstants{
    Constant{"e", NumberKind::Double, std::bit_cast<double>(0x4005BF0A8B145774ULL)},
    Constant{"PI", NumberKind::Double, std::bit_cast<double>(0x400921FB54442D11ULL)},
    Constant{"HalfPi", NumberKind::Double, std::bit_cast<double>(0x3FF921FB54442D28ULL)},
};

constexpr std::array IntegerLimits{
    Constant{"MinU8", NumberKind::Integer, 0},
    Constant{"MaxU8", NumberKind::Integer, 255},
    Constant{"MinU16", NumberKind::Integer, 0},
    Constant{"MaxU16", NumberKind::Long, 65535},
    Constant{"MinU32", NumberKind::Integer, 0},
    Constant{"MaxU32", NumberKind::Double, 4294967295.0},
    Constant{"MinS8", NumberKind::Integer, -128},
    Constant{"MaxS8", NumberKind::Integer, 127},
    Constant{"MinS16", NumberKind::Long, -32768},
    Constant{"MaxS16", NumberKind::Integer, 32767},
    Constant{"MinS32", NumberKind::Double, -2147483648.0},
    Constant{"MaxS32", NumberKind::Long, 2147483647},
};

// The value is the register's code in an instruction.
constexpr std::array Registers{
    Register{"b", 0},   Register{"c", 1},   Register{"d", 2},   Register{"e", 3},
    Register{"h", 4},   Register{"l", 5},   Register{"ixh", 4}, Register{"ixl", 5},
    Register{"iyh", 4}, Register{"iyl", 5}, Register{"m", 6},   Register{"a", 7},
    Register{"psw", 6}, Register{"bc", 0},  Register{"de", 2},  Register{"hl", 4},
    Register{"sp", 6},  Register{"ix", 4},  Register{"iy", 4},  Register{"x", 4},
    Register{"y", 4},
};

// xra carries 169 (A9) where its base opcode is 168; that is this
// program's own value and sources may depend on it.
constexpr std::array<Opcode, 78> Mnemonics{{
    {"aci", 206},  {"adc", 136}, {"add", 128},  {"adi", 198}, {"ana", 160}, {"ani", 230},
    {"call", 205}, {"cc", 220},  {"cm", 252},   {"cma", 47},  {"cmc", 63},  {"cmp", 184},
    {"cnc", 212},  {"cnz", 196}, {"cp", 244},   {"cpe", 236}, {"cpi", 254}, {"cpo", 228},
    {"cz", 204},   {"daa", 39},  {"dad", 9},    {"dcr", 5},   {"dcx", 11},  {"di", 243},
    {"ei", 251},   {"hlt", 118}, {"in", 219},   {"inr", 4},   {"inx", 3},   {"jc", 218},
    {"jm", 250},   {"jmp", 195}, {"jnc", 210},  {"jnz", 194}, {"jp", 242},  {"jpe", 234},
    {"jpo", 226},  {"jz", 202},  {"lda", 58},   {"ldax", 10}, {"lhld", 42}, {"lxi", 1},
    {"mov", 64},   {"mvi", 6},   {"nop", 0},    {"ora", 176}, {"ori", 246}, {"out", 211},
    {"pchl", 233}, {"pop", 193}, {"push", 197}, {"ral", 23},  {"rar", 31},  {"rc", 216},
    {"ret", 201},  {"rlc", 7},   {"rm", 248},   {"rnc", 208}, {"rnz", 192}, {"rp", 240},
    {"rpe", 232},  {"rpo", 224}, {"rrc", 15},   {"rst", 199}, {"rz", 200},  {"sbb", 152},
    {"sbi", 222},  {"shld", 34}, {"sphl", 249}, {"sta", 50},  {"stax", 2},  {"stc", 55},
    {"sub", 144},  {"sui", 214}, {"xchg", 235}, {"xra", 169}, {"xri", 238}, {"xthl", 227},
}};

// The 8080 registers and pairs as the era's sources use them for values.
constexpr std::array EightyRegisters{
    Register{"b", 0}, Register{"c", 1}, Register{"d", 2}, Register{"e", 3},  Register{"h", 4},
    Register{"l", 5}, Register{"m", 6}, Register{"a", 7}, Register{"sp", 6}, Register{"psw", 6},
};

template <typename Entry>
std::optional<std::int16_t> CodeOf(std::span<const Entry> entries, std::string_view name,
                                   std::int16_t Entry::*code) {
    for (const Entry& entry : entries) {
        if (EqualsNoCase(entry.Name, name)) return entry.*code;
    }
    return std::nullopt;
}

Value ToValue(const Constant& constant) {
    switch (constant.Kind) {
    case NumberKind::Integer:
        return static_cast<std::int16_t>(constant.Number);
    case NumberKind::Long:
        return static_cast<std::int32_t>(constant.Number);
    case NumberKind::Double:
        break;
    }
    return constant.Number;
}

} // namespace

void SymbolTable::LoadPreDefinedValues(std::int16_t group) {
    const auto enterConstants = [this](std::span<const Constant> constants) {
        for (const Constant& constant : constants)
            AddSymbol(constant.Name, ToValue(constant), ValueSymbol, -1);
    };
    switch (group) {
    case 0:
        enterConstants(LogicConstants);
        break;
    case 1:
        enterConstants(MathematicalConstants);
        break;
    case 2:
        enterConstants(IntegerLimits);
        break;
    case 3:
        for (const Register& reg : Registers) AddSymbol(reg.Name, reg.Code, RegisterSymbol, -1);
        break;
    case 4:
        for (const Opcode& opcode : Mnemonics)
            AddSymbol(opcode.Name, opcode.Base, MnemonicSymbol, -1);
        break;
    default:
        break;
    }
}

std::optional<std::int16_t> EraNameValue(std::string_view name) {
    if (const auto code = CodeOf<Register>(EightyRegisters, name, &Register::Code)) return code;
    return CodeOf<Opcode>(Mnemonics, name, &Opcode::Base);
}

} // namespace trident
