#include "assembler/DispatchIndex.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

struct ListedStep : StatementHandler {
    explicit ListedStep(std::vector<std::string_view> words,
                        std::vector<std::string_view> prefixes = {})
        : Words(std::move(words)), Prefixes(std::move(prefixes)) {}
    std::vector<std::string_view> OperationWords() const override { return Words; }
    std::vector<std::string_view> OperationPrefixes() const override { return Prefixes; }
    bool Handle(Assembly&, Statement&) override { return false; }
    std::vector<std::string_view> Words;
    std::vector<std::string_view> Prefixes;
};

// Steps without lists see every word; a listed step sees its words, exactly
// as written, and the words that begin with one of its prefixes. Short words
// are compared as packed numbers, long ones as text: words that share their
// beginning or differ only in length stay apart.
TEST(DispatchIndex, EachStepSeesItsWordsAndPrefixesAndUnlistedStepsSeeEverything) {
    using Words = std::vector<std::string_view>;
    // clang-format off
    const std::pair<Words, Words> lists[] = {
        {{}, {}}, {{"equ", "set"}, {}}, {{"set"}, {}}, {{"else", "endif"}, {"if"}},
        {{"d", "db", "include", "includes", "includesall"}, {}}, {{"dbx"}, {"includes", "x"}},
        {{}, {}}};
    // clang-format on
    std::vector<std::unique_ptr<StatementHandler>> steps;
    for (const auto& [words, prefixes] : lists)
        steps.push_back(std::make_unique<ListedStep>(words, prefixes));
    const DispatchIndex index(steps);
    constexpr DispatchIndex::StepSet unlisted = 0b1000001;
    // Each word and the listed steps that see it.
    // clang-format off
    const std::pair<std::string_view, DispatchIndex::StepSet> cases[] = {
        {"equ", 0b10}, {"set", 0b110}, {"mov", 0}, {"", 0}, {"EQU", 0},
        {"if", 0b1000}, {"ifdef", 0b1000}, {"else", 0b1000}, {"fi", 0}, {"elif", 0},
        {"d", 0b10000}, {"db", 0b10000}, {"dbx", 0b100000}, {"dby", 0}, {"incl", 0},
        {"include", 0b10000}, {"includes", 0b110000}, {"includesa", 0b100000},
        {"includesall", 0b110000}, {"includ", 0}, {"x", 0b100000}, {"xylophone", 0b100000},
        {std::string_view("d\0", 2), 0}};
    // clang-format on
    for (const auto& [word, listed] : cases)
        EXPECT_EQ(index.StepsFor(word), unlisted | listed) << word;
}

} // namespace
} // namespace trident
