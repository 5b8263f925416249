#include "collector/pacing.h"

namespace guanchao {

Pacing::Pacing(const CollectorSettings& settings, Random random)
    : pause_(settings.pause),
      randomPause_(settings.randomPause),
      retries_(settings.retries),
      giveUpAfter_(settings.giveUpAfter),
      random_(std::move(random)) {}

std::chrono::milliseconds Pacing::beforePage() const {
    return std::chrono::milliseconds(pause_ + static_cast<int>(randomPause_ * random_()));
}

std::optional<std::chrono::milliseconds> Pacing::beforeRetry(int failures) const {
    if (failures > retries_.size()) {
        return std::nullopt;
    }
    return std::chrono::milliseconds(retries_[failures - 1]);
}

bool Pacing::isHopeless(int failedPages) const {
    return giveUpAfter_ > 0 && failedPages >= giveUpAfter_;
}

}  // namespace guanchao
