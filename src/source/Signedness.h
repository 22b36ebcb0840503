#pragma once

namespace trident {

// How an operand's range is checked: any value that fits the width either
// way, or only as a signed or only as an unsigned number.
enum class Signedness { Either, Signed, Unsigned };

} // namespace trident
