// The directory chooser on real directories.
#include "GuiTestSupport.h"
#include "frontend/DirectoryDialog.h"

#include <QDir>
#include <QFileSystemModel>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTreeView>
#include <QtTest>

namespace trident {

using guitest::WhenModal;

class DirectoryChooserTest : public QObject {
    Q_OBJECT

  private:
    QTemporaryDir pRoot;
    QString pLibraries;

  private slots:
    void initTestCase() {
        QVERIFY(pRoot.isValid());
        QVERIFY(QDir(pRoot.path()).mkdir(QStringLiteral("libs")));
        guitest::WriteAll(pRoot.filePath(QStringLiteral("prog.asm")), " nop\n");
        pLibraries = QDir(pRoot.path()).absoluteFilePath(QStringLiteral("libs"));
    }

    void openReturnsTheDirectoryPickedInTheTree() {
        DirectoryDialog chooser;
        QString title;
        QString shownPath;
        WhenModal<DirectoryDialog>([&](DirectoryDialog* dialog) {
            title = dialog->windowTitle();
            auto* tree = dialog->findChild<QTreeView*>(QStringLiteral("dirDirectory"));
            auto* model = qobject_cast<QFileSystemModel*>(tree->model());
            tree->setCurrentIndex(model->index(pLibraries));
            shownPath = dialog->findChild<QLabel*>(QStringLiteral("lblPath"))->text();
            dialog->findChild<QPushButton*>(QStringLiteral("OKButton"))->click();
        });
        const QString chosen =
            chooser.ShowChooseDirectory(QStringLiteral("Maclib Directory"), pRoot.path());
        QCOMPARE(title, QStringLiteral("Maclib Directory"));
        QCOMPARE(shownPath, QDir::toNativeSeparators(pLibraries));
        QCOMPARE(chosen, pLibraries);
    }

    void cancelReturnsAnEmptyString() {
        DirectoryDialog chooser;
        QString opened;
        QString caption;
        WhenModal<DirectoryDialog>([&](DirectoryDialog* dialog) {
            opened = dialog->ChosenDirectory();
            auto* cancel = dialog->findChild<QPushButton*>(QStringLiteral("CancelButton"));
            caption = cancel->text();
            cancel->click();
        });
        QCOMPARE(chooser.ShowChooseDirectory(QStringLiteral("Include Directory"), pLibraries),
                 QString());
        QCOMPARE(opened, pLibraries);
        QCOMPARE(caption, QStringLiteral("Cancel"));
    }

    void theTreeListsDirectoriesOnly() {
        DirectoryDialog chooser;
        chooser.ChooseDirectory(pRoot.path());
        auto* tree = chooser.findChild<QTreeView*>(QStringLiteral("dirDirectory"));
        auto* model = qobject_cast<QFileSystemModel*>(tree->model());
        const QModelIndex root = model->index(pRoot.path());
        if (model->canFetchMore(root)) model->fetchMore(root);
        QTRY_COMPARE(model->rowCount(root), 1);
        QCOMPARE(model->fileName(model->index(0, 0, root)), QStringLiteral("libs"));
        QCOMPARE(chooser.findChild<QPushButton*>(QStringLiteral("OKButton"))->text(),
                 QStringLiteral("Open"));
    }
};

} // namespace trident

QTEST_MAIN(trident::DirectoryChooserTest)
#include "DirectoryDialog_test.moc"
