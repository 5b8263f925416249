#include "base/pause.h"

#include <QTimer>
#include <memory>

#include "base/later.h"

namespace guanchao {

QCoro::Task<> pause(std::chrono::milliseconds time, std::stop_token stop) {
    // Shared, since the timer may outlive the run.
    const auto over = std::make_shared<Later<bool>>();
    QTimer::singleShot(time, [over] { over->deliver(true); });
    co_await over->orStop(stop);
}

}  // namespace guanchao
