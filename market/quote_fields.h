// The reply of the quote service to a single code, cut by position, and the figures that a stock
// and an index have in common. Prices in yuan or points. A field that is not there and a text where
// a number is needed raise OperationError.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <optional>

#include "grid/colours.h"

namespace guanchao {

constexpr Colour gainColour = rgb(255, 0, 255);  // the latest price at or above the former close
constexpr Colour lossColour = rgb(0, 255, 0);    // below it

// The number that the whole text reads as; nothing where it is none, and where it is too large or
// too small for a figure of a market.
std::optional<double> marketFigure(QStringView text);
bool isMarketFigure(double value);

// The day at the start of the text, with or without zeros before month and day; invalid if none
// stands there.
QDate dayFrom(const QString& text);

// The day as time text; a text that is no day comes back as it is.
QString dayAsTimeText(const QString& text);

class QuoteFields {
public:
    explicit QuoteFields(const QString& reply);

    qsizetype lastIndex() const { return fields_.size() - 1; }
    const QString& text(qsizetype position) const;
    double number(qsizetype position) const;

private:
    QStringList fields_;
};

// The positions of a stock's fields; a domestic index has them too, without bids and asks.
namespace field {
inline constexpr qsizetype name = 0;
inline constexpr qsizetype open = 1;
inline constexpr qsizetype formerClose = 2;
inline constexpr qsizetype latest = 3;
inline constexpr qsizetype high = 4;
inline constexpr qsizetype low = 5;
inline constexpr qsizetype volume = 8;
inline constexpr qsizetype amount = 9;
inline constexpr qsizetype firstBid = 10;  // five pairs of volume and price
inline constexpr qsizetype firstAsk = 20;  // likewise
inline constexpr qsizetype day = 30;
inline constexpr qsizetype time = 31;
}  // namespace field

// A price as the service sent it, in red above the former close, in green below it; plain where it
// is no number.
struct PriceText {
    QString text;
    Colour colour = textColour;
};

struct PriceTexts {
    QString formerClose;
    PriceText open;
    PriceText latest;
    PriceText high;
    PriceText low;
    QString swing;  // 振幅: measured on the open
    Colour colour;  // of the gain and its caption
};

PriceTexts priceTexts(const QuoteFields& fields);
PriceText priceText(const QuoteFields& fields, qsizetype position);

// The gain over the former close in percent, rounded to two decimals.
double gainPercent(const QuoteFields& fields);

// The time of day, its first 8 characters.
QString quoteTime(const QuoteFields& fields);

// How far a trading day has come, in whole minutes by the service's own time; the break at noon is
// left out from one second after 13:00 on.
int tradingMinutes(const QuoteFields& fields);

// 量比: the volume so far against the mean of ten full days, both in shares. Nothing without a mean
// and at the first minute of an open market.
std::optional<QString> volumeRatio(const QuoteFields& fields, double shares, double meanVolume,
                                   bool marketOpen);

}  // namespace guanchao
