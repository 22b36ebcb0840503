#pragma once

// The entries through which the fuzz targets feed arbitrary bytes to the
// core. The regression tests replay saved inputs through the very same
// functions, so a fixed crash stays fixed.

#include "assembler/Assembly.h"
#include "base/Text.h"
#include "encoder/OpcodeTable.h"
#include "encoder/OpcodeTableError.h"
#include "expression/ExpressionEvaluator.h"
#include "output/RtfText.h"
#include "source/LineScanner.h"
#include "source/RunFailure.h"
#include "source/RunState.h"
#include "symbols/SymbolTable.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace trident::fuzz {

// One physical line through the statement splitter, and every operand
// field (and the line itself, as the macro processor hands substituted
// text on) through both list splitters. Passing a limit is a RunFailure,
// the one way out of the scanner. The operands the line's walk found must
// be those the field splitter finds.
inline void ScanLine(std::string_view line) {
    std::vector<SourceStatement> statements;
    std::vector<std::string> arguments;
    std::vector<std::string_view> lineOperands;
    std::vector<std::string_view> operands;
    const auto split = [&arguments, &operands](std::string_view field, bool macroArguments) {
        try {
            if (macroArguments)
                LineScanner::SplitMacroArguments(field, arguments);
            else
                LineScanner::SplitOperands(field, operands);
        } catch (const RunFailure&) {}
        for (const std::string& item : arguments) TrimBlanks(item);
        for (const std::string_view item : operands) TrimBlanks(item);
    };
    try {
        LineScanner::ScanLine(line, statements, lineOperands);
    } catch (const RunFailure&) {}
    for (const SourceStatement& statement : statements) {
        LineScanner::TabsToSpaces(statement.Label);
        LowerCase(statement.Operation);
        split(statement.Operands, false);
        if (!statement.TooManyOperands &&
            !std::ranges::equal(
                operands,
                std::span(lineOperands).subspan(statement.FirstOperand, statement.OperandCount)))
            std::abort();
        split(statement.Operands, true);
    }
    split(line, true);
    std::string stripped(line);
    LineScanner::StripParityBits(stripped);
}

// The symbol table for EvaluateText: a predefined group (0 to 3) and a few
// symbols of every kind of value, in pass 0 or 1. A table takes long to
// build, and evaluation only reads it (its reference marks aside), so each
// of the eight is built once.
inline SymbolTable& SymbolsFor(int group, int pass) {
    static std::unique_ptr<SymbolTable> tables[4][2];
    std::unique_ptr<SymbolTable>& table = tables[group][pass];
    if (!table) {
        table = std::make_unique<SymbolTable>();
        table->CurrentPass = static_cast<std::int16_t>(pass);
        table->LoadPreDefinedValues(static_cast<std::int16_t>(group));
        table->SetVariable("word", Value{std::int16_t{0x1234}});
        table->SetVariable("big", Value{std::int32_t{-2000000000}});
        table->SetVariable("half", Value{0.5});
        table->SetVariable("text", Value{std::string("AB")});
        table->SetVariable("later", Value{});
    }
    return *table;
}

// The text as an expression and through each literal conversion. `modes`
// picks the evaluator's settings and the symbol table.
inline void EvaluateText(std::uint8_t modes, std::string_view text) {
    SymbolTable& symbols = SymbolsFor(modes & 3, modes >> 7);
    ExpressionEvaluator expression;
    expression.SetVariables((modes & 4) ? nullptr : &symbols);
    expression.SetCaseSensitive((modes & 8) != 0);
    expression.SetDRG((modes & 16) ? AngleUnit::Degrees : AngleUnit::Radians);

    expression.Evaluate(text);
    expression.EvalNumber(text);
    expression.SingleQuoteStrToNumber(text);
    expression.DoubleQuotedStringToString(text);

    while (expression.ErrorCount() > 0) {
        ExpressionEvaluator::ErrorString(expression.GetNextError());
        expression.ExtraErrorString();
    }
}

// The text as an opcode table: it loads, or is refused with an
// OpcodeTableError; a loaded table answers look-ups of its own mnemonics.
// True when it loaded.
inline bool ReadOpcodeRows(std::string_view text) {
    OpcodeTable table;
    try {
        table.ReadRows(text);
    } catch (const OpcodeTableError& error) {
        error.Message();
        return false;
    }
    RunState state;
    for (std::int16_t row = 0; row < table.Count(); ++row)
        table.FindMnemonic(table.Row(row).Mnemonic, state);
    table.FindMnemonic("nop", state);
    return true;
}

// Whether every file name the source could open stays inside the scratch
// directory: no parent reference, and no directory separator where a file
// name can begin (so no absolute path). A separator inside an expression
// such as a/2 still comes through.
inline bool StaysInScratch(std::string_view text) {
    if (text.find("..") != std::string_view::npos) return false;
    constexpr std::string_view nameStarts = " \t\"',<&\r\n!:%";
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '/' && text[i] != '\\') continue;
        if (i == 0 || nameStarts.find(text[i - 1]) != std::string_view::npos) return false;
    }
    return true;
}

// The text as the source file `scratch`/prog.asm, assembled with the opcode
// table `opcodeTable`; include files and macro libraries are looked up in
// `scratch`. Every output a front end asks for is made. Returns the outcome.
inline Assembly::Outcome AssembleSource(const std::filesystem::path& scratch, std::string_view text,
                                        const std::filesystem::path& opcodeTable) {
    const std::filesystem::path source = scratch / "prog.asm";
    {
        std::ofstream out(source, std::ios::binary | std::ios::trunc);
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
    }
    Assembly run;
    RunOptions& options = run.Options();
    options.OpcodeTableFile = opcodeTable.string();
    options.IncludeDirectory = scratch.string();
    options.MaclibDirectory = scratch.string();
    options.ListMacroDefinitions = true;
    options.ListMacroExpansions = true;
    options.ListMacLibs = true;
    // Runaway expansions and files that include themselves many times over
    // fail well within the fuzzers' time limit.
    options.MaxLinesPerPass = 200'000;
    options.MaxLinesPerRun = 2'000'000;
    options.MaxExpandedTextPerRun = 32 * 1024 * 1024;
    const Assembly::Outcome outcome = run.Assemble(source);
    ToRtf(run.GetListing().Text());
    ToRtf(run.Outputs().Hex());
    run.Outputs().Srec().Text();
    run.Outputs().Loader().Text();
    run.BinaryImage();
    run.SymbolReport();
    return outcome;
}

} // namespace trident::fuzz
