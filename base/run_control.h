// A run that goes on in the background, and the word of the user on it.
#pragma once

#include <QCoro/QCoroTask>
#include <memory>
#include <stop_token>

#include "base/later.h"

namespace guanchao {

// How a window shows the run.
struct ShownRun {
    bool running = false;
    bool paused = false;
    bool stopping = false;
};

// It outlives the run.
class RunControl {
public:
    // Of a run that is under way.
    ShownRun shown() const { return {true, isPaused(), isStopped()}; }

    void pause() {
        if (!gate_) {
            gate_ = std::make_shared<Later<bool>>();
        }
    }
    void goOn() {
        if (const auto gate = std::exchange(gate_, nullptr)) {
            gate->deliver(true);
        }
    }
    // Requests that are on their way are given up; what they have brought is still stored.
    void stop() { asking_.request_stop(); }

    bool isPaused() const { return gate_ != nullptr; }
    bool isStopped() const { return asking_.stop_requested(); }
    std::stop_token asking() const { return asking_.get_token(); }

    // Ends at once unless it is paused.
    QCoro::Task<> untilItGoesOn() const {
        if (const auto gate = gate_) {
            co_await gate->orStop(asking_.get_token());
        }
    }

private:
    std::stop_source asking_;
    std::shared_ptr<Later<bool>> gate_;
};

}  // namespace guanchao
