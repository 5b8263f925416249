#include "market/quote_figures.h"

#include <QTime>

#include "base/activity.h"
#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int minutesOfTradingDay = 240;
constexpr int minutesOfNoonBreak = 90;
constexpr int timeCharacters = 8;

const QTime morningOpen(9, 30);
const QTime afternoonOpen(13, 0);

int minuteOfDay(QTime time) {
    return time.hour() * 60 + time.minute();
}

double orOne(double divisor) {
    return divisor == 0 ? 1 : divisor;
}

}  // namespace

Colour priceColour(double price, double formerClose) {
    if (price == 0 || price == formerClose) {
        return textColour;
    }
    return price > formerClose ? riseColour : fallColour;
}

PriceText priceText(const QuoteRow& fields, qsizetype position) {
    const std::optional<double> price = fields.figure(position);
    return {fields.text(position),
            price ? priceColour(*price, fields.number(field::formerClose)) : textColour};
}

PriceTexts priceTexts(const QuoteRow& fields) {
    const double open = fields.number(field::open);
    const double high = fields.number(field::high);
    const double low = fields.number(field::low);
    const bool loss = fields.number(field::latest) < fields.number(field::formerClose);
    return {fields.text(field::formerClose),
            priceText(fields, field::open),
            priceText(fields, field::latest),
            priceText(fields, field::high),
            priceText(fields, field::low),
            numberText(roundTo((high - low) / orOne(open) * 100, 2)) + u'%',
            loss ? lossColour : gainColour};
}

double gainPercent(const QuoteRow& fields) {
    const double latest = fields.number(field::latest);
    const double formerClose = fields.number(field::formerClose);
    return roundTo(latest / orOne(formerClose) * 100 - 100, 2);
}

QString quoteTime(const QuoteRow& fields) {
    return fields.text(field::time).left(timeCharacters);
}

int tradingMinutes(const QuoteRow& fields) {
    const QTime time = QTime::fromString(quoteTime(fields), u"HH:mm:ss"_s);
    if (!time.isValid()) {
        throw OperationError(u"行情数据的时间不对："_s + quoteTime(fields));
    }
    const int minutes = minuteOfDay(time) - minuteOfDay(morningOpen);
    return time > afternoonOpen ? minutes - minutesOfNoonBreak : minutes;
}

std::optional<QString> volumeRatio(const QuoteRow& fields, double shares, double meanVolume,
                                   bool marketOpen) {
    if (meanVolume <= 0) {
        return std::nullopt;
    }
    if (!marketOpen) {
        return twoDecimals(shares / meanVolume);
    }
    const int minutes = tradingMinutes(fields);
    if (minutes <= 0) {
        return std::nullopt;
    }
    return twoDecimals(shares / minutes * minutesOfTradingDay / meanVolume);
}

}  // namespace guanchao
