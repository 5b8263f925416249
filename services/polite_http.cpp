#include "services/polite_http.h"

#include <algorithm>
#include <cmath>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int restSeconds = 90;
constexpr int mostFailuresInARow = 10;
// Requests to one address at a time; more are a clock that was set back.
constexpr int mostWaiting = 10;

constexpr int forbidden = 403;
constexpr int tooManyRequests = 429;
constexpr int bannedAddress = 456;

// A service that has answered forbids because of what it was asked since.
bool isLimit(const HttpReply& reply, bool hasAnswered) {
    return reply.outcome == HttpReply::Outcome::refused &&
           (reply.status == tooManyRequests || reply.status == bannedAddress ||
            (reply.status == forbidden && hasAnswered));
}

bool isFailure(const HttpReply& reply) {
    const bool isRefusal = reply.outcome == HttpReply::Outcome::refused && !reply.hasNoPage();
    return isRefusal || reply.outcome == HttpReply::Outcome::silent ||
           reply.outcome == HttpReply::Outcome::broken;
}

}  // namespace

QString triedAgainWords(const Clock& clock) {
    return clock.now().addDuration(longerThanARest).toString(u"HH:mm:ss"_s) + u" 再试"_s;
}

PoliteHttp::PoliteHttp(HttpClient& http, const Clock& clock, Wait wait)
    : http_(http), clock_(clock), wait_(std::move(wait)) {}

QCoro::Task<HttpReply> PoliteHttp::get(Service service, QString path, std::stop_token stop) {
    if (rests(service.host)) {
        co_return resting(service.host);
    }
    const std::chrono::milliseconds wait = takeTurn(service);
    if (wait.count() > 0) {
        co_await wait_(wait, stop);
        if (rests(service.host)) {
            co_return resting(service.host);
        }
    }
    HttpReply reply = co_await http_.get(service, path, stop);
    judge(service.host, reply);
    co_return reply;
}

// No longer than a rest, though somebody sets the clock back.
bool PoliteHttp::rests(const QString& host) const {
    const QDateTime until = addresses_.value(host).restsUntil;
    const QDateTime now = clock_.now();
    return until.isValid() && now < until && now.secsTo(until) <= restSeconds;
}

HttpReply PoliteHttp::resting(const QString& host) const {
    const Address address = addresses_.value(host);
    return {HttpReply::Outcome::resting, 0, {}, address.restsUntil, address.restsFor};
}

// How long to wait for it.
std::chrono::milliseconds PoliteHttp::takeTurn(const Service& service) {
    const auto pause = static_cast<qint64>(std::llround(service.pauseSeconds * 1000));
    if (pause <= 0) {
        return {};
    }
    QDateTime& free = addresses_[service.host].free;
    const QDateTime now = clock_.now();
    const qint64 untilFree = free.isValid() ? now.msecsTo(free) : 0;
    const qint64 wait = std::clamp<qint64>(untilFree, 0, mostWaiting * pause);
    free = now.addMSecs(wait + pause);
    return std::chrono::milliseconds(wait);
}

void PoliteHttp::judge(const QString& host, HttpReply& reply) {
    Address& address = addresses_[host];
    const bool limited = isLimit(reply, address.hasAnswered);
    if (limited) {
        reply.outcome = HttpReply::Outcome::limited;
    }
    address.hasAnswered = address.hasAnswered || reply.answered();
    if (limited || isFailure(reply)) {
        ++address.failuresInARow;
    } else if (reply.outcome != HttpReply::Outcome::unreachable) {
        address.failuresInARow = 0;
    }
    if (limited || address.failuresInARow >= mostFailuresInARow) {
        const QString words = failureWords(reply);
        address.restsUntil = clock_.now().addSecs(restSeconds);
        address.restsFor = limited ? words : u"一再没有答好（%1）"_s.arg(words);
        address.failuresInARow = 0;
    }
}

}  // namespace guanchao
