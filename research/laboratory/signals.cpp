#include "research/laboratory/signals.h"

#include <QSet>
#include <algorithm>

#include "research/laboratory/stock_day.h"
#include "research/laboratory/stock_filter.h"
#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Candidate {
    double gain;
    Signal signal;
};

void sortByGain(std::vector<Candidate>& candidates) {
    std::ranges::sort(candidates, [](const Candidate& left, const Candidate& right) {
        return left.gain != right.gain ? left.gain > right.gain : left.signal.dm < right.signal.dm;
    });
}

// What the rule asks of the index, and of the range of years.
bool takesDay(const BacktestRule& rule, const MarketCalendar& calendar, size_t at) {
    const int year = yearOf(calendar.day(at));
    if (year < rule.firstYear || year > rule.lastYear) {
        return false;
    }
    const bool asksGain = rule.indexGainFrom > -100 || rule.indexGainTo < 100;
    const double gain = calendar.gain(at);
    if (asksGain && !(gain >= rule.indexGainFrom && gain <= rule.indexGainTo)) {
        return false;
    }
    const auto days = static_cast<size_t>(rule.indexMeanDays);
    return days == 0 || calendar.close(at) > calendar.mean(at, days);
}

class ThemeChoice {
public:
    ThemeChoice(const BacktestRule& rule, LaboratoryHistory& history)
        : rule_(rule), history_(history), filter_(rule) {}

    std::vector<Signal> of(DayNumber day) {
        QSet<QString> taken;
        std::vector<Signal> chosen;
        for (const ThemeDay& theme : history_.themeDays().of(day)) {
            if (theme.zhangtinshu < rule_.limitUps) {
                break;  // they are in the order of this
            }
            if (takesTheme(theme)) {
                takeStocks(history_.memberships().zhutiname(theme.theme), day, taken, chosen);
            }
        }
        return chosen;
    }

private:
    bool takesTheme(const ThemeDay& theme) const {
        return theme.zhangtinshu * 100.0 >= rule_.limitUpShare * theme.zhishu &&
               theme.gain >= rule_.themeGain;
    }

    void takeStocks(const QString& theme, DayNumber day, QSet<QString>& taken,
                    std::vector<Signal>& chosen) {
        std::vector<Candidate> candidates;
        for (const std::int32_t number : history_.memberships().stocksOf(theme)) {
            const QString dm = history_.memberships().dm(number);
            const StockColumns* stock = taken.contains(dm) ? nullptr : history_.stock(dm);
            const size_t at = stock ? tradedAt(*stock, day) : 0;
            if (stock && at < stock->size() && filter_.takes(*stock, at)) {
                taken.insert(dm);
                candidates.push_back({gainOf(*stock, at), {day, dm, stock, theme}});
            }
        }
        sortByGain(candidates);
        for (Candidate& it : candidates) {
            chosen.push_back(std::move(it.signal));
        }
    }

    const BacktestRule& rule_;
    LaboratoryHistory& history_;
    StockFilter filter_;
};

}  // namespace

SignalDays themeSignals(const BacktestRule& rule, LaboratoryHistory& history,
                        const ResearchWork& work) {
    const MarketCalendar& calendar = history.calendar();
    SignalDays signalDays(calendar.size());
    ThemeChoice choice(rule, history);
    for (size_t at = 0; at + 1 < calendar.size(); ++at) {
        if (takesDay(rule, calendar, at)) {
            work.endIfStopped();
            signalDays[at + 1] = choice.of(calendar.day(at));
        }
    }
    return signalDays;
}

std::vector<ReportDate> reportDates(const StoreFile& main) {
    std::vector<ReportDate> reports;
    Connection store = main.open();
    RowCursor row(store,
                  u"select dm,date(todayriqi),date(yuyuedate) from yejiyuyuejinqi where"
                  u" date(todayriqi)<date(yuyuedate) order by date(todayriqi),dm,rowid"_s);
    while (row.next()) {
        reports.push_back({row.string(0), dayNumber(row.text(1)), dayNumber(row.text(2))});
    }
    return reports;
}

SignalDays reportSignals(const BacktestRule& rule, LaboratoryHistory& history,
                         const std::vector<ReportDate>& reports, const ResearchWork& work) {
    const MarketCalendar& calendar = history.calendar();
    std::vector<std::vector<Candidate>> candidates(calendar.size());
    const StockFilter filter(rule);
    for (const ReportDate& report : reports) {
        work.endIfStopped();
        const size_t buying = calendar.firstBehind(report.todayriqi);
        if (buying == 0 || buying >= calendar.size() || !takesDay(rule, calendar, buying - 1)) {
            continue;
        }
        const DayNumber day = calendar.day(buying - 1);
        const StockColumns* stock = history.stock(report.dm);
        const size_t at = stock ? tradedAt(*stock, day) : 0;
        if (stock && at < stock->size() && filter.takes(*stock, at)) {
            candidates[buying].push_back(
                {gainOf(*stock, at), {day, report.dm, stock, u"业绩预约"_s, report.yuyuedate}});
        }
    }
    SignalDays signalDays(calendar.size());
    for (size_t at = 0; at < candidates.size(); ++at) {
        sortByGain(candidates[at]);
        for (Candidate& it : candidates[at]) {
            signalDays[at].push_back(std::move(it.signal));
        }
    }
    return signalDays;
}

}  // namespace guanchao
