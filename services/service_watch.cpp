#include "services/service_watch.h"

#include <cstdlib>

#include "base/log.h"
#include "base/log_words.h"
#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int secondsOfOneMiss = 60;
// Requests that were under way together fail together.
constexpr int secondsApart = 2;
constexpr int severalInARow = 5;

QString keyOf(const Service& service) {
    return service.purpose + u' ' + service.kind + u' ' + service.host;
}

QString loggedName(const Service& service) {
    return purposeName(service.purpose) + u' ' + shownAddress(service.host);
}

}  // namespace

// One that rests, or isn't there, was not asked.
QCoro::Task<HttpReply> ServiceWatch::get(Service service, QString path, std::stop_token stop) {
    const HttpReply reply = co_await http_.get(service, path, stop);
    if (reply.outcome == HttpReply::Outcome::notThere) {
        co_return HttpReply(reply);
    }
    Watched& it = watched_[keyOf(service)];
    it.beforeAnswer.reset();
    if (reply.answered() || reply.hasNoPage()) {
        it.beforeAnswer = it.state;
        ++it.state.answers;
        it.state.answered = clock_.now();
        it.state.failsSince = {};
        it.state.failuresInARow = 0;
    } else if (reply.outcome != HttpReply::Outcome::resting) {
        noteFailure(service, it.state, failureWords(reply));
    }
    co_return HttpReply(reply);
}

// Of the answer that came last. A request that failed has been noted as such.
void ServiceWatch::complain(const Service& service, const QString& reason) {
    Watched& it = watched_[keyOf(service)];
    if (it.beforeAnswer) {
        it.state = *it.beforeAnswer;
        it.beforeAnswer.reset();
        noteFailure(service, it.state, reason);
    }
}

void ServiceWatch::noteFailure(const Service& service, State& state, const QString& reason) const {
    state.failed = clock_.now();
    state.reason = reason;
    const bool isFirst = state.failuresInARow == 0;
    if (isFirst) {
        state.failsSince = state.failed;
        writeLog({LogKind::service, loggedName(service), headOf(reason)});
    }
    if (isFirst || std::abs(state.counted.secsTo(state.failed)) >= secondsApart) {
        ++state.failuresInARow;
        state.counted = state.failed;
    }
}

ServiceWatch::State ServiceWatch::stateOf(const Service& service) const {
    return watched_.value(keyOf(service)).state;
}

bool ServiceWatch::isFailing(const Service& service) const {
    const State state = stateOf(service);
    return state.failuresInARow >= severalInARow ||
           (state.failuresInARow > 1 && state.failsSince.secsTo(state.failed) >= secondsOfOneMiss);
}

QString stateWords(const Service& service, const ServiceWatch::State& state) {
    if (service.host.isEmpty()) {
        return u"没有网址"_s;
    }
    const auto timeOf = [](const QDateTime& when) { return when.toString(u"hh:mm:ss"_s); };
    if (state.failuresInARow > 0) {
        return u"%1（%2）"_s.arg(state.reason, timeOf(state.failed));
    }
    return state.answered.isValid()
               ? u"正常，应答 %1 次，最近 %2"_s.arg(state.answers).arg(timeOf(state.answered))
               : u"还没有问过"_s;
}

}  // namespace guanchao
