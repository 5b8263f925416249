// Looks whether a job of the day is due: each minute of a program that stays open, but for an hour
// after a try that failed.
#pragma once

#include <QDateTime>
#include <QTimer>
#include <chrono>
#include <functional>

#include "platform/clock.h"

namespace guanchao {

class DailyLooks : public QTimer {
public:
    static constexpr std::chrono::minutes betweenLooks{1};

    // `look` begins the job if it is due.
    DailyLooks(const Clock& clock, std::function<void()> look);

    void begin(std::chrono::milliseconds untilFirstLook = betweenLooks) { start(untilFirstLook); }
    void noteFailure();

private:
    void lookUnlessTooSoon();

    const Clock& clock_;
    std::function<void()> look_;
    QDateTime notBefore_;
};

}  // namespace guanchao
