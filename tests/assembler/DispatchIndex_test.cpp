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

} // namespace
} // namespace trident
