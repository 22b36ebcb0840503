#pragma once

#include <string_view>

namespace trident {

// The four kinds of block whose body is collected up to its endm: a macro
// definition, stored for later calls, and the three repeat blocks, replayed
// as soon as they close.
enum class BlockType { Macro, Rept, Irp, Irpc };

// The directive word that opens the block.
constexpr std::string_view BlockWord(BlockType type) {
    switch (type) {
    case BlockType::Macro:
        return "macro";
    case BlockType::Rept:
        return "rept";
    case BlockType::Irp:
        return "irp";
    case BlockType::Irpc:
        return "irpc";
    }
    return "macro";
}

} // namespace trident
