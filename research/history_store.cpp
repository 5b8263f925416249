#include "research/history_store.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QSet>
#include <algorithm>
#include <functional>

#include "base/values.h"
#include "store/bound_insert.h"
#include "store/recordset.h"
#include "store/store_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The columns of a stock's table: 时间, 开盘, 最高, 最低, 收盘, 前收盘, 成交量, 成交额, 复权因子.
const QString dayColumns =
    u"shijian text,kp integer,zg integer,zd integer,sp integer,qiansp integer,"
    u"chengjiaol numeric,chengjiaoe numeric,fuquanyz real"_s;

using DaysByCode = QMap<QString, QList<DayRow>>;

QStringList valuesOf(const DayRow& row) {
    return {dateText(row.day),        QString::number(row.open),  QString::number(row.high),
            QString::number(row.low), QString::number(row.close), QString::number(row.formerClose),
            numberText(row.volume),   numberText(row.turnover),   numberText(row.factor)};
}

bool isIndex(const QString& dm) {
    return dm.startsWith(u"SH000"_s) || dm.startsWith(u"SZ399"_s);
}

QSet<QString> daysIn(Connection& store, const QString& source) {
    QSet<QString> days;
    for (Recordset rows(store, u"select date(shijian) from "_s + source); !rows.atEnd();
         rows.moveNext()) {
        days << rows.value(0).toText();
    }
    return days;
}

// The rows of a code that `source` lacks: a table and the beginning of a condition.
QList<DayRow> missingDays(Connection& store, const QString& source, const QList<DayRow>& rows) {
    const auto oldest = std::ranges::min_element(rows, {}, &DayRow::day);
    const QString oldestDay = oldest == rows.end() ? QString() : dateText(oldest->day);
    QSet<QString> known = daysIn(store, source + u" date(shijian)>="_s + quoted(oldestDay));
    QList<DayRow> missing;
    for (const DayRow& row : rows) {
        const QString day = dateText(row.day);
        if (!known.contains(day)) {
            known << day;
            missing << row;
        }
    }
    return missing;
}

int addStockTables(Connection& store, const DaysByCode& codes) {
    int added = 0;
    for (auto code = codes.cbegin(); code != codes.cend(); ++code) {
        const QString& dm = code.key();
        store.execute(u"create table if not exists "_s + dm + u" ("_s + dayColumns + u")"_s);
        store.execute(u"create index if not exists "_s + dm + u"_shijian on "_s + dm +
                      u" (date(shijian))"_s);
        BoundInsert insert(store, u"insert into "_s + dm + u" values(?,?,?,?,?,?,?,?,?)"_s);
        for (const DayRow& row : missingDays(store, dm + u" where"_s, code.value())) {
            insert.row(valuesOf(row));
            ++added;
        }
    }
    return added;
}

void addMarketTable(Connection& store, const DaysByCode& codes) {
    store.execute(u"create table if not exists geguhq (dm text,"_s + dayColumns + u")"_s);
    store.execute(u"create index if not exists geguhq_shijian on geguhq (date(shijian))"_s);
    store.execute(u"create index if not exists geguhq_dm on geguhq (dm,date(shijian))"_s);
    BoundInsert insert(store, u"insert into geguhq values(?,?,?,?,?,?,?,?,?,?)"_s);
    for (auto code = codes.cbegin(); code != codes.cend(); ++code) {
        const QString source = u"geguhq where dm="_s + quoted(code.key()) + u" and"_s;
        if (isIndex(code.key())) {
            continue;
        }
        for (const DayRow& row : missingDays(store, source, code.value())) {
            insert.row(QStringList{row.dm} + valuesOf(row));
        }
    }
}

void addThemes(Connection& store, const std::optional<QList<ThemeMember>>& themes) {
    store.execute(u"create table if not exists dzhzhuti (zhutiname text,dm text)"_s);
    store.execute(u"create index if not exists dzhzhuti_dm on dzhzhuti (dm,zhutiname)"_s);
    store.execute(u"create index if not exists dzhzhuti_zhutiname on dzhzhuti (zhutiname)"_s);
    if (!themes) {
        return;
    }
    store.execute(u"delete from dzhzhuti"_s);
    BoundInsert insert(store, u"insert into dzhzhuti(zhutiname,dm) values(?,?)"_s);
    for (const ThemeMember& member : *themes) {
        insert.row({member.theme, member.dm});
    }
}

// dm, cong 从 and dao 到.
void noteAsked(Connection& store, const DayRanges& asked) {
    if (asked.isEmpty()) {
        return;
    }
    store.execute(
        u"create table if not exists lishifanwei (dm text primary key,cong text,dao text)"_s);
    BoundInsert insert(store, u"insert or replace into lishifanwei(dm,cong,dao) values(?,?,?)"_s);
    for (auto code = asked.cbegin(); code != asked.cend(); ++code) {
        insert.row({code.key(), dateText(code->first), dateText(code->last)});
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

void inOneTransaction(const QString& path, const std::function<void(Connection&)>& fill) {
    Connection store(path, {});
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

void addToSecond(const QString& path, const DaysByCode& codes, const DayRanges& asked) {
    write(path, [&](Connection& store) {
        store.execute(u"create table if not exists nishihq2 ("_s + dayColumns + u")"_s);
        addStockTables(store, codes);
        noteAsked(store, asked);
    });
}

}  // namespace

int addToHistory(const HistoryFiles& files, const QList<DayRow>& days,
                 const std::optional<QList<ThemeMember>>& themes, const DayRanges& asked) {
    DaysByCode codes;
    for (const DayRow& row : days) {
        codes[row.dm] << row;
    }
    int added = 0;
    write(files.first, [&](Connection& store) {
        added = addStockTables(store, codes);
        addMarketTable(store, codes);
        addThemes(store, themes);
        noteAsked(store, asked);
    });
    addToSecond(files.second, codes, asked);
    return added;
}

void levelSecond(const HistoryFiles& files, const QStringList& codes) {
    Connection first(files.first, {});
    const QSet<QString> tables = tablesOf(first);
    const DayRanges allAsked = askedRanges(first);
    DaysByCode days;
    DayRanges asked;
    for (const QString& dm : codes) {
        if (tables.contains(dm)) {
            days[dm] = storedRows(first, dm);
        }
        if (allAsked.contains(dm)) {
            asked[dm] = allAsked[dm];
        }
    }
    addToSecond(files.second, days, asked);
}

QSet<QString> tablesOf(Connection& history) {
    QSet<QString> tables;
    for (Recordset names(history, u"select name from sqlite_master where type='table'"_s);
         !names.atEnd(); names.moveNext()) {
        tables << names.value(0).toText().toUpper();
    }
    return tables;
}

DayRanges askedRanges(Connection& history) {
    DayRanges ranges;
    if (!tablesOf(history).contains(u"LISHIFANWEI"_s)) {
        return ranges;
    }
    for (Recordset rows(history, u"select dm,cong,dao from lishifanwei"_s); !rows.atEnd();
         rows.moveNext()) {
        ranges[rows.value(0).toText()] = {dayIn(rows, 1), dayIn(rows, 2)};
    }
    return ranges;
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
