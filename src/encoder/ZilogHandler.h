#pragma once

#include <string_view>
#include <vector>

namespace trident {

class EncoderContext;
struct Statement;

// The Zilog notation: while it is on, the statements whose operation word
// is a Zilog mnemonic, encoded as their 8080-style equivalents.
class ZilogHandler {
  public:
    // Encodes a statement whose word is a Zilog mnemonic.
    void Encode(EncoderContext& run, Statement& statement);

  private:
    void SeparateAlternateAfComment(Statement& statement);

    // The operands of the statement under way when they differ from those
    // its line was cut into.
    std::vector<std::string_view> pOperands;
};

} // namespace trident
