#include "grid/amounts.h"

#include <cmath>

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

bool isAmount(const QString& header) {
    return header == u"成交量"_s || header == u"成交额"_s || header == u"成交金额"_s;
}

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

std::optional<QString> shortAmount(const ResultGrid& grid, int row, int col) {
    if (!isAmount(grid.textMatrix(0, col))) {
        return std::nullopt;
    }
    const std::optional<double> number = grid.number(row, col);
    return number ? shortAmount(*number) : std::nullopt;
}

QString withoutMidnight(const QString& text) {
    constexpr qsizetype dayLength = 10;  // yyyy-MM-dd
    return text.size() == dayLength + 9 && text.endsWith(u" 00:00:00") && text[4] == u'-'
               ? text.first(dayLength)
               : text;
}

}  // namespace guanchao
