#include "articles/article_text.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>
#include <algorithm>

#include "articles/body_text.h"

namespace guanchao {

namespace {

constexpr int points = 13;
constexpr int charactersPerLine = 44;

// Of a block's format, which undo and redo restore: the number of the huge paragraph from which the
// block comes, and whether it goes on with the piece before it.
constexpr int paragraphProperty = QTextFormat::UserProperty;
constexpr int continuesProperty = QTextFormat::UserProperty + 1;

// The piece before may have been deleted: the break is then a line end.
bool continuesFormer(const QTextBlock& block) {
    const QTextBlockFormat format = block.blockFormat();
    return format.boolProperty(continuesProperty) &&
           block.previous().blockFormat().intProperty(paragraphProperty) ==
               format.intProperty(paragraphProperty);
}

// Both parts of a divided block stay in their paragraph, with a line end between them.
void insertLineEnd(QTextCursor& cursor) {
    cursor.removeSelectedText();
    QTextBlockFormat format = cursor.blockFormat();
    format.clearProperty(continuesProperty);
    cursor.insertBlock(format);
}

}  // namespace

ArticleText::ArticleText(QWidget* parent) : QPlainTextEdit(parent) {
    QFont reading = font();
    reading.setPointSize(points);
    setFont(reading);
    setTabChangesFocus(true);
}

void ArticleText::setText(const QString& stored) {
    stored_ = stored;
    if (!hasHugeParagraph(stored)) {
        setPlainText(stored);
        return;
    }
    document()->setUndoRedoEnabled(false);
    clear();
    QTextCursor cursor(document());
    cursor.setBlockFormat({});
    insert(cursor, stored);
    document()->setUndoRedoEnabled(true);
    document()->setModified(false);
    moveCursor(QTextCursor::Start);
}

QString ArticleText::text() const {
    return document()->isModified()
               ? withLineEndsOf(stored_, textBetween(0, document()->characterCount() - 1))
               : stored_;
}

void ArticleText::insert(QTextCursor& cursor, const QString& text) {
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    const QStringList paragraphs = paragraphsOf(text);
    for (const QString& paragraph : paragraphs) {
        if (&paragraph != &paragraphs.first()) {
            insertLineEnd(cursor);
        }
        const QStringList pieces = piecesOf(paragraph);
        cursor.insertText(pieces.first());
        if (pieces.size() > 1) {
            QTextBlockFormat format = cursor.blockFormat();
            format.setProperty(paragraphProperty, ++splitParagraphs_);
            cursor.setBlockFormat(format);
            format.setProperty(continuesProperty, true);
            for (const QString& piece : pieces.sliced(1)) {
                cursor.insertBlock(format);
                cursor.insertText(piece);
            }
        }
    }
    cursor.endEditBlock();
}

QString ArticleText::textBetween(int start, int end) const {
    QString text;
    for (QTextBlock block = document()->findBlock(start);
         block.isValid() && block.position() <= end; block = block.next()) {
        if (block.position() > start && !continuesFormer(block)) {
            text += u'\n';
        }
        const int from = std::max(start - block.position(), 0);
        text += block.text().mid(from, end - block.position() - from);
    }
    return text;
}

QMimeData* ArticleText::createMimeDataFromSelection() const {
    auto* copied = new QMimeData;
    copied->setText(textBetween(textCursor().selectionStart(), textCursor().selectionEnd()));
    return copied;
}

void ArticleText::insertFromMimeData(const QMimeData* source) {
    if (isReadOnly() || !source->hasText()) {
        return;
    }
    QTextCursor cursor = textCursor();
    insert(cursor, source->text());
    setTextCursor(cursor);
    ensureCursorVisible();
}

// Every way to end a line ends it in the text too: the base class has a separator of its own for
// Shift+Enter.
void ArticleText::keyPressEvent(QKeyEvent* event) {
    const bool endsLine = event->matches(QKeySequence::InsertParagraphSeparator) ||
                          event->matches(QKeySequence::InsertLineSeparator);
    if (!endsLine || isReadOnly()) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    insertLineEnd(cursor);
    cursor.endEditBlock();
    setTextCursor(cursor);
    ensureCursorVisible();
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
