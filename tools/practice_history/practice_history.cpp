#include "tools/practice_history/practice_history.h"

#include <QHash>
#include <QMap>
#include <QSet>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "base/values.h"
#include "services/stock_code.h"
#include "store/recordset.h"
#include "tools/practice_market/practice_events.h"
#include "tools/practice_market/practice_walk.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int tradingDays = 400;
constexpr int calendarDays = tradingDays / 5 * 7;
constexpr qsizetype mostStocks = 250;

// The scan looks 30 days back and 10 days ahead.
constexpr int daysBeforeSurges = 35;
constexpr int daysAfterSurges = 30;
constexpr double surgesPerDay = 0.15;
constexpr qsizetype fewestMembers = 8;
constexpr double pausesPerDay = 0.002;
constexpr int pauseDays = 8;
constexpr int forecasts = 20;
constexpr qint64 daysToReport = 45;

enum class Surge : std::uint8_t { none, limit, onePrice };

quint64 keyOf(const QString& dm) {
    return dm.sliced(2).toULongLong() * 2 + (dm.startsWith(u"SH"_s) ? 1 : 0);
}

qint64 hundredths(double price) {
    return std::llround(price * 100);
}

// The surging stocks of a day. Enough of a theme surge for the scan to take it.
QHash<QString, Surge> surgesOf(const QList<QStringList>& themes, quint64 day) {
    QHash<QString, Surge> surges;
    if (themes.isEmpty() || evenNumber(day, 0) >= surgesPerDay) {
        return surges;
    }
    const auto pick =
        static_cast<qsizetype>(evenNumber(day, 1) * static_cast<double>(themes.size()));
    QStringList members = themes[pick];
    std::ranges::sort(members, {}, [&](const QString& dm) { return evenNumber(keyOf(dm), day); });
    const qsizetype count = members.size() / 4 + 3 + static_cast<qsizetype>(3 * evenNumber(day, 2));
    for (const QString& dm : members.first(std::min(count, members.size()))) {
        surges.insert(dm, surges.size() < 2 ? Surge::onePrice : Surge::limit);
    }
    return surges;
}

// The days of one stock. A surge lifts the price above the walk of the quotes; the lift then fades.
// The factors go with the dividends that the practice market tells.
class StockDays {
public:
    explicit StockDays(const QString& dm)
        : dm_(dm), fading_(0.3 + 0.6 * evenNumber(keyOf(dm), 0)) {}

    // Nothing is kept of a day on which the stock pauses, so the next one follows the one before.
    bool pauses(quint64 day) {
        if (pauseLeft_ == 0 && evenNumber(keyOf(dm_) + 1, day) < pausesPerDay) {
            pauseLeft_ = pauseDays;
        }
        if (pauseLeft_ == 0) {
            return false;
        }
        --pauseLeft_;
        return true;
    }

    DayRow next(const PracticeDay& walk, Surge surge) {
        const double dividends = 1 / aboveWalk(dm_.toLower(), walk.day);
        const qint64 former =
            formerClose_ > 0
                ? std::llround(static_cast<double>(formerClose_) * dividends_ / dividends)
                : hundredths(walk.formerClose);
        dividends_ = dividends;
        const auto limit = static_cast<qint64>(std::llround(static_cast<double>(former) * 1.1));
        const auto floor = static_cast<qint64>(std::llround(static_cast<double>(former) * 0.9));
        lift_ = 1 + (lift_ - 1) * fading_;
        if (surge != Surge::none) {
            lift_ = static_cast<double>(limit) / (walk.close * 100);
        }
        const auto price = [&](double base) {
            return surge == Surge::onePrice ? limit
                                            : std::clamp(hundredths(base * lift_), floor, limit);
        };
        DayRow row;
        row.dm = dm_;
        row.day = walk.day;
        row.formerClose = former;
        row.open = price(walk.open);
        row.high = price(walk.high);
        row.low = price(walk.low);
        row.close = price(walk.close);
        const double busy = surge == Surge::limit ? 2.5 : 1;
        row.volume = std::floor(static_cast<double>(walk.shares) * busy);
        row.turnover = std::floor(walk.amount * busy);
        row.factor = roundTo(1 + evenNumber(keyOf(dm_), 1), 2) * dividends;
        formerClose_ = row.close;
        return row;
    }

private:
    QString dm_;
    double fading_;
    double lift_ = 1;
    double dividends_ = 1;
    qint64 formerClose_ = 0;
    int pauseLeft_ = 0;
};

