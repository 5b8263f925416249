#include "research/range_ranks.h"

#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/activity.h"
#include "base/values.h"
#include "base/worker.h"
#include "research/day_number.h"
#include "services/stock_code.h"
#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int rowsBetweenCalls = 4096;

QDate mondayOf(const QDate& day) {
    return day.addDays(1 - day.dayOfWeek());
}

// Days as yyyy-MM-dd beside their gains.
struct RangeQueries {
    QString index;
    QString stocks;
};

QString between(const QString& day, const RangeQuestion& question) {
    return day + u">="_s + quoted(dateText(question.first)) + u" and "_s + day + u"<="_s +
           quoted(dateText(question.last));
}

RangeQueries queriesOf(const RangeQuestion& question) {
    if (question.source == RangeSource::history) {
        const QString gain =
            u"date(shijian),round((cast(sp as Double)/cast(qiansp as Double)-1)*100,2)"_s;
        const QString days = between(u"date(shijian)"_s, question);
        return {u"select "_s + gain + u" from "_s + leadingIndex + u" where "_s + days +
                    u" order by date(shijian)"_s,
                u"select "_s + gain + u",dm from geguhq where "_s + days};
    }
    const QString days = between(u"date(riqi)"_s, question);
    return {u"select distinct date(riqi),zhangfu from geguhq where dm="_s + quoted(leadingIndex) +
                u" and "_s + days + u" order by date(riqi)"_s,
            u"select date(riqi),zhangfu,dm from geguhq where "_s + days};
}

// The gains of a theme's members on one day.
struct DaySum {
    double sum = 0;
    int rows = 0;
};

struct ThemeSums {
    int members = 0;
    int membersWithRows = 0;
    std::vector<DaySum> days;  // of the index
};

class RangeReading {
public:
    void readIndex(Connection& store, const QString& query);
    void readMembers(Connection& main);
    void readStocks(Connection& store, const QString& query,
                    const std::function<void()>& meanwhile);
    RangeRanks ranks() const;

private:
    struct IndexDay {
        double gain;
        qsizetype week;
    };
    struct Stock {
        QList<qsizetype> themes;  // as often as it is a member
        bool hasRows = false;
    };

    Stock* stockOf(std::string_view dm);
    void add(Stock& stock, size_t day, double gain);
    RankedTheme ranked(const QString& name, const ThemeSums& sums) const;

    std::vector<IndexDay> days_;
    std::unordered_map<DayNumber, size_t> dayOf_;
    QList<QDate> weeks_;
    QStringList names_;
    std::vector<ThemeSums> sums_;  // by name
    std::unordered_map<std::string, Stock> stocks_;
    std::string dm_;  // of the row before, most often that of this one too
    Stock* stock_ = nullptr;
};

void RangeReading::readIndex(Connection& store, const QString& query) {
    RowCursor row(store, query);
    while (row.next()) {
        const DayNumber day = dayNumber(row.text(0));
        const QDate week = mondayOf(dateOf(day));
        if (weeks_.isEmpty() || weeks_.last() != week) {
            weeks_ << week;
        }
        dayOf_.emplace(day, days_.size());
        days_.push_back({row.isNull(1) ? 0 : row.number(1), weeks_.size() - 1});
    }
}

void RangeReading::readMembers(Connection& main) {
    QHash<QString, qsizetype> themes;
    RowCursor row(main,
                  u"select zhutiname,dm,count(*) from dzhzhuti where zhutiname<>''"
                  u" group by zhutiname,dm"_s);
    while (row.next()) {
        const QString name = row.string(0);
        if (!themes.contains(name)) {
            themes.insert(name, names_.size());
            names_ << name;
            sums_.push_back({0, 0, std::vector<DaySum>(days_.size())});
        }
        const qsizetype theme = themes.value(name);
        ++sums_[static_cast<size_t>(theme)].members;
        stocks_[std::string(row.text(1))].themes +=
            QList<qsizetype>(row.value(2).toInteger(), theme);
    }
}

