#include "encoder/InstructionHandler.h"

#include "assembler/Assembly.h"
#include "encoder/InstructionEncoding.h"

namespace trident {

bool InstructionHandler::EncodeInstruction(Assembly& run, Statement& statement) {
    if (statement.Operation.empty()) return false;
    // The keyword is the operation word in lower case.
    const std::int16_t index = run.Opcodes().FindKeyword(statement.Keyword, run.State());
    if (index < 0) return false;
    const OpcodeRow& row = run.Opcodes().Row(index);
    statement.Category = LineCategory::Instruction;
    MarkProcessor(run, statement, row);
    InstructionEncoding(run, statement, row).Encode();
    return true;
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
