// A long job on the interface thread that lets events happen between its steps. Its window owns it
// and asks it to end before closing; a second start is refused. Used by the runs of a room, which
// add what they show.
#pragma once

#include <QString>
#include <functional>

#include "base/event_pump.h"

namespace guanchao {

class CancellableRun {
public:
    // `changed` is called whenever running() has changed; `refusal` is the reason that a second
    // start is given.
    CancellableRun(EventPump& pump, QString refusal, std::function<void()> changed);

    // Does the job. False if it was cancelled, which leaves its open transactions rolled back.
    // Raises what the job raises, and OperationError if a job is under way.
    bool run(const std::function<void()>& job);

    // For the job, between two steps: events happen. Doesn't return if the run has been cancelled.
    void letEventsHappen();
    // The same between small steps, where events need to happen now and then only.
    void letEventsHappenIfDue();

    // The window must live on until run() has returned.
    void cancel() { cancelled_ = true; }
    bool running() const { return running_; }

    // Raises OperationError while a run is under way.
    void requireIdle() const;

private:
    void endIfCancelled() const;

    EventPump& pump_;
    QString refusal_;
    std::function<void()> changed_;
    bool running_ = false;
    bool cancelled_ = false;
};

}  // namespace guanchao
