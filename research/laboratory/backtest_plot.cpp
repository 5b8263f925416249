#include "research/laboratory/backtest_plot.h"

#include "base/values.h"
#include "grid/colours.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QList<PlotLine> plotLines() {
    // The last one lies on the others.
    return {{u"回撤（右轴）"_s, QColor::fromRgb(themeColour), PlotAxis::right},
            {u"上证指数"_s, QColor::fromRgb(stockColour)},
            {u"资金"_s, QColor::fromRgb(riseColour)}};
}

DayValues valuesOf(const BacktestDay& day) {
    const double capital = (day.capital - 1) * 100;
    const double index = (day.index - 1) * 100;
    const QString words = u"%1  资金 %2%  上证指数 %3%  回撤 %4%"_s.arg(
        dayText(day.day), twoDecimals(capital), twoDecimals(index), twoDecimals(day.drawdown));
    return {dateOf(day.day), {day.drawdown, index, capital}, words};
}

}  // namespace

BacktestPlot::BacktestPlot(QWidget* parent) : DayPlot(plotLines(), u"%.0f%%"_s, parent) {}

void BacktestPlot::show(const QList<BacktestDay>& days) {
    QList<DayValues> values;
    for (const BacktestDay& day : days) {
        values << valuesOf(day);
    }
    showDays(values);
}

}  // namespace guanchao
