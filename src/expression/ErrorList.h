#pragma once

#include "expression/EvalError.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <string>
#include <string_view>

namespace trident {

// The evaluator's first-in first-out list of faults and warnings. Each entry
// is kept as text: the code in decimal (a blank in front of a non-negative
// code, the minus sign in front of a negative one), the separator character
// 127, then the extra string that names the offending text. Recording never
// fails and has no limit.
class ErrorList {
  public:
    static constexpr char Separator = '\x7f';

    // Appends one entry; the current error code becomes 1.
    void AddError(EvalError code, std::string_view extra = {});

    // Takes the oldest entry (split at the separator) and returns its code;
    // 0 when the list is empty.
    std::int32_t GetNextError();
    // Takes the oldest entry and returns "extra ~ message", or the message
    // alone when there is no extra string; "No Error" when the list is empty.
    std::string GetNextErrorStr();

    void ClearAllErrors();
    void ErrorClear() { pError = 0; }
    std::int16_t ErrorCount() const {
        constexpr std::size_t cap = std::numeric_limits<std::int16_t>::max();
        return static_cast<std::int16_t>(pEntries.size() < cap ? pEntries.size() : cap);
    }

    // The current error code: 0 when clear, 1 after a recording, else the
    // code of the entry last taken.
    std::int32_t Error() const { return pError; }
    // The extra string of the entry last taken.
    const std::string& ExtraErrorString() const { return pExtra; }

    // The message of a code; "Unknown Error" for a code without one.
    static std::string ErrorString(std::int32_t code);

  private:
    std::deque<std::string> pEntries;
    std::int32_t pError = 0;
    std::string pExtra;
};

} // namespace trident
