// Lets pending events of the interface run in the middle of a long job. Anything may happen in it:
// timers fire, windows close, another job begins.
#pragma once

namespace guanchao {

class EventPump {
public:
    virtual ~EventPump() = default;
    virtual void runPendingEvents() = 0;

    // For a loop of very small steps, where asking for events costs more than the step: a pump may
    // leave out the times that follow another too closely for anyone to notice.
    virtual void runPendingEventsIfDue() { runPendingEvents(); }
};

}  // namespace guanchao
