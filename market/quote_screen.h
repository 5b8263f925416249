// Where the results of the stock quote window go as they come.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "market/index_panels.h"
#include "market/stock_quote.h"

namespace guanchao {

enum class QuoteChart { intraday, daily, homeIndex, worldIndex };
enum class QuotePart { stock, homeIndex, worldIndex };

class QuoteScreen {
public:
    virtual ~QuoteScreen() = default;

    // All that is read from now on is of this stock, in upper case; of none if it is empty.
    virtual void beginStock(const QString& dm) = 0;
    virtual void showFundamentals(const FundamentalTexts& texts) = 0;
    // Nothing where the chart can't be had.
    virtual void showChart(QuoteChart chart, const std::optional<QByteArray>& picture) = 0;
    // The part is on its way; what has not come when that ends won't come.
    virtual void setLoading(QuotePart part, bool loading) = 0;
    // Nothing of the former one stays, the charts neither.
    virtual void clearStock() = 0;
    virtual void showStock(const StockPanel& panel) = 0;
    // The words instead of its figures.
    virtual void showNoStock(const QString& words) = 0;
    // Likewise, but for the ratio.
    virtual void clearHomeIndex() = 0;
    virtual void showHomeIndex(const HomeIndexPanel& panel) = 0;
    virtual void showNoHomeIndex(const QString& words) = 0;
    virtual void clearWorldIndex() = 0;
    virtual void showWorldIndex(const WorldIndexPanel& panel) = 0;
    // The timer of the polls, to begin anew or to stop; and what could not be had last, in words.
    virtual void setPolling(bool on, const QString& lack) = 0;
};

}  // namespace guanchao
