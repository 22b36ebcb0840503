#pragma once

#include <string_view>

namespace trident {

class MacroTable;
class OpcodeTable;

// What a statement's operation word is to the assembler.
enum class WordKind { Other, Instruction, Directive, Macro };

// Classifies `word` (any case) by the tables the dispatch reads, in the
// dispatch's order: a directive of any kind, an instruction of `opcodes` or
// of the Zilog notation, a macro of `macros` (none when null). For editors
// and viewers that colour source text; the run itself never asks.
WordKind ClassifyWord(std::string_view word, const OpcodeTable& opcodes,
                      const MacroTable* macros = nullptr);

} // namespace trident
