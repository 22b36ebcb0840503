// trident: the assembler's main window.
#include "frontend/MainWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QIcon>
#include <QPixmap>
#include <QTimer>
#include <cstdio>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Trident"));
    QCoreApplication::setApplicationName(QStringLiteral("Trident"));
    QCoreApplication::setApplicationVersion(QStringLiteral("%1.%2.%3")
                                                .arg(TRIDENT_VERSION_MAJOR)
                                                .arg(TRIDENT_VERSION_MINOR)
                                                .arg(TRIDENT_VERSION_PATCH));
    // The installed menu entry, trident.desktop, and the icon of that name:
    // the desktop matches the window to them.
    QGuiApplication::setDesktopFileName(QStringLiteral("trident"));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("trident")));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Cross-assembler for the 8080, Z80 and Z180: the main window"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("Source file to put in the source box"),
                                 QStringLiteral("[FILE]"));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral("Assemble FILE, show its first diagnostic, save a picture of the "
                       "window to IMAGE and quit"),
        QStringLiteral("IMAGE"));
    parser.addOption(screenshot);
    parser.process(application);

    trident::MainWindow window;
    const QStringList files = parser.positionalArguments();
    if (!files.isEmpty()) window.OpenSource(QFileInfo(files.first()).absoluteFilePath());
    window.show();

    if (parser.isSet(screenshot)) {
        const QString image = parser.value(screenshot);
        // Give the window a moment to be laid out and exposed first.
        QTimer::singleShot(500, &window, [&window, image] {
            window.Assemble();
            // Led to the first diagnostic, as a click in the panel would.
            window.GoToDiagnostic(0);
            QTimer::singleShot(300, &window, [&window, image] {
                if (!window.grab().save(image)) {
                    std::fprintf(stderr, "cannot write %s\n", qPrintable(image));
                    QCoreApplication::exit(1);
                    return;
                }
                QCoreApplication::quit();
            });
        });
    }
    return application.exec();
}
