#pragma once

#include <string>
#include <string_view>

namespace trident {

// What one operand written in Zilog notation is. An operand wholly in
// parentheses is a memory operand (or a port); everything else that names
// no register is a value.
enum class ZilogShape {
    Register,    // b c d e h l a, and the special registers i and r
    Pair,        // bc de hl sp ix iy af
    AlternateAf, // af'
    HlMemory,    // (hl)
    Indexed,     // (ix+d), (iy-d)
    IndexBare,   // (ix), (iy)
    PairMemory,  // (bc) (de) (sp)
    CPort,       // (c): the port addressed by register c
    Memory,      // any other operand wholly in parentheses: an address or a port
    Value,       // an expression
};

// One operand of a Zilog statement and its spelling in an 8080-style
// statement.
struct ZilogOperand {
    ZilogShape Shape = ZilogShape::Value;
    // The register, pair or index register in lower case ("bc" for (bc),
    // "ix" for (ix+d)); for a value its text in lower case.
    std::string Name;
    // The operand as the 8080-style encoder reads it: m for (hl), psw for af,
    // d(ix) for (ix+d), the bare expression of a memory operand.
    std::string Intel;

    static ZilogOperand Read(std::string_view text);
};

} // namespace trident
