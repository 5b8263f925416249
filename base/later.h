// A value that comes later. A coroutine awaits it with the stop token of its run: it goes on when
// the value is delivered, or ends by Cancelled once the run is no longer wanted, whichever comes
// first, and both at once: what delivers or stops returns after the coroutine has gone on.
#pragma once

#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <utility>

namespace guanchao {

// Ends a run that has been stopped. No failure: nobody is told.
struct Cancelled {};

inline void endIfStopped(const std::stop_token& stop) {
    if (stop.stop_requested()) {
        throw Cancelled();
    }
}

template <typename T>
class Later {
    class Waiter;

public:
    Later() = default;
    Later(const Later&) = delete;
    Later& operator=(const Later&) = delete;

    // The first value counts.
    void deliver(T value) {
        if (!value_) {
            value_ = std::move(value);
            resume();
        }
    }

    // For one coroutine, which keeps this object alive until it has gone on.
    Waiter orStop(std::stop_token stop) { return Waiter(*this, std::move(stop)); }

private:
    // The coroutine destroys this object as it goes on.
    void resume() {
        if (const auto waiting = std::exchange(waiting_, nullptr)) {
            waiting.resume();
        }
    }

    class Waiter {
    public:
        Waiter(Later& later, std::stop_token stop) : later_(later), stop_(std::move(stop)) {}

        bool await_ready() const { return later_.value_ || stop_.stop_requested(); }
        void await_suspend(std::coroutine_handle<> waiting) {
            later_.waiting_ = waiting;
            onStop_ = std::make_unique<OnStop>(stop_, [this] { later_.resume(); });
        }
        T await_resume() {
            endIfStopped(stop_);
            return std::move(*later_.value_);
        }

    private:
        using OnStop = std::stop_callback<std::function<void()>>;

        Later& later_;
        std::stop_token stop_;
        std::unique_ptr<OnStop> onStop_;
    };

    std::optional<T> value_;
    std::coroutine_handle<> waiting_;
};

}  // namespace guanchao
