#pragma once

#include "cli/BatchOptions.h"

#include <iosfwd>

namespace trident {

// Exit statuses of the batch tool.
enum class ExitStatus : int { Clean = 0, ErrorsListed = 1, RunFailed = 2 };

// Assembles one source as the command line asked, writes the requested
// files, prints diagnostics on `err` and the summary on `out`.
ExitStatus RunBatch(const BatchOptions& options, std::ostream& out, std::ostream& err);

} // namespace trident
