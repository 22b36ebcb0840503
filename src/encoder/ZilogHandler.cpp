#include "encoder/ZilogHandler.h"

#include "base/Text.h"
#include "encoder/EncoderContext.h"
#include "encoder/InstructionHandler.h"
#include "encoder/OperandReader.h"
#include "encoder/ZilogTranslator.h"
#include "source/Statement.h"

#include <string_view>

namespace trident {
namespace {

constexpr std::string_view AlternateAf = "af'";

std::string Joined(const std::vector<std::string>& operands) {
    std::string text;
    for (const std::string& operand : operands) {
        if (!text.empty()) text += ',';
        text += operand;
    }
    return text;
}

} // namespace

// The 8080-style statement is encoded in place of the Zilog one; the
// listing still shows the operation and operands as the user wrote them.
void ZilogHandler::Encode(EncoderContext& run, Statement& statement) {
    SeparateAlternateAfComment(statement);
    statement.Category = LineCategory::Instruction;
    const std::optional<ZilogTranslator::IntelForm> form =
        ZilogTranslator::Translate(run, statement);
    if (!form) {
        run.ListError("Invalid Zilog operands", TrimBlanks(std::string(statement.Operation) + " " +
                                                           std::string(statement.Operands)));
        return;
    }
    const std::string asWritten =
        std::string(statement.Operation) + " " + std::string(statement.Operands);
    const std::string_view written = TrimBlanks(asWritten);
    // The translated fields live in `form` and `joined` while the 8080-style
    // statement is encoded.
    const std::string joined = Joined(form->Operands);
    const std::vector<std::string_view> operands(form->Operands.begin(), form->Operands.end());
    Statement intel = statement;
    // What is kept of the statement belongs to its own words, not these.
    intel.Memo = nullptr;
    intel.Operation = form->Mnemonic;
    intel.Keyword = form->Mnemonic;
    intel.OperandList = operands;
    intel.Operands = joined;
    intel.WrittenAs = written;
    if (!InstructionHandler::EncodeInstruction(run, intel)) {
        // A table without the row: as the 8080-style statement would fare.
        statement.Category = LineCategory::None;
        run.ListError("Invalid Directive, Operation or Macro", intel.Operation);
        return;
    }
    intel.Operation = statement.Operation;
    intel.Keyword = std::move(statement.Keyword);
    intel.OperandList = statement.OperandList;
    intel.Operands = statement.Operands;
    intel.Memo = statement.Memo;
    intel.WrittenAs = {};
    statement = std::move(intel);
}

// The scanner takes the quote of af' for the start of a string, so that a
// comment after ex af,af' lands in the operands; it is put back here.
void ZilogHandler::SeparateAlternateAfComment(Statement& statement) {
    if (statement.Keyword != "ex" || statement.OperandCount() != 2) return;
    const std::string_view last = statement.OperandList.back();
    if (LowerCase(std::string_view(last).substr(0, AlternateAf.size())) != AlternateAf) return;
    const std::string rest =
        std::string(TrimBlanks(std::string_view(last).substr(AlternateAf.size())));
    if (rest.empty() || rest.front() != ';') return;
    // The comment is the end of the operand field, which ends with `last`.
    statement.Comment = statement.Operands.substr(statement.Operands.size() - rest.size());
    statement.Operands.remove_suffix(last.size() - AlternateAf.size());
    // The kept operands stay as cut: the next pass separates them again.
    pOperands.assign(statement.OperandList.begin(), statement.OperandList.end());
    pOperands.back() = last.substr(0, AlternateAf.size());
    statement.OperandList = pOperands;
}

} // namespace trident
