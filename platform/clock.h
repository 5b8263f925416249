// The local clock. Tests set it.
#pragma once

#include <QDateTime>

namespace guanchao {

class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};

class SystemClock : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

}  // namespace guanchao
