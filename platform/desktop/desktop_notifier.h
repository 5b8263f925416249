// Notifier by the session bus, org.freedesktop.Notifications.
#pragma once

#include "platform/notifier.h"

namespace guanchao {

class DesktopNotifier : public Notifier {
public:
    void notify(const QString& title, const QString& text) override;
};

}  // namespace guanchao
