#include "assembler/DispatchIndex.h"

#include <gtest/gtest.h>

namespace trident {
namespace {

class ListedStep : public StatementHandler {
  public:
    explicit ListedStep(std::vector<std::string_view> words) : pWords(std::move(words)) {}
    std::vector<std::string_view> OperationWords() const override { return pWords; }
    bool Handle(Assembly&, Statement&) override { return false; }

  private:
    std::vector<std::string_view> pWords;
};

TEST(DispatchIndex, ListedStepsSeeOnlyTheirWordsAndOthersSeeEverything) {
    std::vector<std::unique_ptr<StatementHandler>> steps;
    steps.push_back(std::make_unique<ListedStep>(std::vector<std::string_view>{}));
    steps.push_back(std::make_unique<ListedStep>(std::vector<std::string_view>{"equ", "set"}));
    steps.push_back(std::make_unique<ListedStep>(std::vector<std::string_view>{"set"}));
    steps.push_back(std::make_unique<ListedStep>(std::vector<std::string_view>{}));
    const DispatchIndex index(steps);

    struct Case {
        std::string_view Word;
        DispatchIndex::StepSet Steps;
    };
    for (const Case& c : {Case{"equ", 0b1011}, Case{"set", 0b1111}, Case{"mov", 0b1001},
                          Case{"", 0b1001}, Case{"EQU", 0b1001}}) {
        EXPECT_EQ(index.StepsFor(c.Word), c.Steps) << c.Word;
    }
}

} // namespace
} // namespace trident
