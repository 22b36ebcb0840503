#pragma once

#include "expression/ErrorList.h"
#include "expression/ExpressionEvaluator.h"
#include "symbols/Value.h"

#include <cstdio>
#include <gtest/gtest.h>
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
using Errors = std::vector<ErrorEntry>;

// Takes every entry off an error list (or an evaluator's), oldest first.
template <typename List> Errors Drain(List& list) {
    Errors entries;
    while (list.ErrorCount() > 0) {
        const int code = list.GetNextError();
        entries.emplace_back(code, list.ExtraErrorString());
    }
    return entries;
}

// A text, the value it gives as Describe shows it and the entries it leaves.
struct Case {
    std::string Text;
    const char* Value;
    Errors Expected = {};
};

inline Value Evaluated(ExpressionEvaluator& evaluator, const std::string& text) {
    return evaluator.Evaluate(text);
}

// Runs every case (a Text, a Value and the Expected entries) through `call`
// on a fresh evaluator, twice: the second time runs the program kept from
// the first, which must give the same value and entries.
template <typename Cases, typename Call> void Check(const Cases& cases, Call call) {
    for (const auto& c : cases) {
        ExpressionEvaluator evaluator;
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(Describe(Value(call(evaluator, c.Text))), c.Value) << c.Text;
            EXPECT_EQ(Drain(evaluator), c.Expected) << c.Text;
        }
    }
}

} // namespace trident::test
