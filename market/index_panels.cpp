#include "market/index_panels.h"

#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int lastFieldOfNoHomeIndex = 3;
constexpr int lastFieldOfNoWorldIndex = 2;
constexpr int sharesPerLot = 100;

Turnover turnoverOf(double lots, const QuoteFields& fields) {
    return {lots, noDecimals(lots / 10000) + u"万手"_s,
            twoDecimals(fields.number(field::amount) / 10000 / 10000) + u"亿元"_s};
}

}  // namespace

bool hasHomeIndex(const QuoteFields& fields) {
    return fields.lastIndex() > lastFieldOfNoHomeIndex;
}

HomeIndexPanel homeIndexPanel(const QuoteFields& fields) {
    const double change = fields.number(field::latest) - fields.number(field::formerClose);
    return {fields.text(field::name),
            priceTexts(fields),
            numberText(roundTo(change, 2)),
            numberText(gainPercent(fields)) + u'%',
            quoteTime(fields),
            turnoverOf(fields.number(field::volume), fields),
            std::nullopt};
}

Turnover compositeTurnover(const QuoteFields& fields) {
    return turnoverOf(fields.number(field::volume) / sharesPerLot, fields);
}

std::optional<QString> indexRatio(const QuoteFields& fields, const Turnover& turnover,
                                  double meanVolume, bool marketOpen) {
    return volumeRatio(fields, turnover.lots * sharesPerLot, meanVolume, marketOpen);
}

bool hasWorldIndex(const QuoteFields& fields) {
    return fields.lastIndex() > lastFieldOfNoWorldIndex;
}

WorldIndexPanel worldIndexPanel(const QuoteFields& fields) {
    return {fields.text(0), fields.text(1), fields.text(2), numberText(fields.number(3)) + u'%'};
}

}  // namespace guanchao
