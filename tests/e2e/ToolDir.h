#pragma once

#include "support/ListingBody.h"
#include "support/RunTool.h"
#include "support/TempSource.h"

#include <string>
#include <string_view>

namespace trident::testing {

// A scratch directory to run the batch tool in. In the arguments of Run,
// {name} stands for the quoted path of `name` inside the directory.
class ToolDir : public TempDir {
  public:
    std::filesystem::path At(std::string_view name) const { return Path() / name; }
    std::string Read(std::string_view name) const { return ReadWholeFile(At(name)); }
    // The statement lines of the listing file `name`.
    std::string Listed(std::string_view name) const { return StatementLines(Read(name)); }
    ToolResult Run(std::string arguments) const {
        for (std::size_t open; (open = arguments.find('{')) != std::string::npos;) {
            const std::size_t close = arguments.find('}', open);
            arguments.replace(open, close + 1 - open,
                              Quoted(At(arguments.substr(open + 1, close - open - 1))));
        }
        return RunTool(arguments, Path());
    }
};

} // namespace trident::testing
