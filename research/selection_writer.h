// The writing half of a scan: the rows of a day wait here until it is complete and come into the
// main store in one transaction, since alarms and other windows write all the while. One that
// replaces takes the former rows of a theme-day away in the transaction that stores its new ones.
// Raises StoreError.
#pragma once

#include <QSet>

#include "base/activity.h"
#include "research/stock_row.h"
#include "store/connection.h"

namespace guanchao {

// A row of xuanticai but for its day. Gains in percent.
struct ThemeRow {
    QString ticai;
    double ticaizhang = 0;    // 题材涨, mean of its stocks
    double zhangtinshu = 0;   // 涨停数, stocks at their limit
    double yizishu = 0;       // 一字数, of these at one price all day
    double zonggeshu = 0;     // 总个数, stocks that traded
    double dapanzhang = 0;    // 大盘涨, of the index
    double touguzhangfu = 0;  // 头股涨幅, of the best stock
};

class SelectionWriter {
public:
    // The activity is told of the first day that is written. `writesHigh` puts zg among the columns
    // of the stock rows.
    SelectionWriter(Connection& main, Activity& activity, bool writesHigh, bool replaces);

    // Days are yyyy-MM-dd. All themes of the day are about to be chosen.
    void beginDay(const QString& day);
    void addTheme(const QString& day, const ThemeRow& theme);
    // The stocks of a theme-day are about to be added.
    void beginStocks(const QString& day, const QString& ticai);
    void addStock(const QString& day, const QString& ticai, const StockRow& stock);

    void storeDay();

    // Behind the last day: takes away the former rows that no theme-day of the run has replaced. A
    // run without days replaces nothing.
    void removeOthers();

private:
    Connection& main_;
    Activity& activity_;
    bool writesHigh_;
    bool replaces_;
    bool wroteDay_ = false;
    QStringList statements_;
    QStringList days_;        // whose themes have been chosen
    QSet<QString> replaced_;  // theme-days, whose stocks have gone
};

}  // namespace guanchao
