#include "frontend/DirectoryDialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace trident {

DirectoryDialog::DirectoryDialog(QWidget* parent)
    : QDialog(parent), pModel(new QFileSystemModel(this)), pDirectories(new QTreeView(this)),
      pPath(new QLabel(this)), pOpen(new QPushButton(tr("Open"), this)),
      pCancel(new QPushButton(tr("Cancel"), this)) {
    setObjectName(QStringLiteral("dialogGetDirectory"));
    pModel->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives);
    pModel->setRootPath(QDir::rootPath());

    pDirectories->setObjectName(QStringLiteral("dirDirectory"));
    pDirectories->setModel(pModel);
    // Only the names matter here: size, type and date say nothing of a
    // directory the user is looking for.
    for (int column = 1; column < pModel->columnCount(); ++column) pDirectories->hideColumn(column);
    pDirectories->header()->hide();
    pDirectories->setMinimumSize(360, 300);

    pPath->setObjectName(QStringLiteral("lblPath"));
    pPath->setTextInteractionFlags(Qt::TextSelectableByMouse);
    pOpen->setObjectName(QStringLiteral("OKButton"));
    pOpen->setDefault(true);
    pCancel->setObjectName(QStringLiteral("CancelButton"));

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(pOpen, QDialogButtonBox::AcceptRole);
    buttons->addButton(pCancel, QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(pDirectories->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &DirectoryDialog::CurrentChanged);
    connect(pDirectories, &QTreeView::doubleClicked, pDirectories, &QTreeView::expand);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(pPath);
    layout->addWidget(pDirectories, 1);
    layout->addWidget(buttons);
}

void DirectoryDialog::ChooseDirectory(const QString& directory) {
    const QModelIndex index = pModel->index(QDir(directory).absolutePath());
    if (!index.isValid()) return;
    pDirectories->setCurrentIndex(index);
    pDirectories->scrollTo(index);
    pDirectories->expand(index);
}

void DirectoryDialog::CurrentChanged() {
    pChosen = pModel->filePath(pDirectories->currentIndex());
    pPath->setText(QDir::toNativeSeparators(pChosen));
    pOpen->setEnabled(!pChosen.isEmpty());
}

QString DirectoryDialog::ShowChooseDirectory(const QString& title, const QString& startDirectory) {
    setWindowTitle(title);
    pChosen.clear();
    pPath->clear();
    pOpen->setEnabled(false);
    ChooseDirectory(startDirectory.isEmpty() ? QDir::homePath() : startDirectory);
    return exec() == QDialog::Accepted ? pChosen : QString();
}

} // namespace trident
