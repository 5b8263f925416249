#include "services/trading_day.h"

namespace guanchao {

bool isWeekday(const QDate& day) {
    return day.dayOfWeek() <= Qt::Friday;
}

QDate lastDayOver(const QDateTime& now) {
    return now.time() >= marketClose ? now.date() : now.date().addDays(-1);
}

QDate lastWeekdayOver(const QDateTime& now) {
    QDate day = lastDayOver(now);
    while (!isWeekday(day)) {
        day = day.addDays(-1);
    }
    return day;
}

}  // namespace guanchao
