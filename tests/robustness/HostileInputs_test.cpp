// Sources, opcode tables and output paths that no sane user writes, through
// the batch tool: each run ends with its clear message and exit status,
// never with a crash or a hang.
#include "support/RunTool.h"
#include "support/TempSource.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace trident {
namespace {

using testing::Quoted;
using testing::ReadWholeFile;
using testing::RunTool;
using testing::TempDir;
using namespace std::string_literals;

constexpr int Clean = 0;
constexpr int ErrorsListed = 1;
constexpr int RunFailed = 2;

std::string Repeat(std::string_view text, int times) {
    std::string result;
    result.reserve(text.size() * static_cast<std::size_t>(times));
    for (int i = 0; i < times; ++i) result += text;
    return result;
}

// n statements on one line, or n operands to one db.
std::string Statements(int n) {
    return " nop" + Repeat(" ! nop", n - 1) + "\n";
}
std::string Operands(int n) {
    return " db 1" + Repeat(",1", n - 1) + "\n";
}

struct HostileSource {
    const char* Name;
    std::function<std::string()> Text;
    int Exit;
    std::vector<std::string> Messages; // each on standard error
};

const HostileSource HostileSources[] = {
    {"NulAndHighBytes",
     [] { return "n\0p\n nop\0\n db 0ffh\xff\n\xff\xfe: nop ; \x80\x00\n nop\n"s; },
     ErrorsListed,
     {"prog.asm:2: error: Invalid Directive, Operation or Macro ~ nop",
      "prog.asm:3: error: Invalid Number ~ 0ffh\xff"}},
    {"OnlyNulBytes", [] { return std::string(65536, '\0'); }, Clean, {}},
    {"MegabyteComment", [] { return " nop ; " + std::string(1 << 20, 'x') + "\n"; }, Clean, {}},
    {"MegabyteLabel",
     [] { return std::string(1 << 20, 'a') + ": nop\n dw aaaa\n"; },
     ErrorsListed,
     {"prog.asm:2: error: Non Existant Variable ~ aaaa"}},
    {"MegabyteExpression",
     [] { return " dw " + Repeat("1+", 1 << 19) + "1\n"; },
     ErrorsListed,
     {"prog.asm:1: error: Value out of Range ~ 1+1+1+"}},
    {"MegabyteString",
     [] { return " db '" + std::string(1 << 20, 's') + "'\n"; },
     RunFailed,
     {"address past FFFF", "prog.asm line 1)"}},
    {"MegabyteOfOperands",
     [] { return Operands(1 << 19); },
     RunFailed,
     {"more than 128 operands in one statement (", "prog.asm line 1)"}},
    {"ThirtyTwoStatements", [] { return Statements(32); }, Clean, {}},
    {"ThirtyThreeStatements",
     [] { return "; first\n" + Statements(33); },
     RunFailed,
     {"more than 32 statements on one line (", "prog.asm line 2)"}},
    {"HundredTwentyEightOperands", [] { return Operands(128); }, Clean, {}},
    {"HundredTwentyNineOperands",
     [] { return "\n\n" + Operands(129); },
     RunFailed,
     {"more than 128 operands in one statement (", "prog.asm line 3)"}},
    {"ParenthesesTenThousandDeep",
     [] { return " db " + std::string(10000, '(') + "1" + std::string(10000, ')') + "\n"; },
     Clean,
     {}},
    {"ParenthesesNeverClosed",
     [] { return " db " + std::string(10000, '(') + "1\n"; },
     ErrorsListed,
     {"prog.asm:1: error: Missing ) ~ "}},
    {"PrefixOperatorsTenThousandDeep",
     [] { return " db " + Repeat("- + not not ", 10000) + "1\n"; },
     Clean,
     {}},
    {"MacroCallingItself",
     [] { return "m macro\n m\n endm\n m\n"; },
     RunFailed,
     {"macro expansion nested deeper than 255 levels (",
      "prog.asm line 4, in expansion of macro m)"}},
    {"IncludeOfItself",
     [] { return " include prog.asm\n nop\n"; },
     ErrorsListed,
     {"error: Cannot nest more than 8 levels ~ prog.asm"}},
    {"IncludeOfADirectory",
     [] { return " include .\n"; },
     ErrorsListed,
     {"prog.asm:1: error: Include file error ~ ."}},
    // Libraries are read in pass 1 only, so the listed error is not counted;
    // the message box text tells the user.
    {"MaclibOfAMissingFile",
     [] { return " maclib nosuch\n nop\n"; },
     Clean,
     {"Can NOT open .LIB file\nFile = nosuch.lib"}},
    {"OrgPastFFFF",
     [] { return " org 10000h\n db 1\n"; },
     ErrorsListed,
     {"prog.asm:1: error: Value out of Range ~ 10000h"}},
    {"WordAtFFFF",
     [] { return " org 0ffffh\n dw 1\n"; },
     RunFailed,
     {"address past FFFF: the program does not fit in 64 KiB (", "prog.asm line 2)"}},
    {"DataRunningPastFFFF",
     [] { return " org 0fffeh\n db 1,2,3\n"; },
     RunFailed,
     {"address past FFFF: the program does not fit in 64 KiB (", "prog.asm line 2)"}},
    {"StorageRunningPastFFFF",
     [] { return " org 0fff0h\n ds 20h\n nop\n"; },
     RunFailed,
     {"address past FFFF", "prog.asm line 3)"}},
};

void PrintTo(const HostileSource& hostile, std::ostream* out) {
    *out << hostile.Name;
}

class HostileSourceTest : public ::testing::TestWithParam<HostileSource> {
  protected:
    TempDir dir;
};

TEST_P(HostileSourceTest, EndsWithItsMessage) {
    const HostileSource& hostile = GetParam();
    const auto source = dir.Write("prog.asm", hostile.Text());
    const auto listing = dir.Path() / "prog.ls";
    const auto result = RunTool(Quoted(source) + " --quiet --listing " + Quoted(listing) +
                                    " --hex " + Quoted(dir.Path() / "prog.hex"),
                                dir.Path());
    EXPECT_EQ(result.Exit, hostile.Exit) << result.Err.substr(0, 2000);
    for (const std::string& message : hostile.Messages)
        EXPECT_NE(result.Err.find(message), std::string::npos)
            << "missing: " << message << "\nin: " << result.Err.substr(0, 2000);
    // Even a failed run leaves its listing, naming what went wrong.
    EXPECT_TRUE(std::filesystem::exists(listing));
}

INSTANTIATE_TEST_SUITE_P(Sources, HostileSourceTest, ::testing::ValuesIn(HostileSources),
                         [](const auto& info) { return std::string(info.param.Name); });

struct DamagedTable {
    const char* Name;
    std::string Text;
    std::string Message;
};

const DamagedTable DamagedTables[] = {
    {"MissingFields", "nop,0,1,blank,NO,8080\nhlt,118,1\n", "row 2 ends before its class field"},
    {"OpcodeOutOfRange", "nop,256,1,blank,NO,8080\n", "the opcode field of row 1 (256)"},
    {"SpareOutOfRange", "nop,0,40000,blank,NO,8080\n", "the spare field of row 1 (40000)"},
    {"OpcodeNotANumber", "nop,zero,1,blank,NO,8080\n", "is not a whole number"},
    {"BinaryJunk", std::string("\x01\xff\0,\0\n", 6), "Unable to read OpTable.Def"},
};

void PrintTo(const DamagedTable& table, std::ostream* out) {
    *out << table.Name;
}

class DamagedTableTest : public ::testing::TestWithParam<DamagedTable> {
  protected:
    TempDir dir;
};

TEST_P(DamagedTableTest, NoAssemblyStarts) {
    const auto source = dir.Write("prog.asm", " nop\n");
    const auto table = dir.Write("OpTable.def", GetParam().Text);
    const auto result = RunTool(Quoted(source) + " --quiet --optable " + Quoted(table), dir.Path());
    EXPECT_EQ(result.Exit, RunFailed);
    EXPECT_NE(result.Err.find("Unable to read OpTable.Def to initialize Assembler"),
              std::string::npos)
        << result.Err;
    EXPECT_NE(result.Err.find(GetParam().Message), std::string::npos) << result.Err;
}

INSTANTIATE_TEST_SUITE_P(Tables, DamagedTableTest, ::testing::ValuesIn(DamagedTables),
                         [](const auto& info) { return std::string(info.param.Name); });

class HostileFileTest : public ::testing::Test {
  protected:
    TempDir dir;
};

TEST_F(HostileFileTest, SymbolFileOfValuesBeyondTheIntegers) {
    const auto source = dir.Write("prog.asm", "big equ 9223372036854777856\n"
                                              "neg equ -9223372036854777856\n"
                                              "huge equ 1e300\n");
    const auto symbols = dir.Path() / "prog.sym";
    const auto result = RunTool(Quoted(source) + " --symbols " + Quoted(symbols), dir.Path());
    EXPECT_EQ(result.Exit, Clean) << result.Err;
    EXPECT_EQ(ReadWholeFile(symbols), "big EQU 00800H\r\nhuge EQU 00000H\r\nneg EQU 0F800H\r\n");
}

TEST_F(HostileFileTest, TableOfThreeHundredRowsLoadsItsFirst257) {
    std::string rows;
    for (int i = 0; i < 300; ++i) rows += "op" + std::to_string(i) + ",0,1,blank,NO,8080\n";
    const auto table = dir.Write("OpTable.def", rows);
    const auto source = dir.Write("prog.asm", " op0\n op256\n op257\n op299\n");
    const auto result = RunTool(Quoted(source) + " --optable " + Quoted(table), dir.Path());
    EXPECT_EQ(result.Exit, ErrorsListed);
    const std::string file = source.string();
    EXPECT_EQ(result.Err, file + ":3: error: Invalid Directive, Operation or Macro ~ op257\n" +
                              file + ":4: error: Invalid Directive, Operation or Macro ~ op299\n");
}

TEST_F(HostileFileTest, TableThatIsADirectoryOrMissing) {
    const auto source = dir.Write("prog.asm", " nop\n");
    for (const auto& table : {dir.Path(), dir.Path() / "nosuch.def"}) {
        const auto result = RunTool(Quoted(source) + " --optable " + Quoted(table), dir.Path());
        EXPECT_EQ(result.Exit, RunFailed);
        EXPECT_NE(result.Err.find("Unable to read OpTable.Def"), std::string::npos) << result.Err;
    }
}

TEST_F(HostileFileTest, SourceThatIsADirectory) {
    const auto result = RunTool(Quoted(dir.Path()), dir.Path());
    EXPECT_EQ(result.Exit, RunFailed);
    EXPECT_EQ(result.Err, dir.Path().string() + ": not a readable file\n");
}

TEST_F(HostileFileTest, UnreadableSource) {
    // Permissions do not stop root from reading.
    if (::geteuid() == 0) GTEST_SKIP() << "running as root";
    const auto source = dir.Write("prog.asm", " nop\n");
    std::filesystem::permissions(source, std::filesystem::perms::none);
    const auto result = RunTool(Quoted(source), dir.Path());
    EXPECT_EQ(result.Exit, RunFailed);
    EXPECT_NE(result.Err.find("cannot read the source file"), std::string::npos) << result.Err;
}

TEST_F(HostileFileTest, OutputPathThatIsADirectory) {
    const auto source = dir.Write("prog.asm", " nop\n");
    const auto target = dir.Path() / "out";
    std::filesystem::create_directory(target);
    dir.Write("out/keep", "kept");
    const auto result = RunTool(Quoted(source) + " --hex " + Quoted(target), dir.Path());
    EXPECT_EQ(result.Exit, RunFailed);
    EXPECT_NE(result.Err.find("cannot write " + target.string()), std::string::npos) << result.Err;
    EXPECT_EQ(ReadWholeFile(target / "keep"), "kept");
}

// A save that fails half way leaves the previous file as it was and no
// temporary behind.
class FailedSaveTest : public ::testing::Test {
  protected:
    void SetUp() override {
        source = dir.Write("prog.asm", Repeat(" nop ; a line of some length\n", 400));
        listing = dir.Write("prog.ls", "previous listing");
    }
    void ExpectPreviousKept() {
        EXPECT_EQ(ReadWholeFile(listing), "previous listing");
        for (const auto& entry : std::filesystem::directory_iterator(dir.Path()))
            EXPECT_EQ(entry.path().filename().string().find(".tmp"), std::string::npos)
                << entry.path();
    }

