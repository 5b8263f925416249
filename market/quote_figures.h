// The figures that a stock and an index have in common, as the stock quote window shows them, from
// the fields of the quote service. Prices in yuan or points. A field that is not there and a text
// where a number is needed raise OperationError.
#pragma once

#include <QDate>
#include <QString>
#include <optional>

#include "grid/colours.h"
#include "services/quote_reply.h"

namespace guanchao {

constexpr Colour gainColour = rgb(255, 0, 255);  // the latest price at or above the former close
constexpr Colour lossColour = rgb(0, 255, 0);    // below it

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

// Red above the former close, green below it; plain at it and where there is no price.
Colour priceColour(double price, double formerClose);

PriceTexts priceTexts(const QuoteRow& fields);
PriceText priceText(const QuoteRow& fields, qsizetype position);

// The gain over the former close in percent, rounded to two decimals.
double gainPercent(const QuoteRow& fields);

// The time of day, its first 8 characters.
QString quoteTime(const QuoteRow& fields);

// How far a trading day has come, in whole minutes by the service's own time; the break at noon is
// left out from one second after 13:00 on.
int tradingMinutes(const QuoteRow& fields);

// 量比: the volume so far against the mean of ten full days, both in shares. Nothing without a mean
// and at the first minute of an open market.
std::optional<QString> volumeRatio(const QuoteRow& fields, double shares, double meanVolume,
                                   bool marketOpen);

}  // namespace guanchao
