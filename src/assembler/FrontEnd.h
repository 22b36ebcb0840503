#pragma once

#include <string_view>

namespace trident {

struct Diagnostic;

// What the assembly needs from whoever drives it: the window or the batch
// tool. Every member has a do-nothing default, so a front end overrides only
// what it shows.
class FrontEnd {
  public:
    virtual ~FrontEnd() = default;

    // Called at every statement boundary. A window serves its events here
    // (no more often than its refresh interval); Stop reaches the run by
    // Assembly::RequestStop from inside this call.
    virtual void Yield() {}
    // A pass begins (1, 2, ... while resolving, 0 for the final pass).
    virtual void ShowPass(int /*pass*/) {}
    // The diagnostic counts of the pass under way changed.
    virtual void ShowDiagnosticCounts(int /*errors*/, int /*warnings*/) {}
    // A diagnostic was listed (in a listed pass: the final one, or every
    // one when all passes are listed); its place, message and detail.
    virtual void ShowDiagnostic(const Diagnostic& /*diagnostic*/) {}
    // A processor directive ticked or cleared the Z80 / Z180 check boxes.
    virtual void ShowProcessorChecks(bool /*z80*/, bool /*z180*/) {}
    // A message the user must see at once (a window shows a message box).
    virtual void ShowMessage(std::string_view /*text*/) {}
};

} // namespace trident
