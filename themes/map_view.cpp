#include "themes/map_view.h"

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

#include "formats/initials.h"
#include "grid/heat_colour.h"
#include "services/stock_code.h"
#include "themes/told_map.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int paddingOfHint = 3;

}  // namespace

MapView::MapView(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    tellBoxesOfMaps();
}

void MapView::showBoxes(const QList<MapBox>& boxes, const Kind& kind) {
    const QString key = chosen_ < 0 ? QString() : boxes_[chosen_].key;
    boxes_ = boxes;
    kind_ = kind;
    setHint(hint_);
    pointed_ = -1;
    const auto same = std::ranges::find(boxes_, key, &MapBox::key);
    const bool isThere = !key.isEmpty() && same != boxes_.end();
    layOut();
    chosen_ = isThere ? same - boxes_.begin() : end(true);
    if (!isThere) {
        tellChosen();
    }
}

void MapView::setArea(MapArea area) {
    if (area_ != area) {
        area_ = area;
        layOut();
        emit areaChanged(area);
    }
}

void MapView::setHint(const QString& hint) {
    hint_ = hint;
    setAccessibleDescription(boxes_.isEmpty() ? hint : QString());
    update();
}

QVariantMap MapView::kept() const {
    return {{u"area"_s, static_cast<int>(area_)}};
}

void MapView::showKept(const QVariantMap& kept) {
    const int area = kept.value(u"area"_s).toInt();
    if (area >= 0 && area <= static_cast<int>(MapArea::attention)) {
        setArea(static_cast<MapArea>(area));
    }
}

void MapView::layOut() {
    QList<double> areas;
    for (const MapBox& it : std::as_const(boxes_)) {
        areas << it.area(area_);
    }
    places_ = inPixels(treemapOf(areas, rect()));
    names_.layOut(boxes_, places_, font());
    update();
}

void MapView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    for (qsizetype at = 0; at < boxes_.size(); ++at) {
        paintBox(painter, at);
    }
    names_.paint(painter);
    if (pointed_ >= 0) {
        paintFrame(painter, pointed_, 1);
    }
    if (chosen_ >= 0) {
        paintFrame(painter, chosen_, hasFocus() ? 3 : 2);
    }
    if (boxes_.isEmpty()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.setFont(font());
        painter.drawText(
            rect().adjusted(paddingOfHint, paddingOfHint, -paddingOfHint, -paddingOfHint),
            Qt::AlignCenter | Qt::TextWordWrap, hint_);
        if (hasFocus()) {
            painter.setPen(palette().color(QPalette::Highlight));
            painter.drawRect(rect().adjusted(0, 0, -1, -1));
        }
    }
}

// A line of the ground divides it from the next ones.
void MapView::paintBox(QPainter& painter, qsizetype box) const {
    const QRect inner = places_[box].adjusted(0, 0, -1, -1);
    if (!inner.isEmpty()) {
        painter.fillRect(inner, QColor::fromRgb(heatColour(boxes_[box].gain, kind_.fullGain)));
    }
}

void MapView::paintFrame(QPainter& painter, qsizetype box, int width) const {
    const QRect place = places_[box];
    if (place.isEmpty()) {
        return;
    }
    QPen pen(QColor::fromRgb(themeColour), width);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    const int inset = width / 2;
    painter.drawRect(place.adjusted(inset, inset, -1 - inset, -1 - inset));
}

qsizetype MapView::boxAt(const QPoint& point) const {
    const auto found =
        std::ranges::find_if(places_, [&](const QRect& it) { return it.contains(point); });
    return found == places_.end() ? -1 : found - places_.begin();
}

void MapView::choose(qsizetype box) {
    chosen_ = box;
    update();
    tellChosen();
    emit boxChosen();
}

void MapView::chooseKey(const QString& key) {
    const auto found = std::ranges::find(boxes_, key, &MapBox::key);
    if (found != boxes_.end()) {
        choose(found - boxes_.begin());
    }
}

void MapView::open(qsizetype box) {
    choose(box);
    emit boxOpened();
}

void MapView::tellChosen() {
    if (hasFocus() && chosen_ >= 0) {
        QAccessibleEvent told(this, QAccessible::Focus);
        told.setChild(static_cast<int>(chosen_));
        QAccessible::updateAccessibility(&told);
    }
}

