#include "expression/ExpressionEvaluator.h"

#include "expression/ExpressionParser.h"
#include "expression/NumberLiterals.h"
#include "expression/Operations.h"
#include "symbols/PredefinedSymbols.h"
#include "symbols/SymbolTable.h"

#include <utility>

namespace trident {

namespace {

// The programs an evaluator keeps take at most about this much memory; the
// texts beyond it are translated at every evaluation.
constexpr std::size_t kProgramBudget = std::size_t{8} << 20;

} // namespace

void ExpressionEvaluator::SetVariables(SymbolTable* variables) {
    pVariables = variables;
    pPrograms.Clear();
}

void ExpressionEvaluator::SetDialect(expr::Dialect dialect) {
    if (dialect == pDialect) return;
    pDialect = dialect;
    pParser.SetDialect(dialect);
    pPrograms.Clear();
}

// The programs translated so far read their numbers in the old radix.
void ExpressionEvaluator::SetRadix(int radix) {
    if (radix == pRadix) return;
    pRadix = radix;
    pParser.SetRadix(radix);
    pPrograms.Clear();
}

Value ExpressionEvaluator::Evaluate(std::string_view text, ProgramHandle& handle) {
    return EvaluateInPlace(text, handle);
}

const Value& ExpressionEvaluator::EvaluateInPlace(std::string_view text, ProgramHandle& handle) {
    expr::Program& program = ProgramOf(text, handle);
    // Most operands are one constant or one name: their result is what the
    // program holds or the table stores.
    if (program.Steps.size() == 1) {
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
    return pHeld;
}

expr::Program& ExpressionEvaluator::ProgramOf(std::string_view text, ProgramHandle& handle) {
    if (!Holds(handle)) {
        expr::Program& program = ProgramFor(text);
        // A program that is not kept is translated again next time.
        handle.pProgram = &program;
        handle.pGeneration = &program == &pUnkeptProgram ? 0 : pPrograms.Generation();
    }
    return *handle.pProgram;
}

// A handle made while the programs were kept as they are now.
bool ExpressionEvaluator::Holds(const ProgramHandle& handle) const {
    return handle.pGeneration == pPrograms.Generation();
}

bool ExpressionEvaluator::IsConstant(const ProgramHandle& handle) const {
    if (!Holds(handle)) return false;
    const std::vector<expr::Step>& steps = handle.pProgram->Steps;
    return steps.size() == 1 && steps.front().Kind == expr::StepKind::Constant;
}

Value ExpressionEvaluator::Evaluate(std::string_view text) {
    return Run(ProgramFor(text));
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

// A text's program is kept while the memory of the kept ones allows.
expr::Program& ExpressionEvaluator::ProgramFor(std::string_view text) {
    if (expr::Program* kept = pPrograms.Find(text)) return *kept;
    pParser.Compile(text, pUnkeptProgram);
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
        pStack.push_back(
            expr::ConvertLiteral(program.Texts[step.Index], pErrors, pDialect, pRadix));
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
    if (value == nullptr || IsEmpty(*value)) return NameWithoutValue(name);
    return value;
}

// Kept apart from the look-up, which every name of every pass goes through.
const Value* ExpressionEvaluator::NameWithoutValue(const SymbolName& name) {
    if (pDialect == expr::Dialect::Compatible) {
        if (const auto code = EraNameValue(name.Text())) {
            pDialectName = *code;
            return &pDialectName;
        }
    }
    pErrors.AddError(EvalError::NonExistentVariable, name.Text());
    return nullptr;
}

} // namespace trident
