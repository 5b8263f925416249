// How far a run is that goes on in the background.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <chrono>

namespace guanchao {

struct RunProgress {
    QString step;
    int done = 0;
    int total = 0;  // 0: not known yet
    QString timeLeft;
};

// How long a run has worked, without its pauses.
class WorkTime {
public:
    void goOn() { timer_.start(); }
    void rest() {
        worked_ = elapsed();
        timer_.invalidate();
    }

    std::chrono::nanoseconds elapsed() const {
        return worked_ + std::chrono::nanoseconds(timer_.isValid() ? timer_.nsecsElapsed() : 0);
    }

private:
    QElapsedTimer timer_;
    std::chrono::nanoseconds worked_{0};
};

}  // namespace guanchao
