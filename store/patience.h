// Steps on stores for the thread that shows, which waits for no lock: where another holds the
// store, the step is given up at once and made again a little later.
#pragma once

#include <QCoro/QCoroTask>
#include <QDeadlineTimer>
#include <chrono>
#include <optional>
#include <stop_token>
#include <type_traits>
#include <variant>

#include "base/later.h"
#include "base/pause.h"
#include "store/connection.h"
#include "store/store_error.h"

namespace guanchao {

inline constexpr std::chrono::milliseconds betweenTries(100);
// How long the thread that shows may wait for a lock.
inline constexpr std::chrono::milliseconds blink(5);

// What a step gives, as a value.
template <typename Step>
using GivenBy = std::conditional_t<std::is_void_v<std::invoke_result_t<Step>>, std::monostate,
                                   std::invoke_result_t<Step>>;

// One try: nothing if the store is held.
template <typename Step>
std::optional<GivenBy<Step>> tryStep(const Step& step, bool isLast) {
    const Connection::BusyTimeout shortest(blink);
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<Step>>) {
            step();
            return std::monostate();
        } else {
            return step();
        }
    } catch (const StoreError& failure) {
        if (isLast || failure.fault() != StoreFault::busy) {
            throw;
        }
        return std::nullopt;
    }
}

// The step may be made several times: it writes in one transaction, or what it writes twice is the
// same. Gives what it gives, and raises what it raises, the held store after the busy time-out.
template <typename Step>
QCoro::Task<std::invoke_result_t<Step>> patiently(Step step, std::stop_token stop) {
    const QDeadlineTimer end(Connection::busyTimeout());
    for (;;) {
        endIfStopped(stop);
        std::optional<GivenBy<Step>> done = tryStep(step, end.hasExpired());
        if (done) {
            if constexpr (std::is_void_v<std::invoke_result_t<Step>>) {
                co_return;
            } else {
                co_return std::move(*done);
            }
        }
        co_await pause(betweenTries, stop);
    }
}

}  // namespace guanchao
