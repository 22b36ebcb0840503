#pragma once

#include <QString>
#include <QStringList>

namespace trident::EditorCommand {

// The program and arguments that open `file` at `line` with the editor the
// user named: a command line in the shell's quoting (`$VISUAL` style) in
// which "{file}" and "{line}" stand for the file and the line, in any word
// and as often as needed. A command without "{file}" gets the file as its
// last argument. Empty when `command` names no program.
QStringList Build(const QString& command, const QString& file, int line);

} // namespace trident::EditorCommand