void RangeReading::readStocks(Connection& store, const QString& query,
                              const std::function<void()>& meanwhile) {
    RowCursor row(store, query);
    for (int read = 0; row.next(); ++read) {
        if (read % rowsBetweenCalls == 0) {
            meanwhile();
        }
        const auto day = dayOf_.find(dayNumber(row.text(0)));
        Stock* stock = stockOf(row.text(2));
        if (day != dayOf_.end() && stock && !row.isNull(1)) {
            add(*stock, day->second, row.number(1));
        }
    }
}

// Null for a stock without a theme.
RangeReading::Stock* RangeReading::stockOf(std::string_view dm) {
    if (dm != dm_) {
        dm_ = dm;
        const auto found = stocks_.find(dm_);
        stock_ = found == stocks_.end() ? nullptr : &found->second;
    }
    return stock_;
}

void RangeReading::add(Stock& stock, size_t day, double gain) {
    if (!stock.hasRows) {
        stock.hasRows = true;
        for (const qsizetype theme : QSet<qsizetype>(stock.themes.cbegin(), stock.themes.cend())) {
            ++sums_[static_cast<size_t>(theme)].membersWithRows;
        }
    }
    for (const qsizetype theme : stock.themes) {
        DaySum& sum = sums_[static_cast<size_t>(theme)].days[day];
        sum.sum += gain;
        ++sum.rows;
    }
}

RankedTheme RangeReading::ranked(const QString& name, const ThemeSums& sums) const {
    RankedTheme theme = {name, 0, 0, 0, sums.members, sums.membersWithRows, {}};
    theme.weeks.fill(std::numeric_limits<double>::quiet_NaN(), weeks_.size());
    for (size_t at = 0; at < days_.size(); ++at) {
        const DaySum& day = sums.days[at];
        if (day.rows > 0) {
            const double gain = day.sum / day.rows;
            double& week = theme.weeks[days_[at].week];
            week = (std::isnan(week) ? 0 : week) + gain;
            theme.gain += gain;
            theme.market += days_[at].gain;
            ++theme.days;
        }
    }
    return theme;
}

RangeRanks RangeReading::ranks() const {
    RangeRanks ranks = {static_cast<int>(days_.size()), weeks_, {}, 0};
    for (qsizetype at = 0; at < names_.size(); ++at) {
        const RankedTheme theme = ranked(names_[at], sums_[static_cast<size_t>(at)]);
        if (theme.days > 0) {
            ranks.themes << theme;
        } else {
            ++ranks.withoutRows;
        }
    }
    std::ranges::sort(ranks.themes, {},
                      [](const RankedTheme& theme) { return std::pair(-theme.gain, theme.name); });
    return ranks;
}

}  // namespace

RangeRanks rankThemes(const Stores& stores, const RangeQuestion& question,
                      const std::function<void()>& meanwhile) {
    const bool isHistory = question.source == RangeSource::history;
    const RangeQueries queries = queriesOf(question);
    Connection main = stores.main.open();
    Connection days = isHistory ? stores.firstHistory.open() : stores.main.open();
    RangeReading reading;
    reading.readIndex(days, queries.index);
    reading.readMembers(main);
    reading.readStocks(days, queries.stocks, meanwhile);
    return reading.ranks();
}

QCoro::Task<RangeRanks> rankStored(Stores stores, RangeQuestion question, std::stop_token stop) {
    const auto job = [stores, question](const auto& work) {
        const Activity activity(u"给全部主题排名"_s);
        return rankThemes(stores, question, [&work] { work.endIfStopped(); });
    };
    RangeRanks ranks = co_await inWorker(job, stop);
    co_return ranks;
}

QHash<QString, double> gainsOfStocks(const Stores& stores, RangeSource source, const QDate& day) {
    QHash<QString, double> gains;
    const StoreFile& file = source == RangeSource::history ? stores.firstHistory : stores.main;
    if (!QFileInfo::exists(file.path)) {
        return gains;
    }
    Connection store = file.open();
    RowCursor row(store, queriesOf({source, day, day}).stocks);
    while (row.next()) {
        if (!row.isNull(1)) {
            gains.insert(row.string(2), row.number(1));
        }
    }
    return gains;
}

}  // namespace guanchao
