#include "market/chart_box.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <utility>

#include "frame/told_role.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

ChartBox::ChartBox(QWidget* parent) : QFrame(parent) {
    setFrameShape(QFrame::StyledPanel);
    tellRole(*this, QAccessible::Graphic, [this] { emit clicked(); });
}

void ChartBox::showPicture(const std::optional<QByteArray>& bytes) {
    picture_ = {};
    if (bytes) {
        picture_.loadFromData(*bytes);
    }
    update();
}

void ChartBox::setLoading(bool loading) {
    isLoading_ = loading;
    update();
}

void ChartBox::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(contentsRect(), Qt::black);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!picture_.isNull()) {
        QRect place(QPoint(), picture_.size().scaled(contentsRect().size(), Qt::KeepAspectRatio));
        place.moveCenter(contentsRect().center());
        painter.drawPixmap(place, picture_);
    } else {
        painter.setPen(Qt::lightGray);  // on black, as the pictures are
        painter.drawText(contentsRect(), Qt::AlignCenter,
                         isLoading_ ? u"正在载入走势图…"_s : u"没有走势图"_s);
    }
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(contentsRect().adjusted(0, 0, -1, -1));
    }
    painter.end();
    QFrame::paintEvent(event);
}

void ChartBox::mousePressEvent(QMouseEvent* event) {
    isDown_ = event->button() == Qt::LeftButton;
    emit pressed(event->button(), event->globalPosition().toPoint());
}

void ChartBox::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    if (std::exchange(isDown_, false) && rect().contains(event->position().toPoint())) {
        emit clicked();
    }
}

// A space is a click; Enter belongs to the window's default button.
void ChartBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space) {
        emit clicked();
    } else {
        QFrame::keyPressEvent(event);
    }
}

// The menu key is a press of the right button; the mouse has had its press already.
void ChartBox::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard) {
        emit pressed(Qt::RightButton, mapToGlobal(rect().center()));
    }
}

}  // namespace guanchao
