#include "frontend/EditorCommand.h"

#include <QProcess>
#include <QRegularExpression>

namespace trident::EditorCommand {
namespace {

// Both marks replaced in one walk, so that a file name holding "{line}" is
// passed as it is.
QString Substituted(const QString& word, const QString& file, const QString& line) {
    static const QRegularExpression mark(QStringLiteral("\\{(file|line)\\}"));
    QString result;
    qsizetype from = 0;
    for (auto matches = mark.globalMatch(word); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        result += word.mid(from, match.capturedStart() - from);
        result += match.captured(1) == QLatin1String("file") ? file : line;
        from = match.capturedEnd();
    }
    return result + word.mid(from);
}

} // namespace

QStringList Build(const QString& command, const QString& file, int line) {
    QStringList words = QProcess::splitCommand(command);
    if (words.isEmpty()) return {};
    const bool namesFile = command.contains(QStringLiteral("{file}"));
    for (QString& word : words) word = Substituted(word, file, QString::number(line));
    if (!namesFile) words.append(file);
    return words;
}

} // namespace trident::EditorCommand
