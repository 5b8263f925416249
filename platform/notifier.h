// The desktop's notifications: words that come up in a corner and take no key from anyone.
#pragma once

#include <QString>

namespace guanchao {

class Notifier {
public:
    virtual ~Notifier() = default;
    // A desktop without them shows nothing.
    virtual void notify(const QString& title, const QString& text) = 0;
};

}  // namespace guanchao
