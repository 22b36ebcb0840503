#include "encoder/InstructionHandler.h"

#include "encoder/EncoderContext.h"
#include "encoder/InstructionEncoding.h"
#include "encoder/OpcodeTable.h"
#include "source/Statement.h"
#include "source/StatementMemo.h"

namespace trident {

bool InstructionHandler::EncodeInstruction(EncoderContext& run, Statement& statement) {
    if (statement.Operation.empty()) return false;
    const std::int16_t index = FindRow(run, statement);
    if (index < 0) return false;
    const OpcodeRow& row = run.Opcodes().Row(index);
    statement.Category = LineCategory::Instruction;
    MarkProcessor(run, statement, row);
    StatementMemo* memo = statement.Memo;
    if (memo && memo->Emitted().Kept()) {
        EmitAgain(run, statement, memo->Emitted());
        return true;
    }
    InstructionEncoding encoding(run, statement, row);
    if (memo && encoding.Keepable() && !memo->Emitted().GivenUp())
        EncodeAndKeep(run, statement, encoding, memo->Emitted());
    else
        encoding.Encode();
    return true;
}

namespace {

// The log of emitted values is set for one encoding only, whatever ends it.
class EmissionWatch {
  public:
    EmissionWatch(EncoderContext& run, KeptEncoding& log) : pRun(run) { pRun.LogEmissions(&log); }
    ~EmissionWatch() { pRun.LogEmissions(nullptr); }
    EmissionWatch(const EmissionWatch&) = delete;
    EmissionWatch& operator=(const EmissionWatch&) = delete;

  private:
    EncoderContext& pRun;
};

} // namespace

// An encoding that raised no diagnostic and met no operand value that may
// change (so none but constants) emits the same values in every pass; one
// that did meets the same again in every pass, and is not watched again.
inline void InstructionHandler::EncodeAndKeep(EncoderContext& run, Statement& statement,
                                              InstructionEncoding& encoding, KeptEncoding& kept) {
    KeptEncoding log;
    run.WatchChangeable();
    {
        const EmissionWatch watch(run, log);
        encoding.Encode();
    }
    if (run.MetChangeable()) {
        kept.GiveUp();
        return;
    }
    log.SetTrailingBlank(!statement.BytesText.empty() && statement.BytesText.back() == ' ');
    kept = log;
}

// What the encoding did, done again: the index registers noted (their
// warning follows the option as it is now), then the values emitted.
void InstructionHandler::EmitAgain(EncoderContext& run, Statement& statement,
                                   const KeptEncoding& kept) {
    for (std::size_t note = 0; note < kept.NoteCount(); ++note)
        OperandReader::WarnIndexRegister(
            run, statement, statement.OperandList[static_cast<std::size_t>(kept.Note(note))]);
    for (std::size_t value = 0; value < kept.ValueCount(); ++value)
        run.EmitBits(kept.Value(value), kept.Width(value), statement.BytesText);
    if (kept.TrailingBlank()) statement.BytesText += ' ';
}

// The table stays the same through an assembly, and so does a kept
// statement's word: its row is looked up once, but marks its processor as
// used in every pass, as a look-up does.
std::int16_t InstructionHandler::FindRow(EncoderContext& run, const Statement& statement) {
    const OpcodeTable& table = run.Opcodes();
    StatementMemo* memo = statement.Memo;
    if (memo == nullptr) return table.FindKeyword(statement.Keyword, run.State());
    if (memo->Row() == StatementMemo::UnknownRow) {
        memo->SetRow(table.FindKeyword(statement.Keyword, run.State()));
    } else if (memo->Row() >= 0) {
        table.MarkUse(memo->Row(), run.State());
    }
    return memo->Row();
}

// Z80 and Z180 instructions are always assembled, whatever processor the
// source is meant for; the warning tells the user, unless the processor's
// box is checked.
inline void InstructionHandler::MarkProcessor(EncoderContext& run, Statement& statement,
                                              const OpcodeRow& row) {
    statement.Z80Row = row.Family == RowCpu::Z80;
    statement.Z180Row = row.Family == RowCpu::Z180;
    if (statement.Z80Row || statement.Z180Row) WarnProcessor(run, statement);
}

void InstructionHandler::WarnProcessor(EncoderContext& run, const Statement& statement) {
    const RunOptions& options = run.State().Options;
    if (statement.Z80Row && !options.Z80) run.ListWarning("Z80 Warning", statement.Instruction());
    if (statement.Z180Row && !options.Z180)
        run.ListWarning("Z180 Warning", statement.Instruction());
}

} // namespace trident