bool MapView::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<const QHelpEvent*>(event);
        const qsizetype box = boxAt(help->pos());
        if (box >= 0) {
            QToolTip::showText(help->globalPos(), boxes_[box].name + u'\n' + wordsOf(box), this,
                               places_[box]);
        }
        return true;
    }
    return QWidget::event(event);
}

void MapView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layOut();
}

void MapView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        layOut();
    }
}

void MapView::mousePressEvent(QMouseEvent* event) {
    const qsizetype box = boxAt(event->position().toPoint());
    if (box >= 0) {
        choose(box);
    }
}

void MapView::mouseMoveEvent(QMouseEvent* event) {
    const qsizetype box = boxAt(event->position().toPoint());
    if (box != pointed_) {
        pointed_ = box;
        update();
    }
}

void MapView::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    pointed_ = -1;
    update();
}

void MapView::mouseDoubleClickEvent(QMouseEvent* event) {
    const qsizetype box = boxAt(event->position().toPoint());
    if (box >= 0 && event->button() == Qt::LeftButton) {
        open(box);
    }
}

// Of those that are drawn; -1 if none is.
qsizetype MapView::end(bool greatest) const {
    qsizetype end = -1;
    for (qsizetype at = 0; at < boxes_.size(); ++at) {
        const double area = boxes_[at].area(area_);
        const bool further = end < 0 || (greatest ? area > boxes_[end].area(area_)
                                                  : area <= boxes_[end].area(area_));
        if (!places_[at].isEmpty() && further) {
            end = at;
        }
    }
    return end;
}

// False if the key is none of those that lead to another box.
bool MapView::step(int key) {
    static const QHash<int, MapWay> ways = {{Qt::Key_Left, MapWay::left},
                                            {Qt::Key_Right, MapWay::right},
                                            {Qt::Key_Up, MapWay::up},
                                            {Qt::Key_Down, MapWay::down}};
    const bool isWay = ways.contains(key);
    if (!isWay && key != Qt::Key_Home && key != Qt::Key_End) {
        return false;
    }
    const bool isDrawn = chosen_ >= 0 && !places_[chosen_].isEmpty();
    const qsizetype next =
        isWay && isDrawn ? neighbourOf(places_, chosen_, ways.value(key)) : end(key != Qt::Key_End);
    if (next >= 0) {
        choose(next);
    }
    return true;
}

void MapView::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (isEnter && chosen_ >= 0) {
        open(chosen_);
    } else if (key == Qt::Key_Backspace) {
        emit goesBack();
    } else if (!event->text().isEmpty() && event->text().front().isPrint() &&
               !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        find(event->text());
    } else if (!step(key)) {
        QWidget::keyPressEvent(event);
    }
}

void MapView::inputMethodEvent(QInputMethodEvent* event) {
    if (!event->commitString().isEmpty()) {
        find(event->commitString());
    }
}

// What is typed without a pause is one beginning; the same letter again goes on to the next box.
void MapView::find(const QString& typed) {
    const bool goesOn =
        sinceTyped_.isValid() && sinceTyped_.elapsed() < QApplication::keyboardInputInterval();
    sinceTyped_.start();
    const bool again = goesOn && typed_ == typed;
    typed_ = goesOn && !again ? typed_ + typed : typed;
    static const Initials initials(commonExceptions());
    const qsizetype count = boxes_.size();
    const qsizetype first = chosen_ < 0 ? 0 : chosen_ + (goesOn && !again ? 0 : 1);
    for (qsizetype step = 0; step < count; ++step) {
        const qsizetype box = (first + step) % count;
        const QString& name = boxes_[box].name;
        if (!places_[box].isEmpty() &&
            (name.startsWith(typed_, Qt::CaseInsensitive) ||
             boxes_[box].key.right(codeDigits).startsWith(typed_) ||
             initials.of(name).startsWith(typed_, Qt::CaseInsensitive))) {
            choose(box);
            return;
        }
    }
}

void MapView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    if (chosen_ >= 0 && (byKey || places_[chosen_].contains(event->pos()))) {
        emit menuAsked(byKey ? mapToGlobal(places_[chosen_].center()) : event->globalPos());
    }
}

void MapView::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
    tellChosen();
}

}  // namespace guanchao
