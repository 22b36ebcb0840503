#include "expression/ExpressionParser.h"

#include "expression/CharTests.h"
#include "expression/NumberLiterals.h"
#include "expression/NumericValue.h"

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

// An operand is a number when it starts with a decimal digit or with "&h" or
// "&o" (so "0FFh" is a number and "FFh" a name), a character constant or a
// string when it starts with a quote, and a name otherwise.
bool IsLiteral(const Token& token) {
    const std::string_view text = token.Text;
    if (token.Kind == TokenKind::Quoted || IsDecimalDigit(text.front())) return true;
    if (text.size() < 2 || text[0] != '&') return false;
    const char marker = ToLowerAscii(text[1]);
    return marker == 'h' || marker == 'o';
}

} // namespace

Value ConvertLiteral(std::string_view text, ErrorList& errors, Dialect dialect, int radix) {
    if (text.front() == '"') {
        std::string characters = DoubleQuotedStringToString(text, errors);
        if (dialect == Dialect::Compatible && !characters.empty() && characters.size() <= 2)
            return CharacterCodes(characters);
        return characters;
    }
    if (text.front() == '\'') return SingleQuoteStrToNumber(text, errors);
    return EvalNumber(text, errors, radix);
}

void ExpressionParser::Compile(std::string_view text, Program& program) {
    pLexer = ExpressionLexer(text, pDialect);
    pProgram = &program;
    program.Clear();
    pFrames.clear();
    pDepth = 0;
    pOperandQuoted = false;
    pPowerPending = false;
    Stage stage = Stage::NeedOperand;
    while (stage == Stage::NeedOperand || stage == Stage::NeedOperator) {
        stage = stage == Stage::NeedOperand ? OnOperand(pLexer.NextOperand())
                                            : OnOperator(pLexer.NextOperator());
    }
    if (stage == Stage::Done) Finish();
}

ExpressionParser::Stage ExpressionParser::OnOperand(const Token& token) {
    switch (token.Kind) {
    case TokenKind::Open:
        pFrames.push_back({FrameKind::Group});
        return Stage::NeedOperand;
    case TokenKind::Prefix:
        pFrames.push_back({FrameKind::Prefix, nullptr, FindPrefixOperator(token.Text, pDialect)});
        return Stage::NeedOperand;
    case TokenKind::Function:
        return OpenFunction(token.Text);
    case TokenKind::NulTest:
        EmitConstant(MakeInteger(IsBlankOperand(token.Text) ? -1 : 0));
        CompleteOperand();
        return Stage::NeedOperator;
    case TokenKind::Operand:
    case TokenKind::Quoted:
        NotePowerOperand(token);
        EmitOperand(token);
        CompleteOperand();
        return Stage::NeedOperator;
    default:
        return Fail(EvalError::MissingOperand, token.Text);
    }
}

ExpressionParser::Stage ExpressionParser::OnOperator(const Token& token) {
    switch (token.Kind) {
    case TokenKind::End:
        return Stage::Done;
    case TokenKind::Close:
        return CloseGroup();
    case TokenKind::Binary: {
        const BinaryOperator* op = FindBinaryOperator(token.Text, pDialect);
        if (pDialect == Dialect::Standard && IsPower(*op)) {
            if (pOperandQuoted)
                EmitText(StepKind::Report, EvalError::PowerOfCharacter, token.Text);
            else
                pPowerPending = true;
        }
        pOperandQuoted = false;
        ReduceWhileAtLeast(op->Level);
        pFrames.push_back({FrameKind::Binary, op});
        return Stage::NeedOperand;
    }
    case TokenKind::InvalidOperator:
        return Fail(EvalError::InvalidOperator, token.Text);
    default:
        return Fail(EvalError::MissingOperator, token.Text);
    }
}

// An unknown function is reported at once; its argument is still evaluated
// so that faults inside it are reported too, and the call's value is empty.
ExpressionParser::Stage ExpressionParser::OpenFunction(std::string_view name) {
    const BuiltinFunction* function = FindFunction(name);
    if (function == nullptr) EmitText(StepKind::Report, EvalError::UnimplementedFunction, name);
    pFrames.push_back({FrameKind::Function, nullptr, nullptr, function});
    return Stage::NeedOperand;
}

