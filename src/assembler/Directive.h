#pragma once

#include "source/LineCategory.h"

#include <string_view>

namespace trident {

class Assembly;
struct Statement;

// One row of the directive table: a lower-case operation word, the category
// its statements are listed in, and what executing one does.
struct Directive {
    std::string_view Word;
    LineCategory Category;
    void (*Execute)(Assembly& run, Statement& statement);
};

} // namespace trident
