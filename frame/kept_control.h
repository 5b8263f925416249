// A control that its user arranges, and what of it is kept from run to run.
#pragma once

#include <QVariantMap>

namespace guanchao {

class KeptControl {
public:
    KeptControl() = default;
    virtual ~KeptControl() = default;
    Q_DISABLE_COPY_MOVE(KeptControl)

    virtual QVariantMap kept() const = 0;
    // What an earlier run has kept; what can't be read is left as it is.
    virtual void showKept(const QVariantMap& kept) = 0;
};

}  // namespace guanchao
