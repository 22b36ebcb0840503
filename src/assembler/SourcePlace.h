#pragma once

#include <string>

namespace trident {

// Where the symbol cross-reference says a symbol was defined or used: a
// line of a file whose name the assembly keeps once for all its places
// (no file: not in the source). Two places of one assembly name the same
// file exactly when their File pointers are equal.
struct SourcePlace {
    const std::string* File = nullptr;
    int Line = 0;

    bool InSource() const { return File != nullptr; }
    friend bool operator==(const SourcePlace&, const SourcePlace&) = default;
};

} // namespace trident
