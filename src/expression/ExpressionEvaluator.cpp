#include "expression/ExpressionEvaluator.h"

#include "expression/ExpressionParser.h"
#include "expression/NumberLiterals.h"
#include "expression/NumericValue.h"
#include "expression/Operations.h"
#include "symbols/SymbolTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace trident {

namespace {

using expr::Number;

struct PrecisionMode {
    std::int16_t Level;
    // The number result converted; nothing keeps the result as it is.
    std::optional<Value> (*Convert)(const Number& n, ErrorList& errors);
};

constexpr double kTwoPow32 = 4294967296.0;

std::optional<Value> TruncateToInteger(const Number& n, ErrorList& errors) {
    const double whole = std::trunc(n.Real);
    if (n.IsInteger || whole == n.Real) return std::nullopt;
    errors.AddError(EvalError::TruncatedToInteger, expr::FormatValue(n.Real));
    return expr::MakeWhole(whole);
}

std::optional<Value> ForceToSigned32(const Number& n, ErrorList& errors) {
    if (n.IsInteger) return std::nullopt;
    // Infinity and NaN wrap to no integer at all: they become 0.
    if (!std::isfinite(n.Real)) {
        errors.AddError(EvalError::ForcedToSigned32, expr::FormatValue(n.Real));
        return std::int32_t{0};
    }
    const double whole = std::trunc(n.Real);
    double wrapped = whole - kTwoPow32 * std::floor(whole / kTwoPow32);
    if (wrapped > std::numeric_limits<std::int32_t>::max()) wrapped -= kTwoPow32;
    if (wrapped != n.Real) errors.AddError(EvalError::ForcedToSigned32, expr::FormatValue(n.Real));
    return static_cast<std::int32_t>(wrapped);
}

std::optional<Value> MakeDouble(const Number& n, ErrorList&) {
    return Value(n.Real);
}

// The levels that change results; 0 and 1 keep them as computed.
constexpr std::array kPrecisionModes{
    PrecisionMode{2, TruncateToInteger},
    PrecisionMode{3, ForceToSigned32},
    PrecisionMode{4, MakeDouble},
};

// The programs an evaluator keeps take at most about this much memory; the
// texts beyond it are translated at every evaluation.
constexpr std::size_t kProgramBudget = std::size_t{8} << 20;

} // namespace

void ExpressionEvaluator::SetVariables(SymbolTable* variables) {
    pVariables = variables;
    pPrograms.Clear();
}

expr::OperatorOrder ExpressionEvaluator::OrderOf(std::int16_t precedence) {
    return precedence == kLeftToRightOrder ? expr::OperatorOrder::LeftToRight
                                           : expr::OperatorOrder::Levels;
}

expr::OperatorOrder ExpressionEvaluator::Order() {
    if (pPrecedence != kLevelOrder && pPrecedence != kLeftToRightOrder)
        pErrors.AddError(EvalError::InvalidPrecedence, std::to_string(pPrecedence));
    return OrderOf(pPrecedence);
}

Value ExpressionEvaluator::Evaluate() {
    pResult = Run(ProgramFor(pExpression, Order()));
    ApplyPrecision(pResult);
    return pResult;
}

Value ExpressionEvaluator::Evaluate(std::string_view text, ProgramHandle& handle) {
    return EvaluateInPlace(text, handle);
}

const Value& ExpressionEvaluator::EvaluateInPlace(std::string_view text, ProgramHandle& handle) {
    expr::Program& program = ProgramOf(text, handle);
    // Most operands are one constant or one name: while results are kept as
    // computed, they are what the program holds or the table stores.
    if (program.Steps.size() == 1 && (pPrecision == 0 || pPrecision == 1)) {
        const expr::Step& only = program.Steps.front();
        if (only.Kind == expr::StepKind::Constant) return program.Constants[only.Index];
        if (only.Kind == expr::StepKind::Name) {
            const Value* value = LookUpNameInPlace(program.Names[only.Index]);
            if (value != nullptr) return *value;
            pHeld = Value{};
            return pHeld;
        }
    }
    pHeld = Run(program);
    ApplyPrecision(pHeld);
    return pHeld;
}

expr::Program& ExpressionEvaluator::ProgramOf(std::string_view text, ProgramHandle& handle) {
    const expr::OperatorOrder order = Order();
    if (!Holds(handle)) {
        expr::Program& program = ProgramFor(text, order);
        // A program that is not kept is translated again next time.
        handle.pProgram = &program;
        handle.pGeneration = &program == &pUnkeptProgram ? 0 : pPrograms.Generation();
    }
    return *handle.pProgram;
}

// A handle made while the programs were kept as they are now, for the
// operator order now set.
bool ExpressionEvaluator::Holds(const ProgramHandle& handle) const {
    return OrderOf(pPrecedence) == pProgramsOrder && handle.pGeneration == pPrograms.Generation();
}

