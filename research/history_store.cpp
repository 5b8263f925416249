#include "research/history_store.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QSet>
#include <algorithm>
#include <functional>

#include "base/values.h"
#include "research/day_tables.h"
#include "store/bound_insert.h"
#include "store/fresh_store.h"
#include "store/recordset.h"
#include "store/sqlite.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

void addThemes(Connection& store, const std::optional<QList<ThemeMember>>& themes) {
    store.execute(u"create table if not exists dzhzhuti (zhutiname text,dm text)"_s);
    store.execute(u"create index if not exists dzhzhuti_dm on dzhzhuti (dm,zhutiname)"_s);
    store.execute(u"create index if not exists dzhzhuti_zhutiname on dzhzhuti (zhutiname)"_s);
    if (!themes || themes->isEmpty()) {
        return;
    }
    store.execute(u"delete from dzhzhuti"_s);
    BoundInsert insert(store, u"insert into dzhzhuti(zhutiname,dm) values(?,?)"_s);
    for (const ThemeMember& member : *themes) {
        insert.row({member.theme, member.dm});
    }
}

// A file of before lacks some.
bool hasAskedColumn(Connection& store, const QString& column) {
    return !Recordset(store,
                      u"select 1 from sqlite_master where name='lishifanwei' and sql like"
                      u" '%"_s +
                          column + u"%'"_s)
                .atEnd();
}

// dm, cong 从, dao 到, tianshu 天数 and yinzi 因子.
void makeAskedTable(Connection& store) {
    store.execute(
        u"create table if not exists lishifanwei (dm text primary key,cong text,dao text,"
        u"tianshu integer,yinzi integer)"_s);
    for (const QString& column : {u"tianshu"_s, u"yinzi"_s}) {
        if (!hasAskedColumn(store, column)) {
            store.execute(u"alter table lishifanwei add column "_s + column + u" integer"_s);
        }
    }
}

void setAsked(Connection& store, const QString& dm, const QString& values) {
    store.execute(u"insert or ignore into lishifanwei(dm,tianshu) values("_s + quoted(dm) +
                  u",0)"_s);
    store.execute(u"update lishifanwei set "_s + values + u" where dm="_s + quoted(dm));
}

// Behind the days, which are counted.
void noteAsked(Connection& store, const DayRanges& asked, const QStringList& withFactors) {
    if (asked.isEmpty() && withFactors.isEmpty()) {
        return;
    }
    makeAskedTable(store);
    const QSet<QString> tables = tablesOf(store);
    for (auto code = asked.cbegin(); code != asked.cend(); ++code) {
        const QString last = quoted(dateText(code->last));
        const QString stored = tables.contains(code.key())
                                   ? u"(select count(*) from "_s + code.key() +
                                         u" where date(shijian)<="_s + last + u')'
                                   : u"0"_s;
        setAsked(store, code.key(),
                 u"cong="_s + quoted(dateText(code->first)) + u",dao="_s + last + u",tianshu="_s +
                     stored);
    }
    for (const QString& dm : withFactors) {
        setAsked(store, dm, u"yinzi=1"_s);
    }
}

QDate dayIn(const Recordset& rows, int field) {
    return QDate::fromString(rows.value(field).toText(), Qt::ISODate);
}

// 0 for none, as other programs leave it.
double numberIn(const Recordset& rows, int field) {
    const Value& value = rows.value(field);
    return value.isNull() ? 0 : value.toNumber();
}

qint64 wholeIn(const Recordset& rows, int field) {
    return static_cast<qint64>(roundToWhole(numberIn(rows, field)));
}

QList<DayRow> storedRows(Connection& history, const QString& dm) {
    QList<DayRow> days;
    for (Recordset rows(history,
                        u"select date(shijian),kp,zg,zd,sp,qiansp,chengjiaol,chengjiaoe,"
                        u"fuquanyz from "_s +
                            dm + u" order by date(shijian)"_s);
         !rows.atEnd(); rows.moveNext()) {
        days << DayRow{dm,
                       dayIn(rows, 0),
                       wholeIn(rows, 1),
                       wholeIn(rows, 2),
                       wholeIn(rows, 3),
                       wholeIn(rows, 4),
                       wholeIn(rows, 5),
                       numberIn(rows, 6),
                       numberIn(rows, 7),
                       numberIn(rows, 8)};
    }
    return days;
}

