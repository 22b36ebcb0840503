#pragma once

#include <QString>
#include <QStringList>

namespace trident::FileFilters {

// The open and save dialogs' filters in the classic form: caption and
// patterns alternating, separated by "|", patterns separated by ";".
inline constexpr const char* InputFile =
    "Text (*.txt)|*.txt|Assembler (*.sa)|*.sa|All Assembler "
    "(*.s;*.sa;*.asm;*.mac;*.lib)|*.s;*.sa;*.asm;*.mac;*.lib|Assembler (*.s)|*.s|Assembler "
    "(*.asm)|*.asm|Mac (*.mac)|*.asm|Library (*.lib)|*.asm|All Files (*.*)|*.*";
inline constexpr const char* SaveFile =
    "Text (*.txt)|*.txt|Listing (*.ls)|*.ls|Motorola S-record (*.mx)|*.mx|Intel Hex Record "
    "(*.hex)|*.hex|Binary (*.bin)|*.bin|All Files (*.*)|*.*";

// Turns the classic form into name filters for QFileDialog, one per caption,
// in their order. A caption keeps its own wording and the patterns that
// really apply follow it in parentheses, so "Mac (*.mac)" still lists
// *.asm files; shown with QFileDialog::HideNameFilterDetails the user sees
// the caption alone. "*.*" becomes "*", since a file name without a dot is
// still a file here.
QStringList ToNameFilters(const QString& classic);

// The entry of `filters` whose caption is `caption`, or an empty string.
QString NameFilterFor(const QStringList& filters, const QString& caption);

} // namespace trident::FileFilters
