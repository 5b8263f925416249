// Work on stores in a thread of its own, for runs that nobody waits for: where another program
// holds the store, the work is done again later.
#pragma once

#include "base/pause.h"
#include "base/run_control.h"
#include "base/worker.h"
#include "store/store_error.h"

namespace guanchao {

// The job writes in one transaction. Raises StoreError: for a held store after some minutes, or at
// once if the user has stopped the run meanwhile.
template <typename Job>
auto inWorkerOnceFree(Job job, Wait wait, const RunControl& control, std::stop_token stop)
    -> decltype(inWorker(job, stop)) {
    constexpr int mostTries = 12;
    constexpr std::chrono::seconds betweenTries(5);
    for (int tries = 1;; ++tries) {
        try {
            auto done = co_await inWorker(job, stop);
            co_return done;
        } catch (const StoreError& failure) {
            const bool isLast = tries == mostTries || control.isStopped();
            if (failure.fault() != StoreFault::busy || isLast) {
                throw;
            }
        }
        co_await wait(betweenTries, stop);
    }
}

}  // namespace guanchao
