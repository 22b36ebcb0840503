#include "assembler/ValueColumn.h"

#include "assembler/Statement.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace trident {

std::string ValueColumnText(const Value& value) {
    const std::optional<double> number = AsNumber(value);
    const double whole = number && std::isfinite(*number) ? std::trunc(*number) : 0.0;
    // Through the 64-bit range, so that negative values keep their two's
    // complement low bits.
    const auto bits =
        static_cast<std::uint64_t>(static_cast<std::int64_t>(std::clamp(whole, -9.0e18, 9.0e18)));
    char text[8];
    std::snprintf(text, sizeof text, "%04X", static_cast<unsigned>(bits & 0xFFFFu));
    return std::string(text) + "  ";
}

void ShowInValueColumn(Statement& statement, const Value& value) {
    statement.ValueText = ValueColumnText(value) + statement.ValueText;
}

Value TruthValue(bool truth) {
    return Value{static_cast<std::int16_t>(truth ? -1 : 0)};
}

} // namespace trident
