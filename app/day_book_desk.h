// Writes the day of the stored quotes into the day book of the themes, by itself: after each close
// once quotes of it are there, after the start of the program what the last run has missed, and
// before quotes of another day take the place of a close.
#pragma once

#include <QObject>
#include <functional>

#include "base/runs.h"
#include "frame/environment.h"
#include "platform/daily_looks.h"

namespace guanchao {

class DayBookDesk : public QObject {
    Q_OBJECT

public:
    // `show` shows the line, empty while nothing keeps a day from being written.
    DayBookDesk(Environment& environment, std::function<void(const QString&)> show);

    void start();
    // Writes a day that is due, unless quotes are just being written.
    void look();
    // The same, and returns once it is written or has failed.
    QCoro::Task<> write(std::stop_token stop);
    // The next look begins anew.
    void stop() { runs_.stop(); }

signals:
    void written();

private:
    Environment& environment_;
    std::function<void(const QString&)> show_;
    DailyLooks looks_;
    Runs runs_;
};

}  // namespace guanchao
