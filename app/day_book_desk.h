// Writes the day of the stored quotes into the day book of the themes, by itself: after each close
// once quotes of it are there, and after the start of the program what the last run has missed.
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
    // The next look begins anew.
    void stop() { runs_.stop(); }

signals:
    void written();

private:
    void look();
    QCoro::Task<> write(std::stop_token stop);

    Environment& environment_;
    std::function<void(const QString&)> show_;
    DailyLooks looks_;
    Runs runs_;
};

}  // namespace guanchao
