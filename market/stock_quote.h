// What the stock quote window shows of a stock: the texts and colours from the reply of the quote
// service, the fundamentals, the mean volume of ten days in shares and whether the market is open.
// Bad replies raise OperationError.
#pragma once

#include <QString>
#include <array>
#include <optional>

#include "market/quote_figures.h"
#include "services/fundamentals.h"

namespace guanchao {

inline constexpr int bookLevels = 5;

struct BookLevel {
    QString lots;
    PriceText price;
};

// A text that is missing leaves its label as it stands.
struct StockPanel {
    QString name;
    QString caption;  // of the window
    PriceTexts prices;
    QString gain;  // 涨幅
    QString volume;
    QString amount;
    QString day;
    QString time;
    std::array<BookLevel, bookLevels> bids;  // the best first
    std::array<BookLevel, bookLevels> asks;  // likewise
    PriceText limitUp;                       // 涨停
    PriceText limitDown;                     // 跌停
    std::optional<QString> priceEarnings;    // 市盈率
    std::optional<QString> turnoverRate;     // 换手率
    std::optional<QString> priceToBook;      // 市净率
    std::optional<QString> ratio;            // 量比
};

// The fundamentals with their units.
struct FundamentalTexts {
    QString jzrq;
    QString mqlt;
    QString mgsy;
    QString mgjzc;
};

FundamentalTexts fundamentalTexts(const Fundamentals& fundamentals);

// A reply with a stock; one for an unknown code has fewer fields.
bool hasStock(const QuoteRow& fields);

// `dm`, which the reply to one code doesn't name, tells the limits (涨停, 跌停): those of Beijing
// are wider.
StockPanel stockPanel(const QuoteRow& fields, const Fundamentals& fundamentals, double meanVolume,
                      bool marketOpen, const QString& dm = {});

}  // namespace guanchao