// The library keeps what it sorts in memory unless told otherwise.
void inOneTransaction(const QString& path, const std::function<void(Connection&)>& fill) {
    Connection store(path, {});
    store.execute(u"pragma cache_size=-65536"_s);
    store.execute(u"pragma temp_store=file"_s);
    Transaction transaction(store);
    fill(store);
    transaction.commit();
}

// A new file comes to its place when it is complete.
void write(const QString& path, const std::function<void(Connection&)>& fill) {
    if (QFileInfo::exists(path)) {
        inOneTransaction(path, fill);
        return;
    }
    QDir().mkpath(QFileInfo(path).path());
    makeStore(path, [&](const QString& fresh) {
        createStore(fresh, {}, {});
        inOneTransaction(fresh, fill);
    });
}

// What the second has of a code becomes what the first has.
void levelCode(DayTables& second, const QString& dm, const QList<DayRow>& rows) {
    if (rows.isEmpty()) {
        return;
    }
    const QList<DayRow> there = second.daysFrom(dm, rows.first().day);
    second.add(dm, rows);
    for (const DayRow& day : there) {
        const auto same = std::ranges::lower_bound(rows, day.day, {}, &DayRow::day);
        if (same == rows.end() || same->day != day.day) {
            continue;
        }
        if (same->formerClose != day.formerClose) {
            second.setFormerClose(dm, day.day, same->formerClose);
        }
        if (same->factor > 0 && same->factor != day.factor) {
            second.setFactor(dm, day.day, day.day, same->factor);
        }
    }
}

void makeTemplate(Connection& second) {
    second.execute(u"create table if not exists nishihq2 ("_s + dayColumnsOfTables + u")"_s);
}

// The factors that a code's days have from now on, with the former closes that went by the ones of
// before. False if they have them already.
bool putFactors(DayTables& tables, const QString& dm, const FactorList& factors) {
    const QList<DayRow> days = tables.daysFrom(dm, {});
    QList<DayRow> fresh = days;
    bool hasChanged = false;
    for (qsizetype at = 0; at < days.size(); ++at) {
        fresh[at].factor = factors.on(days[at].day);
        hasChanged = hasChanged || fresh[at].factor != days[at].factor;
        if (at > 0 && goesBy(days[at - 1], days[at])) {
            fresh[at].formerClose = formerCloseBy(fresh[at - 1], fresh[at].factor);
        }
        if (fresh[at].formerClose != days[at].formerClose) {
            tables.setFormerClose(dm, days[at].day, fresh[at].formerClose);
        }
    }
    if (!hasChanged) {
        return false;
    }
    for (auto first = fresh.cbegin(); first != fresh.cend();) {
        const auto end = std::find_if(
            first, fresh.cend(), [&](const DayRow& day) { return day.factor != first->factor; });
        tables.setFactor(dm, first->day, std::prev(end)->day, first->factor);
        first = end;
    }
    return true;
}

QStringList codesWithoutFactors(Connection& first, const FactorsOfCodes& factors) {
    const QSet<QString> tables = tablesOf(first);
    QStringList codes;
    for (const QString& dm : factors.keys()) {
        if (tables.contains(dm) && isWithoutFactors(first, dm)) {
            codes << dm;
        }
    }
    return codes;
}

int putFactors(Connection& first, Connection& second, const QStringList& codes,
               const FactorsOfCodes& factors) {
    if (codes.isEmpty()) {
        return 0;
    }
    DayTables ofFirst(first, DayTables::Kind::first);
    DayTables ofSecond(second, DayTables::Kind::second);
    int changed = 0;
    for (const QString& dm : codes) {
        changed += putFactors(ofFirst, dm, factors[dm]) ? 1 : 0;
        putFactors(ofSecond, dm, factors[dm]);
    }
    return changed;
}

