#include "frontend/SourceView.h"

#include <QFile>
#include <QPainter>
#include <QTextBlock>

namespace trident {
namespace {

// The strip left of the text that the view paints its line numbers into.
class LineNumberMargin : public QWidget {
  public:
    explicit LineNumberMargin(SourceView* view) : QWidget(view), pView(view) {
        setObjectName(QStringLiteral("lineNumbers"));
    }
    QSize sizeHint() const override { return {pView->MarginWidth(), 0}; }

  protected:
    void paintEvent(QPaintEvent* event) override { pView->PaintMargin(event); }

  private:
    SourceView* pView;
};

} // namespace

SourceView::SourceView(QWidget* parent)
    : QPlainTextEdit(parent), pMargin(new LineNumberMargin(this)) {
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setUndoRedoEnabled(false);
    connect(this, &QPlainTextEdit::blockCountChanged, this,
            [this] { setViewportMargins(MarginWidth(), 0, 0, 0); });
    connect(this, &QPlainTextEdit::updateRequest, this, &SourceView::UpdateMargin);
    setViewportMargins(MarginWidth(), 0, 0, 0);
}

bool SourceView::ShowFile(const QString& path) {
    QFile file(path);
    const bool readable = file.open(QIODevice::ReadOnly);
    pFile = readable ? path : QString();
    setPlainText(readable ? QString::fromLatin1(file.readAll()) : QString());
    return readable;
}

void SourceView::GoToLine(int line) {
    const QTextBlock block = document()->findBlockByNumber(line - 1);
    if (!block.isValid()) return;
    // Selected from its end back to its start, so that the view scrolls to
    // the line's beginning rather than to its comment.
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::EndOfBlock);
    cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    centerCursor();
}

int SourceView::MarginWidth() const {
    int digits = 1;
    for (int lines = qMax(1, blockCount()); lines >= 10; lines /= 10) ++digits;
    return 8 + fontMetrics().horizontalAdvance(QLatin1Char('9')) * qMax(3, digits);
}

void SourceView::PaintMargin(QPaintEvent* event) {
    QPainter painter(pMargin);
    painter.fillRect(event->rect(), palette().color(QPalette::AlternateBase));
    painter.setFont(font());
    const int current = textCursor().blockNumber();
    QTextBlock block = firstVisibleBlock();
    int top = qRound(blockBoundingGeometry(block).translated(contentOffset()).top());
    while (block.isValid() && top <= event->rect().bottom()) {
        const int height = qRound(blockBoundingRect(block).height());
        if (block.isVisible() && top + height >= event->rect().top()) {
            painter.setPen(block.blockNumber() == current
                               ? palette().color(QPalette::Text)
                               : palette().color(QPalette::PlaceholderText));
            painter.drawText(0, top, pMargin->width() - 4, height, Qt::AlignRight,
                             QString::number(block.blockNumber() + 1));
        }
        top += height;
        block = block.next();
    }
}

void SourceView::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    const QRect area = contentsRect();
    pMargin->setGeometry(area.left(), area.top(), MarginWidth(), area.height());
}

void SourceView::UpdateMargin(const QRect& rect, int dy) {
    if (dy != 0)
        pMargin->scroll(0, dy);
    else
        pMargin->update(0, rect.y(), pMargin->width(), rect.height());
}

} // namespace trident
