#include "market/stock_quote.h"

#include <QTime>

#include "base/values.h"
#include "services/price_limits.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int lastFieldOfNothing = 14;

const QTime endOfOpeningAuction(9, 25);

QString lotsText(double shares) {
    return noDecimals(shares / sharesPerLot);
}

std::array<BookLevel, bookLevels> bookFrom(const QuoteRow& fields, qsizetype position) {
    std::array<BookLevel, bookLevels> levels;
    for (BookLevel& level : levels) {
        level = {lotsText(fields.number(position)), priceText(fields, position + 1)};
        position += 2;
    }
    return levels;
}

void showLimits(StockPanel& panel, double formerClose, int percent) {
    const double share = percent / 100.0;
    const auto limit = [&](double price) {
        const double cents = roundTo(price, 2);
        return PriceText{twoDecimals(cents), priceColour(cents, formerClose)};
    };
    panel.limitUp = limit(formerClose * (1 + share));
    panel.limitDown = limit(formerClose * (1 - share));
}

// 停牌: at the end of the opening auction every stock that trades has a price.
bool isSuspended(const QuoteRow& fields) {
    const QTime time = QTime::fromString(quoteTime(fields), u"HH:mm:ss"_s);
    return fields.number(field::latest) == 0 && fields.number(field::formerClose) > 0 &&
           !(time.isValid() && time < endOfOpeningAuction);
}

QString dayText(const QString& text) {
    const QDate day = dayFrom(text);
    return day.isValid() ? day.toString(Qt::ISODate) : text;
}

// How many times the earnings of the report's quarters make a year.
double annualFactor(const Fundamentals& fundamentals) {
    const QString day = dayFrom(fundamentals.jzrq).toString(u"MM-dd"_s);
    if (fundamentals.isOfAYear || day == u"12-31") {
        return 1;
    }
    if (day == u"06-30") {
        return 2;
    }
    return day == u"09-30" ? 4.0 / 3 : 4;
}

QString priceEarnings(double latest, const Fundamentals& fundamentals) {
    const std::optional<double> mgsy = marketFigure(fundamentals.mgsy);
    if (!mgsy) {
        return u"--"_s;
    }
    const double ratio = latest / (*mgsy == 0 ? 0.001 : *mgsy) / annualFactor(fundamentals);
    // A loss is shown itself: a negative ratio tells nothing.
    return twoDecimals(ratio < 0 ? *mgsy : ratio);
}

QString priceToBook(double latest, double netAssets) {
    const double ratio = latest / (netAssets == 0 ? 1 : netAssets);
    return ratio < 0 ? numberText(netAssets) : twoDecimals(ratio);
}

void showValuation(StockPanel& panel, const QuoteRow& fields, const Fundamentals& fundamentals) {
    const double mqlt = fundamentals.floatInTenThousands();
    if (mqlt <= 0) {
        return;
    }
    const double latest = fields.number(field::latest);
    const double shares = fields.number(field::volume);
    panel.priceEarnings = priceEarnings(latest, fundamentals);
    panel.turnoverRate = twoDecimals(shares / 10000 / mqlt * 100) + u'%';
    panel.priceToBook = priceToBook(latest, fundamentals.netAssets());
}

}  // namespace

FundamentalTexts fundamentalTexts(const Fundamentals& fundamentals) {
    return {fundamentals.isOfAYear ? u"近四个季度"_s : dayText(fundamentals.jzrq),
            fundamentals.mqlt + u"（亿）"_s, fundamentals.mgsy + u"（元）"_s,
            fundamentals.mgjzc + u"（元）"_s};
}

bool hasStock(const QuoteRow& fields) {
    return fields.lastIndex() > lastFieldOfNothing;
}

StockPanel stockPanel(const QuoteRow& fields, const Fundamentals& fundamentals, double meanVolume,
                      bool marketOpen, const QString& dm) {
    const double latest = fields.number(field::latest);
    const double shares = fields.number(field::volume);
    StockPanel panel;
    panel.name = trimBlanks(fields.text(field::name));
    panel.caption = u"分时行情——"_s + panel.name;
    panel.prices = priceTexts(fields);
    if (isSuspended(fields)) {
        panel.prices.latest.text = u"停牌"_s;
    }
    panel.gain = numberText(latest == 0 ? 0 : gainPercent(fields)) + u'%';
    panel.volume = lotsText(shares) + u"手"_s;
    panel.amount = noDecimals(fields.number(field::amount) / 10000) + u"万元"_s;
    panel.day = dayText(fields.text(field::day));
    panel.time = quoteTime(fields);
    panel.bids = bookFrom(fields, field::firstBid);
    panel.asks = bookFrom(fields, field::firstAsk);
    showLimits(panel, fields.number(field::formerClose), shownLimitPercent(dm, panel.name));
    showValuation(panel, fields, fundamentals);
    panel.ratio = volumeRatio(fields, shares, meanVolume, marketOpen);
    return panel;
}

}  // namespace guanchao
