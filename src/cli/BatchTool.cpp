#include "cli/BatchTool.h"

#include "assembler/Assembly.h"
#include "output/AtomicFile.h"
#include "output/RtfText.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace trident {
namespace {

// The batch tool's side of the run: messages meant for a message box go to
// standard error at once.
class BatchFrontEnd : public FrontEnd {
  public:
    explicit BatchFrontEnd(std::ostream& err) : pErr(err) {}
    void ShowMessage(std::string_view text) override {
        pErr << text << '\n';
        pShown = text;
    }
    const std::string& Shown() const { return pShown; }

  private:
    std::ostream& pErr;
    std::string pShown;
};

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text.append(text.empty() ? "" : ", ").append(name);
    return text;
}

void PrintDiagnostics(const Assembly& run, std::ostream& err) {
    for (const Diagnostic& d : run.GetListing().Diagnostics()) {
        const std::string place = d.Where.File + ":" + std::to_string(d.Where.Line) + ": ";
        err << place << (d.Kind == Severity::Error ? "error: " : "warning: ") << d.Message << " ~ "
            << d.Detail << '\n';
        if (!d.Where.Macro.empty())
            err << place << "note: in expansion of macro " << d.Where.Macro << '\n';
        // The listing says only that a value was needed now: name the culprits.
        if (d.Message == Assembly::TerminalMessage && !run.TerminalUnresolved().empty())
            err << place << "note: no value yet for " << Joined(run.TerminalUnresolved()) << '\n';
    }
}

// Most errors fell on Zilog words while the notation was 8080.
void HintZilogNotation(const Assembly& run, const std::string& source, std::ostream& err) {
    const RunState& state = run.State();
    if (state.UnknownZilogWords == 0 || 2 * state.ZilogWordErrors <= state.ErrorCount) return;
    err << source
        << ": note: most errors are on Zilog mnemonics (ld, jp, jr, ex, djnz, ...); if the "
           "source is in Zilog notation, assemble it with --zilog or put .zilog at its top\n";
}

// A make rule: the outputs depend on every file the run read; each file
// read is also a target of its own, so that make goes on when one is gone.
std::string DependencyRule(const std::vector<std::string>& outputs,
                           const std::vector<std::string>& inputs) {
    const auto escaped = [](const std::string& path) {
        std::string text;
        for (const char c : path) {
            if (c == ' ' || c == '#') text += '\\';
            if (c == '$') text += '$';
            text += c;
        }
        return text;
    };
    std::string rule;
    for (const std::string& output : outputs)
        rule.append(rule.empty() ? "" : " ").append(escaped(output));
    rule += ":";
    for (const std::string& input : inputs) rule.append(" ").append(escaped(input));
    rule += "\n";
    for (const std::string& input : inputs) rule.append("\n").append(escaped(input)).append(":\n");
    return rule;
}

bool ErrorsListed(const Assembly& run) {
    for (const Diagnostic& d : run.GetListing().Diagnostics())
        if (d.Kind == Severity::Error) return true;
    return false;
}

// NAME.ls beside the source, NAME being the file name up to its first ".".
std::string DefaultListingName(const std::string& source) {
    const std::filesystem::path path(source);
    const std::string name = path.filename().string();
    return (path.parent_path() / (name.substr(0, name.find('.')) + ".ls")).string();
}

// Every symbol the source defined, as equates the assembler can include.
std::string SymbolFile(Assembly& run) {
    std::string text;
    for (const ListingReports::SymbolRow& row : run.SymbolReport()) {
        const std::optional<double> number = AsNumber(row.Val);
        if (!row.DefinedAt.InSource() || !number) continue;
        // The low 16 bits of the whole part, exact however large the value.
        double low = std::isfinite(*number) ? std::fmod(std::trunc(*number), 65536.0) : 0.0;
        if (low < 0) low += 65536.0;
        char value[16];
        std::snprintf(value, sizeof value, "0%04XH", static_cast<unsigned>(low));
        text += row.Name + " EQU " + value + "\r\n";
    }
    return text;
}

// An output the command line asked for. Its contents are made only when the
// file is written, and as a view, so that a text view is written as it
// stands rather than copied first. An object output is written only by a
// run that ended without errors: a build must never take a half-built image
// for a good one.
struct OutputFile {
    std::string Path;
    std::function<std::string_view()> Contents;
    bool Object = true;
};

