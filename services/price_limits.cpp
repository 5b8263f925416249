#include "services/price_limits.h"

#include "services/stock_code.h"

namespace guanchao {

namespace {

const QDate widerChiNext(2020, 8, 24);

bool isOfStar(QStringView dm) {
    return dm.startsWith(u"SH68");
}

bool isOfChiNext(QStringView dm) {
    return dm.startsWith(u"SZ30");
}

// Those not yet reformed too. "S*ST" is not among them.
bool isUnderSpecialTreatment(QStringView jc) {
    const QString mark = jc.left(2).toString().toUpper();
    return mark == u"ST" || mark == u"*S" || mark == u"SS";
}

int percentOf(bool isOnWideBoard, QStringView dm, QStringView jc) {
    if (isOnWideBoard) {
        return 20;
    }
    if (isOfBeijing(dm)) {
        return 30;
    }
    return isUnderSpecialTreatment(jc) ? 5 : 10;
}

}  // namespace

int limitPercent(QStringView dm, QStringView jc) {
    return percentOf(isOfStar(dm) || isOfChiNext(dm), dm, jc);
}

int limitPercentOn(QStringView dm, const QDate& day) {
    return percentOf(isOfStar(dm) || (isOfChiNext(dm) && day >= widerChiNext), dm, {});
}

int shownLimitPercent(QStringView dm, QStringView jc) {
    return percentOf(false, dm, jc);
}

}  // namespace guanchao
