#include "grid/amounts.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

bool isAmount(const QString& header) {
    return header == u"成交量"_s || header == u"成交额"_s || header == u"成交金额"_s;
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
