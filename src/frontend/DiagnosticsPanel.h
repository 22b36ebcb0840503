#pragma once

#include "assembler/Diagnostic.h"

#include <QTreeWidget>
#include <vector>

namespace trident {

// The errors and warnings of a run, one row each: severity, file, line,
// message, detail. Rows arrive as the run lists them and are shown in
// batches (Flush), so that a source full of errors does not spend its time
// redrawing the panel.
class DiagnosticsPanel : public QTreeWidget {
    Q_OBJECT

  public:
    enum Column { SeverityColumn, FileColumn, LineColumn, MessageColumn, DetailColumn };

    explicit DiagnosticsPanel(QWidget* parent = nullptr);

    void Clear();
    // Keeps `diagnostic` for the next Flush.
    void Add(const Diagnostic& diagnostic) { pPending.push_back(diagnostic); }
    // Shows the rows kept since the last Flush.
    void Flush();
    int Count() const { return int(pShown.size()); }
    const Diagnostic& At(int row) const { return pShown[std::size_t(row)]; }
    // The selected row's diagnostic, or null.
    const Diagnostic* Selected() const;

  signals:
    // A row was activated (double click, Enter).
    void DiagnosticActivated(int row);

  private:
    std::vector<Diagnostic> pShown;
    std::vector<Diagnostic> pPending;
};

} // namespace trident
