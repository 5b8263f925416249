#include "themes/day_book.h"

#include <algorithm>
#include <cmath>

#include "base/activity.h"
#include "base/values.h"
#include "market/market_summary.h"
#include "services/trading_day.h"
#include "store/recordset.h"
#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QTime beforeTrading(9, 0);  // until then the services give the close of the day before
const QTime writingTime(15, 5);
constexpr qsizetype mostLeaders = 3;

const QString timeFormat = u"yyyy-MM-dd HH:mm:ss"_s;

QString dayWords(const QDate& day) {
    return quoted(day.toString(Qt::ISODate));
}

struct Member {
    QString dm;
    double gain = 0;
};

// A theme whose members come one after the other.
class ThemeSum {
public:
    explicit ThemeSum(QString theme) { day_.theme = std::move(theme); }

    void add(const Member& member, bool atLimit) {
        sum_ += member.gain;
        ++day_.members;
        day_.limitUps += atLimit ? 1 : 0;
        best_ << member;
        std::ranges::stable_sort(best_, std::greater(), &Member::gain);
        best_.resize(std::min(best_.size(), mostLeaders));
    }

    BookedTheme day() const {
        BookedTheme day = day_;
        day.gain = sum_ / day.members;
        for (const Member& it : best_) {
            day.leaders << it.dm;
        }
        return day;
    }

    const QString& theme() const { return day_.theme; }
    bool isEmpty() const { return day_.members == 0; }

private:
    BookedTheme day_;
    double sum_ = 0;
    QList<Member> best_;
};

// None where no stock has a price.
QList<BookedTheme> readThemes(Connection& store) {
    RowCursor row(store,
                  u"select zhutiname,dmb.dm,dmb.jc,zhangfu,sp,zhangjine from dzhzhuti"
                  u" INNER JOIN dmb on dzhzhuti.dm=dmb.dm where zhangfu is not null"
                  u" order by zhutiname,dmb.dm"_s);
    QList<BookedTheme> days;
    ThemeSum sum({});
    bool isQuoted = false;
    const auto close = [&] {
        if (!sum.isEmpty()) {
            days << sum.day();
        }
    };
    while (row.next()) {
        const QString theme = row.string(0);
        if (theme != sum.theme()) {
            close();
            sum = ThemeSum(theme);
        }
        const QString dm = row.string(1);
        isQuoted = isQuoted || row.number(4) > 0;
        sum.add({dm, row.number(3)},
                standsAtLimitUp(dm, row.string(2), row.number(4), row.number(5)));
    }
    close();
    return isQuoted ? days : QList<BookedTheme>();
}

QDateTime quotesTaken(Connection& store) {
    const Recordset times(store, u"select datetime(hqtime) from tempcanshu"_s);
    return times.atEnd() ? QDateTime() : QDateTime::fromString(times.value(0).toText(), timeFormat);
}

void makeTables(Connection& store) {
    for (const QString& table :
         {u"table if not exists zhutiriji (riqi text,zhutiname text,zhangfu real,"
          u"zhangtingshu integer,gushu integer,lingzhang text,hqtime text)"_s,
          u"index if not exists zhutiriji_riqi on zhutiriji (riqi,zhutiname)"_s,
          u"table if not exists fupanbeizhu (riqi text,beizhu text)"_s}) {
        store.execute(u"create "_s + table);
    }
}

bool sameFigures(const QList<BookedTheme>& one, const QList<BookedTheme>& other) {
    return std::ranges::equal(one, other, [](const BookedTheme& a, const BookedTheme& b) {
        return a.theme == b.theme && a.gain == b.gain && a.leaders == b.leaders;
    });
}

// Quotes that were taken on another day than their own change nothing of what is written of it.
bool mayBeDue(const BookDay& now, const QList<BookDay>& newest) {
    return newest.isEmpty() || newest.first().day < now.day ||
           (newest.first().day == now.day && newest.first().asOf < now.asOf &&
            now.asOf.date() == now.day);
}

bool isHoliday(const BookDay& now, const QList<BookDay>& newest) {
    return !newest.isEmpty() && newest.first().day < now.day &&
           sameFigures(newest.first().themes, now.themes);
}

void insertDay(Connection& store, const BookDay& day) {
    store.execute(u"delete from zhutiriji where riqi="_s + dayWords(day.day));
    for (const BookedTheme& it : day.themes) {
        const QStringList values = {dayWords(day.day),
                                    quoted(it.theme),
                                    QString::number(it.gain, 'g', 17),
                                    QString::number(it.limitUps),
                                    QString::number(it.members),
                                    quoted(it.leaders.join(u',')),
                                    quoted(timeText(day.asOf))};
        store.execute(u"insert into zhutiriji values("_s + values.join(u',') + u')');
    }
    store.execute(
        u"delete from zhutiriji where riqi<(select min(riqi) from (select distinct riqi"
        u" from zhutiriji order by riqi desc limit %1))"_s.arg(mostBookDays));
}

