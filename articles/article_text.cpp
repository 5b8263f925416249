#include "articles/article_text.h"

namespace guanchao {

namespace {

constexpr int points = 13;
constexpr int charactersPerLine = 44;

}  // namespace

ArticleText::ArticleText(QWidget* parent) : QPlainTextEdit(parent) {
    QFont reading = font();
    reading.setPointSize(points);
    setFont(reading);
    setTabChangesFocus(true);
}

QString ArticleText::text() const {
    return document()->toRawText().replace(QChar::ParagraphSeparator, u'\n');
}

// The lines stand in the middle of the window, with the free space on both sides.
void ArticleText::resizeEvent(QResizeEvent* event) {
    const int line = fontMetrics().horizontalAdvance(u'文') * charactersPerLine +
                     2 * static_cast<int>(document()->documentMargin());
    const int side = std::max(0, (contentsRect().width() - line) / 2);
    setViewportMargins(side, 0, side, 0);
    QPlainTextEdit::resizeEvent(event);
}

}  // namespace guanchao
