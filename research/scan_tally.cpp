#include "research/scan_tally.h"

#include <QFileInfo>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype mostNamed = 3;

}  // namespace

void ScanTally::passOver(const QString& path, const QString& dm, const QString& day) {
    ++passedOver_;
    if (first_.size() < mostNamed) {
        first_ << QFileInfo(path).fileName() + u' ' + dm + u' ' + day;
    }
}

QString ScanTally::words() const {
    const QString done = u"%1 天，%2 个题材，%3 行股票"_s.arg(days).arg(themes).arg(stocks);
    if (passedOver_ == 0) {
        return done;
    }
    return done + u"；缺少数值，略过 %1 行："_s.arg(passedOver_) + first_.join(u'、') +
           (passedOver_ > first_.size() ? u"…"_s : QString());
}

}  // namespace guanchao
