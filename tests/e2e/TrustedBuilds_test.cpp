// What a build script relies on: no object output from a failed run, hints
// that name the cause, names defined from the command line, a dependency
// rule make can read, records other tools read without a warning.
#include "e2e/ToolDir.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

namespace trident {
namespace {

const char* const ObjectOptions = " --hex {p.hex} --srec {p.mx} --loader {p.txt} --bin {p.bin} "
                                  "--symbols {p.sym} --listing {p.ls}";

// A failed run leaves no object file a build could take for up to date: the
// one an earlier run left is removed; the listing is written all the same.
TEST(TrustedBuilds, AFailedRunWritesTheListingAndNoObjectOutput) {
    const char* const failing[] = {
        " if (last-$)/256\n endif\n nop\nlast: nop\n", // stops: needed a value at once
        " db 1\n frob\n",                              // reports an error
    };
    for (const char* source : failing) {
        SCOPED_TRACE(source);
        testing::ToolDir dir;
        dir.Write("p.asm", source);
        for (const char* name : {"p.hex", "p.mx", "p.txt", "p.bin", "p.sym"})
            dir.Write(name, "left by an earlier run");
        const auto result = dir.Run(std::string("{p.asm}") + ObjectOptions);
        EXPECT_NE(result.Exit, 0);
        for (const char* name : {"p.hex", "p.mx", "p.txt", "p.bin", "p.sym"}) {
            EXPECT_FALSE(std::filesystem::exists(dir.At(name))) << name;
            EXPECT_NE(result.Err.find("removed " + dir.At(name).string()), std::string::npos);
        }
        EXPECT_TRUE(std::filesystem::exists(dir.At("p.ls")));
        EXPECT_NE(result.Err.find("no object output written"), std::string::npos) << result.Err;

        const auto kept = dir.Run(std::string("{p.asm} --keep-outputs") + ObjectOptions);
        for (const char* name : {"p.hex", "p.mx", "p.txt", "p.bin", "p.sym"})
            EXPECT_NE(dir.Read(name), "left by an earlier run") << name;
        EXPECT_EQ(kept.Err.find("no object output written"), std::string::npos);
    }
}

// Bytes before the first org get byte lines with no opening line; the org
// of an earlier pass opens nothing in the final one.
TEST(TrustedBuilds, LoaderTextOpensBlocksOnlyAtTheFinalPassesOrg) {
    const std::pair<const char*, const char*> cases[] = {
        {"ddt", "01\r\nS0010\r\n02\r\n.\r\n"},
        {"sde", "01\r\n.\r\n\r\nE0010\r\n02\r\n."},
    };
    for (const auto& [style, text] : cases) {
        testing::ToolDir dir;
        dir.Write("p.asm", " db 1\n org 10h\n db 2\n");
        dir.Run(std::string("{p.asm} --loader {p.txt} --loader-style ") + style);
        EXPECT_EQ(dir.Read("p.txt"), text) << style;
    }
}

// Hints on standard error only: the names a terminal stop waited for, the
// Zilog notation for a source that reads as Zilog, and Zilog statements
// named as written.
TEST(TrustedBuilds, DiagnosticsNameTheCause) {
    struct Case {
        const char* Source;
        const char* Options;
        const char* Said; // on standard error, after the source's path
        bool Present;
    };
    const Case cases[] = {
        {" if (last-$)/256+first\n endif\nfirst: nop\nlast: nop\n", "",
         ":1: note: no value yet for last, first\n", true},
        {" ld a,(ix+1)\n ld b,c\n jr loop\nloop: djnz loop\n ex de,hl\n", "",
         ": note: most errors are on Zilog mnemonics", true},
        // Errors on 8080 code that happen to share words with Zilog give no hint.
        {" mov a,m\n frob\n zap\n jp\n", "", ": note: most errors are on Zilog", false},
        {" ld (spsav),sp\nspsav: dw 0\n", "--zilog", ":1: warning: Z80 Warning ~ ld (spsav),sp\n",
         true},
        {" ld a,(iy+3)\n", "--zilog", ":1: warning: z80 warning  ~ ld a,(iy+3)\n", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Source);
        testing::ToolDir dir;
        const std::string path = dir.Write("p.asm", c.Source).string();
        const auto result = dir.Run(std::string("{p.asm} ") + c.Options);
        EXPECT_EQ(result.Err.find(path + c.Said) != std::string::npos, c.Present) << result.Err;
        EXPECT_EQ(dir.Read("p.ls").find("note:"), std::string::npos)
            << "the listing stays as it was";
    }
}

// A file that includes itself over and over ends at the limit of lines one
// pass may read, with the limit's message naming the file and line.
TEST(TrustedBuilds, LinesReadInOnePassAreBounded) {
    testing::ToolDir dir;
    const std::string path =
        dir.Write("self.asm", " include self.asm\n include self.asm\n include self.asm\n nop\n")
            .string();
    const auto result = dir.Run("{self.asm} --max-lines 5000");
    EXPECT_EQ(result.Exit, 1);
    EXPECT_NE(result.Err.find("more than 5000 source lines read in one pass (" + path + " line "),
              std::string::npos)
        << result.Err;
}

TEST(TrustedBuilds, NamesDefinedOnTheCommandLine) {
    const std::pair<const char*, const char*> cases[] = {
        {"-D FOO", ":0201000001FFFD\r\n"},                  // FOO is 1; BAR undefined: db 0FFh
        {"-D FOO=5 --define BAR=0", ":020100000500F8\r\n"}, // value given; ifdef sees BAR
    };
    for (const auto& [defines, record] : cases) {
        SCOPED_TRACE(defines);
        testing::ToolDir dir;
        dir.Write("p.asm", " org 100h\n db FOO\n ifdef BAR\n db BAR\n else\n db 0ffh\n endif\n");
        const auto result = dir.Run(std::string("{p.asm} --hex {p.hex} ") + defines);
        EXPECT_EQ(result.Exit, 0) << result.Err;
        EXPECT_EQ(dir.Read("p.hex").substr(0, 17), record);
    }
    testing::ToolDir dir;
    const std::string path = dir.Write("p.asm", "FOO equ 2\n").string();
    const auto result = dir.Run("{p.asm} -D FOO");
    EXPECT_EQ(result.Exit, 1);
    EXPECT_NE(result.Err.find(path + ":1: error: Symbol Already Defined ~ FOO"), std::string::npos);
}

TEST(TrustedBuilds, StandardRecordsEndAndStartAsOtherToolsExpect) {
    testing::ToolDir dir;
    dir.Write("p.asm", " org 100h\n db 1\n end 100h\n");
    dir.Run("{p.asm} --hex {p.hex} --srec {p.mx} --standard-records");
    EXPECT_EQ(dir.Read("p.hex"), ":0101000001FD\r\n:00010001FE\r\n");
    EXPECT_EQ(dir.Read("p.mx"), "S0030000FC\r\nS104010001F9\r\nS9030100FB\r\n");
    dir.Run("{p.asm} --hex {p.hex}");
    EXPECT_EQ(dir.Read("p.hex"), ":0101000001FD\r\n:00010000FF");
}

TEST(TrustedBuilds, StatisticsCountTheBytesEmittedBesideTheSpan) {
    testing::ToolDir dir;
    dir.Write("p.asm", " db 1\n org 10h\n db 2\n");
    dir.Run("{p.asm} --listing {p.ls}");
    const std::string listing = dir.Read("p.ls");
    EXPECT_NE(listing.find("Size in bytes                    17 (0011h)"), std::string::npos);
    EXPECT_NE(listing.find("Bytes emitted                     2 (0002h)"), std::string::npos);
}

// make rebuilds when an included file changes, and -D reaches the source.
TEST(TrustedBuilds, MakeFollowsTheDependencyFile) {
    if (std::system("make --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "no make";
    testing::ToolDir dir;
    dir.Write("main.asm", " include parts.inc\n db VERSION\n");
    dir.Write("parts.inc", " db 1\n");
    dir.Write("Makefile", std::string("main.hex: main.asm\n\t'") + TRIDENT_BIN_DIR +
                              "/trident-asm' main.asm --quiet -D VERSION=7 --hex main.hex "
                              "--depfile main.d\n-include main.d\n");
    const std::string make = "make -s -C " + testing::Quoted(dir.Path()) + " >/dev/null 2>&1";
    ASSERT_EQ(std::system(make.c_str()), 0);
    EXPECT_EQ(dir.Read("main.hex").substr(0, 15), ":020000000107F6");
    EXPECT_EQ(dir.Read("main.d"), "main.hex: main.asm parts.inc\n\nmain.asm:\n\nparts.inc:\n");
    const auto built = std::filesystem::last_write_time(dir.At("main.hex"));

    // Nothing changed: make leaves the HEX alone; an included file changed: it is rebuilt.
    ASSERT_EQ(std::system(make.c_str()), 0);
    EXPECT_EQ(std::filesystem::last_write_time(dir.At("main.hex")), built);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    dir.Write("parts.inc", " db 2\n");
    std::filesystem::last_write_time(dir.At("parts.inc"), built + std::chrono::seconds(2));
    ASSERT_EQ(std::system(make.c_str()), 0);
    EXPECT_EQ(dir.Read("main.hex").substr(0, 15), ":020000000207F5");
}

} // namespace
} // namespace trident
