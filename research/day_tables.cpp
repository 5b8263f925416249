#include "research/day_tables.h"

#include <QLocale>
#include <cmath>

#include "base/values.h"
#include "research/day_insert.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Before the exchanges opened; no day of an older one is kept.
const QDate firstOfBits(1990, 1, 1);

int insertUnknown(Connection& store, const QString& table, KnownDays& known,
                  std::span<const DayRow> rows, DayInsert::Code code) {
    DayInsert insert(store, table, code);
    int added = 0;
    for (const DayRow& row : rows) {
        if (known.add(row.day)) {
            insert.row(row);
            ++added;
        }
    }
    return added;
}

}  // namespace

const QString dayColumnsOfTables =
    u"shijian text,kp integer,zg integer,zd integer,sp integer,qiansp integer,"
    u"chengjiaol numeric,chengjiaoe numeric,fuquanyz real"_s;

bool KnownDays::add(const QDate& day) {
    if (day < firstOfBits) {
        return false;
    }
    const auto bit = static_cast<size_t>(firstOfBits.daysTo(day));
    if (bit >= days_.size()) {
        days_.resize(bit + 1);
    }
    const bool isNew = !days_[bit];
    days_[bit] = true;
    return isNew;
}

DayTables::DayTables(Connection& store, Kind kind)
    : store_(store), hasMarket_(kind == Kind::first) {
    if (hasMarket_) {
        store.execute(u"create table if not exists geguhq (dm text,"_s + dayColumnsOfTables +
                      u")"_s);
        marketIsEmpty_ = Recordset(store, u"select 1 from geguhq limit 1"_s).atEnd();
    }
    if (!marketIsEmpty_) {
        finish();
    }
}

int DayTables::add(const QString& dm, std::span<const DayRow> rows) {
    makeTable(dm);
    if (rows.empty()) {
        return 0;
    }
    const QDate oldest = rows.front().day;
    if (hasMarket_ && !isIndex(dm)) {
        insertUnknown(store_, u"geguhq"_s, knownOfMarket(dm, oldest), rows, DayInsert::Code::with);
    }
    return insertUnknown(store_, dm, knownOfCode(dm, oldest), rows, DayInsert::Code::without);
}

void DayTables::makeTable(const QString& dm) {
    if (!ofCodes_.contains(dm)) {
        store_.execute(u"create table if not exists "_s + dm + u" ("_s + dayColumnsOfTables +
                       u")"_s);
        store_.execute(u"create index if not exists "_s + dm + u"_shijian on "_s + dm +
                       u" (date(shijian))"_s);
        ofCodes_.insert(dm, {});
    }
}

KnownDays& DayTables::knownOfCode(const QString& dm, const QDate& since) {
    KnownDays& known = ofCodes_[dm];
    if (known.since.isNull() || since < known.since) {
        known = readDays(dm + u" where"_s, since);
    }
    return known;
}

// Of a table that was empty all is known that has come since.
KnownDays& DayTables::knownOfMarket(const QString& dm, const QDate& since) {
    KnownDays& known = ofMarket_[dm];
    if (!marketIsEmpty_ && (known.since.isNull() || since < known.since)) {
        known = readDays(u"geguhq where dm="_s + quoted(dm) + u" and"_s, since);
    }
    return known;
}

// `source` is a table with the beginning of a condition.
KnownDays DayTables::readDays(const QString& source, const QDate& since) {
    KnownDays known;
    known.since = since;
    for (Recordset rows(store_, u"select date(shijian) from "_s + source + u" date(shijian)>="_s +
                                    quoted(dateText(since)));
         !rows.atEnd(); rows.moveNext()) {
        known.add(QDate::fromString(rows.value(0).toText(), Qt::ISODate));
    }
    return known;
}

QList<DayRow> DayTables::daysFrom(const QString& dm, const QDate& day) {
    makeTable(dm);
    const QString first = quoted(dateText(day));
    QList<DayRow> days;
    for (Recordset rows(store_,
                        u"select date(shijian),ifnull(sp,0),ifnull(qiansp,0),"
                        u"ifnull(nullif(fuquanyz,0),1) from "_s +
                            dm + u" where date(shijian)>=ifnull((select date(shijian) from "_s +
                            dm + u" where date(shijian)<"_s + first +
                            u" order by date(shijian) desc limit 1),"_s + first +
                            u") order by date(shijian)"_s);
         !rows.atEnd(); rows.moveNext()) {
        DayRow row;
        row.dm = dm;
        row.day = QDate::fromString(rows.value(0).toText(), Qt::ISODate);
        row.close = std::llround(rows.value(1).toNumber());
        row.formerClose = std::llround(rows.value(2).toNumber());
        row.factor = rows.value(3).toNumber();
        days << row;
    }
    return days;
}

void DayTables::setFormerClose(const QString& dm, const QDate& day, qint64 formerClose) {
    update(dm, u"qiansp="_s + QString::number(formerClose), u'=' + quoted(dateText(day)));
}

void DayTables::setFactor(const QString& dm, const QDate& first, const QDate& last, double factor) {
    update(dm, u"fuquanyz="_s + QString::number(factor, 'g', QLocale::FloatingPointShortest),
           u" between "_s + quoted(dateText(first)) + u" and "_s + quoted(dateText(last)));
}

void DayTables::update(const QString& dm, const QString& column, const QString& days) {
    const QString change = u" set "_s + column + u" where "_s;
    store_.execute(u"update "_s + dm + change + u"date(shijian)"_s + days);
    if (hasMarket_ && !isIndex(dm)) {
        store_.execute(u"update geguhq"_s + change + u"dm="_s + quoted(dm) +
                       u" and date(shijian)"_s + days);
    }
}

void DayTables::finish() {
    if (hasMarket_) {
        store_.execute(u"create index if not exists geguhq_shijian on geguhq (date(shijian))"_s);
        store_.execute(u"create index if not exists geguhq_dm on geguhq (dm,date(shijian))"_s);
    }
}

}  // namespace guanchao
