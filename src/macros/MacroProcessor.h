#pragma once

#include "base/TextHash.h"
#include "macros/BlockType.h"
#include "source/SourcePosition.h"

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace trident {

class MacroContext;
class ParameterMap;
struct ExpansionLevel;
struct Statement;

// The macro processor of one assembly. It collects the bodies of macro,
// rept, irp and irpc blocks up to their endm, stores macro bodies in the
// run's macro table with their parameter names, executes local and exitm,
// and starts the expansion of a macro call or a closed repeat block on the
// run's expansion stack. The lines of an expansion are then read from that
// stack like any source line.
class MacroProcessor {
  public:
    // Clears the open block and restarts the local names; the first pass of
    // an assembly also forgets the parameter names of the last assembly,
    // whose macro table is gone.
    void StartPass(MacroContext& run);

    // While a block is open every statement belongs to its body.
    bool CollectBody(MacroContext& run, Statement& statement);
    // Whether a block is open; every statement asks.
    bool Collecting() const { return pDepth > 0; }
    // A macro's definition line opens its body; the label is its name.
    void OpenMacro(MacroContext& run, Statement& statement);
    // rept, irp and irpc open their bodies.
    void OpenRepeat(MacroContext& run, Statement& statement, BlockType type);
    void Local(MacroContext& run, const Statement& statement);
    static void ExitMacro(MacroContext& run, const Statement& statement);
    // A statement whose operation names a stored macro.
    bool Invoke(MacroContext& run, Statement& statement);
    // Whether a macro of that name (lower case) is in force: defined earlier
    // in this pass, or by the macro library.
    bool Defines(std::string_view word) const { return pInForce.contains(word); }
    // Whether such a macro takes the place of the instruction or directive
    // of its name (Compatible mode); never the macro and repeat words.
    bool Replaces(std::string_view word) const;

  private:
    struct OpenBlock {
        BlockType Type = BlockType::Macro;
        // A macro's name in lower case; empty when the macro has none.
        std::string Name;
        // A macro's parameter names, or the operands of a repeat directive.
        std::vector<std::string> Arguments;
        std::string Operands;
        SourcePosition At;
        std::string Body;
        // False when the directive's operands were missing: the body is
        // collected all the same, so that its endm pairs, but not replayed.
        bool Usable = true;
    };

    void Append(const Statement& statement);
    void Close(MacroContext& run, Statement& statement);
    void StartRepeat(MacroContext& run);
    // Sets the iterations and items of a repeat level; false when the run
    // must stop because the rept count is not resolved.
    bool PlanIterations(MacroContext& run, ExpansionLevel& level) const;
    bool PlanCount(MacroContext& run, ExpansionLevel& level) const;
    void BindArguments(MacroContext& run, const Statement& statement, ParameterMap& parameters);

    // Open blocks, the outermost one included; 0 when nothing is collected.
    unsigned pDepth = 0;
    OpenBlock pBlock;
    int pLocalCounter = 1;
    // Each macro's parameter names, by its name in lower case (found by a
    // view of the invoking statement's word).
    std::unordered_map<std::string, std::vector<std::string>, TextHash, std::equal_to<>>
        pParameterNames;
    // The macros in force, by name; true for those of the macro library,
    // which is read in pass 1 only.
    std::unordered_map<std::string, bool, TextHash, std::equal_to<>> pInForce;
    // The arguments of the invocation under way, their room kept.
    std::vector<std::string> pArguments;
};

} // namespace trident
