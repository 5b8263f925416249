// Counts what alarms bring about.
#pragma once

#include <QStringList>
#include <functional>

#include "monitor/alarm_engine.h"

namespace guanchao {

struct FakeAlarmScreen : AlarmScreen {
    void tell(const FiredMonitor& monitor) override { told << monitor.words; }
    bool showMonitors() override {
        ++shown;
        if (onShow) {
            onShow();
        }
        return !popupStands;
    }
    void ring(const QString& file) override { rung << file; }
    void showStale(const QDateTime& since) override { stale << since; }

    QStringList told;
    int shown = 0;
    std::function<void()> onShow;
    bool popupStands = false;  // no window may open
    QStringList rung;
    QList<QDateTime> stale;
};

}  // namespace guanchao
