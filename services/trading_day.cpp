#include "services/trading_day.h"

namespace guanchao {

QDate lastDayOver(const QDateTime& now) {
    return now.time() >= marketClose ? now.date() : now.date().addDays(-1);
}

}  // namespace guanchao