BookedTheme themeOf(const RowCursor& row) {
    return {.theme = row.string(1),
            .gain = row.number(2),
            .limitUps = static_cast<int>(row.number(3)),
            .members = static_cast<int>(row.number(4)),
            .leaders = row.string(5).split(u',', Qt::SkipEmptyParts)};
}

}  // namespace

std::optional<BookDay> dayOfQuotes(const QDateTime& taken) {
    if (!taken.isValid()) {
        return std::nullopt;
    }
    const bool isTrading =
        isWeekday(taken.date()) && taken.time() >= beforeTrading && taken.time() < marketClose;
    const QDate day = isTrading ? taken.date() : lastWeekdayOver(taken);
    return BookDay{.day = day, .asOf = taken, .isOver = !isTrading, .themes = {}};
}

std::optional<BookDay> readDayNow(Connection& mainStore) {
    std::optional<BookDay> day = dayOfQuotes(quotesTaken(mainStore));
    if (day) {
        day->themes = readThemes(mainStore);
    }
    return day;
}

std::optional<QDate> writeDay(const Stores& stores, const QDateTime& now) {
    const Activity activity(u"记下今天的主题"_s);
    Connection store = stores.main.open();
    const std::optional<BookDay> taken = dayOfQuotes(quotesTaken(store));
    if (!taken || !taken->isOver || now < QDateTime(taken->day, writingTime)) {
        return std::nullopt;
    }
    const QList<BookDay> newest = readBook(store, 1);
    if (!mayBeDue(*taken, newest)) {
        return std::nullopt;
    }
    Transaction transaction(store);
    const std::optional<BookDay> day = readDayNow(store);
    if (!day || day->themes.isEmpty() || isHoliday(*day, newest)) {
        return std::nullopt;
    }
    makeTables(store);
    insertDay(store, *day);
    transaction.commit();
    return day->day;
}

QList<QDate> bookDays(Connection& mainStore) {
    QList<QDate> days;
    if (!hasDayBook(mainStore)) {
        return days;
    }
    for (Recordset row(mainStore, u"select distinct riqi from zhutiriji order by riqi desc"_s);
         !row.atEnd(); row.moveNext()) {
        days << QDate::fromString(row.value(0).toText(), Qt::ISODate);
    }
    return days;
}

QList<BookDay> readBook(Connection& mainStore, int most, const QDate& upTo) {
    QList<BookDay> days;
    if (!hasDayBook(mainStore)) {
        return days;
    }
    RowCursor row(mainStore,
                  u"select riqi,zhutiname,zhangfu,zhangtingshu,gushu,lingzhang,hqtime from"
                  u" zhutiriji where riqi in (select distinct riqi from zhutiriji%1"
                  u" order by riqi desc limit %2) order by riqi desc,zhutiname"_s
                      .arg(upTo.isValid() ? u" where riqi<="_s + dayWords(upTo) : QString())
                      .arg(most));
    while (row.next()) {
        const QDate day = QDate::fromString(row.string(0), Qt::ISODate);
        if (days.isEmpty() || days.last().day != day) {
            days << BookDay{.day = day,
                            .asOf = QDateTime::fromString(row.string(6), timeFormat),
                            .isOver = true,
                            .themes = {}};
        }
        days.last().themes << themeOf(row);
    }
    return days;
}

QHash<QDate, QString> readDayNotes(Connection& mainStore) {
    QHash<QDate, QString> notes;
    if (!hasTable(mainStore, u"fupanbeizhu"_s)) {
        return notes;
    }
    for (Recordset row(mainStore, u"select riqi,beizhu from fupanbeizhu"_s); !row.atEnd();
         row.moveNext()) {
        notes.insert(QDate::fromString(row.value(0).toText(), Qt::ISODate), row.value(1).toText());
    }
    return notes;
}

void writeDayNote(const StoreFile& mainStore, const QDate& day, const QString& note) {
    const Activity activity(u"保存复盘备注"_s);
    Connection store = mainStore.open();
    Transaction transaction(store);
    makeTables(store);
    store.execute(u"delete from fupanbeizhu where riqi="_s + dayWords(day));
    const QString words = trimBlanks(note);
    if (!words.isEmpty()) {
        store.execute(u"insert into fupanbeizhu values("_s + dayWords(day) + u',' + quoted(words) +
                      u')');
    }
    transaction.commit();
}

bool hasDayBook(Connection& mainStore) {
    return hasTable(mainStore, u"zhutiriji"_s);
}

void renameInDayBook(Connection& mainStore, const QString& theme, const QString& name) {
    if (theme == name) {
        return;
    }
    mainStore.execute(u"delete from zhutiriji where zhutiname="_s + quoted(theme) +
                      u" and riqi in (select riqi from zhutiriji where zhutiname="_s +
                      quoted(name) + u')');
    mainStore.execute(u"update zhutiriji set zhutiname="_s + quoted(name) + u" where zhutiname="_s +
                      quoted(theme));
}

RowScope daysOfThemes(const QStringList& themes) {
    return {u"zhutiriji"_s, u" where zhutiname in ("_s + quotedList(themes) + u')'};
}

}  // namespace guanchao
