#include "exchange/exchange_run.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int stepsPerPause = 100;

}  // namespace

ExchangeRun::ExchangeRun(EventPump& pump, Show show)
    : show_(std::move(show)),
      run_(pump, u"另一次导入或导出正在进行，请等它结束。"_s, [this] { beginOrEnd(); }) {}

void ExchangeRun::beginOrEnd() {
    progress_ = ExchangeProgress();
    progress_.running = run_.running();
    steps_ = 0;
    show_(progress_);
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
    run_.letEventsHappen();
}

Transaction longTransaction(Connection& connection) {
    // A full cache would otherwise be written early, under a lock that keeps readers out.
    connection.execute(u"pragma cache_spill=off"_s);
    return Transaction(connection);
}

}  // namespace guanchao
