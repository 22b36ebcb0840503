#include "frontend/DiagnosticsPanel.h"

#include "assembler/ListingColours.h"
#include "frontend/ViewText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>

namespace trident {
namespace {

QString FromLocal(const std::string& text) {
    return QString::fromLocal8Bit(text.data(), qsizetype(text.size()));
}

QTreeWidgetItem* RowOf(const Diagnostic& d, int index) {
    const bool error = d.Kind == Severity::Error;
    const QString path = QFile::decodeName(d.Where.File.c_str());
    auto* row = new QTreeWidgetItem(
        {error ? DiagnosticsPanel::tr("Error") : DiagnosticsPanel::tr("Warning"),
         QFileInfo(path).fileName(), QString::number(d.Where.Line), FromLocal(d.Message),
         FromLocal(d.Detail)});
    row->setData(0, Qt::UserRole, index);
    row->setForeground(
        DiagnosticsPanel::SeverityColumn,
        ViewText::ToQColor(error ? ListingColours::Error : ListingColours::WarningCount));
    row->setToolTip(DiagnosticsPanel::FileColumn, QDir::toNativeSeparators(path));
    row->setTextAlignment(DiagnosticsPanel::LineColumn, Qt::AlignRight | Qt::AlignVCenter);
    if (!d.Where.Macro.empty())
        row->setToolTip(
            DiagnosticsPanel::DetailColumn,
            DiagnosticsPanel::tr("In the expansion of macro %1").arg(FromLocal(d.Where.Macro)));
    return row;
}

} // namespace

DiagnosticsPanel::DiagnosticsPanel(QWidget* parent) : QTreeWidget(parent) {
    setObjectName(QStringLiteral("lstDiagnostics"));
    setHeaderLabels({tr("Severity"), tr("File"), tr("Line"), tr("Message"), tr("Detail")});
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    header()->setStretchLastSection(true);
    header()->setSectionResizeMode(QHeaderView::Interactive);
    setColumnWidth(SeverityColumn, 80);
    setColumnWidth(FileColumn, 140);
    setColumnWidth(LineColumn, 60);
    setColumnWidth(MessageColumn, 300);
    connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
        emit DiagnosticActivated(item->data(0, Qt::UserRole).toInt());
    });
}

void DiagnosticsPanel::Clear() {
    clear();
    pShown.clear();
    pPending.clear();
}

void DiagnosticsPanel::Flush() {
    if (pPending.empty()) return;
    QList<QTreeWidgetItem*> rows;
    rows.reserve(qsizetype(pPending.size()));
    for (Diagnostic& d : pPending) {
        rows.append(RowOf(d, Count()));
        pShown.push_back(std::move(d));
    }
    pPending.clear();
    addTopLevelItems(rows);
}

const Diagnostic* DiagnosticsPanel::Selected() const {
    const QTreeWidgetItem* item = currentItem();
    return item ? &At(item->data(0, Qt::UserRole).toInt()) : nullptr;
}

} // namespace trident
