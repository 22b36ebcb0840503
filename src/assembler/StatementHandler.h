#pragma once

#include <string_view>
#include <vector>

namespace trident {

class Assembly;
struct Statement;

// One step of the statement dispatch. The steps are tried in a fixed order;
// the first that accepts a statement executes it and sets its category.
class StatementHandler {
  public:
    virtual ~StatementHandler() = default;

    // Whether the step still looks at statements while a false condition
    // skips lines (only the conditional directives and the collection of
    // macro bodies do).
    virtual bool RunsWhileSkipping() const { return false; }

    // Whether the step looks at statements without an operation word
    // (comment and label lines): only the collection of macro bodies does;
    // every other step acts on its operation words alone.
    virtual bool TakesEmptyOperations() const { return false; }

    // The operation words (lower case) the step acts on, when a fixed list
    // decides; empty when something else does (the opcode table, the macro
    // table, an open block, a pattern of words). The dispatch offers a
    // statement to a step with a list only when its word is on the list.
    virtual std::vector<std::string_view> OperationWords() const { return {}; }
    // Beginnings of operation words the step acts on besides its list (a
    // family of words such as "if..."); a step with words or prefixes is
    // offered only the words they cover.
    virtual std::vector<std::string_view> OperationPrefixes() const { return {}; }

    // Resets what the step keeps from statement to statement.
    virtual void StartPass(Assembly& /*run*/) {}

    // Executes the statement and returns true, or returns false to let the
    // later steps try it.
    virtual bool Handle(Assembly& run, Statement& statement) = 0;
};

} // namespace trident
