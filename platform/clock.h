// The local clock, and one that nobody sets. Tests set both.
#pragma once

#include <QDateTime>
#include <chrono>

namespace guanchao {

class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;

    // Since some moment before: for how long something takes or is waited for.
    virtual std::chrono::milliseconds uptime() const = 0;
};

class SystemClock : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
    std::chrono::milliseconds uptime() const override {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now().time_since_epoch());
    }
};

}  // namespace guanchao
