// The day tables of one history database while days are added to them: a table for each code and,
// in the first database, geguhq with the days of all stocks. Failures raise StoreError.
#pragma once

#include <QHash>
#include <QList>
#include <cstdint>
#include <span>
#include <vector>

#include "research/day_row.h"
#include "store/connection.h"

namespace guanchao {

// The columns of a code's table: 时间, 开盘, 最高, 最低, 收盘, 前收盘, 成交量, 成交额, 复权因子.
extern const QString dayColumnsOfTables;

// The days that a table has of a code from `since` on, in a bit each: there are thousands of codes.
class KnownDays {
public:
    // False if it was there.
    bool add(const QDate& day);

    QDate since;  // none: not read yet

private:
    std::vector<bool> days_;
};

class DayTables {
public:
    enum class Kind : std::uint8_t { first, second };

    DayTables(Connection& store, Kind kind);

    // Writes the days of a code, oldest first, that are not there; returns how many its own table
    // got.
    int add(const QString& dm, std::span<const DayRow> rows);

    // The stored days of a code from the last one before `day` on, oldest first: closes, former
    // closes and factors alone.
    QList<DayRow> daysFrom(const QString& dm, const QDate& day);

    // In each table that has the day.
    void setFormerClose(const QString& dm, const QDate& day, qint64 formerClose);
    void setFactor(const QString& dm, const QDate& first, const QDate& last, double factor);

    // Makes the indexes that are cheaper to make once all rows are there.
    void finish();

private:
    void makeTable(const QString& dm);
    KnownDays& knownOfCode(const QString& dm, const QDate& since);
    KnownDays& knownOfMarket(const QString& dm, const QDate& since);
    KnownDays readDays(const QString& source, const QDate& since);
    void update(const QString& dm, const QString& column, const QString& days);

    Connection& store_;
    bool hasMarket_;  // geguhq
    bool marketIsEmpty_ = false;
    QHash<QString, KnownDays> ofCodes_;
    QHash<QString, KnownDays> ofMarket_;
};

}  // namespace guanchao
