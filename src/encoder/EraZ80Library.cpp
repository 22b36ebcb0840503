#include "encoder/EraZ80Library.h"

#include "base/Text.h"
#include "encoder/EncoderContext.h"
#include "encoder/OperandReader.h"

#include <array>
#include <cstdint>

namespace trident {
namespace {

// How a mnemonic's operands are written and where they go.
enum class Shape : std::uint8_t {
    None,       // P op
    RegDisp,    // ldx r,d:   P op+8r d
    RegDispLow, // stx r,d:   P op+r d
    DataDisp,   // mvix n,d:  P op d n
    Word,       // lxix nn:   P op nn
    Disp,       // addx d:    P op d
    BitDisp,    // bitx b,d:  P CB d op+8b
    RotateDisp, // rlcx d:    P CB d op
};

struct Mnemonic {
    std::string_view Word;
    Shape Form;
    std::uint8_t Prefix;
    std::uint8_t Opcode;
};

constexpr std::uint8_t Ix = 0xDD;
constexpr std::uint8_t Iy = 0xFD;
constexpr std::uint8_t Ed = 0xED;
constexpr std::uint8_t BitPrefix = 0xCB;

constexpr auto Mnemonics = std::to_array<Mnemonic>({
    {"ldx", Shape::RegDisp, Ix, 0x46},     {"ldy", Shape::RegDisp, Iy, 0x46},
    {"stx", Shape::RegDispLow, Ix, 0x70},  {"sty", Shape::RegDispLow, Iy, 0x70},
    {"mvix", Shape::DataDisp, Ix, 0x36},   {"mviy", Shape::DataDisp, Iy, 0x36},
    {"lxix", Shape::Word, Ix, 0x21},       {"lxiy", Shape::Word, Iy, 0x21},
    {"pushix", Shape::None, Ix, 0xE5},     {"pushiy", Shape::None, Iy, 0xE5},
    {"popix", Shape::None, Ix, 0xE1},      {"popiy", Shape::None, Iy, 0xE1},
    {"inxix", Shape::None, Ix, 0x23},      {"inxiy", Shape::None, Iy, 0x23},
    {"dcxix", Shape::None, Ix, 0x2B},      {"dcxiy", Shape::None, Iy, 0x2B},
    {"addx", Shape::Disp, Ix, 0x86},       {"addy", Shape::Disp, Iy, 0x86},
    {"adcx", Shape::Disp, Ix, 0x8E},       {"adcy", Shape::Disp, Iy, 0x8E},
    {"subx", Shape::Disp, Ix, 0x96},       {"suby", Shape::Disp, Iy, 0x96},
    {"sbcx", Shape::Disp, Ix, 0x9E},       {"sbcy", Shape::Disp, Iy, 0x9E},
    {"sbbx", Shape::Disp, Ix, 0x9E},       {"sbby", Shape::Disp, Iy, 0x9E},
    {"andx", Shape::Disp, Ix, 0xA6},       {"andy", Shape::Disp, Iy, 0xA6},
    {"anax", Shape::Disp, Ix, 0xA6},       {"anay", Shape::Disp, Iy, 0xA6},
    {"xorx", Shape::Disp, Ix, 0xAE},       {"xory", Shape::Disp, Iy, 0xAE},
    {"xrax", Shape::Disp, Ix, 0xAE},       {"xray", Shape::Disp, Iy, 0xAE},
    {"orx", Shape::Disp, Ix, 0xB6},        {"ory", Shape::Disp, Iy, 0xB6},
    {"orax", Shape::Disp, Ix, 0xB6},       {"oray", Shape::Disp, Iy, 0xB6},
    {"cmpx", Shape::Disp, Ix, 0xBE},       {"cmpy", Shape::Disp, Iy, 0xBE},
    {"inrx", Shape::Disp, Ix, 0x34},       {"inry", Shape::Disp, Iy, 0x34},
    {"dcrx", Shape::Disp, Ix, 0x35},       {"dcry", Shape::Disp, Iy, 0x35},
    {"bitx", Shape::BitDisp, Ix, 0x46},    {"bity", Shape::BitDisp, Iy, 0x46},
    {"setx", Shape::BitDisp, Ix, 0xC6},    {"sety", Shape::BitDisp, Iy, 0xC6},
    {"resx", Shape::BitDisp, Ix, 0x86},    {"resy", Shape::BitDisp, Iy, 0x86},
    {"rlcx", Shape::RotateDisp, Ix, 0x06}, {"rlcy", Shape::RotateDisp, Iy, 0x06},
    {"rrcx", Shape::RotateDisp, Ix, 0x0E}, {"rrcy", Shape::RotateDisp, Iy, 0x0E},
    {"ralx", Shape::RotateDisp, Ix, 0x16}, {"raly", Shape::RotateDisp, Iy, 0x16},
    {"rarx", Shape::RotateDisp, Ix, 0x1E}, {"rary", Shape::RotateDisp, Iy, 0x1E},
    {"slax", Shape::RotateDisp, Ix, 0x26}, {"slay", Shape::RotateDisp, Iy, 0x26},
    {"srax", Shape::RotateDisp, Ix, 0x2E}, {"sray", Shape::RotateDisp, Iy, 0x2E},
    {"srlx", Shape::RotateDisp, Ix, 0x3E}, {"srly", Shape::RotateDisp, Iy, 0x3E},
    {"outpf", Shape::None, Ed, 0x71},      {"inpf", Shape::None, Ed, 0x70},
});

constexpr std::array<int, 8> OperandCounts{0, 2, 2, 2, 1, 1, 2, 1};

const Mnemonic* Find(std::string_view word) {
    for (const Mnemonic& mnemonic : Mnemonics) {
        if (mnemonic.Word == word) return &mnemonic;
    }
    return nullptr;
}

// One statement of the library's: its operands read with the library's
// ranges (register and bit numbers 0 to 7, displacements -128 to 127).
class Encoding {
  public:
    Encoding(EncoderContext& run, Statement& statement)
        : pRun(run), pStatement(statement), pOperands(run, statement) {}

