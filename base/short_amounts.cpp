#include "base/short_amounts.h"

#include <QLocale>
#include <cmath>

namespace guanchao {

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

QString sizeWords(qint64 bytes) {
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

}  // namespace guanchao
