#include "articles/article_text.h"

#include <QMimeData>
#include <algorithm>

namespace guanchao {

namespace {

constexpr int points = 13;
constexpr int charactersPerLine = 44;

// Unlike the plain text of the base class it keeps hard spaces.
QString withLineEnds(QString raw) {
    return raw.replace(QChar::ParagraphSeparator, u'\n');
}

}  // namespace

ArticleText::ArticleText(QWidget* parent) : QPlainTextEdit(parent) {
    QFont reading = font();
    reading.setPointSize(points);
    setFont(reading);
    setTabChangesFocus(true);
}

void ArticleText::setText(const QString& stored) {
    body_ = BodyText(stored);
    setPlainText(body_.shown());
}

QString ArticleText::text() const {
    return document()->isModified() ? body_.toStore(withLineEnds(document()->toRawText()))
                                    : body_.stored();
}

QMimeData* ArticleText::createMimeDataFromSelection() const {
    auto* copied = new QMimeData;
    copied->setText(body_.joined(withLineEnds(textCursor().selectedText())));
    return copied;
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
