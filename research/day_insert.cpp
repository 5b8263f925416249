#include "research/day_insert.h"

#include <array>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int valuesOfDay = 9;

// yyyy-MM-dd
std::array<char, 10> dayText(const QDate& day) {
    const auto digit = [](int number, int unit) {
        return static_cast<char>('0' + number / unit % 10);
    };
    int year = 0;
    int month = 0;
    int date = 0;
    day.getDate(&year, &month, &date);
    return {digit(year, 1000),
            digit(year, 100),
            digit(year, 10),
            digit(year, 1),
            '-',
            digit(month, 10),
            digit(month, 1),
            '-',
            digit(date, 10),
            digit(date, 1)};
}

}  // namespace

DayInsert::DayInsert(Connection& store, const QString& table, Code code)
    : store_(store),
      text_(u"insert into "_s + table + u" values("_s +
            QString(u"?,"_s).repeated(valuesOfDay - 1 + (code == Code::with ? 1 : 0)) + u"?)"_s),
      statement_(prepare(store, text_)),
      hasCode_(code == Code::with) {}

void DayInsert::row(const DayRow& row) {
    sqlite3_stmt* statement = statement_.get();
    int place = 0;
    const QByteArray dm = hasCode_ ? row.dm.toLatin1() : QByteArray();
    if (hasCode_) {
        sqlite3_bind_text(statement, ++place, dm.constData(), static_cast<int>(dm.size()),
                          SQLITE_STATIC);
    }
    const std::array<char, 10> day = dayText(row.day);
    sqlite3_bind_text(statement, ++place, day.data(), day.size(), SQLITE_STATIC);
    for (const qint64 price : {row.open, row.high, row.low, row.close, row.formerClose}) {
        sqlite3_bind_int64(statement, ++place, price);
    }
    for (const double number : {row.volume, row.turnover, row.factor}) {
        sqlite3_bind_double(statement, ++place, number);
    }
    if (sqlite3_step(statement) != SQLITE_DONE) {
        raiseLastFailure(store_, text_);
    }
    sqlite3_reset(statement);
}

}  // namespace guanchao
