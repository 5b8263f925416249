#include "store/keys.h"

#include <QStringView>

namespace guanchao {

namespace {

// 18 pairs, each character beside its partner: every letter and digit stands here once.
constexpr QStringView pairs = u"arb4czd9ekf0gwh5ipj3l8mtn1ovq6syu2x7";

QChar partner(QChar c) {
    const qsizetype at = pairs.indexOf(c);
    return at < 0 ? c : pairs[at ^ 1];
}

}  // namespace

QString xiezhongzi(const QString& seed) {
    QString key = seed.toLower();
    for (QChar& c : key) {
        c = partner(c);
    }
    return key;
}

}  // namespace guanchao