ExpressionParser::Stage ExpressionParser::CloseGroup() {
    ReduceWhileAtLeast(kLowestLevel);
    if (pFrames.empty()) return Fail(EvalError::MissingOpenParenthesis, ")");
    const Frame frame = pFrames.back();
    pFrames.pop_back();
    if (frame.Kind == FrameKind::Function) {
        Step call{StepKind::Call};
        call.Function = frame.Function;
        pProgram->Steps.push_back(call);
    }
    pOperandQuoted = false;
    CompleteOperand();
    return Stage::NeedOperator;
}

// Sources written for assemblers where "^" is exclusive or put it beside
// character constants ('L' ^ 20h); here it is the power, and says so.
void ExpressionParser::NotePowerOperand(const Token& token) {
    const bool quoted = token.Kind == TokenKind::Quoted;
    if (pPowerPending && quoted) EmitText(StepKind::Report, EvalError::PowerOfCharacter, "^");
    pPowerPending = false;
    pOperandQuoted = quoted;
}

ExpressionParser::Stage ExpressionParser::Fail(EvalError code, std::string_view extra) {
    EmitText(StepKind::Fail, code, extra);
    return Stage::Failed;
}

// A literal whose conversion records no fault is converted here once;
// otherwise it is converted at every run, so that its faults are recorded
// at every run.
void ExpressionParser::EmitOperand(const Token& token) {
    if (!IsLiteral(token)) {
        pProgram->Steps.push_back(
            {StepKind::Name, EvalError::None, static_cast<std::uint32_t>(pProgram->Names.size())});
        pProgram->Names.emplace_back(token.Text);
        ++pDepth;
        return;
    }
    pLiteralFaults.ClearAllErrors();
    Value value = ConvertLiteral(token.Text, pLiteralFaults, pDialect, pRadix);
    if (pLiteralFaults.ErrorCount() > 0) {
        EmitText(StepKind::Literal, EvalError::None, token.Text);
        ++pDepth;
    } else {
        EmitConstant(std::move(value));
    }
}

void ExpressionParser::EmitConstant(Value value) {
    pProgram->Steps.push_back({StepKind::Constant, EvalError::None,
                               static_cast<std::uint32_t>(pProgram->Constants.size())});
    pProgram->Constants.push_back(std::move(value));
    ++pDepth;
}

void ExpressionParser::EmitText(StepKind kind, EvalError fault, std::string_view text) {
    pProgram->Steps.push_back({kind, fault, static_cast<std::uint32_t>(pProgram->Texts.size())});
    pProgram->Texts.emplace_back(text);
}

// A complete operand: the prefix operators waiting for it apply now,
// innermost first.
void ExpressionParser::CompleteOperand() {
    while (!pFrames.empty() && pFrames.back().Kind == FrameKind::Prefix) {
        Step prefix{StepKind::Prefix};
        prefix.Prefix = pFrames.back().Prefix;
        pProgram->Steps.push_back(prefix);
        pFrames.pop_back();
    }
}

void ExpressionParser::ReduceWhileAtLeast(int level) {
    while (!pFrames.empty() && pFrames.back().Kind == FrameKind::Binary &&
           pFrames.back().Binary->Level >= level) {
        Step binary{StepKind::Binary};
        binary.Binary = pFrames.back().Binary;
        pProgram->Steps.push_back(binary);
        pFrames.pop_back();
        --pDepth;
    }
}

void ExpressionParser::Finish() {
    ReduceWhileAtLeast(kLowestLevel);
    if (!pFrames.empty()) {
        EmitText(StepKind::Fail, EvalError::MissingCloseParenthesis, {});
    } else if (pDepth != 1) {
        EmitText(StepKind::Fail, EvalError::ImplementationError, {});
    }
}

} // namespace trident::expr
