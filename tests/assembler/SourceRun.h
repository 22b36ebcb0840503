#pragma once

#include "assembler/Assembly.h"
#include "support/ListingBody.h"
#include "support/TempSource.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trident::testing {

// Assembles one source text and answers questions about the result: the
// passes run, the symbols left behind, the listing and its diagnostics, and
// what the run showed its front end.
class SourceRun {
  public:
    SourceRun() = default;
    explicit SourceRun(std::string_view text) { Assemble(text); }

    RunOptions& Options() { return pRun.Options(); }

    Assembly::Outcome Assemble(std::string_view text) {
        pSource = pDir.Write("prog.asm", text);
        return pOutcome = pRun.Assemble(pSource);
    }
    Assembly::Outcome Outcome() const { return pOutcome; }
    // Writes another file beside the source.
    std::filesystem::path Write(std::string_view name, std::string_view text) const {
        return pDir.Write(name, text);
    }
    const std::filesystem::path& SourcePath() const { return pSource; }

    // What the front end was shown: every pass, the last error count, the
    // processor check boxes (Z80, Z180) and the message boxes.
    const std::vector<int>& Passes() const { return pFrontEnd.Passes; }
    int ShownErrors() const { return pFrontEnd.Errors; }
    const std::vector<std::pair<bool, bool>>& Checks() const { return pFrontEnd.Checks; }
    const std::vector<std::string>& Messages() const { return pFrontEnd.Messages; }
    // Presses Stop when the run yields to the front end for the n-th time.
    void StopAtYield(int n) {
        pFrontEnd.StopIn = n;
        pFrontEnd.Run = &pRun;
    }

    // The numeric value of a symbol, or nothing when it is not defined.
    std::optional<double> Symbol(std::string_view name) {
        SymbolTable& symbols = pRun.Symbols();
        const int slot = symbols.SlotOf(name);
        if (slot < 0) return std::nullopt;
        return AsNumber(symbols.SymVal(slot)).value_or(-99999.0);
    }
    bool Defined(std::string_view name) { return pRun.Symbols().VariableExists(name); }

    std::string ListingText() const {
        return testing::StatementLines(pRun.GetListing().Text().Text());
    }
    const std::vector<Diagnostic>& Diagnostics() const { return pRun.GetListing().Diagnostics(); }
    // "message ~ detail" of every diagnostic, in order.
    std::vector<std::string> DiagnosticTexts() const {
        std::vector<std::string> texts;
        for (const Diagnostic& d : Diagnostics()) texts.push_back(d.Message + " ~ " + d.Detail);
        return texts;
    }
    // The listing lines that are not diagnostics, without their CR LF.
    std::vector<std::string> StatementLines() const {
        std::vector<std::string> lines;
        const std::string& text = ListingText();
        for (std::size_t start = 0; start < text.size();) {
            std::size_t end = text.find("\r\n", start);
            if (end == std::string::npos) end = text.size();
            if (text[start] != '~') lines.push_back(text.substr(start, end - start));
            start = end + 2;
        }
        return lines;
    }

    Assembly& Run() { return pRun; }

  private:
    struct Recorder : FrontEnd {
        void ShowPass(int pass) override { Passes.push_back(pass); }
        void ShowDiagnosticCounts(int errors, int) override { Errors = errors; }
        void ShowProcessorChecks(bool z80, bool z180) override { Checks.emplace_back(z80, z180); }
        void ShowMessage(std::string_view text) override { Messages.emplace_back(text); }
        void Yield() override {
            if (Run && --StopIn == 0) Run->RequestStop();
        }
        std::vector<int> Passes;
        int Errors = -1, StopIn = -1;
        std::vector<std::pair<bool, bool>> Checks;
        std::vector<std::string> Messages;
        Assembly* Run = nullptr;
    };

    TempDir pDir;
    Recorder pFrontEnd;
    Assembly pRun{&pFrontEnd};
    std::filesystem::path pSource;
    Assembly::Outcome pOutcome{};
};

} // namespace trident::testing
