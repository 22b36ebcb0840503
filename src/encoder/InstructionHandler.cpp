#include "encoder/InstructionHandler.h"

#include "assembler/Assembly.h"
#include "assembler/StatementMemo.h"
#include "encoder/InstructionEncoding.h"

namespace trident {

bool InstructionHandler::EncodeInstruction(Assembly& run, Statement& statement) {
    if (statement.Operation.empty()) return false;
    const std::int16_t index = FindRow(run, statement);
    if (index < 0) return false;
    const OpcodeRow& row = run.Opcodes().Row(index);
    statement.Category = LineCategory::Instruction;
    MarkProcessor(run, statement, row);
    InstructionEncoding(run, statement, row).Encode();
    return true;
}

// The table stays the same through an assembly, and so does a kept
// statement's word: its row is looked up once, but marks its processor as
// used in every pass, as a look-up does.
std::int16_t InstructionHandler::FindRow(Assembly& run, const Statement& statement) {
    const OpcodeTable& table = run.Opcodes();
    StatementMemo* memo = statement.Memo;
    if (memo == nullptr) return table.FindKeyword(statement.Keyword, run.State());
    if (memo->Row == StatementMemo::UnknownRow) {
        memo->Row = table.FindKeyword(statement.Keyword, run.State());
    } else if (memo->Row >= 0) {
        table.MarkUse(memo->Row, run.State());
    }
    return memo->Row;
}

// Z80 and Z180 instructions are always assembled, whatever processor the
// source is meant for; the warning tells the user, unless the processor's
// box is checked.
void InstructionHandler::MarkProcessor(Assembly& run, Statement& statement, const OpcodeRow& row) {
    const RunOptions& options = run.State().Options;
    statement.Z80Row = row.Family == RowCpu::Z80;
    statement.Z180Row = row.Family == RowCpu::Z180;
    if (statement.Z80Row && !options.Z80) run.ListWarning("Z80 Warning", statement.Operation);
    if (statement.Z180Row && !options.Z180) run.ListWarning("Z180 Warning", statement.Operation);
}

} // namespace trident
