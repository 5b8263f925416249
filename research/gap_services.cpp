#include "research/gap_services.h"

#include <algorithm>

#include "research/history_rows.h"
#include "services/service_names.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Asked for before a gap, for the former close of its first day: longer than any holiday.
constexpr int leadDays = 30;

QList<Service> ofKind(const QList<Service>& services, const QString& kind) {
    QList<Service> found;
    std::ranges::copy_if(services, std::back_inserter(found),
                         [&](const Service& it) { return it.kind == kind; });
    return found;
}

}  // namespace

GapServices::GapServices(HttpClient& http, const Clock& clock, const Services& services)
    : clock_(clock),
      isOff_(services.history.isEmpty()),
      namesFactors_(!services.factors.isEmpty()),
      hasPricesWithFactors_(!ofKind(services.history, pricesWithFactors).isEmpty()),
      bars_(http, clock, services.history),
      barsWithFactors_(http, clock, ofKind(services.history, pricesWithFactors)),
      factors_(http, services.factors) {}

QString GapServices::fault() const {
    if (isOff_) {
        return allOffWords(u"history"_s);
    }
    return namesFactors_ && !hasPricesWithFactors_
               ? u"复权因子的网站在用，与它配套的历史行情（%1）却没有，"
                 u"请在%2里启用它，或者停用复权因子"_s.arg(kindName(pricesWithFactors),
                                                           servicesWindow)
               : QString();
}

int GapServices::ahead() const {
    return namesFactors_ ? barsWithFactors_.ahead() : bars_.ahead();
}

// An index and a fund have no factors.
QCoro::Task<FilledGap> GapServices::fetch(CodeGap gap, std::stop_token stop) const {
    if (gap.days.isNull()) {
        const FilledGap found = co_await fetchFactors(gap, stop);
        co_return FilledGap(found);
    }
    const bool hasFactors = namesFactors_ && isStockCode(gap.dm);
    const DayBars& bars = hasFactors ? barsWithFactors_ : bars_;
    const BarsReply reply =
        co_await bars.fetch(gap.dm, gap.days.first.addDays(-leadDays), gap.days.last, stop);
    FilledGap filled;
    filled.gap = gap;
    filled.turnedAway = reply.turnedAway;
    if (!reply.days) {
        filled.lack = reply.lacks.join(u'；');
        co_return FilledGap(filled);
    }
    filled.isKnown = !reply.days->isEmpty();
    if (hasFactors && filled.isKnown) {
        const FilledGap found = co_await fetchFactors(gap, stop);
        filled.factors = found.factors;
        filled.lack = found.lack;
    }
    if (!filled.lack.isEmpty()) {
        co_return FilledGap(filled);
    }
    filled.rows = gapRows(gap, *reply.days, filled.factors.value_or(FactorList()));
    filled.asked = toldOf(gap, *reply.days);
    co_return FilledGap(filled);
}

QCoro::Task<FilledGap> GapServices::fetchFactors(CodeGap gap, std::stop_token stop) const {
    FilledGap filled;
    filled.gap = gap;
    filled.factors = co_await factors_.fetch(gap.dm, stop);
    if (!filled.factors) {
        filled.lack = u"没有读到复权因子"_s;
    }
    co_return FilledGap(filled);
}

// A service may be without the day that has just ended.
DayRange GapServices::toldOf(const CodeGap& gap, const QList<DayBar>& bars) const {
    const QDate today = clock_.now().date();
    const bool isWithoutToday = bars.isEmpty() || bars.last().day < today;
    DayRange told = gap.askedThen;
    if (isWithoutToday && told.last >= today) {
        told.last = today.addDays(-1);
    }
    return bars.isEmpty() || told.last < told.first ? DayRange() : told;
}

}  // namespace guanchao
