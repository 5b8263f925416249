#include "frame/candle_chart.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTextOption>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "base/short_amounts.h"
#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double zoomStep = 1.25;
constexpr qreal bodyPart = 0.7;      // of a day's width
constexpr qreal leastBodyWidth = 2;  // narrower days are lines from high to low
constexpr qreal roomPart = 0.04;     // above and below the prices
constexpr qreal markSize = 5;

// On a dark ground, in the order of the means.
constexpr std::array<QRgb, 4> meanColours = {0xFFFFFFFF, 0xFFFFD24D, 0xFFE58CFF, 0xFF6FB3F2};

}  // namespace

CandleChart::CandleChart(QWidget* parent) : PriceChart(parent) {
    setAccessibleName(u"K线图"_s);
}

void CandleChart::showBars(const QList<Candle>& bars) {
    bars_ = bars;
    held_.reset();
    marks_.clear();
    sight_.setTotal(bars.size());
    adjust();
    forgetChosen();
}

void CandleChart::showLast(qsizetype days) {
    sight_.showLast(days);
    update();
}

void CandleChart::setAdjustment(Adjustment adjustment) {
    adjustment_ = adjustment;
    adjust();
    showChosenAgain();
}

void CandleChart::adjust() {
    days_ = adjusted(bars_, adjustment_);
    for (size_t mean = 0; mean < means_.size(); ++mean) {
        means_[mean] = meanCloses(days_, meanLengths[mean]);
    }
    update();
}

void CandleChart::mark(QDate day, TradeMark kind) {
    marks_.insert(day, kind);
    update();
}

qsizetype CandleChart::indexOf(QDate day) const {
    return std::ranges::lower_bound(days_, day, {}, &Candle::day) - days_.begin();
}

void CandleChart::showDay(QDate day) {
    if (days_.isEmpty()) {
        return;
    }
    const qsizetype at = std::min(indexOf(day), days_.size() - 1);
    sight_.moveTo(at - sight_.count() / 2);
    choose(at);
}

void CandleChart::choose(qsizetype day) {
    if (day >= 0 && day < days_.size()) {
        sight_.bringIntoSight(day);
    }
    PriceChart::choose(day);
}

QList<PriceChart::Figure> CandleChart::figuresOf(qsizetype day) const {
    const Candle& it = days_[day];
    const std::optional<double> gain = gainOf(days_, day);
    const QColor colour = gain && *gain != 0 ? riseOrFall(*gain > 0) : QColor();
    QList<Figure> figures = {{dateText(it.day)},
                             {u"开 "_s + twoDecimals(it.open)},
                             {u"高 "_s + twoDecimals(it.high)},
                             {u"低 "_s + twoDecimals(it.low)},
                             {u"收 "_s + twoDecimals(it.close), colour},
                             {u"涨幅 "_s + (gain ? gainWords(*gain) : u"--"_s), colour},
                             {u"量 "_s + amountWords(it.volume)}};
    if (it.turnover) {
        figures << Figure{u"额 "_s + amountWords(*it.turnover)};
    }
    for (size_t mean = 0; mean < means_.size(); ++mean) {
        const double value = means_[mean][day];
        figures << Figure{
            u"MA%1 "_s.arg(meanLengths[mean]) + (std::isnan(value) ? u"--"_s : twoDecimals(value)),
            lineColour(QColor(meanColours[mean]))};
    }
    return figures;
}

qreal CandleChart::slot() const {
    return priceArea().width() / static_cast<qreal>(std::max<qsizetype>(sight_.count(), 1));
}

qreal CandleChart::xOf(qsizetype day) const {
    return priceArea().left() + (static_cast<qreal>(day - sight_.first()) + 0.5) * slot();
}

qsizetype CandleChart::pointAt(qreal x) const {
    return sight_.dayAt(partOf(x));
}

double CandleChart::partOf(qreal x) const {
    const QRectF area = priceArea();
    return std::clamp((x - area.left()) / area.width(), 0.0, 1.0);
}

PriceChart::PriceScale CandleChart::scale() const {
    PriceRange range = pricesOf(days_, sight_);
    const double room = std::max((range.high - range.low) * roomPart, range.high * 0.001);
    return {{range.low - room, range.high + room}, priceArea()};
}

QString CandleChart::widestPrice() const {
    const auto highest = std::ranges::max_element(days_, {}, &Candle::high);
    return twoDecimals(highest == days_.end() ? 0 : highest->high);
}

bool CandleChart::rises(qsizetype day) const {
    const Candle& it = days_[day];
    return it.close == it.open ? gainOf(days_, day).value_or(0) >= 0 : it.close > it.open;
}

void CandleChart::paintPlot(QPainter& painter) {
    const PriceScale prices = scale();
    paintPriceLines(painter, roundValues(prices.range));
    paintDays(painter);
    paintVolumes(painter);
    paintCandles(painter, prices);
    paintMeans(painter, prices);
    paintMarks(painter, prices);
}

// The months, as far as there is room for their words.
void CandleChart::paintDays(QPainter& painter) const {
    const qreal room = QFontMetricsF(font()).horizontalAdvance(u"2026-11"_s) * 1.5;
    const QRectF area = priceArea().united(volumeArea());
    qreal last = area.left() - room;
    for (qsizetype at = std::max<qsizetype>(sight_.first(), 1);
         at < sight_.first() + sight_.count(); ++at) {
        const QDate day = days_[at].day;
        const qreal x = xOf(at);
        if (day.month() != days_[at - 1].day.month() && x - last >= room) {
            painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DotLine));
            painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
            paintBottomWords(painter, x, day.toString(u"yyyy-MM"_s));
            last = x;
        }
    }
}

