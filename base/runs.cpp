#include "base/runs.h"

#include <QScopeGuard>

#include "base/later.h"

namespace guanchao {

void Runs::start(Job job) {
    underWay_->emplace_back();
    carryOut(std::move(job), underWay_->back(), underWay_, failures_);
}

void Runs::stop() {
    const UnderWay sources = *underWay_;
    for (std::stop_source source : sources) {
        source.request_stop();
    }
}

// The owner may be gone when the job goes on: what is touched here belongs to the run.
QCoro::Task<> Runs::carryOut(Job job, std::stop_source source, std::shared_ptr<UnderWay> underWay,
                             Failures& failures) {
    try {
        const auto end = qScopeGuard([&] { underWay->remove(source); });
        co_await job(source.get_token());
    } catch (const Cancelled&) {
        co_return;
    } catch (const std::exception& failure) {
        failures.report(failure);
    }
}

}  // namespace guanchao
