// A theme against the market over a range of days: the window's run from its dates to its table,
// line and plot. Tables dzhzhuti, geguhq and zhutidapanhq (scratch) of the main store; gains in
// percent, sums of daily gains, not compounded. Failed statements raise StoreError.
#pragma once

#include <QCoro/QCoroTask>
#include <QList>
#include <QString>
#include <functional>
#include <optional>
#include <stop_token>

#include "base/date_trio.h"
#include "grid/result_grid.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "research/day_cache.h"
#include "store/recordset.h"
#include "store/stores.h"

namespace guanchao {

// The running sums of the daily gains up to a day.
struct HistoryPoint {
    QDate day;
    double theme = 0;
    double index = 0;
    bool isGap = false;  // no member has a row of the day

    double difference() const { return theme - index; }
};

// The running sums of a member of the theme.
struct MemberSums {
    QString dm;
    QString jc;
    QList<double> sums;  // one for each point, NaN on a day of which it has no row
    double total = 0;
    bool hasRows = false;
};

struct ThemeHistoryResult {
    QString line;  // 主题总涨幅(...)-大盘总涨幅(...)=涨幅差(...)
    QList<HistoryPoint> points;
    QList<MemberSums> members;  // the best first, then those without rows
    bool hasTheme = false;      // a member has had a gain on at least one day
    // Codes that are compared by what is stored of them and why, and the days and sums that rest on
    // no prices; empty if there are none.
    QString missed;
};

struct HistoryRange {
    QDate first;
    QDate last;
    QString theme;
};

// What is in work: a code of a download or a day of the comparison.
struct ThemeHistoryStep {
    QString text;
    int done = 0;
    int total = 0;  // 0: not known yet
};

class ThemeHistory {
public:
    using Show = std::function<void(const ThemeHistoryStep&)>;

    ThemeHistory(const Stores& stores, Globals& globals, const Clock& clock, Dialogs& dialogs,
                 PastPrices prices, AskedHistory& asked, ResultGrid& grid, Show show);

    // The range that the window opens with: today and the 90 days before.
    DateTexts firstDay() const;
    DateTexts lastDay() const;

    // Nothing, and told, if the dates are refused.
    std::optional<HistoryRange> readRange(const DateTexts& first, const DateTexts& last,
                                          const QString& theme);

    // Fills the cache, compares in a thread of its own and fills the grid. Nothing if the dates are
    // refused or a job that writes is under way. A stop leaves what has been downloaded, and the
    // former comparison.
    QCoro::Task<std::optional<ThemeHistoryResult>> compare(DateTexts first, DateTexts last,
                                                           QString theme, std::stop_token stop);
    // The same over what is stored: nothing is asked for.
    QCoro::Task<std::optional<ThemeHistoryResult>> compareStored(DateTexts first, DateTexts last,
                                                                 QString theme,
                                                                 std::stop_token stop);

private:
    std::optional<HistoryRange> beginRange(const DateTexts& first, const DateTexts& last,
                                           const QString& theme);
    QCoro::Task<ThemeHistoryResult> compareRange(HistoryRange range, QString lacks,
                                                 std::stop_token stop);
    QCoro::Task<MissedDays> updateCache(QString theme, QDate first, QDate last,
                                        std::stop_token stop);
    void fillGrid(Recordset& days);

    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    Dialogs& dialogs_;
    DayCache cache_;
    ResultGrid& grid_;
    Show show_;
};

// A point in words, for the reader of the plot; a gap is told as one.
QString pointText(const HistoryPoint& point, bool hasTheme);

}  // namespace guanchao
