#include "services/answer_wait.h"

#include <QScopeGuard>
#include <algorithm>
#include <cmath>
#include <utility>

#include "base/time_left.h"
#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds betweenLooks(1000);
// Most answers come sooner.
constexpr std::chrono::milliseconds leastWait(2000);

std::chrono::milliseconds pauseOf(const Service& service) {
    return std::chrono::milliseconds(std::llround(service.pauseSeconds * 1000));
}

QString waitWords(const Service& service, std::chrono::milliseconds waited) {
    const QString words = u"，等网站应答"_s;
    if (service.timeoutSeconds == 0) {
        return words;
    }
    const std::chrono::milliseconds most =
        std::chrono::seconds(service.timeoutSeconds) + pauseOf(service);
    const auto left = std::chrono::ceil<std::chrono::seconds>(most - waited);
    return words + u'，' + atMostWords(std::max(left, std::chrono::seconds(1)));
}

}  // namespace

AnswerWait::AnswerWait(HttpClient& http, const Clock& clock, QObject& owner, Show show)
    : http_(http), clock_(clock), show_(std::move(show)) {
    looks_.setParent(&owner);
    looks_.setObjectName(u"answerWait"_s);
    looks_.setInterval(betweenLooks);
    looks_.callOnTimeout(&looks_, [this] { look(); });
}

void AnswerWait::show(const RunProgress& progress) {
    progress_ = progress;
    show_(progress_);
}

QCoro::Task<HttpReply> AnswerWait::get(Service service, QString path, std::stop_token stop) {
    begin(service);
    const auto end = qScopeGuard([this] { looks_.stop(); });
    const HttpReply reply = co_await http_.get(service, path, stop);
    co_return HttpReply(reply);
}

void AnswerWait::complain(const Service& service, const QString& reason) {
    http_.complain(service, reason);
}

void AnswerWait::begin(const Service& service) {
    const bool isAnother = service.host != asked_.host || service.kind != asked_.kind;
    if (isAnother && service.purpose == asked_.purpose && !asked_.host.isEmpty()) {
        progress_ = {toldStep() + u"，改问"_s + serviceName(service), 0, 0, {}};
    }
    show_(progress_);
    asked_ = service;
    since_ = clock_.uptime();
    looks_.start();
}

void AnswerWait::look() {
    const std::chrono::milliseconds waited = clock_.uptime() - since_;
    if (waited >= leastWait + pauseOf(asked_)) {
        RunProgress shown = progress_;
        shown.step = toldStep() + waitWords(asked_, waited);
        shown.timeLeft.clear();
        show_(shown);
    }
}

// Something stands behind it.
QString AnswerWait::toldStep() const {
    return progress_.step.endsWith(u'…') ? progress_.step.chopped(1) : progress_.step;
}

}  // namespace guanchao
