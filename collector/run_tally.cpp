#include "collector/run_tally.h"

#include <cmath>
#include <numeric>

#include "base/time_left.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double secondsOfAMinute = 60;

}  // namespace

QString RunTally::countWords() const {
    return u"共 %1 项，"_s.arg(items) +
           (before > 0 ? u"今天已采集过 %1 项，"_s.arg(before) : QString()) +
           u"写入 %1 项，跳过 %2 项"_s.arg(written).arg(skipped.size());
}

QString RunTally::failureWords() const {
    QStringList kinds;
    for (auto it = failures.cbegin(); it != failures.cend(); ++it) {
        kinds << faultName(it.key()) + u' ' + QString::number(it.value());
    }
    const int all = std::accumulate(failures.cbegin(), failures.cend(), 0);
    return kinds.isEmpty() ? QString() : u"失败 %1 次："_s.arg(all) + kinds.join(u'，');
}

QString RunTally::progressWords() const {
    return u"已完成 %1 / %2 项，剩余 %3 项；读到 %4 页，写入 %5 行"_s.arg(settled())
        .arg(items)
        .arg(left())
        .arg(pages)
        .arg(written);
}

QString RunTally::paceWords(const QDateTime& now) const {
    const auto work = timeLeft(worked, settled() - before, items - before);
    if (!work) {
        return {};
    }
    const std::chrono::seconds time = *work + std::chrono::ceil<std::chrono::seconds>(wait);
    const double minutes = std::chrono::duration<double>(worked).count() / secondsOfAMinute;
    const QDateTime end = now.addDuration(time);
    const bool isToday = end.date() == now.date();
    return u"每分钟 %1 页，%2，预计 %3 完成"_s.arg(std::round(pages / minutes))
        .arg(timeLeftWords(time), end.toString(isToday ? u"HH:mm"_s : u"M月d日 HH:mm"_s));
}

}  // namespace guanchao