// A file of that name left by an earlier run would look up to date.
void RemoveStale(const std::string& path, std::ostream& err) {
    std::error_code error;
    if (std::filesystem::is_regular_file(path, error) && std::filesystem::remove(path, error))
        err << "removed " << path << ", left by an earlier run\n";
}

// Writes every output asked for; the object outputs only when
// `writeObjects`, removing a file of their name otherwise. False when a file
// could not be written.
bool WriteOutputs(const BatchOptions& options, Assembly& run, bool writeObjects,
                  std::ostream& err) {
    std::string made; // the contents of the file being written, when made for it
    const auto text = [&](const ColouredText& buffer) -> std::string_view {
        if (!options.Rtf) return buffer.Text();
        made = ToRtf(buffer);
        return made;
    };
    const auto keep = [&](std::string contents) -> std::string_view {
        made = std::move(contents);
        return made;
    };
    const std::string defaultListing =
        options.AnyOutputRequested() ? std::string() : DefaultListingName(options.Source);
    const std::string listing = options.ListingFile.empty() ? defaultListing : options.ListingFile;
    const std::vector<std::string> outputs = [&] {
        std::vector<std::string> paths;
        for (const std::string* path :
             {&listing, &options.HexFile, &options.SrecFile, &options.LoaderFile,
              &options.BinaryFile, &options.SymbolsFile})
            if (!path->empty()) paths.push_back(*path);
        return paths;
    }();
    const OutputFile files[] = {
        {listing, [&] { return text(run.GetListing().Text()); }, false},
        {options.HexFile, [&] { return text(run.Outputs().Hex()); }},
        {options.SrecFile, [&] { return text(run.Outputs().Srec()); }},
        {options.LoaderFile, [&] { return text(run.Outputs().Loader()); }},
        {options.BinaryFile, [&] { return keep(run.BinaryImage()); }},
        {options.SymbolsFile, [&] { return keep(SymbolFile(run)); }},
        {options.DepFile, [&] { return keep(DependencyRule(outputs, run.FilesRead())); }},
    };
    bool written = true;
    for (const OutputFile& file : files) {
        if (file.Path.empty()) continue;
        if (file.Object && !writeObjects) {
            RemoveStale(file.Path, err);
            continue;
        }
        const std::string problem = WriteFileAtomically(file.Path, file.Contents());
        if (!problem.empty()) {
            err << "cannot write " << problem << '\n';
            written = false;
        }
    }
    return written;
}

} // namespace

ExitStatus RunBatch(const BatchOptions& options, std::ostream& out, std::ostream& err) {
    std::error_code error;
    if (!std::filesystem::exists(options.Source, error)) {
        err << options.Source << ": no such file\n";
        return ExitStatus::RunFailed;
    }
    if (!std::filesystem::is_regular_file(options.Source, error)) {
        err << options.Source << ": not a readable file\n";
        return ExitStatus::RunFailed;
    }

    BatchFrontEnd frontEnd(err);
    Assembly run(&frontEnd);
    run.Options() = options.Run;
    // Only the object texts that are saved are built.
    run.Options().Objects = {.Srec = !options.SrecFile.empty(),
                             .Hex = !options.HexFile.empty(),
                             .Loader = !options.LoaderFile.empty()};
    // Colours are saved only as rich text.
    run.Options().ColourRuns = options.Rtf;
    const Assembly::Outcome outcome = run.Assemble(options.Source);

    PrintDiagnostics(run, err);
    HintZilogNotation(run, options.Source, err);
    bool failed = outcome == Assembly::Outcome::Failed || outcome == Assembly::Outcome::NoSource;
    if (outcome == Assembly::Outcome::Failed && run.FailureMessage() != frontEnd.Shown())
        err << "assembly failed: " << run.FailureMessage() << '\n';

    const bool trusted = outcome == Assembly::Outcome::Completed && !ErrorsListed(run);
    if (!WriteOutputs(options, run, trusted || options.KeepOutputs, err)) failed = true;
    if (!trusted && !options.KeepOutputs && options.AnyObjectRequested())
        err << "no object output written: the assembly "
            << (outcome == Assembly::Outcome::Completed ? "reported errors" : "did not complete")
            << " (--keep-outputs writes it anyway)\n";
    if (!options.Quiet)
        out << run.State().ErrorCount << " errors, " << run.State().WarningCount << " warnings\n";
    if (failed) return ExitStatus::RunFailed;
    return ErrorsListed(run) ? ExitStatus::ErrorsListed : ExitStatus::Clean;
}

} // namespace trident
