#include "research/laboratory/backtest_grids.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/values.h"
#include "grid/heat_colour.h"
#include "grid/table_columns.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int numberWidth = 600;
constexpr int figureWidth = 900;
constexpr int monthWidth = 640;
constexpr int dayWidth = 1150;
constexpr int nameWidth = 1300;

const TableColumn codeColumn{u"代码"_s, dayWidth};
const TableColumn nameColumn{u"简称"_s, dayWidth};

TableColumn figureColumn(const QString& title) {
    return {title, figureWidth};
}

// 0 has no colour: nothing was held, or there is nothing to reckon from.
void setReckonedGain(ResultGrid& grid, int row, int col, double gain) {
    if (gain == 0) {
        grid.setReal(row, col, gain);
    } else {
        setGain(grid, row, col, gain);
    }
}

double valueOf(const BacktestSum& sum, SweepMeasure measure) {
    switch (measure) {
        case SweepMeasure::drawdown:
            return sum.drawdown;
        case SweepMeasure::winShare:
            return sum.winShare();
        case SweepMeasure::trades:
            return sum.trades;
        case SweepMeasure::gain:
            break;
    }
    return sum.gain;
}

QString unboughtWords(const BacktestSum& sum) {
    QString words = u"没有买的信号：已经持有 %1，停牌 %2，买不进（涨停）%3，没有空位 %4"_s.arg(
        QString::number(sum.heldAlready), QString::number(sum.halted), QString::number(sum.atLimit),
        QString::number(sum.withoutPlace));
    if (sum.tooLate > 0) {
        words += u"，已到预约日 %1"_s.arg(sum.tooLate);
    }
    return words + u'。';
}

}  // namespace

QString sumWords(const BacktestResult& result) {
    const BacktestSum& sum = result.sum;
    if (result.days.isEmpty()) {
        return u"这些年里没有历史行情。"_s;
    }
    return u"%1 到 %2：累计 %3%，上证指数 %4%，最大回撤 %5%。卖出 %6 次，胜率 %7%，平均 %8%；还持有"
           u" %9 只。"_s.arg(dayText(result.days.first().day), dayText(result.days.last().day),
                             twoDecimals(sum.gain), twoDecimals(sum.indexGain),
                             twoDecimals(sum.drawdown), QString::number(sum.trades),
                             twoDecimals(sum.winShare()), twoDecimals(sum.meanGain),
                             QString::number(sum.held)) +
           unboughtWords(sum);
}

void showYears(ResultGrid& grid, const QList<YearOfGains>& years) {
    const GridFill fill(grid);
    QList<TableColumn> columns = {{u"年"_s, monthWidth},
                                  figureColumn(u"全年"_s),
                                  figureColumn(u"上证指数"_s),
                                  figureColumn(u"最大回撤"_s)};
    for (int month = 1; month <= 12; ++month) {
        columns << TableColumn{u"%1月"_s.arg(month), monthWidth};
    }
    beginTable(grid, columns, years.size(), numberWidth);
    for (int row = 1; row <= years.size(); ++row) {
        const YearOfGains& year = years[row - 1];
        grid.setInteger(row, 1, year.year);
        setReckonedGain(grid, row, 2, year.gain);
        setReckonedGain(grid, row, 3, year.indexGain);
        setReckonedGain(grid, row, 4, year.drawdown);
        for (size_t month = 0; month < year.months.size(); ++month) {
            if (year.months.at(month)) {
                setReckonedGain(grid, row, static_cast<int>(month) + 5, *year.months.at(month));
            }
        }
    }
}

void showTrades(ResultGrid& grid, const QList<Trade>& trades) {
    const GridFill fill(grid);
    beginTable(grid,
               {codeColumn,
                nameColumn,
                figureColumn(u"涨幅"_s),
                {u"题材"_s, nameWidth},
                {u"信号日期"_s, dayWidth},
                {u"买入日期"_s, dayWidth},
                figureColumn(u"买入价"_s),
                {u"卖出日期"_s, dayWidth},
                figureColumn(u"卖出价"_s),
                {u"原因"_s, nameWidth}},
               trades.size(), numberWidth);
    for (int row = 1; row <= trades.size(); ++row) {
        const Trade& trade = trades[row - 1];
        grid.setTextMatrix(row, 1, trade.dm);
        grid.setTextMatrix(row, 2, trade.jc);
        grid.setCellForeColor(row, 2, stockColour);
        setReckonedGain(grid, row, 3, trade.gain);
        grid.setTextMatrix(row, 4, trade.theme);
        grid.setCellForeColor(row, 4, themeColour);
        grid.setTextMatrix(row, 5, dayText(trade.signalDay));
        grid.setTextMatrix(row, tradeBuyDayColumn, dayText(trade.buyDay));
        grid.setReal(row, 7, trade.buyPrice);
        grid.setTextMatrix(row, 8, dayText(trade.sellDay));
        grid.setReal(row, 9, trade.sellPrice);
        grid.setTextMatrix(row, 10, trade.reason ? wordsOf(*trade.reason) : u"还持有"_s);
    }
}

// The gains of an announcement, in the order of their columns.
constexpr std::array gainsOfReturns = {&ForwardGains::yirizhang, &ForwardGains::errizhang,
                                       &ForwardGains::wurizhang, &ForwardGains::daoqizhang,
                                       &ForwardGains::kaipanzhang};

