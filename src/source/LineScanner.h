#pragma once

#include "source/SourceStatement.h"

#include <string>
#include <string_view>
#include <vector>

namespace trident {

// Pure text processing of source lines: statements, fields and operands. It
// knows no mnemonics or directives.
namespace LineScanner {

inline constexpr int MaxStatements = 32;
inline constexpr int MaxOperands = 128;

// Splits one physical line into statements separated by "!", and the
// operand field of each into operands, in one walk. Appends the statements
// to `statements` and their operands to `operands` (a statement's
// FirstOperand counts from the start of `operands`) and returns the number
// of statements. Views point into the line. More than MaxStatements throws
// RunFailure; more than MaxOperands marks the statement (TooManyOperands).
int ScanLine(std::string_view line, std::vector<SourceStatement>& statements,
             std::vector<std::string_view>& operands, Dialect dialect = Dialect::Standard);

// Cuts `text`, one statement, as if it were indented, by the Compatible
// rules: an operation word written in column 1. Fills `operands` (cleared
// first); the statement's FirstOperand counts from its start.
void ScanIndentedStatement(std::string_view text, SourceStatement& statement,
                           std::vector<std::string_view>& operands);

// `equ`, `set`, `defl`, `macro` (in any letter case) or `=`: the words that
// name the word before them.
bool IsDefiningWord(std::string_view word);

// Ends the run: a statement holds more than MaxOperands operands. The
// scanner marks such a statement (TooManyOperands) and whoever executes it
// fails here, so that the statements before it still run.
[[noreturn]] void FailTooManyOperands();

// Splits an operand field on commas outside quotes; fills `operands`
// (cleared first) and returns their number. More than MaxOperands throws
// RunFailure. The operands are views into the field.
int SplitOperands(std::string_view field, std::vector<std::string_view>& operands);

// As SplitOperands, but commas inside <...> do not split either (macro calls).
int SplitMacroArguments(std::string_view field, std::vector<std::string>& arguments);

std::string TabsToSpaces(std::string_view text);
void StripParityBits(std::string& text);

} // namespace LineScanner
} // namespace trident
