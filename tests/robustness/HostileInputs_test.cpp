// Sources, opcode tables and output paths that no sane user writes, through
// the batch tool: each run ends with its clear message and exit status,
// never with a crash or a hang.
#include "e2e/ToolDir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace trident {
namespace {

using testing::ToolDir;
using namespace std::string_literals;

constexpr int Clean = 0;
constexpr int ErrorsListed = 1;
constexpr int RunFailed = 2;

std::string Repeat(std::string_view text, int times) {
    std::string result;
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
    std::string Text;
    int Exit;
    std::vector<std::string> Messages; // each on standard error
};

const std::string PastFFFF = "address past FFFF: the program does not fit in 64 KiB (";
const std::string TooMany = "more than 128 operands in one statement (";

// clang-format off
const HostileSource HostileSources[] = {
    {"NulAndHighBytes", "n\0p\n nop\0\n db 0ffh\xff\n\xff\xfe: nop ; \x80\x00\n nop\n"s, ErrorsListed,
     {"prog.asm:2: error: Invalid Directive, Operation or Macro ~ nop", "prog.asm:3: error: Invalid Number ~ 0ffh\xff"}},
    {"OnlyNulBytes", std::string(65536, '\0'), Clean, {}},
    {"MegabyteComment", " nop ; " + std::string(1 << 20, 'x') + "\n", Clean, {}},
    {"MegabyteLabel", std::string(1 << 20, 'a') + ": nop\n dw aaaa\n", ErrorsListed, {"prog.asm:2: error: Non Existant Variable ~ aaaa"}},
    {"MegabyteExpression", " dw " + Repeat("1+", 1 << 19) + "1\n", ErrorsListed, {"prog.asm:1: error: Value out of Range ~ 1+1+1+"}},
    {"MegabyteString", " db '" + std::string(1 << 20, 's') + "'\n", RunFailed, {"address past FFFF", "prog.asm line 1)"}},
    {"MegabyteOfOperands", Operands(1 << 19), RunFailed, {TooMany, "prog.asm line 1)"}},
    {"ThirtyTwoStatements", Statements(32), Clean, {}},
    {"ThirtyThreeStatements", "; first\n" + Statements(33), RunFailed, {"more than 32 statements on one line (", "prog.asm line 2)"}},
    {"HundredTwentyEightOperands", Operands(128), Clean, {}},
    {"HundredTwentyNineOperands", "\n\n" + Operands(129), RunFailed, {TooMany, "prog.asm line 3)"}},
    // A line fails when it is reached, not when the file is read.
    {"ThirtyThreeStatementsAfterEnd", " end\n" + Statements(33), Clean, {}},
    {"HundredTwentyNineOperandsAfterEnd", " end !" + Operands(129), Clean, {}},
    {"ParenthesesTenThousandDeep", " db " + std::string(10000, '(') + "1" + std::string(10000, ')') + "\n", Clean, {}},
    {"ParenthesesNeverClosed", " db " + std::string(10000, '(') + "1\n", ErrorsListed, {"prog.asm:1: error: Missing ) ~ "}},
    {"PrefixOperatorsTenThousandDeep", " db " + Repeat("- + not not ", 10000) + "1\n", Clean, {}},
    {"MacroCallingItself", "m macro\n m\n endm\n m\n", RunFailed,
     {"macro expansion nested deeper than 255 levels (", "prog.asm line 4, in expansion of macro m)"}},
    {"IncludeOfItself", " include prog.asm\n nop\n", ErrorsListed, {"error: Cannot nest more than 8 levels ~ prog.asm"}},
    // Sources that grow without end: each ends in well under a second at its budget.
    {"IncludeOfItselfThirtyTimes", Repeat(" include prog.asm\n", 30) + "; more\n", ErrorsListed,
     {"error: Limit reached ~ more than 10000 include files and macro libraries opened in one pass (",
      "prog.asm line "}},
    {"MacroDoublingItsArgument", "grow macro a\n grow a+a\n endm\n grow 1\n end\n", ErrorsListed,
     {"prog.asm:4: error: Limit reached ~ a line of macro expansion longer than 262144 characters",
      "prog.asm:4: note: in expansion of macro grow"}},
    {"StringDoublingInARepeat", "s set \"ab\"\n rept 40\ns set s+s\n endm\n", ErrorsListed,
     {"prog.asm:2: error: String longer than 65535 characters ~ +"}},
    {"IncludeOfADirectory", " include .\n", ErrorsListed, {"prog.asm:1: error: Include file error ~ ."}},
    // Libraries are read in pass 1 only; the final pass looks for the file
    // again to report it on its line. The message box text tells the user too.
    {"MaclibOfAMissingFile", " maclib nosuch\n nop\n", ErrorsListed,
     {"Can NOT open .LIB file\nFile = nosuch.lib", "prog.asm:1: error: Macro library error ~ nosuch.lib"}},
    {"OrgPastFFFF", " org 10000h\n db 1\n", ErrorsListed, {"prog.asm:1: error: Value out of Range ~ 10000h"}},
    {"WordAtFFFF", " org 0ffffh\n dw 1\n", RunFailed, {PastFFFF, "prog.asm line 2)"}},
    {"DataRunningPastFFFF", " org 0fffeh\n db 1,2,3\n", RunFailed, {PastFFFF, "prog.asm line 2)"}},
    {"StorageRunningPastFFFF", " org 0fff0h\n ds 20h\n nop\n", RunFailed, {"address past FFFF", "prog.asm line 3)"}},
};
// clang-format on

TEST(HostileSources, EachEndsWithItsMessage) {
    for (const HostileSource& hostile : HostileSources) {
        SCOPED_TRACE(hostile.Name);
        ToolDir dir;
        dir.Write("prog.asm", hostile.Text);
        const auto result = dir.Run("{prog.asm} --quiet --listing {prog.ls} --hex {prog.hex}");
        EXPECT_EQ(result.Exit, hostile.Exit) << result.Err.substr(0, 2000);
        for (const std::string& message : hostile.Messages)
            EXPECT_NE(result.Err.find(message), std::string::npos)
                << "missing: " << message << "\nin: " << result.Err.substr(0, 2000);
        // Even a failed run leaves its listing, naming what went wrong.
        ASSERT_TRUE(std::filesystem::exists(dir.At("prog.ls")));
        if (hostile.Exit == RunFailed) {
            EXPECT_NE(dir.Read("prog.ls").find("~Assembly stopped ~ " + hostile.Messages[0]),
                      std::string::npos);
        }
    }
}

// No assembly starts with a missing or damaged table (nothing, a directory
// in its place, or text that is no table), and the message says what is
// wrong, once.
TEST(HostileFiles, UnreadableOrDamagedOpcodeTables) {
    const std::tuple<const char*, std::optional<std::string>, std::string> tables[] = {
        {"none.def", std::nullopt, "none.def"},
        {".", std::nullopt, "Unable to read OpTable.Def"},
        {"OpTable.def", "nop,0,1,blank,NO,8080\nhlt,118,1\n", "row 2 ends before its class field"},
        {"OpTable.def", "nop,zero,1,blank,NO,8080\n", "is not a whole number"},
        {"OpTable.def", std::string("\x01\xff\0,\0\n", 6), "Unable to read OpTable.Def"}};
    for (const auto& [name, table, message] : tables) {
        SCOPED_TRACE(message);
        ToolDir dir;
        dir.Write("prog.asm", " nop\n");
        if (table) dir.Write(name, *table);
        const auto result = dir.Run("{prog.asm} --quiet --optable {" + std::string(name) + "}");
        EXPECT_EQ(result.Exit, RunFailed);
        const std::string head = "\nUnable to read OpTable.Def to initialize Assembler Error #";
        EXPECT_EQ(result.Err.rfind(head, 0), 0u) << result.Err;
        EXPECT_EQ(result.Err.find(head, 1), std::string::npos) << result.Err;
        EXPECT_NE(result.Err.find(message), std::string::npos) << result.Err;
    }
}

TEST(HostileFiles, SymbolFileOfValuesBeyondTheIntegers) {
    ToolDir dir;
    dir.Write("prog.asm", "big equ 9223372036854777856\nneg equ -9223372036854777856\n"
                          "huge equ 1e300\n");
    const auto result = dir.Run("{prog.asm} --symbols {prog.sym}");
    EXPECT_EQ(result.Exit, Clean) << result.Err;
    EXPECT_EQ(dir.Read("prog.sym"), "big EQU 00800H\r\nhuge EQU 00000H\r\nneg EQU 0F800H\r\n");
}

TEST(HostileFiles, TableOfThreeHundredRowsLoadsItsFirst257) {
    ToolDir dir;
    std::string rows;
    for (int i = 0; i < 300; ++i) rows += "op" + std::to_string(i) + ",0,1,blank,NO,8080\n";
    dir.Write("OpTable.def", rows + "bad,999,x\n"); // never read
    const std::string file = dir.Write("prog.asm", " op0\n op256\n op257\n op299\n").string();
    const auto result = dir.Run("{prog.asm} --optable {OpTable.def}");
    EXPECT_EQ(result.Exit, ErrorsListed);
    EXPECT_EQ(result.Err, file + ":3: error: Invalid Directive, Operation or Macro ~ op257\n" +
                              file + ":4: error: Invalid Directive, Operation or Macro ~ op299\n");
}

TEST(HostileFiles, SourceThatIsADirectory) {
    ToolDir dir;
    const auto result = dir.Run(testing::Quoted(dir.Path()));
    EXPECT_EQ(result.Exit, RunFailed);
    EXPECT_EQ(result.Err, dir.Path().string() + ": not a readable file\n");
}

TEST(HostileFiles, UnreadableSource) {
    // Permissions do not stop root from reading.
    if (::geteuid() == 0) GTEST_SKIP() << "running as root";
    ToolDir dir;
    std::filesystem::permissions(dir.Write("prog.asm", " nop\n"), std::filesystem::perms::none);
    const auto result = dir.Run("{prog.asm}");
    EXPECT_EQ(result.Exit, RunFailed);
    EXPECT_NE(result.Err.find("cannot read the source file"), std::string::npos) << result.Err;
}

TEST(HostileFiles, OutputPathThatIsADirectory) {
    ToolDir dir;
    dir.Write("prog.asm", " nop\n");
    std::filesystem::create_directory(dir.At("out"));
    dir.Write("out/keep", "kept");
    const auto result = dir.Run("{prog.asm} --hex {out}");
    EXPECT_EQ(result.Exit, RunFailed);
    EXPECT_NE(result.Err.find("cannot write " + dir.At("out").string()), std::string::npos)
        << result.Err;
    EXPECT_EQ(dir.Read("out/keep"), "kept");
    // An empty directory is not removed to make room either.
    std::filesystem::create_directory(dir.At("empty"));
    EXPECT_EQ(dir.Run("{prog.asm} --bin {empty}").Exit, RunFailed);
    EXPECT_TRUE(std::filesystem::is_directory(dir.At("empty")));
}

// A save that fails half way leaves the previous file as it was and no
// temporary behind: a directory where the temporary would go stops the save
// for every user, as does a full disk.
TEST(FailedSave, WhenTheTemporaryCannotBeCreated) {
    for (const char* option : {"--listing", "--hex"}) {
        ToolDir dir;
        dir.Write("prog.asm", " nop\n");
        dir.Write("prog.out", "previous file");
        std::filesystem::create_directory(dir.At("prog.out.tmp~"));
        const auto result = dir.Run("{prog.asm} " + std::string(option) + " {prog.out}");
        EXPECT_EQ(result.Exit, RunFailed) << option;
        EXPECT_NE(result.Err.find("cannot write"), std::string::npos) << result.Err;
        EXPECT_EQ(dir.Read("prog.out"), "previous file") << option;
    }
}

TEST(FailedSave, WhenTheDiskIsFull) {
    ToolDir dir;
    dir.Write("prog.asm", Repeat(" nop ; a line of some length\n", 400));
    dir.Write("prog.ls", "previous listing");
    // A file size limit makes every write past a few kilobytes fail as a
    // full disk does (the signal it would raise is ignored, so the write
    // reports the error instead).
    const int status = std::system(
        ("trap '' XFSZ; ulimit -f 4; exec '" TRIDENT_BIN_DIR "/trident-asm' " +
         testing::Quoted(dir.At("prog.asm")) + " --listing " + testing::Quoted(dir.At("prog.ls")) +
         " >/dev/null 2>" + testing::Quoted(dir.At("stderr.txt")))
            .c_str());
    ASSERT_TRUE(WIFEXITED(status)) << status;
    EXPECT_EQ(WEXITSTATUS(status), RunFailed);
    const std::string err = dir.Read("stderr.txt");
    EXPECT_NE(err.find("cannot write " + dir.At("prog.ls").string()), std::string::npos) << err;
    std::filesystem::remove(dir.At("stderr.txt"));
    EXPECT_EQ(dir.Read("prog.ls"), "previous listing");
    for (const auto& entry : std::filesystem::directory_iterator(dir.Path()))
        EXPECT_EQ(entry.path().filename().string().find(".tmp"), std::string::npos) << entry.path();
}

} // namespace
} // namespace trident
