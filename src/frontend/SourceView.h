#pragma once

#include <QPlainTextEdit>
#include <QString>

class QPaintEvent;
class QResizeEvent;

namespace trident {

// A source file as the assembler reads it, read-only, with the line numbers
// the diagnostics name in a margin on the left.
class SourceView : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit SourceView(QWidget* parent = nullptr);

    // Shows `path` (its bytes one character each, as the listing shows
    // them); false, and an empty view, when it cannot be read.
    bool ShowFile(const QString& path);
    // The file shown, as ShowFile was given it; empty when none is.
    const QString& File() const { return pFile; }
    // Selects line `line` (counted from 1) and scrolls it into the middle.
    void GoToLine(int line);
    int CurrentLine() const { return textCursor().blockNumber() + 1; }

    // The margin's needs, served to its widget.
    int MarginWidth() const;
    void PaintMargin(QPaintEvent* event);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void UpdateMargin(const QRect& rect, int dy);

    QWidget* pMargin;
    QString pFile;
};

} // namespace trident
