#include "services/day_bars.h"

#include "services/bar_check.h"
#include "services/day_bars_csv.h"
#include "services/day_bars_eastmoney.h"
#include "services/day_bars_sina.h"
#include "services/day_bars_tencent.h"
#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

std::unique_ptr<BarKind> barKind(const QString& name) {
    if (name == u"sina"_s) {
        return std::make_unique<SinaDayBars>();
    }
    if (name == u"tencent"_s) {
        return std::make_unique<TencentDayBars>();
    }
    if (name == u"eastmoney"_s) {
        return std::make_unique<EastmoneyDayBars>();
    }
    return std::make_unique<CsvDayBars>();
}

DayBars::DayBars(HttpClient& http, const Clock& clock, QList<Service> services)
    : http_(http), clock_(clock), services_(std::move(services)) {}

QCoro::Task<BarsReply> DayBars::fetch(QString dm, QDate first, QDate last,
                                      std::stop_token stop) const {
    const BarRange range = {dm, first, last, clock_.now()};
    BarsReply reply;
    for (const Service& service : services_) {
        const Answer answer = co_await ask(service, range, stop);
        reply.turnedAway = reply.turnedAway || answer.turnedAway;
        if (answer.read.fault.isEmpty()) {
            reply.days = answer.read.bars;
            reply.kind = service.kind;
            break;
        }
        http_.complain(service, answer.read.fault);
        reply.lacks << u"历史行情 "_s + lineOn(service, answer.read.fault);
    }
    if (services_.isEmpty()) {
        reply.lacks << allOffWords(u"history"_s);
    }
    co_return reply;
}

QCoro::Task<DayBars::Answer> DayBars::ask(Service service, BarRange range,
                                          std::stop_token stop) const {
    const std::unique_ptr<BarKind> kind = barKind(service.kind);
    Answer answer;
    for (const QString& path : kind->paths(range)) {
        const HttpReply reply = co_await http_.get(service, path, stop);
        answer.turnedAway = reply.turnedAway();
        if (!reply.answered()) {
            answer.read = {{}, failureWords(reply)};
            co_return answer;
        }
        const ReadBars part = kind->read(reply.body, range.dm);
        if (!part.fault.isEmpty()) {
            answer.read = part;
            co_return answer;
        }
        answer.read.bars << part.bars;
    }
    if (kind->isChecked()) {
        answer.read = checkedBars(answer.read, range);
    }
    co_return answer;
}

}  // namespace guanchao
