#pragma once

#include "assembler/StatementHandler.h"

#include <string_view>

namespace trident {

class DataBytes;

// The data and storage directives: bytes and characters (db, dm, dz, dc and
// their synonyms), words (dw), reserved space (ds), single text operands
// (text, texz, texts) and IEEE 754 numbers (i3es, i3ed). Every byte goes
// through the run's EmitValue; an operand without a value in this pass emits
// 0, so a statement has the same size in every pass.
class DataDirectives : public StatementHandler {
  public:
    std::vector<std::string_view> OperationWords() const override;
    bool Handle(Assembly& run, Statement& statement) override;

    // How a directive ends its data.
    enum class Ending {
        Plain,
        MarkLastCharacter, // the last character of a final string operand gets bit 7
        MarkLastByte,      // as MarkLastCharacter, and a numeric final operand too
        ZeroByte,          // a 0 byte follows the data
    };

    enum class Family { Bytes, Words, Storage, Text, IeeeSingle, IeeeDouble };

    struct Form {
        std::string_view Name; // lower case
        Family Kind;
        Ending End = Ending::Plain;
        bool MostSignificantFirst = false; // the IEEE _be forms
    };

  private:
    static void EmitBytes(Assembly& run, Statement& statement, const Form& form);
    static void EmitWords(Assembly& run, Statement& statement);
    static void Reserve(Assembly& run, Statement& statement);
    static void EmitText(Assembly& run, Statement& statement, const Form& form);
    static void EmitIeee(Assembly& run, Statement& statement, const Form& form);
    static void EmitCharacters(DataBytes& bytes, std::string_view characters, bool markLast);
};

} // namespace trident
