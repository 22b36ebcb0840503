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

TEST(DispatchIndex, ListedStepsSeeOnlyTheirWordsAndOthersSeeEverything) {
    std::vector<std::unique_ptr<StatementHandler>> steps;
    for (const std::vector<std::string_view>& words :
         {std::vector<std::string_view>{}, {"equ", "set"}, {"set"}, {}})
        steps.push_back(std::make_unique<ListedStep>(words));
    const DispatchIndex index(steps);
    const std::pair<std::string_view, DispatchIndex::StepSet> cases[] = {
        {"equ", 0b1011}, {"set", 0b1111}, {"mov", 0b1001}, {"", 0b1001}, {"EQU", 0b1001}};
    for (const auto& [word, expected] : cases) EXPECT_EQ(index.StepsFor(word), expected) << word;
}

TEST(DispatchIndex, APrefixCoversAFamilyOfWords) {
    std::vector<std::unique_ptr<StatementHandler>> steps;
    steps.push_back(std::make_unique<ListedStep>(std::vector<std::string_view>{}));
    steps.push_back(std::make_unique<ListedStep>(std::vector<std::string_view>{"else", "endif"},
                                                 std::vector<std::string_view>{"if"}));
    const DispatchIndex index(steps);
    const std::pair<std::string_view, DispatchIndex::StepSet> cases[] = {
        {"if", 0b11}, {"ifdef", 0b11}, {"else", 0b11}, {"fi", 0b01}, {"elif", 0b01}, {"", 0b01}};
    for (const auto& [word, expected] : cases) EXPECT_EQ(index.StepsFor(word), expected) << word;
}

// Short words are compared as packed numbers, long ones as text: words
// that share their beginning or differ only in length stay apart.
TEST(DispatchIndex, WordsOfEveryLengthStayApart) {
    std::vector<std::unique_ptr<StatementHandler>> steps;
    steps.push_back(std::make_unique<ListedStep>(std::vector<std::string_view>{}));
    steps.push_back(std::make_unique<ListedStep>(
        std::vector<std::string_view>{"d", "db", "include", "includes", "includesall"}));
    steps.push_back(std::make_unique<ListedStep>(std::vector<std::string_view>{"dbx"},
                                                 std::vector<std::string_view>{"includes", "x"}));
    const DispatchIndex index(steps);
    const std::pair<std::string_view, DispatchIndex::StepSet> cases[] = {
        {"d", 0b011},
        {"db", 0b011},
        {"dbx", 0b101},
        {"dby", 0b001},
        {"incl", 0b001},
        {"include", 0b011},
        {"includes", 0b111},
        {"includesa", 0b101},
        {"includesall", 0b111},
        {"includ", 0b001},
        {"x", 0b101},
        {"xylophone", 0b101},
        {std::string_view("d\0", 2), 0b001}};
    for (const auto& [word, expected] : cases) EXPECT_EQ(index.StepsFor(word), expected) << word;
}

} // namespace
} // namespace trident
