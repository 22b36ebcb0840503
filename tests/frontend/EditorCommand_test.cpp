// The editor's command line: placeholders replaced, quoting kept.
#include "frontend/EditorCommand.h"

#include <QtTest>

namespace trident {

class EditorCommandTest : public QObject {
    Q_OBJECT

  private slots:
    void placeholdersAreReplacedInEveryWord() {
        const QString file = QStringLiteral("/src/my prog.asm");
        const struct {
            const char* Command;
            QStringList Expected;
        } cases[] = {
            {"gvim +{line} {file}", {"gvim", "+42", file}},
            {"code -g {file}:{line}", {"code", "-g", file + ":42"}},
            {"emacsclient -n", {"emacsclient", "-n", file}},
            {"\"/opt/my editor/ed\" --line={line} --file={file}",
             {"/opt/my editor/ed", "--line=42", "--file=" + file}},
            {"kate {file} --line {line} {line}", {"kate", file, "--line", "42", "42"}},
            {"", {}},
            {"   ", {}},
        };
        for (const auto& c : cases)
            QCOMPARE(EditorCommand::Build(QLatin1String(c.Command), file, 42), c.Expected);
        // A file name holding a mark is passed as it is.
        QCOMPARE(EditorCommand::Build(QStringLiteral("ed {file} {line}"),
                                      QStringLiteral("/a/{line}.asm"), 7),
                 QStringList({"ed", "/a/{line}.asm", "7"}));
    }
};

} // namespace trident

QTEST_MAIN(trident::EditorCommandTest)
#include "EditorCommand_test.moc"
