#pragma once

#include <array>

namespace trident {

// The open conditional levels of a pass: one skip flag per level, level 0
// being the outermost (outside every conditional). It keeps the run's
// Skipping flag equal to the OR of the flags of levels 0 to Depth() after
// every change, so the dispatcher only has to read that flag.
//
// The stack is shared by every source a conditional may span (file,
// include file, macro expansion); the macro processor records Depth() when
// an expansion starts and closes back to it when the expansion is left early.
class ConditionalStack {
  public:
    static constexpr int MaxDepth = 255;

    // `skipping` is the run's flag that this stack maintains.
    explicit ConditionalStack(bool& skipping) : pSkipping(skipping) {}
    ConditionalStack(const ConditionalStack&) = delete;
    ConditionalStack& operator=(const ConditionalStack&) = delete;

    // Back to level 0 with every flag cleared: the state at a pass start.
    void Reset();
    // Opens the next level; its lines are skipped when `skip` is set. A level
    // past MaxDepth is a failure of the whole run.
    void Open(bool skip);
    // Inverts the current level's flag, level 0's included.
    void Else();
    // Closes the current level; false when none is open (level 0's flag is
    // cleared all the same).
    bool Close();
    // Closes every level above `depth`.
    void CloseTo(int depth);

    int Depth() const { return pDepth; }
    bool Skipping() const { return pSkipping; }

  private:
    void Recompute();

    std::array<bool, MaxDepth + 1> pSkipFlags{};
    int pDepth = 0;
    bool& pSkipping;
};

} // namespace trident
