// EventPump by Qt's own event loop.
#pragma once

#include <QCoreApplication>

#include "platform/event_pump.h"

namespace guanchao {

class QtEventPump : public EventPump {
public:
    void runPendingEvents() override { QCoreApplication::processEvents(); }
};

}  // namespace guanchao