void showReturns(ResultGrid& grid, const QList<ReportReturn>& returns) {
    const GridFill fill(grid);
    QList<TableColumn> columns = {
        codeColumn, nameColumn, {u"日期"_s, dayWidth}, {u"预约日期"_s, dayWidth}};
    for (const QString& title :
         {u"交易日"_s, u"一日涨"_s, u"二日涨"_s, u"五日涨"_s, u"到期涨"_s, u"开盘涨"_s}) {
        columns << figureColumn(title);
    }
    beginTable(grid, columns, returns.size(), numberWidth);
    for (int row = 1; row <= returns.size(); ++row) {
        const ReportReturn& it = returns[row - 1];
        grid.setTextMatrix(row, 1, it.dm);
        grid.setTextMatrix(row, 2, it.jc);
        grid.setCellForeColor(row, 2, stockColour);
        grid.setTextMatrix(row, 3, dayText(it.todayriqi));
        grid.setTextMatrix(row, 4, dayText(it.yuyuedate));
        grid.setInteger(row, 5, it.days);
        for (int at = 0; it.days > 0 && at < int(gainsOfReturns.size()); ++at) {
            setReckonedGain(grid, row, 6 + at,
                            it.gains.*gainsOfReturns.at(static_cast<size_t>(at)));
        }
    }
}

QString returnsWords(const QList<ReportReturn>& returns) {
    const auto known = std::ranges::count_if(returns, [](const auto& it) { return it.days > 0; });
    QString words = u"%1 次公告，其中 %2 次有行情"_s.arg(returns.size()).arg(known);
    if (known == 0) {
        return words + u'。';
    }
    QStringList means;
    for (const auto gain : gainsOfReturns) {
        double sum = 0;
        for (const ReportReturn& it : returns) {
            sum += it.gains.*gain;
        }
        means << twoDecimals(sum / static_cast<double>(known)) + u'%';
    }
    return words +
           u"，平均：一日 %1，二日 %2，五日 %3，到期 %4，开盘 %5。公告后第二天买入，0 是没有算出。"_s
               .arg(means[0], means[1], means[2], means[3], means[4]);
}

void showCurve(ResultGrid& grid, const QList<BacktestDay>& days) {
    const GridFill fill(grid);
    beginTable(grid,
               {figureColumn(u"日期"_s), figureColumn(u"资金%"_s), figureColumn(u"上证指数%"_s),
                figureColumn(u"回撤%"_s)},
               days.size(), numberWidth);
    for (int row = 1; row <= days.size(); ++row) {
        const BacktestDay& day = days[row - 1];
        grid.setTextMatrix(row, 1, dayText(day.day));
        grid.setReal(row, 2, (day.capital - 1) * 100);
        grid.setReal(row, 3, (day.index - 1) * 100);
        grid.setReal(row, 4, day.drawdown);
    }
}

void showComparison(ResultGrid& grid, const QStringList& names,
                    const QList<BacktestResult>& results) {
    QList<const RuleField*> differing;
    QList<TableColumn> columns = {{u"规则"_s, nameWidth}};
    for (const QString& title :
         {u"累计%"_s, u"上证指数%"_s, u"最大回撤%"_s, u"卖出次数"_s, u"胜率%"_s, u"平均%"_s}) {
        columns << figureColumn(title);
    }
    for (const RuleField& field : ruleFields()) {
        const bool differs = std::ranges::any_of(results, [&](const BacktestResult& it) {
            return it.rule.*field.value != results.first().rule.*field.value;
        });
        if (differs) {
            differing << &field;
            columns << TableColumn{field.words, nameWidth};
        }
    }
    const GridFill fill(grid);
    beginTable(grid, columns, results.size(), numberWidth);
    for (int row = 1; row <= results.size(); ++row) {
        const BacktestResult& result = results[row - 1];
        grid.setTextMatrix(row, 1, names.value(row - 1));
        setReckonedGain(grid, row, 2, result.sum.gain);
        setReckonedGain(grid, row, 3, result.sum.indexGain);
        setReckonedGain(grid, row, 4, result.sum.drawdown);
        grid.setInteger(row, 5, result.sum.trades);
        grid.setReal(row, 6, result.sum.winShare());
        setReckonedGain(grid, row, 7, result.sum.meanGain);
        for (int at = 0; at < differing.size(); ++at) {
            grid.setTextMatrix(row, 8 + at, valueWords(*differing[at], result.rule));
        }
    }
}

QStringList sweepMeasures() {
    return {u"累计%"_s, u"最大回撤%"_s, u"胜率%"_s, u"卖出次数"_s};
}

void showSweep(ResultGrid& grid, const SweepResult& sweep, SweepMeasure measure) {
    const GridFill fill(grid);
    const QString across = sweep.across->words;
    QList<TableColumn> columns = {
        {sweep.down ? sweep.down->words + u" ＼ "_s + across : across, nameWidth + figureWidth}};
    for (const double value : sweep.acrossValues) {
        columns << figureColumn(valueText(*sweep.across, value));
    }
    beginTable(grid, columns, sweep.downValues.size(), numberWidth);
    const auto of = [measure](const BacktestSum& sum) { return valueOf(sum, measure); };
    const auto [worst, best] = std::ranges::minmax(sweep.sums, {}, of);
    const bool hasSigns = measure == SweepMeasure::gain;
    const double middle = hasSigns ? 0 : (of(best) + of(worst)) / 2;
    const double furthest = std::max(of(best) - middle, middle - of(worst));
    for (int row = 1; row < grid.rows(); ++row) {
        grid.setTextMatrix(row, 1,
                           sweep.down ? valueText(*sweep.down, sweep.downValues[row - 1])
                                      : sweepMeasures().value(static_cast<int>(measure)));
        for (int col = 2; col < grid.cols(); ++col) {
            const double value = of(sweep.at(row - 1, col - 2));
            if (measure == SweepMeasure::trades) {
                grid.setInteger(row, col, std::lround(value));
            } else {
                grid.setReal(row, col, value);
            }
            setHeat(grid, row, col, value - middle, furthest);
        }
    }
}

}  // namespace guanchao
