#include "grid/row_drag.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <chrono>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds betweenScrolls(80);
constexpr int lineHeight = 2;

bool isEscape(const QEvent& event) {
    const bool isKey = event.type() == QEvent::KeyPress || event.type() == QEvent::ShortcutOverride;
    return isKey && static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

}  // namespace

RowDrag::RowDrag(GridView& view)
    : QObject(&view), view_(view), line_(*new QFrame(view.viewport())) {
    line_.setObjectName(u"dropLine"_s);
    line_.setAttribute(Qt::WA_TransparentForMouseEvents);
    line_.setAutoFillBackground(true);
    line_.setBackgroundRole(QPalette::Text);
    line_.hide();
    view_.installEventFilter(this);
    view_.viewport()->installEventFilter(this);
    connect(&scrolling_, &QTimer::timeout, this, &RowDrag::scrollAtEdge);
    // What is drawn may be another row then.
    connect(view_.model(), &QAbstractItemModel::modelAboutToBeReset, this, &RowDrag::end);
    connect(view_.model(), &QAbstractItemModel::layoutAboutToBeChanged, this, &RowDrag::end);
}

bool RowDrag::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &view_) {
        return isDrawing() && isEscape(*event) && takeEscape(*event);
    }
    if (event->type() == QEvent::MouseButtonPress) {
        const auto* mouse = static_cast<const QMouseEvent*>(event);
        end();
        if (mouse->button() == Qt::LeftButton && mouse->modifiers() == Qt::NoModifier) {
            press(mouse->position().toPoint());
        }
    } else if (event->type() == QEvent::MouseMove) {
        const auto* mouse = static_cast<const QMouseEvent*>(event);
        if (pressedAt_ && mouse->buttons() & Qt::LeftButton) {
            draw(mouse->position().toPoint());
        }
    } else if (event->type() == QEvent::MouseButtonRelease && pressedAt_) {
        const bool drops = isDrawing();
        const int row = row_;
        const int before = before_;
        end();
        const int behind = row < view_.model()->rowCount() ? row + 1 : 0;
        if (drops && before != row && before != behind) {
            emit dropped(row, before);
        }
    }
    return false;
}

// It would close the window.
bool RowDrag::takeEscape(QEvent& event) {
    event.accept();
    if (event.type() == QEvent::KeyPress) {
        end();
    }
    return true;
}

void RowDrag::press(const QPoint& place) {
    const int row = view_.rowAt(place.y()) + 1;
    if (row > 0) {
        pressedAt_ = place;
        row_ = row;
    }
}

void RowDrag::draw(const QPoint& place) {
    place_ = place;
    const bool begins =
        (place - *pressedAt_).manhattanLength() >= QApplication::startDragDistance();
    if (!isDrawing() && !begins) {
        return;
    }
    if (!isDrawing()) {
        view_.viewport()->setCursor(Qt::ClosedHandCursor);
        scrolling_.start(betweenScrolls);
    }
    showPlace();
}

// Over the lower half of a row it goes behind that.
void RowDrag::showPlace() {
    const int rows = view_.model()->rowCount();
    const int over = view_.rowAt(place_.y());
    const bool below =
        over >= 0 && place_.y() > view_.rowViewportPosition(over) + view_.rowHeight(over) / 2;
    const int next = over < 0 ? (place_.y() < 0 ? view_.rowAt(0) : rows) : over + (below ? 1 : 0);
    before_ = next < rows ? next + 1 : 0;
    const int y = next < rows ? view_.rowViewportPosition(next)
                              : view_.rowViewportPosition(rows - 1) + view_.rowHeight(rows - 1);
    line_.setGeometry(0, y - lineHeight / 2, view_.viewport()->width(), lineHeight);
    line_.show();
    line_.raise();
}

void RowDrag::scrollAtEdge() {
    const int edge = view_.rowHeight(0);
    QScrollBar& bar = *view_.verticalScrollBar();
    const int height = view_.viewport()->height();
    const int step = place_.y() < edge ? -1 : place_.y() > height - edge ? 1 : 0;
    if (step != 0) {
        bar.setValue(bar.value() + step);
        showPlace();
    }
}

void RowDrag::end() {
    pressedAt_.reset();
    scrolling_.stop();
    line_.hide();
    view_.viewport()->unsetCursor();
}

}  // namespace guanchao