// The themes whose stocks are among the first ones of the library.
QList<ThemeMember> firstMembers(const QList<ThemeMember>& library) {
    QSet<QString> codes;
    QList<ThemeMember> members;
    for (const ThemeMember& member : library) {
        if (codes.size() < mostStocks || codes.contains(member.dm)) {
            codes << member.dm;
            members << member;
        }
    }
    return members;
}

QStringList codesOf(const QList<ThemeMember>& members) {
    QStringList codes;
    for (const ThemeMember& member : members) {
        codes << member.dm;
    }
    codes.removeDuplicates();
    return codes;
}

QList<QStringList> surgingThemes(const QList<ThemeMember>& members) {
    QMap<QString, QStringList> themes;
    for (const ThemeMember& member : members) {
        themes[member.theme] << member.dm;
    }
    QList<QStringList> large = themes.values();
    large.removeIf([](const QStringList& codes) { return codes.size() < fewestMembers; });
    return large;
}

}  // namespace

PracticeHistory practiceHistory(const PracticeQuotes& quotes, const QList<ThemeMember>& library,
                                const QDate& today) {
    const QDate last = today.addDays(-1);
    const auto walkOf = [&](const QString& dm) {
        return quotes.days(dm.toLower(), last.addDays(1 - calendarDays), last,
                           QDateTime(today, QTime(0, 0)));
    };
    PracticeHistory history;
    history.themes = firstMembers(library);
    QHash<QDate, QHash<QString, Surge>> surges;
    const QList<QStringList> themes = surgingThemes(history.themes);
    StockDays index(leadingIndex);
    for (const PracticeDay& day : walkOf(leadingIndex)) {
        const qsizetype at = surges.size();
        const bool quiet = at < daysBeforeSurges || at >= tradingDays - daysAfterSurges;
        surges[day.day] = quiet ? QHash<QString, Surge>()
                                : surgesOf(themes, static_cast<quint64>(day.day.toJulianDay()));
        history.days << index.next(day, Surge::none);
    }
    for (const QString& dm : codesOf(history.themes)) {
        StockDays stock(dm);
        for (const PracticeDay& day : walkOf(dm)) {
            const QHash<QString, Surge>& ofDay = surges[day.day];
            if (!stock.pauses(static_cast<quint64>(day.day.toJulianDay()))) {
                history.days << stock.next(day, ofDay.value(dm, Surge::none));
            }
        }
    }
    return history;
}

void addPracticeForecasts(Connection& store, const QList<ThemeMember>& library,
                          const QDate& today) {
    const Recordset rows(store, u"select dm from yejiyuyuejinqi"_s);
    const Recordset forecastRows(store, u"select rowid from yejiyugao"_s);
    if (rows.count() > 0 || forecastRows.count() > 0) {
        return;
    }
    Transaction transaction(store);
    const QDate found = today.addDays(-2 * daysToReport);
    const QStringList codes = codesOf(library);
    for (int at = 0; at < std::min<qsizetype>(forecasts, codes.size()); ++at) {
        store.execute(
            u"insert into yejiyuyuejinqi(dm,jc,todayriqi,yuyuedate) select dm,jc,%1,%2 from"
            u" dmb where dm=%3"_s.arg(quoted(timeText(found.addDays(at % 5))),
                                      quoted(timeText(found.addDays(daysToReport))),
                                      quoted(codes[at])));
        store.execute(u"insert into yejiyugao(zhaiyao,guanzhudu) values('预计净利润增长 %1%',%2)"_s
                          .arg(10 + 5 * at)
                          .arg(at % 3));
    }
    transaction.commit();
}

}  // namespace guanchao