bool ExpressionEvaluator::IsConstant(const ProgramHandle& handle) const {
    if (!Holds(handle)) return false;
    const std::vector<expr::Step>& steps = handle.pProgram->Steps;
    return steps.size() == 1 && steps.front().Kind == expr::StepKind::Constant;
}

Value ExpressionEvaluator::Evaluate(std::string_view text) {
    SetExpression(text);
    return Evaluate();
}

Value ExpressionEvaluator::EvalNumber(std::string_view text) {
    return expr::EvalNumber(text, pErrors);
}

Value ExpressionEvaluator::SingleQuoteStrToNumber(std::string_view text) {
    return expr::SingleQuoteStrToNumber(text, pErrors);
}

std::string ExpressionEvaluator::DoubleQuotedStringToString(std::string_view text) {
    return expr::DoubleQuotedStringToString(text, pErrors);
}

// Programs are translated for one operator order; a text's program is kept
// while the memory of the kept ones allows.
expr::Program& ExpressionEvaluator::ProgramFor(std::string_view text, expr::OperatorOrder order) {
    if (order != pProgramsOrder) {
        pPrograms.Clear();
        pProgramsOrder = order;
    }
    if (expr::Program* kept = pPrograms.Find(text)) return *kept;
    pParser.Compile(text, order, pUnkeptProgram);
    expr::Program* kept = pPrograms.Keep(text, std::move(pUnkeptProgram), kProgramBudget);
    return kept != nullptr ? *kept : pUnkeptProgram;
}

Value ExpressionEvaluator::Run(expr::Program& program) {
    using expr::StepKind;
    // Most operands are one number or one name: no stack is needed.
    if (program.Steps.size() == 1) {
        const expr::Step& only = program.Steps.front();
        if (only.Kind == StepKind::Constant) return program.Constants[only.Index];
        if (only.Kind == StepKind::Name) return LookUpName(program.Names[only.Index]);
    }
    pStack.clear();
    for (const expr::Step& step : program.Steps) {
        if (!RunStep(step, program)) return {};
    }
    return std::move(pStack.back());
}

// One step on the value stack; false when the expression has no value.
bool ExpressionEvaluator::RunStep(const expr::Step& step, expr::Program& program) {
    using expr::StepKind;
    switch (step.Kind) {
    case StepKind::Constant:
        pStack.push_back(program.Constants[step.Index]);
        break;
    case StepKind::Literal:
        pStack.push_back(expr::ConvertLiteral(program.Texts[step.Index], pErrors));
        break;
    case StepKind::Name:
        pStack.push_back(LookUpName(program.Names[step.Index]));
        break;
    case StepKind::Prefix:
        pStack.back() = expr::ApplyPrefix(*step.Prefix, pStack.back(), pErrors);
        break;
    case StepKind::Binary: {
        const Value right = std::move(pStack.back());
        pStack.pop_back();
        pStack.back() = expr::ApplyBinary(*step.Binary, pStack.back(), right, pErrors);
        break;
    }
    case StepKind::Call:
        pStack.back() = step.Function == nullptr ? Value{}
                                                 : expr::CallFunction(*step.Function, pStack.back(),
                                                                      pAngleUnit, pErrors);
        break;
    case StepKind::Report:
        pErrors.AddError(step.Fault, program.Texts[step.Index]);
        break;
    case StepKind::Fail:
        pErrors.AddError(step.Fault, program.Texts[step.Index]);
        return false;
    }
    return true;
}

// A name whose look-up gives no value, because it is unknown or not yet
// resolved, is reported; the empty result tells the caller to wait for a
// later pass.
Value ExpressionEvaluator::LookUpName(SymbolName& name) {
    const Value* value = LookUpNameInPlace(name);
    return value ? *value : Value{};
}

const Value* ExpressionEvaluator::LookUpNameInPlace(SymbolName& name) {
    if (pVariables == nullptr) {
        pErrors.AddError(EvalError::OperandDoesNotExist, name.Text());
        return nullptr;
    }
    if (pVariables->CaseSensitive() != pCaseSensitive) pVariables->SetCaseSensitive(pCaseSensitive);
    const Value* value = pVariables->VariableInPlace(name);
    if (value == nullptr || IsEmpty(*value)) {
        pErrors.AddError(EvalError::NonExistentVariable, name.Text());
        return nullptr;
    }
    return value;
}

void ExpressionEvaluator::ApplyPrecision(Value& value) {
    if (pPrecision == 0 || pPrecision == 1) return;
    const auto* mode =
        std::find_if(kPrecisionModes.begin(), kPrecisionModes.end(),
                     [this](const PrecisionMode& m) { return m.Level == pPrecision; });
    if (mode == kPrecisionModes.end()) {
        pErrors.AddError(EvalError::InvalidPrecision, std::to_string(pPrecision));
        return;
    }
    const auto number = expr::ToNumber(value);
    if (!number) return;
    if (auto converted = mode->Convert(*number, pErrors)) value = std::move(*converted);
}

} // namespace trident
