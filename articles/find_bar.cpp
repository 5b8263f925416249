#include "articles/find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

FindBar::FindBar(QWidget* parent)
    : QWidget(parent), word_(new QLineEdit(this)), answer_(new QLabel(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new QLabel(u"查找："_s, this));
    row->addWidget(word_);
    const auto addButton = [&](const QString& words, const QString& tip, auto pressed) {
        auto* button = new QToolButton(this);
        button->setText(words);
        button->setAccessibleName(words);
        button->setToolTip(tip);
        connect(button, &QToolButton::clicked, this, pressed);
        button->installEventFilter(this);
        row->addWidget(button);
    };
    addButton(u"上一个"_s, u"向上找（Shift+F3）"_s, &FindBar::findPrevious);
    addButton(u"下一个"_s, u"向下找（F3）"_s, &FindBar::findNext);
    addButton(u"关闭"_s, u"关闭查找（Esc）"_s, &FindBar::leave);
    row->addWidget(answer_, 1);
    word_->setObjectName(u"findWord"_s);
    word_->setAccessibleName(u"查找"_s);
    word_->setPlaceholderText(u"在正文中查找"_s);
    word_->setMaximumWidth(260);
    word_->installEventFilter(this);
    connect(word_, &QLineEdit::textEdited, this, &FindBar::wordChanged);
    hide();
}

void FindBar::setTextEdit(QPlainTextEdit& text) {
    text_ = &text;
    text_->installEventFilter(this);
}

void FindBar::open() {
    const QString selected = text_->textCursor().selectedText();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator)) {
        word_->setText(selected);
    }
    answer_->clear();
    show();
    word_->setFocus();
    word_->selectAll();
}

// From the start of the word found so far, so that a longer word is still found there.
void FindBar::wordChanged() {
    QTextCursor cursor = text_->textCursor();
    cursor.setPosition(cursor.selectionStart());
    text_->setTextCursor(cursor);
    answer_->clear();
    find({});
}

void FindBar::find(QTextDocument::FindFlags direction) {
    if (word_->text().isEmpty()) {
        open();
        return;
    }
    answer_->clear();
    show();
    if (text_->find(word_->text(), direction)) {
        return;
    }
    const QTextCursor place = text_->textCursor();
    const bool backward = direction.testFlag(QTextDocument::FindBackward);
    text_->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
    if (text_->find(word_->text(), direction)) {
        answer_->setText(backward ? u"已到开头，从结尾接着找"_s : u"已到结尾，从开头接着找"_s);
    } else {
        text_->setTextCursor(place);
        answer_->setText(u"没有找到"_s);
    }
}

void FindBar::leave() {
    hide();
    text_->setFocus();
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !isVisible()) {
        return QWidget::eventFilter(watched, event);
    }
    const auto* press = static_cast<QKeyEvent*>(event);
    if (press->key() == Qt::Key_Escape) {
        leave();
        return true;
    }
    const bool enter = press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter;
    if (watched == word_ && enter) {
        find(press->modifiers() & Qt::ShiftModifier ? QTextDocument::FindBackward
                                                    : QTextDocument::FindFlags());
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace guanchao
