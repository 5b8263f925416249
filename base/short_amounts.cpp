#include "base/short_amounts.h"

#include <QLocale>
#include <cmath>

#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double tenThousand = 1e4;
constexpr double hundredMillion = 1e8;
// From here on four digits would read 10000万.
constexpr double roundsToHundredMillion = 9999.5 * tenThousand;

// Four digits in all.
int decimalsOf(double size) {
    int decimals = 3;
    for (double bound = 9.9995; decimals > 0 && size >= bound; bound *= 10) {
        --decimals;
    }
    return decimals;
}

}  // namespace

bool hasShortForm(double number) {
    return std::abs(number) >= tenThousand;
}

std::optional<QString> shortAmount(double number) {
    if (!hasShortForm(number)) {
        return std::nullopt;
    }
    const bool large = std::abs(number) >= roundsToHundredMillion;
    const double units = number / (large ? hundredMillion : tenThousand);
    return QString::number(units, 'f', decimalsOf(std::abs(units))) + (large ? u'亿' : u'万');
}

QString amountWords(double amount) {
    return shortAmount(amount).value_or(noDecimals(amount));
}

QString gainWords(double gain) {
    if (std::isnan(gain)) {
        return u"无行情"_s;
    }
    const QString number = twoDecimals(gain);
    return (numericPrefix(number) > 0 ? u"+"_s : QString()) + number + u'%';
}

QString sizeWords(qint64 bytes) {
    constexpr qint64 kilobyte = 1024;
    if (bytes < kilobyte) {
        return QString::number(bytes) + u" 字节"_s;
    }
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

}  // namespace guanchao
