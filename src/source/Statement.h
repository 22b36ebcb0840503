#pragma once

#include "source/LineCategory.h"
#include "source/SourcePosition.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace trident {

class StatementMemo;

// The statement under way: its fields as scanned, its operands, and what
// its execution leaves for the listing line.
struct Statement {
    // The fields as written: views into the source line, valid while the
    // statement is under way (a handler that keeps one copies it).
    std::string_view Label;
    std::string_view Operation;
    // Operation in lower case: directive and mnemonic names are case-blind.
    // A view too: of the operation itself when it is written in lower case.
    std::string_view Keyword;
    std::string_view Operands;
    std::string_view Comment;
    // The operands: views into the line too, or into text that the handler
    // under way keeps alive (a translated form). The list itself is the
    // line's (kept for all passes for the main file), so a handler that changes
    // the operands points it at a list of its own instead of writing to it.
    std::span<const std::string_view> OperandList;
    // The instruction as the user wrote it, where it is encoded as another
    // (a Zilog statement as its 8080-style form): diagnostics name this.
    std::string_view WrittenAs;
    SourcePosition Where;
    // What the handlers worked out for this statement of the main file in
    // an earlier pass (or are working out now), to reuse; null for lines
    // that are not kept (macro expansions, include files, macro libraries).
    StatementMemo* Memo = nullptr;
    // The scanner's StatementMarks.
    std::uint8_t Marks = 0;

    LineCategory Category = LineCategory::None;
    // Hexadecimal text of the emitted bytes.
    std::string BytesText;
    // Value shown ahead of the bytes (equates, conditionals).
    std::string ValueText;
    // The handler gave the label its meaning (equ, set, org, macro names);
    // otherwise the label names the statement's address.
    bool LabelTaken = false;
    // The statement's own listing line is not written (error, warning).
    bool SuppressListing = false;
    // Marks of the encoder that colour an instruction line.
    bool Z80Row = false;
    bool Z180Row = false;
    bool IndexUsed = false;

    // Clears what executing the previous statement left; preparing the
    // next one sets every field. The owned texts keep their storage, since
    // a statement is prepared for every line of every pass.
    void ClearResults() {
        Category = LineCategory::None;
        BytesText.clear();
        ValueText.clear();
        LabelTaken = false;
        SuppressListing = false;
        Z80Row = false;
        Z180Row = false;
        IndexUsed = false;
    }

    int OperandCount() const { return static_cast<int>(OperandList.size()); }
    // What a diagnostic about the instruction as a whole names.
    std::string_view Instruction() const { return WrittenAs.empty() ? Operation : WrittenAs; }
};

} // namespace trident