    TempDir dir;
    std::filesystem::path source;
    std::filesystem::path listing;
};

TEST_F(FailedSaveTest, WhenTheTemporaryCannotBeCreated) {
    std::filesystem::create_directory(dir.Path() / "prog.ls.tmp~");
    const auto result = RunTool(Quoted(source) + " --listing " + Quoted(listing), dir.Path());
    EXPECT_EQ(result.Exit, RunFailed);
    EXPECT_NE(result.Err.find("cannot write"), std::string::npos) << result.Err;
    EXPECT_EQ(ReadWholeFile(listing), "previous listing");
}

TEST_F(FailedSaveTest, WhenTheDiskIsFull) {
    // A file size limit makes every write past a few kilobytes fail as a
    // full disk does (the signal it would raise is ignored, so the write
    // reports the error instead).
    const auto out = dir.Path() / "stdout.txt";
    const auto err = dir.Path() / "stderr.txt";
    const std::string command = "trap '' XFSZ; ulimit -f 4; exec '" + std::string(TRIDENT_BIN_DIR) +
                                "/trident-asm' " + Quoted(source) + " --listing " +
                                Quoted(listing) + " >" + Quoted(out) + " 2>" + Quoted(err);
    const int status = std::system(command.c_str());
    ASSERT_TRUE(WIFEXITED(status)) << status;
    EXPECT_EQ(WEXITSTATUS(status), RunFailed);
    EXPECT_NE(ReadWholeFile(err).find("cannot write " + listing.string()), std::string::npos)
        << ReadWholeFile(err);
    std::filesystem::remove(out);
    std::filesystem::remove(err);
    ExpectPreviousKept();
}

} // namespace
} // namespace trident
