#include "grid/find_line.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QToolButton>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

bool searches(const QKeyEvent& key) {
    return key.key() == Qt::Key_F3 || key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

}  // namespace

FindLine::FindLine(QTableView& view, const ColumnChoice& columns)
    : QFrame(&view),
      view_(view),
      columns_(columns),
      text_(new QLineEdit(this)),
      answer_(new QLabel(this)) {
    setObjectName(u"findLine"_s);
    setAutoFillBackground(true);
    setAttribute(Qt::WA_NoMousePropagation);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(4, 2, 4, 2);
    row->addWidget(text_);
    text_->setAccessibleName(u"在表中查找"_s);
    text_->setPlaceholderText(u"在表中查找"_s);
    text_->setMaximumWidth(260);
    connect(text_, &QLineEdit::textEdited, this, &FindLine::findTyped);
    addButton(Qt::UpArrow, u"上一个"_s, u"Shift+F3"_s, SearchWay::backward);
    addButton(Qt::DownArrow, u"下一个"_s, u"F3"_s, SearchWay::forward);
    auto* close = new QToolButton(this);
    close->setText(u"关闭"_s);
    close->setToolTip(u"关闭查找（Esc）"_s);
    connect(close, &QToolButton::clicked, this, &FindLine::leave);
    row->addWidget(close);
    row->addWidget(answer_, 1);
    hide();
}

void FindLine::addButton(Qt::ArrowType arrow, const QString& name, const QString& key,
                         SearchWay way) {
    auto* button = new QToolButton(this);
    button->setArrowType(arrow);
    button->setAccessibleName(name);
    button->setToolTip(name + u'（' + key + u'）');
    connect(button, &QToolButton::clicked, this, [this, way] { find(way); });
    layout()->addWidget(button);
}

void FindLine::open() {
    answer_->clear();
    show();
    raise();
    // It stands, so that the view needn't lay itself out as the last rows come up.
    view_.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    const QModelIndex current = view_.currentIndex();
    const bool inSight = view_.viewport()->rect().intersects(view_.visualRect(current));
    scrollBy(QTableView::ScrollPerPixel);
    if (inSight) {
        uncover(current);
    }
    text_->setFocus();
    text_->selectAll();
}

void FindLine::leave() {
    hide();
    scrollBy(QTableView::ScrollPerItem);
    view_.setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    view_.setFocus();
}

// By whole rows the last one would go back to the lower edge. The rows in sight stay.
void FindLine::scrollBy(QTableView::ScrollMode mode) {
    if (view_.verticalScrollMode() != mode) {
        const int first = view_.rowAt(0);
        const bool byPixels = mode == QTableView::ScrollPerPixel;
        view_.setVerticalScrollMode(mode);
        view_.verticalScrollBar()->setValue(
            byPixels ? first * view_.verticalHeader()->defaultSectionSize() : first);
    }
}

CellPlace FindLine::current() const {
    const QModelIndex index = view_.currentIndex();
    return index.isValid() ? CellPlace{index.row() + 1, index.column()} : CellPlace();
}

void FindLine::find(SearchWay way) {
    if (!isOpen() || text_->text().isEmpty()) {
        open();
        return;
    }
    const CellPlace from = current();
    const std::optional<CellPlace> next =
        grid() ? findCell(*grid(), columns_.shown(*grid()), text_->text(), from, way)
               : std::nullopt;
    if (!next) {
        answer_->setText(u"没有找到"_s);
    } else if (way == SearchWay::forward) {
        answer_->setText(next->row < from.row ? u"已到结尾，从开头接着找"_s : QString());
    } else {
        answer_->setText(next->row > from.row ? u"已到开头，从结尾接着找"_s : QString());
    }
    if (next) {
        emit found(*next);
    }
}

// The cell that is found stays so where it holds the longer text too.
void FindLine::findTyped() {
    answer_->clear();
    if (text_->text().isEmpty()) {
        return;
    }
    const CellPlace at = current();
    const bool holds =
        grid() && at.row > 0 &&
        grid()->textMatrix(at.row, at.col).contains(text_->text(), Qt::CaseInsensitive);
    if (holds) {
        emit found(at);
    } else {
        find(SearchWay::forward);
    }
}

void FindLine::place(int top) {
    if (!isOpen()) {
        return;
    }
    const QRect room = view_.viewport()->geometry();
    const int height = sizeHint().height();
    setGeometry(room.left(), room.bottom() + 1 - height, room.width(), height);
    QScrollBar& bar = *view_.verticalScrollBar();
    bar.setMaximum(std::max(view_.verticalHeader()->length() + height - room.height(), 0));
    bar.setValue(top);
}

void FindLine::uncover(const QModelIndex& index) {
    const int covered =
        view_.visualRect(index).bottom() + 1 + height() - view_.viewport()->height();
    if (isOpen() && covered > 0) {
        QScrollBar& bar = *view_.verticalScrollBar();
        bar.setValue(bar.value() + covered);
    }
}

// Its window may have a meaning of its own for these.
bool FindLine::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (key.key() == Qt::Key_Escape || searches(key)) {
            event->accept();
            return true;
        }
    }
    return QFrame::event(event);
}

void FindLine::keyPressEvent(QKeyEvent* event) {
    event->accept();
    if (event->key() == Qt::Key_Escape) {
        leave();
    } else if (searches(*event)) {
        find(event->modifiers() & Qt::ShiftModifier ? SearchWay::backward : SearchWay::forward);
    }
}

}  // namespace guanchao
