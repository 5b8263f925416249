#include "platform/daily_looks.h"

#include <utility>

namespace guanchao {

namespace {

constexpr qint64 secondsUntilAnotherTry = 3600;

}  // namespace

DailyLooks::DailyLooks(const Clock& clock, std::function<void()> look)
    : clock_(clock), look_(std::move(look)) {
    callOnTimeout(this, &DailyLooks::lookUnlessTooSoon);
}

void DailyLooks::noteFailure() {
    notBefore_ = clock_.now().addSecs(secondsUntilAnotherTry);
}

void DailyLooks::lookUnlessTooSoon() {
    setInterval(betweenLooks);
    if (!notBefore_.isValid() || clock_.now() >= notBefore_) {
        look_();
    }
}

}  // namespace guanchao