AddedDays addDays(const HistoryFiles& files, const ReadDays& read,
                  const std::optional<QList<ThemeMember>>& themes, const DayRanges& asked,
                  const FactorsOfCodes& factors) {
    AddedDays added;
    write(files.second, [&](Connection& second) {
        makeTemplate(second);
        write(files.first, [&](Connection& first) {
            addThemes(first, themes);
            const QStringList withoutFactors = codesWithoutFactors(first, factors);
            DayBatches batches(first, second);
            read([&](const DayRow& row) { batches.take(row); });
            added = batches.finish();
            added.refactored = putFactors(first, second, withoutFactors, factors);
            noteAsked(first, asked, factors.keys());
            noteAsked(second, asked, factors.keys());
        });
    });
    return added;
}

}  // namespace

AddedDays addToHistory(const HistoryFiles& files, const QList<DayRow>& days,
                       const std::optional<QList<ThemeMember>>& themes, const DayRanges& asked,
                       const FactorsOfCodes& factors) {
    const ReadDays all = [&](const TakeDay& take) {
        for (const DayRow& row : days) {
            take(row);
        }
    };
    return addDays(files, all, themes, asked, factors);
}

AddedDays readIntoHistory(const HistoryFiles& files, const ReadDays& read,
                          const std::optional<QList<ThemeMember>>& themes) {
    return addDays(files, read, themes, {}, {});
}

void levelSecond(const HistoryFiles& files, const QStringList& codes) {
    Connection first(files.first, {});
    const QSet<QString> tables = tablesOf(first);
    const QMap<QString, AskedRange> allAsked = askedRanges(first);
    write(files.second, [&](Connection& second) {
        makeTemplate(second);
        DayTables days(second, DayTables::Kind::second);
        DayRanges asked;
        QStringList withFactors;
        for (const QString& dm : codes) {
            if (tables.contains(dm)) {
                levelCode(days, dm, storedRows(first, dm));
            }
            const AskedRange ofCode = allAsked.value(dm);
            if (!ofCode.days.isNull()) {
                asked[dm] = ofCode.days;
            }
            if (ofCode.withFactors) {
                withFactors << dm;
            }
        }
        noteAsked(second, asked, withFactors);
    });
}

bool isWithoutFactors(Connection& history, const QString& dm) {
    return Recordset(history, u"select 1 from "_s + dm + u" where fuquanyz<>1 limit 1"_s).atEnd();
}

QSet<QString> tablesOf(Connection& history) {
    QSet<QString> tables;
    for (Recordset names(history, u"select name from sqlite_master where type='table'"_s);
         !names.atEnd(); names.moveNext()) {
        tables << names.value(0).toText().toUpper();
    }
    return tables;
}

// One of before that tells no count stands as long as there is a day.
QMap<QString, AskedRange> askedRanges(Connection& history) {
    QMap<QString, AskedRange> ranges;
    if (!tablesOf(history).contains(u"LISHIFANWEI"_s)) {
        return ranges;
    }
    const QString stored = hasAskedColumn(history, u"tianshu"_s) ? u"ifnull(tianshu,1)"_s : u"1"_s;
    const QString factors = hasAskedColumn(history, u"yinzi"_s) ? u"ifnull(yinzi,0)"_s : u"0"_s;
    for (Recordset rows(history, u"select dm,ifnull(cong,''),ifnull(dao,''),"_s + stored + u',' +
                                     factors + u" from lishifanwei"_s);
         !rows.atEnd(); rows.moveNext()) {
        ranges[rows.value(0).toText()] = {{dayIn(rows, 1), dayIn(rows, 2)},
                                          rows.value(3).toInteger(),
                                          rows.value(4).toInteger() != 0};
    }
    return ranges;
}

void keepSortsOutOfMemory() {
    sqlite3_config(SQLITE_CONFIG_MMAP_SIZE, sqlite3_int64{0}, sqlite3_int64{0});
}

void dropIndexes(const QString& path) {
    Connection store(path, {});
    Transaction transaction(store);
    for (Recordset indexes(store, u"select name from sqlite_master where type='index'"_s);
         !indexes.atEnd(); indexes.moveNext()) {
        store.execute(u"drop index "_s + indexes.value(0).toText());
    }
    transaction.commit();
}

}  // namespace guanchao
