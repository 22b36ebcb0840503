#pragma once

#include "assembler/Assembly.h"
#include "support/ListingBody.h"
#include "support/TempSource.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trident::testing {

// Assembles one source text and answers questions about the result: the
// passes run, the symbols left behind, the listing and its diagnostics.
class SourceRun {
  public:
    SourceRun() = default;
    SourceRun(const SourceRun&) = delete;
    SourceRun& operator=(const SourceRun&) = delete;

    RunOptions& Options() { return pRun.Options(); }

    Assembly::Outcome Assemble(std::string_view text) {
        pSource = pDir.Write("prog.asm", text);
        return pRun.Assemble(pSource);
    }

    const std::vector<int>& Passes() const { return pFrontEnd.Passes; }

    // The numeric value of a symbol, or nothing when it is not defined.
    std::optional<double> Symbol(std::string_view name) {
        clsSymbolTable& symbols = pRun.Symbols();
        if (!symbols.VariableExists(name)) return std::nullopt;
        return AsNumber(symbols.SymVal()).value_or(-99999.0);
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
    struct PassRecorder : FrontEnd {
        void ShowPass(int pass) override { Passes.push_back(pass); }
        std::vector<int> Passes;
    };

    TempDir pDir;
    PassRecorder pFrontEnd;
    Assembly pRun{&pFrontEnd};
    std::filesystem::path pSource;
};

} // namespace trident::testing
