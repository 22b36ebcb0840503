#include "encoder/EncoderRun.h"
#include "encoder/OpcodeTable.h"
#include "encoder/OpcodeTableError.h"
#include "encoder/OperandClass.h"

#include <cerrno>
#include <functional>
#include <gtest/gtest.h>
#include <optional>

namespace trident {
namespace {

using Texts = std::vector<std::string>;

TEST(OperandClassCode, IgnoresCaseAndKnowsNoOtherWord) {
    EXPECT_EQ(OperandClassCode("REGDATA"), OperandClass::RegData);
    EXPECT_EQ(OperandClassCode("RegOrMemData"), OperandClass::RegOrMemData);
    for (const char* unknown : {"", "register", "rp4", " data"})
        EXPECT_EQ(OperandClassCode(unknown), OperandClass::None) << unknown;
}

TEST(OpcodeTableRows, ReadsTheSixFields) {
    OpcodeTable table;
    table.ReadRows("bit,64,2,numberregormems,203,z80\n");
    ASSERT_EQ(table.Count(), 1);
    const OpcodeRow& row = table.Row(0);
    EXPECT_EQ(row.Mnemonic, "bit");
    EXPECT_EQ(row.Opcode, 64);
    EXPECT_EQ(row.Spare, 2);
    EXPECT_EQ(row.Class, OperandClass::NumberRegOrMemS);
    EXPECT_EQ(row.PrefixByte(), std::optional<std::uint8_t>(203));
    EXPECT_EQ(row.Cpu, "z80");
}

TEST(OpcodeTableRows, ReadsFieldsAcrossLineEndsAndQuotes) {
    // clang-format off
    const std::pair<std::string, Texts> layouts[] = {
        {"", {}}, {"\n  \r\n\n", {}}, {"nop,0,1,blank,NO,8080", {"nop"}},
        {"nop,0,1,blank,NO,8080\r\nhlt,118,1,blank,NO,8080\r\n", {"nop", "hlt"}},
        {"nop,0,1,blank,NO,8080\n\n\nhlt,118,1,blank,NO,8080\n\n", {"nop", "hlt"}},
        {"nop,0,1,blank,NO,8080,hlt,118,1,blank,NO,8080", {"nop", "hlt"}},
        {"nop\n0\n1\nblank\nNO\n8080\n", {"nop"}}, {"  nop ,\t0 , 1 , blank , NO , 8080  \n", {"nop"}},
        {"\"a, b\",\"0\",1,\"blank\",\"NO\",\"8080\"\n", {"a, b"}}};
    // clang-format on
    for (const auto& [text, expected] : layouts) {
        OpcodeTable table;
        table.ReadRows(text);
        Texts mnemonics;
        for (std::int16_t i = 0; i < table.Count(); ++i) mnemonics.push_back(table.Row(i).Mnemonic);
        EXPECT_EQ(mnemonics, expected) << text;
    }
}

// Only a whole number that fits 16 bits is a prefix byte.
TEST(OpcodeTableRows, KnowsWhatIsAPrefixByte) {
    const std::vector<std::pair<std::string, std::optional<std::uint8_t>>> fields{
        {"NO", {}},      {"", {}},     {"237", 0xED}, {"\"221\"", 0xDD},
        {"32767", 0xFF}, {"-3", 0xFD}, {"70000", {}}, {"2.5", {}}};
    for (const auto& [field, byte] : fields) {
        OpcodeTable table;
        table.ReadRows("neg,68,2,blank," + field + ",z80\n");
        EXPECT_EQ(table.Row(0).PrefixByte(), byte) << field;
    }
}

TEST(OpcodeTableRows, FindsTheFirstRowOfAMnemonicWithoutRegardToCase) {
    OpcodeTable table;
    table.ReadRows("mov,64,1,memregmem,NO,8080\nMOV,1,1,blank,NO,8080\n"
                   "longname1,0,1,blank,NO,8080\nlongname2,0,1,blank,NO,8080\n");
    RunState state;
    for (const char* word : {"mov", "Mov", "MOV"}) EXPECT_EQ(table.FindMnemonic(word, state), 0);
    EXPECT_EQ(table.FindMnemonic("LongName2", state), 3);
    for (const char* word : {"mvi", "", "longname", "longname3"})
        EXPECT_EQ(table.FindMnemonic(word, state), -1) << word;
}

// A full table: every name is found at its row, and none past MaxRows.
TEST(OpcodeTableRows, FindsEveryRowOfAFullTable) {
    std::string rows;
    for (int row = 0; row < 300; ++row) rows += 'r' + std::to_string(row) + ",0,1,blank,NO,8080\n";
    OpcodeTable table;
    table.ReadRows(rows);
    RunState state;
    for (int row = 0; row < 300; ++row)
        EXPECT_EQ(table.FindMnemonic('R' + std::to_string(row), state),
                  row < OpcodeTable::MaxRows ? row : -1);
}

// The usage flags take the cpu field exactly as written.
TEST(OpcodeTableRows, MarksTheProcessorOfTheRowFound) {
    // clang-format off
    const std::tuple<std::string, bool, bool> cpus[] = {
        {"8080", false, false}, {"z80", true, false}, {"Z80", false, false}, {"z180", false, true},
        {"Z180", false, false}};
    // clang-format on
    for (const auto& [cpu, z80, z180] : cpus) {
        OpcodeTable table;
        table.ReadRows("op,0,1,blank,NO," + cpu + "\n");
        RunState state;
        table.FindMnemonic("OP", state);
        EXPECT_EQ(state.Z80Used, z80) << cpu;
        EXPECT_EQ(state.Z180Used, z180) << cpu;
    }
}

// The error that `load` throws, if any.
std::optional<OpcodeTableError> ErrorOf(const std::function<void()>& load) {
    try {
        load();
    } catch (const OpcodeTableError& error) {
        return error;
    }
    return std::nullopt;
}

// A fault in the text stops the load and keeps the rows read before.
TEST(OpcodeTableRows, FaultsStopTheLoad) {
    constexpr int NotANumber = OpcodeTableError::NotANumber;
    constexpr int OutOfRange = OpcodeTableError::OutOfRange;
    constexpr int CutShort = OpcodeTableError::RowCutShort;
    // clang-format off
    const std::tuple<std::string, int, std::string> cases[] = {
        {"nop,x,1,blank,NO,8080", NotANumber, "Type mismatch: the opcode field of row 1 (\"x\") is not a whole number"},
        {"nop,1.5,1,blank,NO,8080", NotANumber, "Type mismatch: the opcode field of row 1 (\"1.5\") is not a whole number"},
        {"a,0,1,blank,NO,8080\nnop,256,1,blank,NO,8080", OutOfRange, "Overflow: the opcode field of row 2 (256) is out of range"},
        {"nop,-1,1,blank,NO,8080", OutOfRange, "Overflow: the opcode field of row 1 (-1) is out of range"},
        {"nop,0,32768,blank,NO,8080", OutOfRange, "Overflow: the spare field of row 1 (32768) is out of range"},
        {"nop,0,,blank,NO,8080", NotANumber, "Type mismatch: the spare field of row 1 (\"\") is not a whole number"},
        {"nop,0,1,blank", CutShort, "Input past end of file: row 1 ends before its prefix field"},
        {"nop,0,1,blank,NO,8080\nret,201\n", CutShort, "Input past end of file: row 2 ends before its spare field"}};
    // clang-format on
    for (const auto& [text, number, description] : cases) {
        OpcodeTable table;
        table.ReadRows("nop,0,1,blank,NO,8080\n");
        const auto error = ErrorOf([&, &text = text] { table.ReadRows(text); });
        ASSERT_TRUE(error) << text;
        EXPECT_EQ(error->Number(), number);
        EXPECT_EQ(error->Component(), "OpcodeTable");
        EXPECT_EQ(error->Description(), description);
        EXPECT_EQ(table.Count(), 1);
    }
}

TEST(OpcodeTableFile, MissingFileCarriesTheSystemError) {
    testing::TempDir dir;
    OpcodeTable table;
    const auto error = ErrorOf([&] { table.LoadOpcodeTable(dir.Path() / "OpTable.def"); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), ENOENT);
    EXPECT_EQ(error->Component(), "the file system");
    EXPECT_NE(error->Description().find("OpTable.def"), std::string::npos);
}

// --- The table in an assembly -------------------------------------------------------

TEST(OpcodeTableInAssembly, UnreadableTableStopsTheAssemblyBeforeItStarts) {
    testing::TempDir dir;
    testing::EncoderRun run(dir.Write("OpTable.def", "nop,zero,1,blank,NO,8080\n").string());
    EXPECT_EQ(run.Assemble(" nop\n"), Assembly::Outcome::Failed);
    EXPECT_TRUE(run.Passes().empty());
    EXPECT_EQ(run.Messages(), Texts{run.Run().FailureMessage()});
    EXPECT_EQ(run.Run().FailureMessage(),
              "\nUnable to read OpTable.Def to initialize Assembler Error #1002 was generated by "
              "OpcodeTable\nType mismatch: the opcode field of row 1 (\"zero\") is not a whole "
              "number");
}

TEST(OpcodeTableInAssembly, WithoutRowsNoInstructionIsKnown) {
    testing::TempDir dir;
    testing::SourceRun unconfigured;
    testing::EncoderRun empty(dir.Write("OpTable.def", "").string());
    for (testing::SourceRun* run : {&unconfigured, static_cast<testing::SourceRun*>(&empty)}) {
        EXPECT_EQ(run->Assemble(" nop\n"), Assembly::Outcome::Completed);
        EXPECT_EQ(run->DiagnosticTexts(), Texts{"Invalid Directive, Operation or Macro ~ nop"});
    }
}

TEST(OpcodeTableInAssembly, AnEditedTableTakesEffectAtTheNextAssembly) {
    testing::TempDir dir;
    const auto table = dir.Write("OpTable.def", "nop,0,1,blank,NO,8080\nnop,1,1,blank,NO,8080\n");
    testing::EncoderRun run(table.string());
    run.Assemble(" NOP\n");
    EXPECT_EQ(run.Bytes(), "00");
    dir.Write("OpTable.def", "nop,118,1,blank,NO,8080\n");
    run.Assemble(" nop\n");
    EXPECT_EQ(run.Bytes(), "76");
}

} // namespace
} // namespace trident
