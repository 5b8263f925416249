// EventPump by Qt's own event loop.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>

#include "base/event_pump.h"

namespace guanchao {

class QtEventPump : public EventPump {
public:
    void runPendingEvents() override {
        QCoreApplication::processEvents();
        sinceLast_.start();
    }
    void runPendingEventsIfDue() override {
        if (!sinceLast_.isValid() || sinceLast_.elapsed() >= pauseMilliseconds) {
            runPendingEvents();
        }
    }

private:
    // Shorter than the eye and the hand notice.
    static constexpr qint64 pauseMilliseconds = 15;

    QElapsedTimer sinceLast_;
};

}  // namespace guanchao
