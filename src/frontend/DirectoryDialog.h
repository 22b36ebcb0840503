#pragma once

#include <QDialog>
#include <QString>

class QFileSystemModel;
class QLabel;
class QPushButton;
class QTreeView;

namespace trident {

// The directory chooser of the include and macro library directories: a
// tree of directories only, the chosen path above it, Open and Cancel.
class DirectoryDialog : public QDialog {
    Q_OBJECT

  public:
    explicit DirectoryDialog(QWidget* parent = nullptr);

    // Shows the chooser titled `title`, opened at `startDirectory` (the
    // home directory when empty); returns the chosen directory, or an
    // empty string on Cancel.
    QString ShowChooseDirectory(const QString& title, const QString& startDirectory);

    // The directory the chooser would return now.
    QString ChosenDirectory() const { return pChosen; }
    // Makes `directory` the chosen one and shows it in the tree.
    void ChooseDirectory(const QString& directory);

  private:
    void CurrentChanged();

    QFileSystemModel* pModel;
    QTreeView* pDirectories;
    QLabel* pPath;
    QPushButton* pOpen;
    QPushButton* pCancel;
    QString pChosen;
};

} // namespace trident
