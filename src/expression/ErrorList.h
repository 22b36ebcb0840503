#pragma once

#include "expression/EvalError.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <string>
#include <string_view>

namespace trident {

// The evaluator's first-in first-out list of faults and warnings, each with
// the text it is about. Recording never fails and has no limit.
class ErrorList {
  public:
    void AddError(EvalError code, std::string_view extra = {});

    // Takes the oldest entry and returns its code; 0 when the list is empty.
    std::int32_t GetNextError();
    // The text of the entry last taken, up to a DEL character: the list has
    // always shown it so.
    const std::string& ExtraErrorString() const { return pExtra; }

    void ClearAllErrors() { pFaults.clear(); }
    std::int16_t ErrorCount() const {
        constexpr std::size_t cap = std::numeric_limits<std::int16_t>::max();
        return static_cast<std::int16_t>(pFaults.size() < cap ? pFaults.size() : cap);
    }

    // The message of a code; "Unknown Error" for a code without one.
    static std::string ErrorString(std::int32_t code);

  private:
    struct Fault {
        EvalError Code;
        std::string Extra;
    };

    std::deque<Fault> pFaults;
    std::string pExtra;
};

} // namespace trident
