// What has fired, in a corner of the screen over everything, a window of the full screen too: no
// window manager decides where it stands. It takes no key; a click opens the monitors.
#pragma once

#include <QLabel>

#include "monitor/fired_monitor.h"

namespace guanchao {

class AlarmBanner : public QLabel {
    Q_OBJECT

public:
    AlarmBanner();

    void tell(const QList<FiredMonitor>& fired);

signals:
    void clicked();

protected:
    void mousePressEvent(QMouseEvent* press) override;
};

}  // namespace guanchao
