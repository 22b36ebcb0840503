#include "cli/BatchTool.h"

#include "assembler/Assembly.h"
#include "output/AtomicFile.h"

#include <filesystem>
#include <ostream>

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
    // The last message already shown, so that it is not printed twice.
    const std::string& Shown() const { return pShown; }

  private:
    std::ostream& pErr;
    std::string pShown;
};

void PrintDiagnostics(const Assembly& run, std::ostream& err) {
    for (const Diagnostic& d : run.GetListing().Diagnostics()) {
        err << d.Where.File << ':' << d.Where.Line << ": "
            << (d.Kind == Severity::Error ? "error: " : "warning: ") << d.Message << " ~ "
            << d.Detail << '\n';
    }
}

bool ErrorsListed(const Assembly& run) {
    for (const Diagnostic& d : run.GetListing().Diagnostics())
        if (d.Kind == Severity::Error) return true;
    return false;
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
    const Assembly::Outcome outcome = run.Assemble(options.Source);

    PrintDiagnostics(run, err);
    bool failed = outcome == Assembly::Outcome::Failed || outcome == Assembly::Outcome::NoSource;
    if (outcome == Assembly::Outcome::Failed && run.FailureMessage() != frontEnd.Shown())
        err << "assembly failed: " << run.FailureMessage() << '\n';

    if (!options.ListingFile.empty()) {
        const std::string problem =
            WriteFileAtomically(options.ListingFile, run.GetListing().Text().Text());
        if (!problem.empty()) {
            err << "cannot write " << problem << '\n';
            failed = true;
        }
    }
    out << run.State().ErrorCount << " errors, " << run.State().WarningCount << " warnings\n";
    if (failed) return ExitStatus::RunFailed;
    return ErrorsListed(run) ? ExitStatus::ErrorsListed : ExitStatus::Clean;
}

} // namespace trident
