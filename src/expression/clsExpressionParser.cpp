#include "expression/clsExpressionParser.h"

#include "expression/CharTests.h"
#include "expression/NumericValue.h"
#include "expression/Operations.h"

#include <utility>

namespace trident::expr {

namespace {

// "nul" is true when its operand text is blank, parentheses around it
// ignored.
bool IsBlankOperand(std::string_view text) {
    text = TrimBlanks(text);
    while (text.size() >= 2 && text.front() == '(' && text.back() == ')') {
        text = TrimBlanks(text.substr(1, text.size() - 2));
    }
    return text.empty();
}

} // namespace

clsExpressionParser::clsExpressionParser(clsErrorList& errors, OperandResolver resolver)
    : pErrors(errors), pResolve(std::move(resolver)) {}

Value clsExpressionParser::Run(std::string_view text, ParserSettings settings) {
    pLexer = clsExpressionLexer(text);
    pSettings = settings;
    pFrames.clear();
    pValues.clear();
    Step step = Step::NeedOperand;
    while (step == Step::NeedOperand || step == Step::NeedOperator) {
        step = step == Step::NeedOperand ? OnOperand(pLexer.NextOperand())
                                         : OnOperator(pLexer.NextOperator());
    }
    return step == Step::Done ? Finish() : Value{};
}

clsExpressionParser::Step clsExpressionParser::OnOperand(const Token& token) {
    switch (token.Kind) {
    case TokenKind::Open:
        pFrames.push_back({FrameKind::Group});
        return Step::NeedOperand;
    case TokenKind::Prefix:
        pFrames.push_back({FrameKind::Prefix, nullptr, FindPrefixOperator(token.Text)});
        return Step::NeedOperand;
    case TokenKind::Function:
        return OpenFunction(token.Text);
    case TokenKind::NulTest:
        PushValue(MakeInteger(IsBlankOperand(token.Text) ? -1 : 0));
        return Step::NeedOperator;
    case TokenKind::Operand:
    case TokenKind::Quoted:
        PushValue(pResolve(token));
        return Step::NeedOperator;
    default:
        return Fail(EvalError::MissingOperand, token.Text);
    }
}

clsExpressionParser::Step clsExpressionParser::OnOperator(const Token& token) {
    switch (token.Kind) {
    case TokenKind::End:
        return Step::Done;
    case TokenKind::Close:
        return CloseGroup();
    case TokenKind::Binary: {
        const BinaryOperator* op = FindBinaryOperator(token.Text);
        ReduceWhileAtLeast(LevelOf(*op));
        pFrames.push_back({FrameKind::Binary, op});
        return Step::NeedOperand;
    }
    case TokenKind::InvalidOperator:
        return Fail(EvalError::InvalidOperator, token.Text);
    default:
        return Fail(EvalError::MissingOperator, token.Text);
    }
}

// An unknown function is reported at once; its argument is still evaluated
// so that faults inside it are reported too, and the call's value is empty.
clsExpressionParser::Step clsExpressionParser::OpenFunction(std::string_view name) {
    const BuiltinFunction* function = FindFunction(name);
    if (function == nullptr) pErrors.AddError(EvalError::UnimplementedFunction, name);
    pFrames.push_back({FrameKind::Function, nullptr, nullptr, function});
    return Step::NeedOperand;
}

clsExpressionParser::Step clsExpressionParser::CloseGroup() {
    ReduceWhileAtLeast(kLowestLevel);
    if (pFrames.empty()) return Fail(EvalError::MissingOpenParenthesis, ")");
    const Frame frame = pFrames.back();
    pFrames.pop_back();
    Value inner = PopValue();
    if (frame.Kind == FrameKind::Function) {
        inner = frame.Function == nullptr
                    ? Value{}
                    : CallFunction(*frame.Function, inner, pSettings.Unit, pErrors);
    }
    PushValue(std::move(inner));
    return Step::NeedOperator;
}

clsExpressionParser::Step clsExpressionParser::Fail(EvalError code, std::string_view extra) {
    pErrors.AddError(code, extra);
    return Step::Failed;
}

// A complete operand: the prefix operators waiting for it apply now,
// innermost first.
void clsExpressionParser::PushValue(Value value) {
    while (!pFrames.empty() && pFrames.back().Kind == FrameKind::Prefix) {
        value = ApplyPrefix(*pFrames.back().Prefix, value, pErrors);
        pFrames.pop_back();
    }
    pValues.push_back(std::move(value));
}

Value clsExpressionParser::PopValue() {
    Value value = std::move(pValues.back());
    pValues.pop_back();
    return value;
}

void clsExpressionParser::ReduceWhileAtLeast(int level) {
    while (!pFrames.empty() && pFrames.back().Kind == FrameKind::Binary &&
           LevelOf(*pFrames.back().Binary) >= level) {
        ReduceTop();
    }
}

void clsExpressionParser::ReduceTop() {
    const BinaryOperator& op = *pFrames.back().Binary;
    pFrames.pop_back();
    const Value right = PopValue();
    const Value left = PopValue();
    pValues.push_back(ApplyBinary(op, left, right, pErrors));
}

int clsExpressionParser::LevelOf(const BinaryOperator& op) const {
    return pSettings.Order == OperatorOrder::Levels ? op.Level : kHighestLevel;
}

Value clsExpressionParser::Finish() {
    ReduceWhileAtLeast(kLowestLevel);
    if (!pFrames.empty()) {
        pErrors.AddError(EvalError::MissingCloseParenthesis);
        return {};
    }
    if (pValues.size() != 1) {
        pErrors.AddError(EvalError::ImplementationError);
        return {};
    }
    return std::move(pValues.back());
}

} // namespace trident::expr
