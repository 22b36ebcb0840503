#include "encoder/OpcodeTablePlace.h"
#include "support/TempSource.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace trident {
namespace {

namespace fs = std::filesystem;

// A build tree keeps the table beside the programs, an installed tree in
// share/trident/; the first that holds one wins.
TEST(OpcodeTablePlace, FindsTheTableBesideTheProgramThenInShare) {
    struct Case {
        std::vector<std::string> Present;
        std::string Found;
    };
    const Case cases[] = {
        {{"bin/OpTable.def"}, "bin/OpTable.def"},
        {{"share/trident/OpTable.def"}, "share/trident/OpTable.def"},
        {{"bin/OpTable.def", "share/trident/OpTable.def"}, "bin/OpTable.def"},
        // Nowhere: the failed read names the place beside the program.
        {{}, "bin/OpTable.def"},
        // A directory of that name is no table.
        {{"bin/OpTable.def/", "share/trident/OpTable.def"}, "share/trident/OpTable.def"},
        // Only share/trident/ of the tree above bin/ counts.
        {{"share/OpTable.def", "bin/share/trident/OpTable.def"}, "bin/OpTable.def"},
    };
    for (const Case& c : cases) {
        const testing::TempDir tree;
        fs::create_directories(tree.Path() / "bin");
        for (const std::string& name : c.Present) {
            if (name.ends_with('/')) {
                fs::create_directories(tree.Path() / name);
                continue;
            }
            fs::create_directories((tree.Path() / name).parent_path());
            tree.Write(name, "nop,0,1,blank,NO,8080\n");
        }
        EXPECT_EQ(FindOpcodeTable(tree.Path() / "bin"), tree.Path() / c.Found)
            << c.Present.size() << " files, first " << (c.Present.empty() ? "" : c.Present.front());
    }
}

} // namespace
} // namespace trident
