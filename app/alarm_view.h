// How alarms show: the monitor window comes up without the keyboard; the monitors that fired are
// tinted there until they are looked at, whoever has opened it; the desktop tells of each, and a
// banner where the user is in another program; the line of the main window says since when the
// polls bring no quotes.
#pragma once

#include <QLabel>
#include <QObject>

#include "app/alarm_banner.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "monitor/alarm_desk.h"
#include "monitor/form4.h"
#include "platform/notifier.h"

namespace guanchao {

class AlarmView : public QObject {
    Q_OBJECT

public:
    AlarmView(Environment& environment, Windows& windows, Notifier& notifier, AlarmDesk& desk,
              QLabel& line);

    // For an alarm; false while a menu or a list is open under the user's hand, which a window
    // that opens would close, and while another holds the store.
    bool showMonitors();

private:
    void turnToMonitors();
    void refreshOrOpen();
    void bringUp(bool userIsHere);
    void openQuietly();
    void tell(const FiredMonitor& monitor);
    void showState();
    void showIn(Form4& manager);

    Environment& environment_;
    Windows& windows_;
    Notifier& notifier_;
    AlarmDesk& desk_;
    QLabel& line_;
    AlarmBanner banner_;
};

}  // namespace guanchao
