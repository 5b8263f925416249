#include "base/runs.h"

#include <QScopeGuard>
#include <utility>

namespace guanchao {

void Failures::guard(const std::function<void()>& job) {
    try {
        job();
    } catch (const std::exception& failure) {
        report(failure);
    }
}

void Runs::start(Job job) {
    underWay_->sources.emplace_back();
    carryOut(std::move(job), underWay_->sources.back(), underWay_, failures_);
}

void Runs::stop() {
    const std::list<std::stop_source> sources = underWay_->sources;
    for (const std::stop_source& source : sources) {
        source.request_stop();
    }
}

QCoro::Task<> Runs::end(std::stop_token stop) {
    this->stop();
    if (running()) {
        const auto lastEnded = std::make_shared<Later<bool>>();
        underWay_->lastEnded = lastEnded;
        co_await lastEnded->orStop(stop);
    }
}

void Runs::leave(UnderWay& underWay, const std::stop_source& source) {
    underWay.sources.remove(source);
    if (underWay.sources.empty() && underWay.lastEnded) {
        std::exchange(underWay.lastEnded, nullptr)->deliver(true);
    }
}

// The owner may be gone when the job goes on: what is touched here belongs to the run.
QCoro::Task<> Runs::carryOut(Job job, std::stop_source source, std::shared_ptr<UnderWay> underWay,
                             Failures& failures) {
    try {
        const auto end = qScopeGuard([&] { leave(*underWay, source); });
        co_await job(source.get_token());
    } catch (const Cancelled&) {
        co_return;
    } catch (const std::exception& failure) {
        failures.report(failure);
    }
}

}  // namespace guanchao
