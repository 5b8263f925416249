#include "market/index_panels.h"

#include "base/values.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int lastFieldOfNoHomeIndex = 3;
constexpr int lastFieldOfNoWorldIndex = 2;

Turnover turnoverOf(double lots, const QuoteRow& fields) {
    return {lots, noDecimals(lots / 10000) + u"万手"_s,
            twoDecimals(fields.number(field::amount) / 10000 / 10000) + u"亿元"_s};
}

}  // namespace

bool hasHomeIndex(const QuoteRow& fields) {
    return fields.lastIndex() > lastFieldOfNoHomeIndex;
}

HomeIndexPanel homeIndexPanel(const QuoteRow& fields) {
    const double change = fields.number(field::latest) - fields.number(field::formerClose);
    return {fields.text(field::name),
            priceTexts(fields),
            numberText(roundTo(change, 2)),
            numberText(gainPercent(fields)) + u'%',
            quoteTime(fields),
            turnoverOf(fields.number(field::volume), fields),
            std::nullopt};
}

Turnover compositeTurnover(const QuoteRow& fields) {
    return turnoverOf(fields.number(field::volume) / sharesPerLot, fields);
}

std::optional<QString> indexRatio(const QuoteRow& fields, const Turnover& turnover,
                                  double meanVolume, bool marketOpen) {
    return volumeRatio(fields, turnover.lots * sharesPerLot, meanVolume, marketOpen);
}

bool hasWorldIndex(const QuoteRow& fields) {
    return fields.lastIndex() > lastFieldOfNoWorldIndex;
}

WorldIndexPanel worldIndexPanel(const QuoteRow& fields) {
    const double gain = fields.number(outsideField::gain);
    return {fields.text(outsideField::name), fields.text(outsideField::index),
            fields.text(outsideField::change), numberText(gain) + u'%',
            gain == 0  ? textColour
            : gain > 0 ? riseColour
                       : fallColour};
}

}  // namespace guanchao
