#include "encoder/ZilogTranslator.h"

#include "encoder/EncoderContext.h"
#include "encoder/ZilogOperand.h"
#include "source/Statement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace trident {
namespace {

// What a Zilog form asks of one of its operands.
enum class Fit : std::uint8_t {
    None, // no operand in this position
    A,
    Reg,    // b c d e h l a
    RegMem, // b c d e h l a (hl) (ix+d) (iy+d)
    Mem,    // (hl) (ix+d) (iy+d)
    RegHl,  // b c d e h l a (hl)
    Val,    // an expression
    I,      // the interrupt vector register
    R,      // the refresh register
    Bc,
    De,
    Hl,
    Sp,
    Ix,
    Iy,
    Af,
    AltAf,   // af'
    BcDeAt,  // (bc) (de)
    SpAt,    // (sp)
    HlAt,    // (hl) as the target of jp
    IxAt,    // (ix) as the target of jp
    IyAt,    // (iy) as the target of jp
    CAt,     // (c)
    At,      // (nn) or (n): an address or a port
    Pairs,   // bc de hl sp ix iy
    HlPairs, // bc de hl sp
    IxPairs, // bc de ix sp
    IyPairs, // bc de iy sp
    Stack,   // bc de hl af ix iy
    Cond,    // nz z nc c po pe p m
    JrCond,  // nz z nc c
};

// One way an operand fits: its shape and, unless empty, its names.
struct FitRule {
    Fit Kind;
    ZilogShape Shape;
    std::string_view Names;
};

constexpr std::string_view ByteRegisters = "b c d e h l a";

constexpr auto FitRules = std::to_array<FitRule>({
    {Fit::A, ZilogShape::Register, "a"},
    {Fit::Reg, ZilogShape::Register, ByteRegisters},
    {Fit::RegMem, ZilogShape::Register, ByteRegisters},
    {Fit::RegMem, ZilogShape::HlMemory, ""},
    {Fit::RegMem, ZilogShape::Indexed, ""},
    {Fit::RegMem, ZilogShape::IndexBare, ""},
    {Fit::Mem, ZilogShape::HlMemory, ""},
    {Fit::Mem, ZilogShape::Indexed, ""},
    {Fit::Mem, ZilogShape::IndexBare, ""},
    {Fit::RegHl, ZilogShape::Register, ByteRegisters},
    {Fit::RegHl, ZilogShape::HlMemory, ""},
    {Fit::Val, ZilogShape::Value, ""},
    {Fit::I, ZilogShape::Register, "i"},
    {Fit::R, ZilogShape::Register, "r"},
    {Fit::Bc, ZilogShape::Pair, "bc"},
    {Fit::De, ZilogShape::Pair, "de"},
    {Fit::Hl, ZilogShape::Pair, "hl"},
    {Fit::Sp, ZilogShape::Pair, "sp"},
    {Fit::Ix, ZilogShape::Pair, "ix"},
    {Fit::Iy, ZilogShape::Pair, "iy"},
    {Fit::Af, ZilogShape::Pair, "af"},
    {Fit::AltAf, ZilogShape::AlternateAf, ""},
    {Fit::BcDeAt, ZilogShape::PairMemory, "bc de"},
    {Fit::SpAt, ZilogShape::PairMemory, "sp"},
    {Fit::HlAt, ZilogShape::HlMemory, ""},
    {Fit::IxAt, ZilogShape::IndexBare, "ix"},
    {Fit::IyAt, ZilogShape::IndexBare, "iy"},
    {Fit::CAt, ZilogShape::CPort, ""},
    {Fit::At, ZilogShape::Memory, ""},
    {Fit::Pairs, ZilogShape::Pair, "bc de hl sp ix iy"},
    {Fit::HlPairs, ZilogShape::Pair, "bc de hl sp"},
    {Fit::IxPairs, ZilogShape::Pair, "bc de ix sp"},
    {Fit::IyPairs, ZilogShape::Pair, "bc de iy sp"},
    {Fit::Stack, ZilogShape::Pair, "bc de hl af ix iy"},
    {Fit::Cond, ZilogShape::Register, "c"},
    {Fit::Cond, ZilogShape::Value, "nz z nc po pe p m"},
    {Fit::JrCond, ZilogShape::Register, "c"},
    {Fit::JrCond, ZilogShape::Value, "nz z nc"},
});

// Which Zilog operands the 8080-style statement keeps, in their order.
enum class Keep : std::uint8_t { Nothing, First, Second, Both };

// How the 8080-style mnemonic is made.
enum class Naming : std::uint8_t {
    Fixed,
    Condition,     // the mnemonic followed by the condition: jp nz,nn is jnz nn
    InterruptMode, // im 1 is im1
    Restart,       // rst 38h is rst 7
};

struct ZilogForm {
    std::string_view Zilog;
    std::array<Fit, 2> Operands;
    std::string_view Intel;
    Keep Kept = Keep::Nothing;
    Naming Name = Naming::Fixed;
};

using enum Fit;
using enum Keep;
using enum Naming;

// Tried in order; the first form whose operands fit is taken. Registers,
// memory operands and values differ in shape, so tst b is tst and tst 5 tsti.
constexpr auto Forms = std::to_array<ZilogForm>({
    {"nop", {}, "nop"},
    {"halt", {}, "hlt"},
    {"daa", {}, "daa"},
    {"cpl", {}, "cma"},
    {"scf", {}, "stc"},
    {"ccf", {}, "cmc"},
    {"rlca", {}, "rlc"},
    {"rrca", {}, "rrc"},
    {"rla", {}, "ral"},
    {"rra", {}, "rar"},
    {"ei", {}, "ei"},
    {"di", {}, "di"},
    {"exx", {}, "exx"},
    {"neg", {}, "neg"},
    {"reti", {}, "reti"},
    {"retn", {}, "retn"},
    {"rld", {}, "rld"},
    {"rrd", {}, "rrd"},
    {"ldi", {}, "ldi"},
    {"ldir", {}, "ldir"},
    {"ldd", {}, "ldd"},
    {"lddr", {}, "lddr"},
    // The block compares; cpi n is no compare immediate here.
    {"cpi", {}, "cci"},
    {"cpir", {}, "ccir"},
    {"cpd", {}, "ccd"},
    {"cpdr", {}, "ccdr"},
    {"ini", {}, "ini"},
    {"inir", {}, "inir"},
    {"ind", {}, "ind"},
    {"indr", {}, "indr"},
    {"outi", {}, "outi"},
    {"otir", {}, "outir"},
    {"outd", {}, "outd"},
    {"otdr", {}, "outdr"},
    {"otim", {}, "otim"},
    {"otimr", {}, "otimr"},
    {"otdm", {}, "otdm"},
    {"otdmr", {}, "otdmr"},
    {"slp", {}, "slp"},

    // Loads. Memory to memory has no form: ld (hl),(hl) is halt's opcode.
    {"ld", {Reg, RegMem}, "mov", Both},
    {"ld", {Mem, Reg}, "mov", Both},
    {"ld", {RegMem, Val}, "mvi", Both},
    {"ld", {A, BcDeAt}, "ldax", Second},
    {"ld", {BcDeAt, A}, "stax", First},
    {"ld", {A, At}, "lda", Second},
    {"ld", {At, A}, "sta", First},
    {"ld", {A, I}, "ldai"},
    {"ld", {A, R}, "ldar"},
    {"ld", {I, A}, "stai"},
    {"ld", {R, A}, "star"},
    {"ld", {Pairs, Val}, "lxi", Both},
    {"ld", {Hl, At}, "lhld", Second},
    {"ld", {Bc, At}, "lbcd", Second},
    {"ld", {De, At}, "lded", Second},
    {"ld", {Sp, At}, "lspd", Second},
    {"ld", {Ix, At}, "lixd", Second},
    {"ld", {Iy, At}, "liyd", Second},
    {"ld", {At, Hl}, "shld", First},
    {"ld", {At, Bc}, "sbcd", First},
    {"ld", {At, De}, "sded", First},
    {"ld", {At, Sp}, "sspd", First},
    {"ld", {At, Ix}, "sixd", First},
    {"ld", {At, Iy}, "siyd", First},
    {"ld", {Sp, Hl}, "sphl"},
    {"ld", {Sp, Ix}, "spix"},
    {"ld", {Sp, Iy}, "spiy"},

    {"push", {Stack}, "push", First},
    {"pop", {Stack}, "pop", First},
    {"ex", {De, Hl}, "xchg"},
    {"ex", {SpAt, Hl}, "xthl"},
    {"ex", {SpAt, Ix}, "xtix"},
    {"ex", {SpAt, Iy}, "xtiy"},
    {"ex", {Af, AltAf}, "exaf"},

    // Arithmetic and logic: the accumulator may be named or left out.
    {"add", {A, RegMem}, "add", Second},
    {"add", {RegMem}, "add", First},
    {"add", {A, Val}, "adi", Second},
    {"add", {Val}, "adi", First},
    {"add", {Hl, HlPairs}, "dad", Second},
    {"add", {Ix, IxPairs}, "dadx", Second},
    {"add", {Iy, IyPairs}, "dady", Second},
    {"adc", {A, RegMem}, "adc", Second},
    {"adc", {RegMem}, "adc", First},
    {"adc", {A, Val}, "aci", Second},
    {"adc", {Val}, "aci", First},
    {"adc", {Hl, HlPairs}, "dadc", Second},
    {"sub", {A, RegMem}, "sub", Second},
    {"sub", {RegMem}, "sub", First},
    {"sub", {A, Val}, "sui", Second},
    {"sub", {Val}, "sui", First},
    {"sbc", {A, RegMem}, "sbb", Second},
    {"sbc", {RegMem}, "sbb", First},
    {"sbc", {A, Val}, "sbi", Second},
    {"sbc", {Val}, "sbi", First},
    {"sbc", {Hl, HlPairs}, "dsbc", Second},
    {"and", {A, RegMem}, "ana", Second},
    {"and", {RegMem}, "ana", First},
    {"and", {A, Val}, "ani", Second},
    {"and", {Val}, "ani", First},
    {"xor", {A, RegMem}, "xra", Second},
    {"xor", {RegMem}, "xra", First},
    {"xor", {A, Val}, "xri", Second},
    {"xor", {Val}, "xri", First},
    {"or", {A, RegMem}, "ora", Second},
    {"or", {RegMem}, "ora", First},
    {"or", {A, Val}, "ori", Second},
    {"or", {Val}, "ori", First},
    {"cp", {A, RegMem}, "cmp", Second},
    {"cp", {RegMem}, "cmp", First},
    {"cp", {A, Val}, "cpi", Second},
    {"cp", {Val}, "cpi", First},
    {"inc", {RegMem}, "inr", First},
    {"inc", {Pairs}, "inx", First},
    {"dec", {RegMem}, "dcr", First},
    {"dec", {Pairs}, "dcx", First},

    // Shifts, rotates and bits; rlc r is not rlca.
    {"rlc", {RegMem}, "rlcr", First},
    {"rrc", {RegMem}, "rrcr", First},
    {"rl", {RegMem}, "ralr", First},
    {"rr", {RegMem}, "rarr", First},
    {"sla", {RegMem}, "slar", First},
    {"sra", {RegMem}, "srar", First},
    {"srl", {RegMem}, "srlr", First},
    {"bit", {Val, RegMem}, "bit", Both},
    {"set", {Val, RegMem}, "set", Both},
    {"res", {Val, RegMem}, "res", Both},

    // Jumps, calls and returns.
    {"jp", {Val}, "jmp", First},
    {"jp", {HlAt}, "pchl"},
    {"jp", {IxAt}, "pcix"},
    {"jp", {IyAt}, "pciy"},
    {"jp", {Cond, Val}, "j", Second, Condition},
    {"jr", {Val}, "jr", First},
    {"jr", {JrCond, Val}, "jr", Second, Condition},
    {"djnz", {Val}, "djnz", First},
    {"call", {Val}, "call", First},
    {"call", {Cond, Val}, "c", Second, Condition},
    {"ret", {}, "ret"},
    {"ret", {Cond}, "r", Nothing, Condition},
    {"rst", {Val}, "rst", Nothing, Restart},
    {"im", {Val}, "im", Nothing, InterruptMode},

    // Input and output.
    {"in", {Reg, CAt}, "inp", First},
    {"in", {A, At}, "in", Second},
    {"out", {CAt, Reg}, "outp", Second},
    {"out", {At, A}, "out", First},
    {"in0", {Reg, At}, "in0", Both},
    {"out0", {At, Reg}, "out0", Both},
    {"tst", {RegHl}, "tst", First},
    {"tst", {Val}, "tsti", First},
    {"tstio", {Val}, "tstio", First},
    {"mlt", {HlPairs}, "mlt", First},
});

bool Listed(std::string_view names, std::string_view name) {
    while (!names.empty()) {
        const std::size_t blank = names.find(' ');
        if (names.substr(0, blank) == name) return true;
        if (blank == std::string_view::npos) break;
        names.remove_prefix(blank + 1);
    }
    return false;
}

bool Fits(Fit kind, const ZilogOperand& operand) {
    return std::any_of(FitRules.begin(), FitRules.end(), [&](const FitRule& rule) {
        return rule.Kind == kind && rule.Shape == operand.Shape &&
               (rule.Names.empty() || Listed(rule.Names, operand.Name));
    });
}

bool Matches(const ZilogForm& form, const std::vector<ZilogOperand>& operands) {
    const auto wanted = std::count_if(form.Operands.begin(), form.Operands.end(),
                                      [](Fit kind) { return kind != Fit::None; });
    if (static_cast<std::size_t>(wanted) != operands.size()) return false;
    for (std::size_t index = 0; index < operands.size(); ++index)
        if (!Fits(form.Operands[index], operands[index])) return false;
    return true;
}

const ZilogForm* FindForm(std::string_view keyword, const std::vector<ZilogOperand>& operands) {
    for (const ZilogForm& form : Forms)
        if (form.Zilog == keyword && Matches(form, operands)) return &form;
    return nullptr;
}

std::vector<std::string> KeptOperands(Keep kept, const std::vector<ZilogOperand>& operands) {
    switch (kept) {
    case First:
        return {operands[0].Intel};
    case Second:
        return {operands[1].Intel};
    case Both:
        return {operands[0].Intel, operands[1].Intel};
    case Nothing:
        break;
    }
    return {};
}

// The number that picks the instruction of rst and im. Before it is known
// (a forward reference in an early pass) any valid number will do, as every
// choice has the same size.
std::optional<std::int32_t> ChoosingNumber(EncoderContext& run, const ZilogOperand& operand) {
    const Value value = run.Evaluate(operand.Intel);
    if (IsEmpty(value)) return 0;
    const std::optional<double> number = AsNumber(value);
    if (!number || *number != std::trunc(*number) || *number < 0 || *number > 255)
        return std::nullopt;
    return static_cast<std::int32_t>(*number);
}

std::optional<ZilogTranslator::IntelForm> Rewrite(EncoderContext& run, const ZilogForm& form,
                                                  const std::vector<ZilogOperand>& operands) {
    const std::string intel(form.Intel);
    switch (form.Name) {
    case Condition:
        return ZilogTranslator::IntelForm{intel + operands[0].Name,
                                          KeptOperands(form.Kept, operands)};
    case InterruptMode: {
        const std::optional<std::int32_t> mode = ChoosingNumber(run, operands[0]);
        if (!mode || *mode > 2) return std::nullopt;
        return ZilogTranslator::IntelForm{intel + std::to_string(*mode), {}};
    }
    case Restart: {
        const std::optional<std::int32_t> address = ChoosingNumber(run, operands[0]);
        if (!address || *address % 8 != 0 || *address > 0x38) return std::nullopt;
        return ZilogTranslator::IntelForm{intel, {std::to_string(*address / 8)}};
    }
    case Fixed:
        break;
    }
    return ZilogTranslator::IntelForm{intel, KeptOperands(form.Kept, operands)};
}

} // namespace

bool ZilogTranslator::IsZilogMnemonic(std::string_view keyword) {
    return std::any_of(Forms.begin(), Forms.end(),
                       [&](const ZilogForm& form) { return form.Zilog == keyword; });
}

std::optional<ZilogTranslator::IntelForm> ZilogTranslator::Translate(EncoderContext& run,
                                                                     const Statement& statement) {
    std::vector<ZilogOperand> operands;
    for (const std::string_view text : statement.OperandList)
        operands.push_back(ZilogOperand::Read(text));
    const ZilogForm* form = FindForm(statement.Keyword, operands);
    if (form == nullptr) return std::nullopt;
    return Rewrite(run, *form, operands);
}

} // namespace trident
