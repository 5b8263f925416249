#include "frame/day_line_chart.h"

#include <QPainter>
#include <QTime>
#include <algorithm>
#include <cmath>

#include "base/short_amounts.h"
#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int minutesPerHour = 60;
constexpr int rowsOfPrices = 4;           // two on each side of the former close
constexpr QRgb priceColour = 0xFFFFFFFF;  // on a dark ground
constexpr QRgb meanColour = 0xFFFFD24D;

QString timeWords(int minuteOfDay) {
    return QTime(minuteOfDay / minutesPerHour, minuteOfDay % minutesPerHour).toString(u"HH:mm"_s);
}

}  // namespace

DayLineChart::DayLineChart(QWidget* parent) : PriceChart(parent) {
    setAccessibleName(u"自绘分时图"_s);
}

void DayLineChart::showLine(const DayLine& line) {
    const bool goesOn = line.day == line_.day && line.points.size() >= line_.points.size() &&
                        line.formerClose == line_.formerClose;
    line_ = line;
    if (goesOn) {
        showChosenAgain();
    } else {
        forgetChosen();
    }
}

double DayLineChart::gainOf(double price) const {
    return line_.formerClose > 0 ? 100 * (price / line_.formerClose - 1) : 0;
}

QColor DayLineChart::colourOfGain(double gain) const {
    return gain == 0 ? QColor() : riseOrFall(gain > 0);
}

QList<PriceChart::Figure> DayLineChart::figuresOf(qsizetype point) const {
    const DayPoint& it = line_.points[point];
    const double gain = gainOf(it.price);
    const std::optional<double> mean = meanPrice(it);
    return {{dateText(line_.day) + u' ' + timeWords(it.minute)},
            {u"价 "_s + twoDecimals(it.price), colourOfGain(gain)},
            {u"涨幅 "_s + gainWords(gain), colourOfGain(gain)},
            {u"均价 "_s + (mean ? twoDecimals(*mean) : u"--"_s), lineColour(QColor(meanColour))},
            {u"昨收 "_s + twoDecimals(line_.formerClose)},
            {u"量 "_s + amountWords(it.volume)},
            {u"额 "_s + amountWords(it.turnover)}};
}

qreal DayLineChart::xOfMinute(int minute) const {
    const QRectF area = priceArea();
    return area.left() + area.width() * minute / lastTradingMinute;
}

qreal DayLineChart::xOf(qsizetype point) const {
    return xOfMinute(tradingMinute(line_.points[point].minute));
}

qsizetype DayLineChart::pointAt(qreal x) const {
    qsizetype nearest = 0;
    for (qsizetype point = 1; point < points(); ++point) {
        if (std::abs(xOf(point) - x) < std::abs(xOf(nearest) - x)) {
            nearest = point;
        }
    }
    return nearest;
}

PriceChart::PriceScale DayLineChart::scale() const {
    return {pricesOf(line_), priceArea()};
}

QString DayLineChart::priceWords(double price) const {
    return twoDecimals(price) + u' ' + gainWords(gainOf(price));
}

QString DayLineChart::widestPrice() const {
    return twoDecimals(line_.formerClose * 1.1) + u" +88.88%"_s;
}

void DayLineChart::paintPlot(QPainter& painter) {
    const PriceScale prices = scale();
    QList<double> rows;
    for (int row = 0; row <= rowsOfPrices; ++row) {
        rows << prices.range.low + (prices.range.high - prices.range.low) * row / rowsOfPrices;
    }
    paintPriceLines(painter, rows);
    paintHours(painter);
    paintVolumes(painter);
    paintLines(painter, prices);
}

void DayLineChart::paintHours(QPainter& painter) const {
    const struct {
        int minute;
        QString words;
    } hours[] = {{0, u"09:30"_s},
                 {60, u"10:30"_s},
                 {120, u"11:30/13:00"_s},
                 {180, u"14:00"_s},
                 {240, u"15:00"_s}};
    const QRectF area = priceArea().united(volumeArea());
    for (const auto& it : hours) {
        const qreal x = xOfMinute(it.minute);
        painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DotLine));
        painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
        paintBottomWords(painter, x, it.words);
    }
}

// Each price is a dot too: one price makes no line.
void DayLineChart::paintLines(QPainter& painter, const PriceScale& prices) const {
    painter.setPen(palette().color(QPalette::Text));
    const qreal middle = prices.y(line_.formerClose);
    painter.drawLine(QPointF(prices.area.left(), middle), QPointF(prices.area.right(), middle));
    QPolygonF line;
    QPolygonF means;
    for (qsizetype point = 0; point < points(); ++point) {
        line << QPointF(xOf(point), prices.y(priceOf(point)));
        if (const std::optional<double> mean = meanPrice(line_.points[point])) {
            means << QPointF(xOf(point), prices.y(*mean));
        }
    }
    painter.save();
    painter.setClipRect(prices.area.adjusted(-3, -3, 3, 3));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(lineColour(QColor(meanColour)), 1));
    painter.drawPolyline(means);
    const QColor colour = lineColour(QColor(priceColour));
    painter.setPen(QPen(colour, 1.5));
    painter.drawPolyline(line);
    painter.setPen(QPen(colour, 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawPoints(line);
    painter.restore();
}

void DayLineChart::paintVolumes(QPainter& painter) const {
    const QRectF area = volumeArea();
    QList<double> volumes;
    for (qsizetype point = 0; point < points(); ++point) {
        volumes << volumePerMinute(line_, point);
    }
    const double most = std::max(1.0, *std::ranges::max_element(volumes));
    const qreal width = std::max(std::floor(area.width() / lastTradingMinute * 0.7), 1.0);
    for (qsizetype point = 0; point < points(); ++point) {
        const double before = point > 0 ? priceOf(point - 1) : line_.formerClose;
        const qreal height = volumes[point] / most * area.height();
        painter.fillRect(QRectF(xOf(point) - width / 2, area.bottom() - height, width, height),
                         riseOrFall(priceOf(point) >= before));
    }
    paintMostVolume(painter, most);
}

}  // namespace guanchao
