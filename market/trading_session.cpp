#include "market/trading_session.h"

#include "services/trading_day.h"

namespace guanchao {

namespace {

constexpr int minuteOfDay(int hour, int minute) {
    return hour * 60 + minute;
}

// Strictly between the two, counted in whole minutes.
bool between(int minute, int begin, int end) {
    return minute > begin && minute < end;
}

}  // namespace

bool inTradingSession(const QDateTime& now) {
    const int minute = minuteOfDay(now.time().hour(), now.time().minute());
    return isWeekday(now.date()) && (between(minute, minuteOfDay(9, 20), minuteOfDay(11, 35)) ||
                                     between(minute, minuteOfDay(12, 55), minuteOfDay(15, 5)));
}

void followSession(Globals& globals, const QDateTime& now) {
    const qint16 open = inTradingSession(now) ? 1 : 0;
    globals.jiaoyishiduan = open;
    if (globals.jiankongshoudong != now.date()) {
        globals.jiankongkaiqi = open;
    }
}

}  // namespace guanchao
