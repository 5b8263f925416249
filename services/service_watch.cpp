#include "services/service_watch.h"

#include <cstdlib>
#include <utility>

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
constexpr qsizetype mostReasons = 4;

QString keyOf(const Service& service) {
    return service.purpose + u' ' + service.kind + u' ' + service.host;
}

}  // namespace

ServiceWatch::ServiceWatch(HttpClient& http, const Clock& clock) : http_(http), clock_(clock) {
    settled_.setSingleShot(true);
    settled_.callOnTimeout(&settled_, [this] { tellWhatIsBack(); });
}

ServiceWatch::~ServiceWatch() {
    for (const Watched& it : std::as_const(watched_)) {
        const bool isBack = it.state.failuresInARow == 0;
        if (it.spell && (isBack || it.spell->count > 1)) {
            tell(*it.spell, isBack ? u"又应答了"_s : u"还没有应答"_s);
        }
    }
}

// One that rests, or isn't there, was not asked.
QCoro::Task<HttpReply> ServiceWatch::get(Service service, QString path, std::stop_token stop) {
    const HttpReply reply = co_await http_.get(service, path, stop);
    if (reply.outcome == HttpReply::Outcome::notThere) {
        co_return HttpReply(reply);
    }
    Watched& it = watched_[keyOf(service)];
    it.beforeAnswer.reset();
    if (reply.answered() || reply.hasNoPage()) {
        takeAnswer(it);
    } else if (reply.outcome != HttpReply::Outcome::resting) {
        noteFailure(service, it, failureWords(reply));
    }
    co_return HttpReply(reply);
}

// Of the answer that came last. A request that failed has been noted as such.
void ServiceWatch::complain(const Service& service, const QString& reason) {
    Watched& it = watched_[keyOf(service)];
    if (it.beforeAnswer) {
        it.state = *it.beforeAnswer;
        it.beforeAnswer.reset();
        noteFailure(service, it, reason);
    }
}

void ServiceWatch::note(const Service& service, const QString& failure) {
    Watched& it = watched_[keyOf(service)];
    if (failure.isEmpty()) {
        takeAnswer(it);
    } else {
        noteFailure(service, it, failure);
    }
}

void ServiceWatch::takeAnswer(Watched& watched) {
    watched.beforeAnswer = watched.state;
    State& state = watched.state;
    ++state.answers;
    state.answered = clock_.now();
    state.failsSince = {};
    state.failuresInARow = 0;
    if (watched.spell) {
        settled_.start(0);
    }
}

void ServiceWatch::noteFailure(const Service& service, Watched& watched,
                               const QString& reason) const {
    State& state = watched.state;
    state.failed = clock_.now();
    state.reason = reason;
    const bool isFirst = state.failuresInARow == 0;
    if (isFirst) {
        state.failsSince = state.failed;
    }
    if (isFirst || std::abs(state.counted.secsTo(state.failed)) >= secondsApart) {
        ++state.failuresInARow;
        state.counted = state.failed;
    }
    const QString head = headOf(reason);
    if (!watched.spell) {
        watched.spell = Spell{loggedName(service.purpose, service), state.failed, {}, 0, {}};
        writeLog({LogKind::service, watched.spell->service, head});
    }
    Spell& spell = *watched.spell;
    ++spell.count;
    spell.last = state.failed;
    if (!spell.reasons.contains(head) && spell.reasons.size() < mostReasons) {
        spell.reasons << head;
    }
}

// One that answers and fails by turns is not back.
void ServiceWatch::tellWhatIsBack() {
    for (Watched& it : watched_) {
        const bool answers = it.spell && it.state.failuresInARow == 0;
        if (answers && std::abs(it.spell->last.secsTo(it.state.answered)) >= secondsOfOneMiss) {
            tell(*std::exchange(it.spell, std::nullopt), u"又应答了"_s);
        }
    }
}

void ServiceWatch::tell(const Spell& spell, const QString& words) {
    writeLog({LogKind::service, spell.service,
              u"%1，%2 起失败 %3 次（%4）"_s.arg(words, spell.begun.toString(u"MM-dd hh:mm:ss"_s))
                  .arg(spell.count)
                  .arg(spell.reasons.join(u'，'))});
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
