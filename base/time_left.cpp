#include "base/time_left.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

using Seconds = std::chrono::duration<double>;

// A shorter run needs no words; the first steps of a longer one may be unlike the rest.
constexpr Seconds leastElapsed(2);
constexpr double leastShare = 0.01;

QString spanWords(std::chrono::seconds span) {
    const bool isShort = span <= std::chrono::minutes(1);
    return isShort ? u"%1 秒"_s.arg(span.count())
                   : u"%1 分钟"_s.arg(std::chrono::ceil<std::chrono::minutes>(span).count());
}

}  // namespace

std::optional<std::chrono::seconds> timeLeft(std::chrono::nanoseconds elapsed, qint64 done,
                                             qint64 total) {
    if (elapsed < leastElapsed || done >= total ||
        static_cast<double>(done) < leastShare * static_cast<double>(total)) {
        return std::nullopt;
    }
    const Seconds left =
        Seconds(elapsed) * (static_cast<double>(total - done) / static_cast<double>(done));
    return std::chrono::ceil<std::chrono::seconds>(left);
}

QString timeLeftWords(std::chrono::seconds left) {
    return u"剩余约 "_s + spanWords(left);
}

QString atMostWords(std::chrono::seconds left) {
    return u"最多还要 "_s + spanWords(left);
}

QString timeLeftWords(std::chrono::nanoseconds elapsed, qint64 done, qint64 total) {
    const std::optional<std::chrono::seconds> left = timeLeft(elapsed, done, total);
    return left ? timeLeftWords(*left) : QString();
}

QString ageWords(qint64 seconds) {
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    constexpr qint64 day = 24 * hour;
    if (seconds < minute) {
        return u"刚刚"_s;
    }
    if (seconds < hour) {
        return QString::number(seconds / minute) + u" 分钟前"_s;
    }
    return seconds < day ? QString::number(seconds / hour) + u" 小时前"_s
                         : QString::number(seconds / day) + u" 天前"_s;
}

}  // namespace guanchao
