// The icon in the notification area of the desktop.
#pragma once

#include <QString>

namespace guanchao {

class Tray {
public:
    virtual ~Tray() = default;

    // False on a desktop without a notification area: nothing may then be hidden there.
    virtual bool available() const = 0;
    virtual void add() = 0;
    virtual void setTip(const QString& tip) = 0;
    virtual void remove() = 0;
};

}  // namespace guanchao
