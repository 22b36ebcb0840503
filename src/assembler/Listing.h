#pragma once

#include "assembler/Diagnostic.h"
#include "assembler/FrontEnd.h"
#include "output/ColouredText.h"
#include "source/RunState.h"
#include "source/Statement.h"

#include <string_view>
#include <vector>

namespace trident {

// The listing view's text: one coloured line per statement, and the "~"
// diagnostic lines that any stage of the run inserts ahead of it.
class Listing {
  public:
    Listing(RunState& state, FrontEnd& frontEnd) : pState(state), pFrontEnd(frontEnd) {}

    // Writes the statement's line when the run lists lines now. `macroDepth`
    // is the expansion level the statement came from (0 outside macros).
    void ListLine(const Statement& statement, int macroDepth) {
        // Every statement of every pass comes here; most passes list nothing.
        if (!statement.SuppressListing && ListsLines()) WriteLine(statement, macroDepth);
    }

    // Writes and counts a diagnostic; nothing happens outside a listed line
    // unless `force` is set. `where` is the statement's source position.
    void ListError(std::string_view message, std::string_view detail, bool force,
                   const SourcePosition& where);
    void ListWarning(std::string_view message, std::string_view detail, bool force,
                     const SourcePosition& where);

    const ColouredText& Text() const { return pText; }
    ColouredText& Text() { return pText; }
    const std::vector<Diagnostic>& Diagnostics() const { return pDiagnostics; }
    void Clear();

    // The counts (kept in the run state) describe one pass.
    void ResetCounts();
    // Whether a statement's line is written now (the final pass, or any pass
    // when the user asked for all of them).
    bool ListsLines() const {
        const RunOptions& options = pState.Options;
        return pState.ListThisLine || options.ListAllPasses ||
               (pState.CurrentPass == 1 && options.ListMacLibs && pState.MaclibOpen);
    }

  private:
    void WriteLine(const Statement& statement, int macroDepth);
    void Report(Severity kind, std::string_view message, std::string_view detail, bool force,
                const SourcePosition& where);

    RunState& pState;
    FrontEnd& pFrontEnd;
    ColouredText pText;
    std::vector<Diagnostic> pDiagnostics;
};

} // namespace trident
