#include "market/quote_fields.h"

#include <QTime>
#include <cmath>

#include "base/activity.h"
#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int minutesOfTradingDay = 240;
constexpr int minutesOfNoonBreak = 90;
constexpr int timeCharacters = 8;

// Beyond them no figure of a market lies, and products and ratios of two no longer make sense.
constexpr double largestFigure = 1e18;
constexpr double smallestFigure = 1e-9;

const QTime morningOpen(9, 30);
const QTime afternoonOpen(13, 0);

QString valuesOf(const QString& reply) {
    const qsizetype quote = reply.indexOf(u'"');
    if (quote < 0) {
        return {};
    }
    const qsizetype end = reply.indexOf(u"\";"_s, quote + 1);
    return reply.mid(quote + 1, end < 0 ? -1 : end - quote - 1);
}

int minuteOfDay(QTime time) {
    return time.hour() * 60 + time.minute();
}

double orOne(double divisor) {
    return divisor == 0 ? 1 : divisor;
}

Colour colourOf(double price, double formerClose) {
    if (price == 0 || price == formerClose) {
        return textColour;
    }
    return price > formerClose ? riseColour : fallColour;
}

}  // namespace

bool isMarketFigure(double value) {
    const double size = std::abs(value);
    return size == 0 || (size >= smallestFigure && size <= largestFigure);
}

std::optional<double> marketFigure(QStringView text) {
    const double value = numericPrefix(text);
    return readsAsNumber(text) && isMarketFigure(value) ? std::optional(value) : std::nullopt;
}

QDate dayFrom(const QString& text) {
    const QString day = text.trimmed().section(u' ', 0, 0).section(u'T', 0, 0);
    return QDate::fromString(day, u"yyyy-M-d"_s);
}

QString dayAsTimeText(const QString& text) {
    const QDate day = dayFrom(text);
    return day.isValid() ? timeText(day) : text;
}

QuoteFields::QuoteFields(const QString& reply) : fields_(valuesOf(reply).split(u',')) {}

const QString& QuoteFields::text(qsizetype position) const {
    if (position > lastIndex()) {
        throw OperationError(u"行情数据不完整，缺少第"_s + QString::number(position + 1) +
                             u"个字段。"_s);
    }
    return fields_[position];
}

double QuoteFields::number(qsizetype position) const {
    const QString& field = text(position);
    const std::optional<double> value = marketFigure(field);
    if (!value) {
        throw OperationError(u"行情数据的第"_s + QString::number(position + 1) +
                             u"个字段不是数字："_s + field.left(20));
    }
    return *value;
}

PriceText priceText(const QuoteFields& fields, qsizetype position) {
    const QString& text = fields.text(position);
    const std::optional<double> price = marketFigure(text);
    return {text, price ? colourOf(*price, fields.number(field::formerClose)) : textColour};
}

PriceTexts priceTexts(const QuoteFields& fields) {
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

double gainPercent(const QuoteFields& fields) {
    const double latest = fields.number(field::latest);
    const double formerClose = fields.number(field::formerClose);
    return roundTo(latest / orOne(formerClose) * 100 - 100, 2);
}

QString quoteTime(const QuoteFields& fields) {
    return fields.text(field::time).left(timeCharacters);
}

int tradingMinutes(const QuoteFields& fields) {
    const QTime time = QTime::fromString(quoteTime(fields), u"HH:mm:ss"_s);
    if (!time.isValid()) {
        throw OperationError(u"行情数据的时间不对："_s + quoteTime(fields));
    }
    const int minutes = minuteOfDay(time) - minuteOfDay(morningOpen);
    return time > afternoonOpen ? minutes - minutesOfNoonBreak : minutes;
}

std::optional<QString> volumeRatio(const QuoteFields& fields, double shares, double meanVolume,
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
