// What a scan stores of one stock in xuanticaigu: the stock on its anchor day, some days before and
// some days after. Adjusted prices unless told otherwise, in hundredths of a yuan; 0 where the
// history doesn't reach. A failed statement raises StoreError.
#pragma once

#include <QHash>
#include <optional>

#include "base/activity.h"
#include "research/stock_history.h"

namespace guanchao {

struct StockRow {
    QString dm;
    QString jc;           // empty if the code table lacks the stock
    double fuquansp = 0;  // 复权收盘, close
    double sp = 0;        // 收盘, close as traded
    double zg = 0;        // 最高, high as traded
    double qian1sp = 0;   // close 1 day before
    double qian3sp = 0;   // close 3 days before
    double qian10sp = 0;  // close 10 days before
    double qian30sp = 0;  // close of the 30th day back, the anchor day being the first, or the 29th
    double fuquankp = 0;  // 复权开盘, open
    double chengjl = 0;   // 成交量, volume
    double chengjl10ri = 0;  // mean volume of 10 days, the anchor day among them
    double hou1kp = 0;       // open of the next day
    double hou2kp = 0;       // open of the day after it
    double hou1sp = 0;       // close of the next day
    double hou2sp = 0;       // close of the day after it
    double hou5sp = 0;       // close of the 6th day on, one further than its name says
    double hou10sp = 0;      // close of the 10th day on, or the 9th
    double hou1liang = 0;    // volume of the next day
};

// A number that a row needs stands nowhere in the history.
class MissingNumber : public OperationError {
public:
    explicit MissingNumber(DayNumber day)
        : OperationError(QStringLiteral("缺少一个数值（空值）")), day_(day) {}

    DayNumber day() const { return day_; }

private:
    DayNumber day_;
};

class StockRowBuilder {
public:
    StockRowBuilder(StockHistory& history, Connection& main);

    // The row of a stock with D as its anchor day; nothing with fewer than 10 days of history up to
    // D or none behind it. A stock that didn't trade on D is taken as it last traded. Raises
    // MissingNumber.
    std::optional<StockRow> build(const QString& dm, DayNumber D);

private:
    QString nameOf(const QString& dm);

    StockHistory& history_;
    Connection& main_;
    QHash<QString, QString> names_;
};

// The number of a day, which must be there: raises MissingNumber.
double required(double number, DayNumber day);

// The statement that stores the row under a theme-day, a time text; `withHigh` puts zg among the
// columns.
QString insertStatement(const StockRow& row, const QString& riqi, const QString& ticai,
                        bool withHigh);

}  // namespace guanchao
