// Every saved fuzz input (the seed corpora and each input that once crashed
// or hung a fuzz target) replayed through the target's own entry. Under the
// sanitizer build this is where a regression shows.
#include "fuzz/FuzzEntries.h"
#include "support/RunTool.h"
#include "support/TempSource.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace trident {
namespace {

namespace fs = std::filesystem;

// Each saved file, in folders named after their targets: line_scanner,
// expression, opcode_table, assembly.
std::vector<fs::path> SavedInputs() {
    const fs::path root = fs::path(TRIDENT_TEST_DATA_DIR).parent_path();
    std::vector<fs::path> inputs;
    for (const fs::path& folder :
         {root / "fuzz" / "corpus", root / "tests" / "robustness" / "inputs"}) {
        std::error_code error;
        if (!fs::is_directory(folder, error)) continue;
        for (const auto& target : fs::directory_iterator(folder))
            for (const auto& file : fs::directory_iterator(target.path()))
                if (file.is_regular_file()) inputs.push_back(file.path());
    }
    return inputs;
}

TEST(FuzzReplay, EverySavedInputRunsToTheEndInBoundedTime) {
    const std::vector<fs::path> inputs = SavedInputs();
    EXPECT_FALSE(inputs.empty()) << "no saved inputs found";
    for (const fs::path& file : inputs) {
        SCOPED_TRACE(file.string());
        const std::string target = file.parent_path().filename().string();
        const std::string data = testing::ReadWholeFile(file);
        const auto start = std::chrono::steady_clock::now();
        if (target == "line_scanner") {
            fuzz::ScanLine(data);
        } else if (target == "expression") {
            if (!data.empty())
                fuzz::EvaluateText(static_cast<std::uint8_t>(data[0]),
                                   std::string_view(data).substr(1));
        } else if (target == "opcode_table") {
            fuzz::ReadOpcodeRows(data);
        } else if (target == "assembly") {
            testing::TempDir scratch;
            if (fuzz::StaysInScratch(data))
                fuzz::AssembleSource(scratch.Path(), data,
                                     fs::path(TRIDENT_BIN_DIR) / "OpTable.def");
        } else {
            ADD_FAILURE() << "no fuzz target " << target;
        }
        // The fuzzers call an input that takes 10 s a hang.
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    }
}

} // namespace
} // namespace trident
