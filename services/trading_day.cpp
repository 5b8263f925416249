#include "services/trading_day.h"

namespace guanchao {

QDate lastDayOver(const QDateTime& now) {
    const QTime close(15, 0);
    return now.time() >= close ? now.date() : now.date().addDays(-1);
}

}  // namespace guanchao
