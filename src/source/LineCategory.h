#pragma once

namespace trident {

// What a statement turned out to be; decides the colour of its listing line.
enum class LineCategory {
    None,
    MacExpand,
    Ifs,
    Directive,
    Control,
    Instruction,
    Define,
    MacInvoke,
    MacDef,
    Equates,
};

} // namespace trident
