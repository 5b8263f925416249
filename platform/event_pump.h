// Lets pending events of the interface run in the middle of a long job. Anything may happen in it:
// timers fire, windows close, another job begins.
#pragma once

namespace guanchao {

class EventPump {
public:
    virtual ~EventPump() = default;
    virtual void runPendingEvents() = 0;
};

}  // namespace guanchao
