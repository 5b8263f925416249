#include "market/day_history.h"

#include <QStringList>
#include <cmath>

#include "base/values.h"
#include "formats/gbk.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype fewestLines = 4;
constexpr qsizetype fewestFields = 5;
constexpr qsizetype volumeField = 5;

QString symbolOf(const QString& dm) {
    return dm.right(codeDigits) + (isOfShanghai(dm) ? u".ss"_s : u".sz"_s);
}

// A suspended day may come with a close of 0. A number beyond these bounds is damage, and a gain
// against it would be a row for good.
bool isPrice(double close) {
    constexpr double least = 1e-9;
    constexpr double most = 1e9;
    return close == 0 || (std::isfinite(close) && close >= least && close <= most);
}

// A page that is no CSV has lines with commas too: a day needs a date and a close that are ones.
std::optional<HistoryDay> readDay(const QString& line) {
    const QStringList fields = line.trimmed().split(u',');
    if (fields.size() < fewestFields) {
        return std::nullopt;
    }
    HistoryDay day;
    day.day = QDate::fromString(fields[0].trimmed(), u"yyyy-M-d"_s);
    day.closeText = fields[4].trimmed();
    if (!day.day.isValid() || !readsAsNumber(day.closeText)) {
        return std::nullopt;
    }
    day.open = numericPrefix(fields[1]);
    day.high = numericPrefix(fields[2]);
    day.low = numericPrefix(fields[3]);
    day.close = numericPrefix(day.closeText);
    day.volume = numericPrefix(fields.value(volumeField));
    return isPrice(day.close) ? std::optional(day) : std::nullopt;
}

bool isHeader(const QString& line) {
    return line.split(u',').size() >= fewestFields && !line.contains(u'<');
}

}  // namespace

QString dayHistoryPath(const QString& dm, const QDate& first, const QDate& last) {
    return u"/table.csv?s=%1&a=%2&b=%3&c=%4&d=%5&e=%6&f=%7&g=d&ignore=.csv"_s.arg(symbolOf(dm))
        .arg(first.month() - 1)
        .arg(first.day())
        .arg(first.year())
        .arg(last.month() - 1)
        .arg(last.day())
        .arg(last.year());
}

std::optional<QList<HistoryDay>> readDayHistory(const QString& reply) {
    const QStringList lines = reply.split(u'\n');
    QList<HistoryDay> days;
    for (qsizetype line = lines.size() - 1; lines.size() >= fewestLines && line > 0; --line) {
        if (const std::optional<HistoryDay> day = readDay(lines[line])) {
            days << *day;
        }
    }
    return days.isEmpty() && !isHeader(lines[0]) ? std::nullopt : std::optional(days);
}

QCoro::Task<HistoryReply> DayHistory::fetch(QString dm, QDate first, QDate last,
                                            std::stop_token stop) const {
    const QString path = dayHistoryPath(dm, first, last);
    const HttpReply reply = co_await http_.get(service_, path, stop);
    HistoryReply history;
    history.refused = reply.turnedAway();
    if (reply.answered()) {
        history.days = readDayHistory(textFromGbk(reply.body));
    }
    co_return history;
}

}  // namespace guanchao
