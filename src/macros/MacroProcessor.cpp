#include "macros/MacroProcessor.h"

#include "base/Text.h"
#include "macros/ExpansionLevel.h"
#include "macros/MacroArguments.h"
#include "macros/MacroContext.h"
#include "macros/MacroTable.h"
#include "macros/MacroText.h"
#include "source/LineScanner.h"
#include "source/Statement.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

namespace trident {
namespace {

constexpr std::string_view EndWord = "endm";
constexpr std::string_view DroppedCommentStart = ";;";
constexpr std::string_view OutsideMacros = "Not valid outside Macros";

struct BlockDirective {
    std::string_view Word;
    BlockType Type;
};

constexpr std::array<BlockDirective, 4> BlockDirectives{{
    {"macro", BlockType::Macro},
    {"rept", BlockType::Rept},
    {"irp", BlockType::Irp},
    {"irpc", BlockType::Irpc},
}};

std::optional<BlockType> OpeningBlock(std::string_view word) {
    const auto found = std::find_if(BlockDirectives.begin(), BlockDirectives.end(),
                                    [&](const BlockDirective& d) { return d.Word == word; });
    if (found == BlockDirectives.end()) return std::nullopt;
    return found->Type;
}

// The operands a repeat directive needs: a count, or a parameter name and
// its list or text.
std::size_t RequiredOperands(BlockType type) {
    return type == BlockType::Rept ? 1 : 2;
}

std::string LocalName(int number) {
    char text[24];
    std::snprintf(text, sizeof text, "??%06d", number);
    return text;
}

} // namespace

void MacroProcessor::StartPass(MacroContext& run) {
    pDepth = 0;
    pBlock = OpenBlock{};
    pLocalCounter = 1;
    if (run.State().CurrentPass == 1) {
        pParameterNames.clear();
        pInForce.clear();
    } else {
        std::erase_if(pInForce, [](const auto& entry) { return !entry.second; });
    }
}

bool MacroProcessor::Replaces(std::string_view word) const {
    return Defines(word) && word != EndWord && !OpeningBlock(word) && word != "exitm" &&
           word != "local";
}

bool MacroProcessor::CollectBody(MacroContext& run, Statement& statement) {
    if (pDepth == 0) return false;
    const std::string_view word = statement.Keyword;
    if (word == EndWord && pDepth == 1) {
        pDepth = 0;
        Close(run, statement);
        return true;
    }
    if (word == EndWord)
        --pDepth;
    else if (OpeningBlock(word))
        ++pDepth;
    Append(statement);
    statement.Category = LineCategory::MacDef;
    // Body lines are text for later: their labels define nothing now.
    statement.LabelTaken = true;
    if (!run.State().Options.ListMacroDefinitions) statement.SuppressListing = true;
    return true;
}

// The label is the macro's name, not a symbol; the operands are the names
// of its parameters.
void MacroProcessor::OpenMacro(MacroContext& run, Statement& statement) {
    statement.LabelTaken = true;
    pDepth = 1;
    pBlock = OpenBlock{};
    pBlock.At = statement.Where;
    if (statement.Label.empty()) {
        // The body is still collected up to its endm, and then dropped.
        run.ListError("Macros must have a name", statement.Operation);
        pBlock.Usable = false;
        return;
    }
    pBlock.Name = LowerCase(statement.Label);
    for (const std::string_view name : statement.OperandList)
        pBlock.Arguments.push_back(std::string(TrimBlanks(name)));
}

void MacroProcessor::OpenRepeat(MacroContext& run, Statement& statement, BlockType type) {
    pDepth = 1;
    pBlock = OpenBlock{};
    pBlock.Type = type;
    pBlock.Name = BlockWord(type);
    pBlock.At = statement.Where;
    pBlock.Operands = statement.Operands;
    LineScanner::SplitMacroArguments(statement.Operands, pBlock.Arguments);
    if (pBlock.Arguments.size() < RequiredOperands(type)) {
        run.ListError("Missing Operands", statement.Operation);
        pBlock.Usable = false;
    }
}

void MacroProcessor::Append(const Statement& statement) {
    const std::string_view comment =
        statement.Comment.starts_with(DroppedCommentStart) ? std::string_view{} : statement.Comment;
    pBlock.Body += MacroText::ComposeLine(statement.Label, statement.Operation,
                                          statement.OperandList, comment);
    pBlock.Body += "\r\n";
}

void MacroProcessor::Close(MacroContext& run, Statement& statement) {
    if (pBlock.Type != BlockType::Macro) {
        statement.Category = LineCategory::MacExpand;
        if (pBlock.Usable) StartRepeat(run);
        return;
    }
    statement.Category = LineCategory::MacDef;
    if (!pBlock.Usable) return;
    // A later definition of the name replaces the earlier one.
    run.Macros().SetMacroDefinition(pBlock.Name, std::move(pBlock.Body));
    pInForce.insert_or_assign(pBlock.Name, run.State().MaclibOpen);
    pParameterNames.insert_or_assign(pBlock.Name, std::move(pBlock.Arguments));
}

void MacroProcessor::StartRepeat(MacroContext& run) {
    ExpansionLevel level;
    level.Type = pBlock.Type;
    level.Name = pBlock.Name;
    level.InvokedAt = pBlock.At;
    level.ConditionalDepth = run.ConditionalDepth();
    if (!PlanIterations(run, level) || level.Iterations <= 0) return;
    level.Text = std::move(pBlock.Body);
    if (level.Text.empty()) return;
    level.BindIterationItem();
    run.PushExpansion(std::move(level));
}

bool MacroProcessor::PlanIterations(MacroContext& run, ExpansionLevel& level) const {
    if (level.Type == BlockType::Rept) return PlanCount(run, level);
    const std::vector<std::string>& arguments = pBlock.Arguments;
    level.Parameter = TrimBlanks(arguments.front());
    if (level.Type == BlockType::Irp) {
        level.Items = MacroArguments::ListItems(run, std::span(arguments).subspan(1));
    } else {
        // The text is everything after the parameter's comma, commas included.
        const std::string_view operands = pBlock.Operands;
        level.Items = MacroArguments::TextCharacters(run, operands.substr(operands.find(',') + 1));
    }
    level.Iterations = static_cast<int>(level.Items.size());
    return true;
}

// The count is taken when the block closes, and must be known then.
bool MacroProcessor::PlanCount(MacroContext& run, ExpansionLevel& level) const {
    const std::string count = std::string(TrimBlanks(pBlock.Arguments.front()));
    const std::optional<double> number =
        AsNumber(run.EvaluateOperand(count, 16, Signedness::Signed));
    if (!number) {
        run.TerminalStop(count);
        return false;
    }
    level.Iterations = static_cast<int>(*number);
    return true;
}

void MacroProcessor::Local(MacroContext& run, const Statement& statement) {
    if (run.MacroDepth() == 0) {
        run.ListError(OutsideMacros, statement.Operation);
        return;
    }
    // Numbered through the whole pass, so every expansion has names of its
    // own, and restarted every pass, so they are the same in every pass.
    ParameterMap& names = run.Expansions().back().Parameters;
    for (const std::string_view operand : statement.OperandList) {
        const std::string name = std::string(TrimBlanks(operand));
        if (!name.empty()) names.Bind(name, LocalName(pLocalCounter++));
    }
}

// Leaves the current level at once (a repeat block with all its remaining
// iterations); the conditionals opened inside it end with it.
void MacroProcessor::ExitMacro(MacroContext& run, const Statement& statement) {
    if (run.MacroDepth() == 0) {
        run.ListError(OutsideMacros, statement.Operation);
        return;
    }
    std::vector<ExpansionLevel>& levels = run.Expansions();
    const int depth = levels.back().ConditionalDepth;
    levels.pop_back();
    run.CloseConditionalsTo(depth);
}

bool MacroProcessor::Invoke(MacroContext& run, Statement& statement) {
    if (statement.Operation.empty()) return false;
    const std::string& body = run.Macros().MacroDefinition(statement.Keyword);
    if (body.empty()) return false;
    statement.Category = LineCategory::MacInvoke;
    ExpansionLevel level;
    level.Name = statement.Operation;
    level.Text = body;
    level.InvokedAt = statement.Where;
    level.ConditionalDepth = run.ConditionalDepth();
    BindArguments(run, statement, level.Parameters);
    run.PushExpansion(std::move(level));
    return true;
}

// Parameters without an argument stand for the empty text; arguments
// without a parameter are dropped with a warning.
void MacroProcessor::BindArguments(MacroContext& run, const Statement& statement,
                                   ParameterMap& parameters) {
    std::vector<std::string>& arguments = pArguments;
    LineScanner::SplitMacroArguments(statement.Operands, arguments);
    const auto names = pParameterNames.find(statement.Keyword);
    const std::size_t count = names == pParameterNames.end() ? 0 : names->second.size();
    for (std::size_t i = 0; i < count; ++i)
        parameters.Bind(names->second[i], i < arguments.size()
                                              ? MacroArguments::BoundText(run, arguments[i])
                                              : std::string{});
    if (arguments.size() > count)
        run.ListWarning("Surplus Macro Arguments ignored", statement.Operation);
}

} // namespace trident
