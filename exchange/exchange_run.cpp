#include "exchange/exchange_run.h"

#include <QScopeGuard>

#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int stepsPerPause = 100;

struct Cancelled {};

}  // namespace

ExchangeRun::ExchangeRun(EventPump& pump, Show show) : pump_(pump), show_(std::move(show)) {}

bool ExchangeRun::run(const std::function<void()>& job) {
    requireIdle();
    progress_ = ExchangeProgress();
    progress_.running = true;
    steps_ = 0;
    cancelled_ = false;
    const auto end = qScopeGuard([this] {
        progress_ = ExchangeProgress();
        show_(progress_);
    });
    show_(progress_);
    try {
        job();
        return true;
    } catch (const Cancelled&) {
        return false;
    }
}

void ExchangeRun::rowDone() {
    ++progress_.done;
    breathe();
}

void ExchangeRun::breathe() {
    if (steps_++ % stepsPerPause != 0) {
        return;
    }
    show_(progress_);
    pump_.runPendingEvents();
    if (cancelled_) {
        throw Cancelled();
    }
}

void ExchangeRun::requireIdle() const {
    if (running()) {
        throw OperationError(u"另一次导入或导出正在进行，请等它结束。"_s);
    }
}

Transaction longTransaction(Connection& connection) {
    // A full cache would otherwise be written early, under a lock that keeps readers out.
    connection.execute(u"pragma cache_spill=off"_s);
    return Transaction(connection);
}

}  // namespace guanchao
