#include "heat/count_plots.h"

#include <QChart>
#include <QLegend>

#include "grid/colours.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

NewsPlot::NewsPlot(QWidget* parent)
    : DayPlot({{u"一日数量"_s, QColor::fromRgb(themeColour)},
               {u"全部数量（右轴）"_s, QColor::fromRgb(textColour), PlotAxis::right},
               {u"自定义数量"_s, QColor::fromRgb(stockColour)}},
              wholeNumbers, parent) {}

OneDayNewsPlot::OneDayNewsPlot(QWidget* parent)
    : DayPlot({{u"一日数量"_s, QColor::fromRgb(themeColour)}}, wholeNumbers, parent) {
    chart()->legend()->hide();
}

WordPlot::WordPlot(QWidget* parent)
    : DayPlot({{u"上涨字数"_s, QColor::fromRgb(riseColour)},
               {u"下跌字数"_s, QColor::fromRgb(fallColour)},
               {u"总分"_s, QColor::fromRgb(themeColour)}},
              wholeNumbers, parent) {}

GainPlot::GainPlot(QWidget* parent)
    : ScatterPlot(QColor::fromRgb(riseColour), QColor::fromRgb(fallColour), parent) {}

}  // namespace guanchao
