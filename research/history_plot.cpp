#include "research/history_plot.h"

#include "grid/colours.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The lines by their position.
constexpr int themeLine = 0;
constexpr int differenceLine = 2;

QList<PlotLine> plotLines() {
    return {{u"主题累计涨幅"_s, QColor::fromRgb(themeColour)},
            {u"大盘累计涨幅"_s, QColor::fromRgb(stockColour)},
            {u"涨幅差"_s, QColor::fromRgb(riseColour)}};
}

}  // namespace

HistoryPlot::HistoryPlot(QWidget* parent) : DayPlot(plotLines(), u"%.1f%%"_s, parent) {}

void HistoryPlot::showPoints(const QList<HistoryPoint>& points, bool hasTheme) {
    QList<DayValues> days;
    for (const HistoryPoint& point : points) {
        days << DayValues{
            point.day, {point.theme, point.index, point.difference()}, pointText(point, hasTheme)};
    }
    setLineVisible(themeLine, hasTheme);
    setLineVisible(differenceLine, hasTheme);
    const bool fell = !points.isEmpty() && points.last().difference() < 0;
    setLineColour(differenceLine, QColor::fromRgb(fell ? fallColour : riseColour));
    showDays(days);
}

}  // namespace guanchao
