#include "assembler/ValueColumn.h"

#include "output/HexText.h"
#include "source/Statement.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace trident {

std::string ValueColumnText(const Value& value) {
    const std::optional<double> number = AsNumber(value);
    const double whole = number && std::isfinite(*number) ? std::trunc(*number) : 0.0;
    // Through the 64-bit range, so that negative values keep their two's
    // complement low bits.
    const auto bits =
        static_cast<std::uint64_t>(static_cast<std::int64_t>(std::clamp(whole, -9.0e18, 9.0e18)));
    std::string text(FixedHex<4>(static_cast<std::uint32_t>(bits)));
    text += "  ";
    return text;
}

void ShowInValueColumn(Statement& statement, const Value& value) {
    statement.ValueText.insert(0, ValueColumnText(value));
}

Value TruthValue(bool truth) {
    return Value{static_cast<std::int16_t>(truth ? -1 : 0)};
}

} // namespace trident
