#pragma once

#include "expression/clsErrorList.h"
#include "expression/clsExpression.h"
#include "symbols/Value.h"

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace trident::test {

// A value as short text that names its type, so that tables can say both
// what a result is and what it holds: "int 14", "double 3.5", "string ab",
// "int16 -1", "empty".
inline std::string Describe(const Value& value) {
    if (const auto* i16 = std::get_if<std::int16_t>(&value)) return "int16 " + std::to_string(*i16);
    if (const auto* i32 = std::get_if<std::int32_t>(&value)) return "int " + std::to_string(*i32);
    if (const auto* d = std::get_if<double>(&value)) {
        char buffer[40];
        std::snprintf(buffer, sizeof buffer, "double %.17g", *d);
        return buffer;
    }
    if (const auto* text = std::get_if<std::string>(&value)) return "string " + *text;
    return "empty";
}

using ErrorEntry = std::pair<int, std::string>;

// Takes every entry off an evaluator's error list, oldest first.
inline std::vector<ErrorEntry> Drain(clsExpression& evaluator) {
    std::vector<ErrorEntry> entries;
    while (evaluator.ErrorCount() > 0) {
        const int code = evaluator.GetNextError();
        entries.emplace_back(code, evaluator.ExtraErrorString());
    }
    return entries;
}

} // namespace trident::test
