#include "frame/price_chart.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "base/short_amounts.h"
#include "base/values.h"
#include "frame/looks.h"
#include "frame/told_role.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qreal padding = 6;
constexpr qreal volumePart = 0.24;  // of the height

}  // namespace

qreal PriceChart::PriceScale::y(double price) const {
    return area.bottom() - (price - range.low) / (range.high - range.low) * area.height();
}

double PriceChart::PriceScale::price(qreal y) const {
    return range.low + (area.bottom() - y) / area.height() * (range.high - range.low);
}

PriceChart::PriceChart(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(220, 180);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    tellRole(*this, QAccessible::Chart);
    setAccessibleDescription(u"没有数据"_s);
}

void PriceChart::setHint(const QString& hint) {
    hint_ = hint;
    tellChosen();
    update();
}

QString PriceChart::wordsOf(qsizetype point) const {
    QStringList words;
    for (const Figure& it : figuresOf(point)) {
        words << it.text;
    }
    return words.join(u' ');
}

QString PriceChart::chosenText() const {
    return chosen_ < 0 ? QString() : wordsOf(chosen_);
}

void PriceChart::choose(qsizetype point) {
    chosen_ = points() == 0 ? -1 : std::clamp<qsizetype>(point, 0, points() - 1);
    tellChosen();
    update();
}

void PriceChart::forgetChosen() {
    chosen_ = -1;
    pointerY_.reset();
    showChosenAgain();
}

void PriceChart::showChosenAgain() {
    layOut();
    tellChosen();
    update();
}

void PriceChart::tellChosen() {
    const QString empty = hint_.isEmpty() ? u"没有数据"_s : hint_;
    setAccessibleDescription(points() == 0 ? empty : wordsOf(chosen_ < 0 ? points() - 1 : chosen_));
}

QString PriceChart::priceWords(double price) const {
    return twoDecimals(price);
}

// Returns the height of their lines; without a painter it only measures.
qreal PriceChart::layFigures(const QList<Figure>& figures, QPainter* painter) const {
    const QFontMetricsF metrics(font());
    QPointF at(padding, padding / 2);
    for (const Figure& figure : figures) {
        const qreal width = metrics.horizontalAdvance(figure.text);
        if (at.x() > padding && at.x() + width > this->width() - padding) {
            at = {padding, at.y() + metrics.lineSpacing()};
        }
        if (painter) {
            painter->setPen(figure.colour.isValid() ? figure.colour
                                                    : palette().color(QPalette::Text));
            painter->drawText(at + QPointF(0, metrics.ascent()), figure.text);
        }
        at.rx() += width + metrics.horizontalAdvance(u"  "_s);
    }
    return at.y() + metrics.lineSpacing() + padding / 2;
}

// The figures get as many lines as those of the last point need.
void PriceChart::layOut() {
    const QFontMetricsF metrics(font());
    const qreal top = points() == 0 ? 0 : layFigures(figuresOf(points() - 1), nullptr);
    const qreal right = std::max(metrics.horizontalAdvance(widestPrice()),
                                 metrics.horizontalAdvance(widestShortAmount)) +
                        2 * padding;
    const qreal bottom = metrics.lineSpacing() + padding / 2;
    plotArea_ = QRectF(rect()).adjusted(padding, top + padding, -right, -bottom);
}

QRectF PriceChart::priceArea() const {
    QRectF area = plotArea_;
    area.setBottom(area.bottom() - area.height() * volumePart - padding);
    return area;
}

QRectF PriceChart::volumeArea() const {
    QRectF area = plotArea_;
    area.setTop(area.bottom() - area.height() * volumePart);
    return area;
}

QColor PriceChart::riseOrFall(bool rises) const {
    return lineColour(colourOf(shownSheet(), rises ? u"rise"_s : u"fall"_s));
}

QColor PriceChart::lineColour(const QColor& colour) const {
    return readableColour(colour, palette().color(QPalette::Base));
}

void PriceChart::paintPriceLines(QPainter& painter, const QList<double>& prices) const {
    const PriceScale here = scale();
    const QFontMetricsF metrics(font());
    for (const double price : prices) {
        const qreal y = here.y(price);
        painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DotLine));
        painter.drawLine(QPointF(here.area.left(), y), QPointF(here.area.right(), y));
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(QPointF(here.area.right() + padding, y + metrics.ascent() / 2 - 1),
                         priceWords(price));
    }
}

void PriceChart::paintMostVolume(QPainter& painter, double volume) const {
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(volumeArea().topRight() + QPointF(padding, QFontMetricsF(font()).ascent()),
                     amountWords(volume));
}

void PriceChart::paintBottomWords(QPainter& painter, qreal x, const QString& words) const {
    const QFontMetricsF metrics(font());
    const QRectF area = plotArea_;
    const qreal width = metrics.horizontalAdvance(words);
    const qreal left =
        std::clamp(x - width / 2, area.left(), std::max(area.left(), area.right() - width));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QPointF(left, area.bottom() + padding / 2 + metrics.ascent()), words);
}

void PriceChart::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    if (points() == 0) {
        paintHint(painter);
    } else {
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawRect(priceArea());
        painter.drawRect(volumeArea());
        paintPlot(painter);
        layFigures(figuresOf(chosen_ < 0 ? points() - 1 : chosen_), &painter);
        paintCross(painter);
    }
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void PriceChart::paintHint(QPainter& painter) {
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(QRectF(rect()).adjusted(padding, padding, -padding, -padding),
                     Qt::AlignCenter | Qt::TextWordWrap, hint_);
}

void PriceChart::paintCross(QPainter& painter) {
    if (chosen_ < 0) {
        return;
    }
    const PriceScale prices = scale();
    const QRectF area = plotArea_;
    const qreal x = xOf(chosen_);
    const qreal y = std::clamp(pointerY_.value_or(prices.y(priceOf(chosen_))), prices.area.top(),
                               prices.area.bottom());
    painter.setPen(QPen(palette().color(QPalette::Text), 1, Qt::DashLine));
    if (x >= area.left() && x <= area.right()) {
        painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    }
    painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
    const QFontMetricsF metrics(font());
    const QRectF label(area.right() + 1, y - metrics.lineSpacing() / 2, width() - area.right() - 2,
                       metrics.lineSpacing());
    painter.fillRect(label, palette().highlight());
    painter.setPen(palette().color(QPalette::HighlightedText));
    painter.drawText(label, Qt::AlignCenter, priceWords(prices.price(y)));
}

void PriceChart::mouseMoveEvent(QMouseEvent* event) {
    if (points() > 0) {
        pointerY_ = event->position().y();
        choose(pointAt(event->position().x()));
    }
}

void PriceChart::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    forgetChosen();
}

void PriceChart::keyPressEvent(QKeyEvent* event) {
    pointerY_.reset();
    switch (event->key()) {
        case Qt::Key_Left:
            return choose(chosen_ < 0 ? points() - 1 : chosen_ - 1);
        case Qt::Key_Right:
            return choose(chosen_ < 0 ? points() - 1 : chosen_ + 1);
        case Qt::Key_Home:
            return choose(0);
        case Qt::Key_End:
            return choose(points() - 1);
        default:
            QWidget::keyPressEvent(event);
    }
}

void PriceChart::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layOut();
}

void PriceChart::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        layOut();
    }
}

}  // namespace guanchao
