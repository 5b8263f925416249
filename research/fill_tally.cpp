#include "research/fill_tally.h"

#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype shownCodes = 5;
constexpr qsizetype shownReasons = 3;

QString heading(const FillTally& tally) {
    if (!tally.ending.isEmpty()) {
        return u"没有补全："_s + tally.ending + u"。"_s;
    }
    return tally.stopped ? u"已停止，读到的都已保存，再点“补全”就接着补。"_s : u"补全完成。"_s;
}

QString codesWords(const QStringList& codes) {
    const QString more = codes.size() > shownCodes ? u" 等"_s : QString();
    return codes.first(std::min(codes.size(), shownCodes)).join(u'、') + more;
}

}  // namespace

void FillTally::lack(const QString& dm, const QString& reason) {
    lacking << dm;
    ++reasons[reason];
}

QString FillTally::counts() const {
    return u"补了 %1 只，新增 %2 条日线，%3 只没有补成"_s.arg(codes).arg(rows).arg(lacking.size());
}

QString FillTally::words() const {
    QStringList lines = {heading(*this) + u"补了 %1 只，新增 %2 条日线。"_s.arg(codes).arg(rows)};
    if (refactored > 0) {
        lines << u"%1 只原来的日线没有复权因子，已经补上。"_s.arg(refactored);
    }
    if (unknown > 0) {
        lines << u"%1 只服务没有日线（可能是新股或已退市）。"_s.arg(unknown);
    }
    if (!lacking.isEmpty()) {
        lines << u"%1 只留到下次补：%2。"_s.arg(lacking.size()).arg(codesWords(lacking));
        const qsizetype most = lines.size() + shownReasons;
        for (auto it = reasons.cbegin(); it != reasons.cend() && lines.size() < most; ++it) {
            lines << u"%1 只：%2"_s.arg(it.value()).arg(it.key());
        }
    }
    if (!ending.isEmpty() || !lacking.isEmpty()) {
        lines << adviceOn(QStringList(reasons.keys()) << ending,
                          u"过一会儿再点“补全”，已有的不会再问"_s);
    }
    lines.removeAll(QString());
    return lines.join(u'\n');
}

}  // namespace guanchao
