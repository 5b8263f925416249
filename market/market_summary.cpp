#include "market/market_summary.h"

#include <cmath>

#include "base/values.h"
#include "services/delisted.h"
#include "services/price_limits.h"
#include "services/stock_code.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

struct DayMove {
    double latest;
    double change;

    // Limits are prices of whole cents.
    bool reaches(int percent) const {
        const double former = latest - change;
        return std::abs(roundTo(former * (1 + percent / 100.0), 2) - latest) < 0.005;
    }
};

void addStock(MarketSummary& summary, const DayMove& move, int limit) {
    if (move.latest <= 0) {
        ++summary.suspended;
        return;
    }
    int& side = move.change > 0   ? summary.rising
                : move.change < 0 ? summary.falling
                                  : summary.level;
    ++side;
    summary.atLimitUp += move.change > 0 && move.reaches(limit) ? 1 : 0;
    summary.atLimitDown += move.change < 0 && move.reaches(-limit) ? 1 : 0;
}

}  // namespace

MarketSummary readMarketSummary(Connection& mainStore) {
    MarketSummary summary;
    for (Recordset rows(mainStore,
                        u"select dm,jc,coalesce(sp,0),coalesce(zhangjine,0),coalesce(zhangfu,0),"
                        u"coalesce(totaljine,0) from dmb where dm not in "_s +
                            delistedCodes(mainStore) + u" order by dm"_s);
         !rows.atEnd(); rows.moveNext()) {
        const QString dm = rows.value(0).toText();
        const QString jc = rows.value(1).toText();
        const DayMove move{rows.value(2).toNumber(), rows.value(3).toNumber()};
        if (isIndexCode(dm)) {
            summary.indexes << IndexQuote{jc, move.latest, rows.value(4).toNumber()};
        } else {
            addStock(summary, move, limitPercent(dm, jc));
            summary.turnover += rows.value(5).toNumber();
        }
    }
    return summary;
}

bool standsAtLimitUp(const QString& dm, const QString& jc, double latest, double change) {
    return latest > 0 && change > 0 && DayMove{latest, change}.reaches(limitPercent(dm, jc));
}

}  // namespace guanchao
