#include "macros/ExpansionLevel.h"

namespace trident {

void ExpansionLevel::BindIterationItem() {
    const auto index = static_cast<std::size_t>(Iteration - 1);
    if (!Parameter.empty() && index < Items.size()) Parameters.Bind(Parameter, Items[index]);
}

bool ExpansionLevel::StartNextIteration() {
    if (Type == BlockType::Macro || Iteration >= Iterations) return false;
    ++Iteration;
    Position = 0;
    // Each iteration starts afresh: its local statements make new names
    // (with the old ones still bound they would rename the old names).
    Parameters.Clear();
    BindIterationItem();
    return true;
}

} // namespace trident
