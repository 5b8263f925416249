// The line of the main window that tells the market at a glance: indexes, how many stocks rise and
// fall, turnover; how old the quotes are, whether the alarms are watched and a fill of the history
// goes on. Read from the main store after each refresh, in a thread of its own.
#pragma once

#include <QDateTime>
#include <QLabel>
#include <QTimer>

#include "base/runs.h"
#include "frame/environment.h"
#include "monitor/alarm_desk.h"

namespace guanchao {

class MarketBand : public QObject {
    Q_OBJECT

public:
    struct Labels {
        QLabel& market;
        QLabel& age;
        QLabel& monitoring;
        QLabel& fill;  // of the history databases, while one goes on
    };

    MarketBand(Labels labels, Environment& environment, const AlarmDesk& desk);

    void refresh();

private:
    QCoro::Task<> read(std::stop_token stop);
    void showAge();
    void showMonitoring();
    void showFill();

    Labels labels_;
    Environment& environment_;
    QDateTime quotesTime_;
    QTimer minutes_;
    Runs runs_;
};

}  // namespace guanchao
