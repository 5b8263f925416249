#include "research/service_watch.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QCoro::Task<HttpReply> ServiceWatch::get(Service service, QString path, std::stop_token stop) {
    const HttpReply reply = co_await http_.get(service, path, stop);
    const bool isAnswer = reply.answered() || reply.hasNoPage();
    State& state = states_[service.host];
    state.answers += isAnswer ? 1 : 0;
    state.failure = isAnswer ? QString() : failureWords(reply);
    state.when = clock_.now();
    co_return HttpReply(reply);
}

QString ServiceWatch::stateOf(const Service& service) const {
    if (service.host.isEmpty()) {
        return u"没有网址"_s;
    }
    const auto found = states_.constFind(service.host);
    if (found == states_.constEnd()) {
        return u"还没有问过"_s;
    }
    const QString when = found->when.toString(u"hh:mm:ss"_s);
    return found->failure.isEmpty() ? u"正常，应答 %1 次，最近 %2"_s.arg(found->answers).arg(when)
                                    : u"%1（%2）"_s.arg(found->failure, when);
}

}  // namespace guanchao
