// Each day's copy of the stores, made beside the windows: after the start, and after midnight in a
// program that stays open. What keeps one from being made stands in a line of the main window, and
// is tried again after an hour.
#pragma once

#include <QObject>
#include <functional>

#include "base/runs.h"
#include "frame/environment.h"
#include "platform/daily_looks.h"

namespace guanchao {

class DailyBackup : public QObject {
    Q_OBJECT

public:
    // `show` shows the line, empty while nothing keeps a copy from being made.
    DailyBackup(Environment& environment, std::function<void(const QString&)> show);

    void start();
    // The copy that is being made is given up; the next look goes on with it.
    void stop() { runs_.stop(); }

private:
    void look();
    QCoro::Task<> makeTodays(std::stop_token stop);

    Environment& environment_;
    std::function<void(const QString&)> show_;
    DailyLooks looks_;
    Runs runs_;
};

}  // namespace guanchao