    void Encode(const Mnemonic& mnemonic) {
        pOperands.CheckOperandCount(
            static_cast<std::int16_t>(OperandCounts[static_cast<std::size_t>(mnemonic.Form)]));
        Byte(mnemonic.Prefix);
        switch (mnemonic.Form) {
        case Shape::None:
            return Byte(mnemonic.Opcode);
        case Shape::RegDisp:
            Byte(mnemonic.Opcode | Small(0) << 3);
            return Byte(Displacement(1));
        case Shape::RegDispLow:
            Byte(mnemonic.Opcode | Small(0));
            return Byte(Displacement(1));
        case Shape::DataDisp: {
            Byte(mnemonic.Opcode);
            const std::uint32_t data = Bits(0, 8, Signedness::Either);
            Byte(Displacement(1));
            return Byte(data);
        }
        case Shape::Word:
            Byte(mnemonic.Opcode);
            return pRun.EmitBits(Bits(0, 16, Signedness::Either), 16, pStatement.BytesText);
        case Shape::Disp:
            Byte(mnemonic.Opcode);
            return Byte(Displacement(0));
        case Shape::BitDisp: {
            const std::uint32_t bit = Small(0);
            Byte(BitPrefix);
            Byte(Displacement(1));
            return Byte(mnemonic.Opcode | bit << 3);
        }
        case Shape::RotateDisp:
            Byte(BitPrefix);
            Byte(Displacement(0));
            return Byte(mnemonic.Opcode);
        }
    }

  private:
    std::uint32_t Bits(int index, int width, Signedness signedness) {
        return WholeBits(pRun.EvaluateOperand(pOperands.Operand(index), width, signedness));
    }
    std::uint32_t Small(int index) { return Bits(index, 3, Signedness::Either) & 7; }
    std::uint32_t Displacement(int index) { return Bits(index, 8, Signedness::Signed) & 0xFF; }
    void Byte(std::uint32_t byte) { pRun.EmitBits(byte & 0xFF, 8, pStatement.BytesText); }

    EncoderContext& pRun;
    Statement& pStatement;
    OperandReader pOperands;
};

} // namespace

bool EraZ80Library::IsLibraryName(std::string_view name) {
    const std::string lower = LowerCase(name);
    return lower == "z80" || lower == "z80.lib";
}

bool EraZ80Library::Encode(EncoderContext& run, Statement& statement) {
    const Mnemonic* mnemonic = Find(statement.Keyword);
    if (mnemonic == nullptr) return false;
    statement.Category = LineCategory::Instruction;
    statement.Z80Row = true;
    run.State().Z80Used = true;
    if (!run.State().Options.Z80) run.ListWarning("Z80 Warning", statement.Operation);
    Encoding(run, statement).Encode(*mnemonic);
    return true;
}

} // namespace trident
