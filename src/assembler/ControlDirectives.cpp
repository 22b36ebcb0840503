#include "assembler/ControlDirectives.h"

#include "assembler/Assembly.h"
#include "base/Text.h"
#include "encoder/EraZ80Library.h"
#include "encoder/OperandReader.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace trident {
namespace {

// The nesting message names one level less than the nine include files
// that may be open at once; users know it by that text.
constexpr int ReportedIncludeLevels = Assembly::MaxIncludeFiles - 1;
constexpr std::string_view LibraryExtension = ".lib";

std::string FirstOperand(const Statement& statement) {
    return statement.OperandList.empty() ? std::string{}
                                         : std::string(TrimBlanks(statement.OperandList.front()));
}

// A file name may be written in either kind of quotes.
std::string FileName(const Statement& statement) {
    std::string name = FirstOperand(statement);
    const bool quoted = name.size() >= 2 && (name.front() == '"' || name.front() == '\'') &&
                        name.back() == name.front();
    return quoted ? name.substr(1, name.size() - 2) : name;
}

// The address operand of org and .phase: every later address depends on it,
// so it must be known in this pass.
std::optional<std::int32_t> AddressKnownNow(Assembly& run, Statement& statement) {
    OperandReader(run, statement).CheckOperandCount(1);
    if (statement.OperandList.empty()) return std::nullopt;
    const std::string operand = FirstOperand(statement);
    const Value address = run.EvaluateOperand(operand, 16);
    if (IsEmpty(address)) {
        run.TerminalStop(operand);
        return std::nullopt;
    }
    return static_cast<std::int32_t>(AsNumber(address).value_or(0));
}

void Org(Assembly& run, Statement& statement) {
    statement.LabelTaken = true;
    const std::optional<std::int32_t> address = AddressKnownNow(run, statement);
    if (!address) return;
    RunState& state = run.State();
    state.LocationCounter = *address;
    run.RestartOutputRecords(static_cast<std::uint16_t>(state.LocationCounter));
    if (!statement.Label.empty()) run.DefineSymbol(statement.Label, Value{state.LocationCounter});
}

// Titles, paging, relocatable segments and linkage: the output is always
// one absolute program.
void NotImplemented(Assembly& run, Statement& statement) {
    run.ListWarning("not implemented", statement.Operation);
}

// The switch takes effect from the next statement: nolist is itself listed,
// list is not.
void ListingOn(Assembly& run, Statement&) {
    run.State().ListingOn = true;
}

void ListingOff(Assembly& run, Statement&) {
    run.State().ListingOn = false;
}

void Degrees(Assembly& run, Statement& statement) {
    OperandReader(run, statement).CheckOperandCount(0);
    run.Evaluator().SetDRG(AngleUnit::Degrees);
}

void Radians(Assembly& run, Statement& statement) {
    OperandReader(run, statement).CheckOperandCount(0);
    run.Evaluator().SetDRG(AngleUnit::Radians);
}

void SelectZ180(Assembly& run, Statement&) {
    run.SelectProcessor(run.State().Options.Z80, true);
}

void SelectZ80(Assembly& run, Statement&) {
    run.SelectProcessor(true, false);
}

// Both boxes cleared: every Z80 and Z180 instruction is warned about, so
// what assembles silently is the 8080 instruction set alone.
void Select8080(Assembly& run, Statement&) {
    run.SelectProcessor(false, false);
}

// Only the diagnostic line appears, in the final pass.
void UserError(Assembly& run, Statement& statement) {
    run.ListError(FirstOperand(statement), "");
    statement.SuppressListing = true;
}

void UserWarning(Assembly& run, Statement& statement) {
    run.ListWarning(FirstOperand(statement), "");
    statement.SuppressListing = true;
}

// The last part of a path, separated by either kind of slash.
std::string_view LastPart(std::string_view path) {
    const std::size_t slash = path.find_last_of("/\\");
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

// A file found under another letter case than written is named.
void WarnOfOtherCase(Assembly& run, std::string_view written, std::string_view taken) {
    if (LastPart(written) != LastPart(taken))
        run.ListWarning("file name found in another letter case: took", taken);
}

void Include(Assembly& run, Statement& statement) {
    IncludeFile(run, FileName(statement));
}

bool HasLibraryExtension(std::string_view name) {
    return name.size() >= LibraryExtension.size() &&
           LowerCase(name.substr(name.size() - LibraryExtension.size())) == LibraryExtension;
}

void BuildInZ80Library(Assembly& run, std::string_view name) {
    run.State().EraZ80Library = true;
    run.ListWarning("no library file: its Z80 mnemonics are built in", name);
}

// A library is read in pass 1 only; its macros stay in the macro table for
// the later passes, which look for the file again only to report on it.
void Maclib(Assembly& run, Statement& statement) {
    std::string name = FileName(statement);
    if (run.State().MaclibOpen) {
        run.ListError("Cannot nest", name);
        return;
    }
    RunState& state = run.State();
    const bool builtIn = state.Options.CompatibleMode && EraZ80Library::IsLibraryName(name);
    if (!HasLibraryExtension(name)) name += LibraryExtension;
    if (state.CurrentPass == 1) {
        if (run.OpenMaclib(name)) return;
        if (builtIn) {
            state.EraZ80LibraryMissing = true;
            BuildInZ80Library(run, name);
            return;
        }
        run.Front().ShowMessage("Can NOT open .LIB file\nFile = " + name);
        return;
    }
    if (builtIn && state.EraZ80LibraryMissing) {
        BuildInZ80Library(run, name);
        return;
    }
    if (const std::optional<std::string> taken = run.FindMaclib(name))
        WarnOfOtherCase(run, name, *taken);
    else
        run.ListError("Macro library error", name);
}

// The pass ends before the next statement, wherever the end stands. Its
// operand is the program's start address, carried by the object texts.
void End(Assembly& run, Statement& statement) {
    RunState& state = run.State();
    state.StartAddress = 0;
    if (!statement.OperandList.empty()) {
        const Value start = run.EvaluateOperand(FirstOperand(statement), 16);
        state.StartAddress = static_cast<std::uint16_t>(AsNumber(start).value_or(0));
    }
    state.EndSeen = true;
}

// Compatible mode: what the era's assemblers needed and Trident has no use
// for (one absolute program, its own listing options) is accepted silently.
void Accept(Assembly&, Statement&) {}

template <ExpansionLines Lines> void ListExpansions(Assembly& run, Statement&) {
    run.State().ListedExpansionLines = Lines;
}

// `.comment *` ... `*`: the lines up to the next delimiter are comment.
void CommentBlock(Assembly& run, Statement& statement) {
    const std::string_view text = TrimBlanks(statement.Operands);
    if (text.empty()) {
        run.ListError("Missing Operands", statement.Operation);
        return;
    }
    const char delimiter = text.front();
    const bool closed = text.substr(1).find(delimiter) != std::string_view::npos ||
                        statement.Comment.find(delimiter) != std::string_view::npos;
    if (!closed) run.State().CommentDelimiter = delimiter;
}

// `.phase addr`: the code after it counts from addr while its bytes go on
// where they stood; .dephase returns to the real place.
void Phase(Assembly& run, Statement& statement) {
    const std::optional<std::int32_t> address = AddressKnownNow(run, statement);
    if (!address) return;
    RunState& state = run.State();
    const std::int32_t logical = *address;
    state.PhaseOffset += state.LocationCounter - logical;
    state.LocationCounter = logical;
}

// `.radix n`: the radix of numbers written without a suffix, from here to
// the end of the pass. Its own operand is always decimal.
void Radix(Assembly& run, Statement& statement) {
    OperandReader(run, statement).CheckOperandCount(1);
    const std::string operand = FirstOperand(statement);
    ExpressionEvaluator& evaluator = run.Evaluator();
    const int previous = evaluator.Radix();
    evaluator.SetRadix(10);
    const auto radix = static_cast<int>(AsNumber(run.EvaluateOperand(operand, 16)).value_or(0));
    const bool known = radix == 2 || radix == 8 || radix == 10 || radix == 16;
    if (!known) run.ListError("Radix must be 2, 8, 10 or 16", operand);
    evaluator.SetRadix(known ? radix : previous);
}

void Dephase(Assembly& run, Statement&) {
    RunState& state = run.State();
    state.LocationCounter += state.PhaseOffset;
    state.PhaseOffset = 0;
}

constexpr LineCategory Control = LineCategory::Control;
constexpr LineCategory Listed = LineCategory::Directive;

// Looked up before the rows above in Compatible mode.
// clang-format off
constexpr std::array<Directive, 21> CompatibleDirectives{{
    {".8080", Listed, Select8080},
    {"aseg", Control, Accept},
    {"name", Listed, Accept},
    {"title", Listed, Accept},
    {".title", Listed, Accept},
    {"subttl", Listed, Accept},
    {".sbttl", Listed, Accept},
    {"page", Listed, Accept},
    {"eject", Listed, Accept},
    {".printx", Listed, Accept},
    {"stkln", Listed, Accept},
    {".lall", Listed, ListExpansions<ExpansionLines::All>},
    {".sall", Listed, ListExpansions<ExpansionLines::None>},
    {".xall", Listed, ListExpansions<ExpansionLines::CodeOnly>},
    {".cref", Listed, Accept},
    {".xcref", Listed, Accept},
    {"mlist", Listed, Accept},
    {".comment", Listed, CommentBlock},
    {".phase", Control, Phase},
    {".dephase", Control, Dephase},
    {".radix", Listed, Radix},
}};
// clang-format on

constexpr std::array<Directive, 37> Directives{{
    {"org", Control, Org},
    {"page", Listed, NotImplemented},
    {"title", Listed, NotImplemented},
    {".title", Listed, NotImplemented},
    {"subttl", Listed, NotImplemented},
    {".sbttl", Listed, NotImplemented},
    {"list", Listed, ListingOn},
    {".list", Listed, ListingOn},
    {"nolist", Listed, ListingOff},
    {".xlist", Listed, ListingOff},
    {"degrees", Listed, Degrees},
    {".deg", Listed, Degrees},
    {"radians", Listed, Radians},
    {".rad", Listed, Radians},
    {"z180", Listed, SelectZ180},
    {".z180", Listed, SelectZ180},
    {".180", Listed, SelectZ180},
    {".hd64", Listed, SelectZ180},
    {"z80", Listed, SelectZ80},
    {".z80", Listed, SelectZ80},
    {"i8080", Listed, Select8080},
    {".i8080", Listed, Select8080},
    {"aseg", Control, NotImplemented},
    {"dseg", Control, NotImplemented},
    {"cseg", Control, NotImplemented},
    {"common", Control, NotImplemented},
    {"public", Control, NotImplemented},
    {"global", Control, NotImplemented},
    {"external", Control, NotImplemented},
    {"extrn", Control, NotImplemented},
    {"ext", Control, NotImplemented},
    {"error", Control, UserError},
    {"warning", Control, UserWarning},
    {"include", Control, Include},
    {".in", Control, Include},
    {"maclib", Control, Maclib},
    {"end", Control, End},
}};

} // namespace

void IncludeFile(Assembly& run, std::string_view name) {
    if (run.State().IncludeDepth >= Assembly::MaxIncludeFiles) {
        run.ListError("Cannot nest more than " + std::to_string(ReportedIncludeLevels) + " levels",
                      name);
        return;
    }
    const std::string* taken = run.OpenInclude(name);
    if (!taken) {
        run.ListError("Include file error", name);
        return;
    }
    WarnOfOtherCase(run, name, *taken);
}

std::span<const Directive> ControlDirectiveTable() {
    return Directives;
}

std::span<const Directive> CompatibleControlDirectiveTable() {
    return CompatibleDirectives;
}

} // namespace trident
