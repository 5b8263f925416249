#include "tools/practice_market/practice_events.h"

namespace guanchao {

double aboveWalk(const QString& code, const QDate& day) {
    return code == dividendCode && day < exDividendDay ? dividendRatio : 1;
}

bool isHalted(const QString& code, const QDate& day) {
    const QDate monday(2026, 9, 7);
    return code == haltedCode && day >= monday && day < monday.addDays(7);
}

}  // namespace guanchao
