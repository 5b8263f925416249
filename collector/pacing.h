// 间隔: how long the collector waits before each page, so that it asks no faster than a person
// would, and before each further try of an item that failed.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "collector/collector_settings.h"

namespace guanchao {

class Pacing {
public:
    // Gives a number from 0 up to, not including, 1, each as likely as any other.
    using Random = std::function<double()>;

    Pacing(const CollectorSettings& settings, Random random);

    std::chrono::milliseconds beforePage() const;

    // After so many failures of an item, the first being 1; nothing when it is to be given up.
    std::optional<std::chrono::milliseconds> beforeRetry(int failures) const;

    // After so many failed pages without one that answered.
    bool isHopeless(int failedPages) const;

private:
    int pause_;
    int randomPause_;
    QList<int> retries_;
    int giveUpAfter_;
    Random random_;
};

}  // namespace guanchao
