// Steps on stores for the thread that shows, which waits for no lock: where another holds the
// store, the step is given up at once and made again a little later.
#pragma once

#include <QCoro/QCoroTask>
#include <QDeadlineTimer>
#include <chrono>
#include <optional>
#include <stop_token>
#include <type_traits>

#include "base/later.h"
#include "base/pause.h"
#include "store/connection.h"
#include "store/store_error.h"

namespace guanchao {

inline constexpr std::chrono::milliseconds betweenTries(100);

// One try: nothing if the store is held.
template <typename Step>
auto tryStep(const Step& step, bool isLast) -> std::optional<std::invoke_result_t<Step>> {
    const Connection::BusyTimeout blink(std::chrono::milliseconds(5));
    try {
        return step();
    } catch (const StoreError& failure) {
        if (isLast || failure.fault() != StoreFault::busy) {
            throw;
        }
        return std::nullopt;
    }
}

// The step gives a value and may be made several times: it writes in one transaction, or what it
// writes twice is the same. Raises what it raises, the held store after the busy time-out.
template <typename Step>
QCoro::Task<std::invoke_result_t<Step>> patiently(Step step, std::stop_token stop) {
    const QDeadlineTimer end(Connection::busyTimeout());
    for (;;) {
        endIfStopped(stop);
        std::optional<std::invoke_result_t<Step>> done = tryStep(step, end.hasExpired());
        if (done) {
            co_return std::move(*done);
        }
        co_await pause(betweenTries, stop);
    }
}

}  // namespace guanchao
