#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trident {

class EncoderContext;
struct Statement;

// Reads an instruction statement written in Zilog notation as the 8080-style
// statement of the same instruction, whose opcode table row then encodes it.
class ZilogTranslator {
  public:
    // The 8080-style operation word and operands.
    struct IntelForm {
        std::string Mnemonic;
        std::vector<std::string> Operands;
    };

    // Whether `keyword` (lower case) is a Zilog mnemonic.
    static bool IsZilogMnemonic(std::string_view keyword);

    // The 8080-style form of the statement, or nothing when its operands fit
    // no Zilog form of its mnemonic. The restart and interrupt mode numbers
    // are evaluated here, since they choose the 8080-style instruction.
    static std::optional<IntelForm> Translate(EncoderContext& run, const Statement& statement);
};

} // namespace trident
