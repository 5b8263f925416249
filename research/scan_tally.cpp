#include "research/scan_tally.h"

#include <QFileInfo>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype mostNamed = 3;

QString listed(const QStringList& first, int all) {
    return first.join(u'、') + (all > first.size() ? u"…"_s : QString());
}

}  // namespace

void ScanTally::passOver(const QString& path, const QString& dm, const QString& day) {
    ++passedOver_;
    if (first_.size() < mostNamed) {
        first_ << QFileInfo(path).fileName() + u' ' + dm + u' ' + day;
    }
}

void ScanTally::leaveOut(const QString& path, const UnusableRows& rows) {
    if (rows.count > 0) {
        leftOut_ = u"；%1 的 geguhq 有 %2 行没有价格或日期，没有算进题材："_s.arg(
                       QFileInfo(path).fileName(), QString::number(rows.count)) +
                   listed(rows.first, rows.count);
    }
}

QString ScanTally::words() const {
    QString done = u"%1 天，%2 个题材，%3 行股票"_s.arg(days).arg(themes).arg(stocks);
    if (passedOver_ > 0) {
        done += u"；缺少数值，略过 %1 行："_s.arg(passedOver_) + listed(first_, passedOver_);
    }
    return done + leftOut_;
}

}  // namespace guanchao