// A rising day is hollow, so that colours are not all that tells it.
void CandleChart::paintCandles(QPainter& painter, const PriceScale& prices) const {
    const qreal width = slot() * bodyPart;
    const bool hasBodies = width >= leastBodyWidth;
    std::array<QList<QLineF>, 2> wicks;
    std::array<QList<QRectF>, 2> bodies;
    for (qsizetype at = sight_.first(); at < sight_.first() + sight_.count(); ++at) {
        const Candle& day = days_[at];
        const qreal x = std::round(xOf(at));
        const size_t kind = rises(at) ? 1 : 0;
        const qreal high = prices.y(day.high), low = prices.y(day.low);
        if (!hasBodies) {
            wicks[kind] << QLineF(x, high, x, std::max(low, high + 1));
            continue;
        }
        const qreal top = prices.y(std::max(day.open, day.close));
        const qreal bottom = prices.y(std::min(day.open, day.close));
        wicks[kind] << QLineF(x, high, x, top) << QLineF(x, bottom, x, low);
        bodies[kind] << QRectF(x - std::floor(width / 2), top, std::floor(width),
                               std::max(bottom - top, 1.0));
    }
    for (const size_t kind : {0, 1}) {
        const QColor colour = riseOrFall(kind == 1);
        painter.setPen(colour);
        painter.setBrush(kind == 1 ? palette().base() : QBrush(colour));
        painter.drawLines(wicks[kind]);
        painter.drawRects(bodies[kind]);
    }
}

void CandleChart::paintVolumes(QPainter& painter) const {
    const QRectF area = volumeArea();
    double most = 1;
    for (qsizetype at = sight_.first(); at < sight_.first() + sight_.count(); ++at) {
        most = std::max(most, days_[at].volume);
    }
    const qreal width = std::max(std::floor(slot() * bodyPart), 1.0);
    for (const bool rising : {false, true}) {
        QList<QRectF> bars;
        for (qsizetype at = sight_.first(); at < sight_.first() + sight_.count(); ++at) {
            const qreal height = days_[at].volume / most * area.height();
            if (rises(at) == rising) {
                bars << QRectF(std::round(xOf(at)) - std::floor(width / 2), area.bottom() - height,
                               width, height);
            }
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(riseOrFall(rising));
        painter.drawRects(bars);
    }
    paintMostVolume(painter, most);
}

void CandleChart::paintMeans(QPainter& painter, const PriceScale& prices) const {
    painter.save();
    painter.setClipRect(prices.area);
    painter.setRenderHint(QPainter::Antialiasing, slot() >= leastBodyWidth);
    for (size_t mean = 0; mean < means_.size(); ++mean) {
        QPolygonF line;
        for (qsizetype at = sight_.first(); at < sight_.first() + sight_.count(); ++at) {
            if (!std::isnan(means_[mean][at])) {
                line << QPointF(xOf(at), prices.y(means_[mean][at]));
            }
        }
        painter.setPen(QPen(lineColour(QColor(meanColours[mean])), 1));
        painter.drawPolyline(line);
    }
    painter.restore();
}

void CandleChart::paintMarks(QPainter& painter, const PriceScale& prices) const {
    painter.setPen(palette().color(QPalette::Text));
    for (auto it = marks_.cbegin(); it != marks_.cend(); ++it) {
        const qsizetype at = indexOf(it.key());
        if (at < sight_.first() || at >= sight_.first() + sight_.count() ||
            days_[at].day != it.key()) {
            continue;
        }
        const bool buys = it.value() == TradeMark::buy;
        const qreal x = xOf(at);
        const qreal y = prices.y(buys ? days_[at].low : days_[at].high);
        const qreal away = buys ? markSize : -markSize;
        painter.setBrush(riseOrFall(buys));
        painter.drawPolygon(QPolygonF(
            {{x, y + away / 2}, {x - markSize, y + 2 * away}, {x + markSize, y + 2 * away}}));
        const QRectF words(x - 20, buys ? y + 2 * away : y + 2 * away - 20, 40, 20);
        painter.drawText(words, buys ? u"买"_s : u"卖"_s,
                         QTextOption(Qt::AlignHCenter | (buys ? Qt::AlignTop : Qt::AlignBottom)));
    }
}

void CandleChart::zoom(double factor, double part) {
    sight_.zoom(factor, part);
    update();
}

void CandleChart::wheelEvent(QWheelEvent* event) {
    const double steps = event->angleDelta().y() / double(QWheelEvent::DefaultDeltasPerStep);
    if (steps != 0 && points() > 0) {
        zoom(std::pow(zoomStep, -steps), partOf(event->position().x()));
    }
    event->accept();
}

void CandleChart::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && points() > 0) {
        held_ = pointAt(event->position().x());
    }
}

void CandleChart::mouseMoveEvent(QMouseEvent* event) {
    if (held_) {
        sight_.bringTo(*held_, partOf(event->position().x()));
    }
    PriceChart::mouseMoveEvent(event);
}

void CandleChart::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        held_.reset();
    }
}

// About the cross-hair, or else the last day in sight.
void CandleChart::keyPressEvent(QKeyEvent* event) {
    const double part = chosen() < 0 ? 1 : partOf(xOf(chosen()));
    switch (event->key()) {
        case Qt::Key_Plus:
        case Qt::Key_Equal:
        case Qt::Key_Up:
            return zoom(1 / zoomStep, part);
        case Qt::Key_Minus:
        case Qt::Key_Down:
            return zoom(zoomStep, part);
        default:
            PriceChart::keyPressEvent(event);
    }
}

}  // namespace guanchao
