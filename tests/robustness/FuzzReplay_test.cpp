// Every saved fuzz input (the seed corpora and each input that once crashed
// or hung a fuzz target) replayed through the target's own entry. Under the
// sanitizer build this is where a regression shows.
#include "fuzz/FuzzEntries.h"
#include "support/TempSource.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

namespace trident {
namespace {

namespace fs = std::filesystem;

struct SavedInput {
    std::string Target; // line_scanner, expression, opcode_table, assembly
    fs::path File;
};

std::vector<SavedInput> SavedInputs() {
    const fs::path root = fs::path(TRIDENT_TEST_DATA_DIR).parent_path();
    const fs::path folders[] = {root / "fuzz" / "corpus", root / "tests" / "robustness" / "inputs"};
    std::vector<SavedInput> inputs;
    for (const fs::path& folder : folders) {
        std::error_code error;
        if (!fs::is_directory(folder, error)) continue;
        for (const auto& target : fs::directory_iterator(folder))
            for (const auto& file : fs::directory_iterator(target.path()))
                if (file.is_regular_file())
                    inputs.push_back({target.path().filename().string(), file.path()});
    }
    std::sort(inputs.begin(), inputs.end(),
              [](const SavedInput& a, const SavedInput& b) { return a.File < b.File; });
    return inputs;
}

std::string Contents(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void PrintTo(const SavedInput& input, std::ostream* out) {
    *out << input.File.string();
}

class FuzzReplay : public ::testing::TestWithParam<SavedInput> {};

TEST_P(FuzzReplay, RunsToTheEndInBoundedTime) {
    const SavedInput& input = GetParam();
    const std::string data = Contents(input.File);
    const auto start = std::chrono::steady_clock::now();
    if (input.Target == "line_scanner") {
        fuzz::ScanLine(data);
    } else if (input.Target == "expression") {
        if (!data.empty())
            fuzz::EvaluateText(static_cast<std::uint8_t>(data[0]),
                               std::string_view(data).substr(1));
    } else if (input.Target == "opcode_table") {
        fuzz::ReadOpcodeRows(data);
    } else if (input.Target == "assembly") {
        testing::TempDir scratch;
        if (fuzz::StaysInScratch(data))
            fuzz::AssembleSource(scratch.Path(), data, fs::path(TRIDENT_BIN_DIR) / "OpTable.def");
    } else {
        FAIL() << "no fuzz target " << input.Target << " for " << input.File;
    }
    // The fuzzers call an input that takes 10 s a hang.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10)) << input.File;
}

std::string TestName(const ::testing::TestParamInfo<SavedInput>& info) {
    std::string name = info.param.Target + "_" + info.param.File.filename().string();
    for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    return name + "_" + std::to_string(info.index);
}

INSTANTIATE_TEST_SUITE_P(Saved, FuzzReplay, ::testing::ValuesIn(SavedInputs()), TestName);

} // namespace
} // namespace trident
