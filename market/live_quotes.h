// What the stock quote window does: the opening, the query of a stock, its polls and those of the
// domestic index, the two messages. Asks the quote, chart, news and history services; writes the
// code last queried to read.ini in the application folder. Bad replies raise OperationError and
// leave the polling off, as do quotes that could not be had.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

#include "base/globals.h"
#include "market/fundamentals.h"
#include "market/index_panels.h"
#include "market/mean_volume.h"
#include "market/stock_quote.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/http.h"
#include "platform/services.h"
#include "platform/shell.h"

namespace guanchao {

enum class QuoteChart { intraday, daily, homeIndex, worldIndex };

// Where the results go as they come.
class QuoteScreen {
public:
    virtual ~QuoteScreen() = default;

    virtual void showFundamentals(const FundamentalTexts& texts) = 0;
    // Nothing where the chart can't be had.
    virtual void showChart(QuoteChart chart, const std::optional<QByteArray>& picture) = 0;
    // Another one comes: nothing of the former stays.
    virtual void clearStock() = 0;
    virtual void showStock(const StockPanel& panel) = 0;
    virtual void showNoStock(const QString& words) = 0;
    // Likewise, but for the ratio.
    virtual void clearHomeIndex() = 0;
    virtual void showHomeIndex(const HomeIndexPanel& panel) = 0;
    virtual void showNoHomeIndex(const QString& words) = 0;
    virtual void clearWorldIndex() = 0;
    virtual void showWorldIndex(const WorldIndexPanel& panel) = 0;
    // The timer of the polls, to begin anew or to stop.
    virtual void setPolling(bool on) = 0;
};

// Messages come last in an operation: what stands under one is complete.
class LiveQuotes {
public:
    LiveQuotes(Globals& globals, const Clock& clock, Http& http, const Services& services,
               MeanVolume& meanVolume, Dialogs& dialogs, Shell& shell, QuoteScreen& screen);

    // Makes the folders and takes over the current stock; without one, the code last queried.
    struct Opening {
        QString dm;
        QString jc;
    };
    Opening load();

    // The fundamentals of the stock that the window opened with, once it is on the screen.
    void showOpeningFundamentals();

    // The first query, the first entries of both indexes and the start of the polls. A bad reply to
    // one of the three doesn't keep the others from the screen; it is raised at the end.
    void start(const QString& typed);

    void query(const QString& typed);
    void chooseHomeIndex(int index);
    void chooseWorldIndex(int index);

    // One poll: quotes while the market is open, the charts every 13th time.
    void poll();

    // The public pages behind the two charts.
    void openIntradayPage(const QString& typed);
    void openDailyPage(const QString& typed);

private:
    void begin();
    void end(bool polls);
    bool queryStock(const QString& typed);
    void takeHomeIndex(int index);
    void takeWorldIndex(int index);
    void updateMarketFlag();
    bool marketOpen() const { return globals_.jiaoyishiduan > 0; }
    void noteMessage(const QString& text);
    void openPage(const Service& service, const QString& path, const QString& typed);
    std::optional<QString> fetch(const Service& service, const QString& path);
    std::optional<QuoteRow> fetchQuote(QStringView code);
    void fetchFundamentals(const QString& dm);
    void fetchStock();
    void fetchHomeIndex();
    void completeTurnover(const HomeIndex& index, const QuoteRow& fields, HomeIndexPanel& panel);
    void showChart(QuoteChart chart, const QString& path);
    void showStockCharts();
    void showNoStockCharts();
    void showHomeIndexChart();

    Globals& globals_;
    const Clock& clock_;
    Http& http_;
    const Services& services_;
    MeanVolume& meanVolume_;
    Dialogs& dialogs_;
    Shell& shell_;
    QuoteScreen& screen_;

    QString shownDm_;  // whose name and figures are on the screen
    QString dm_;       // 代码: the stock that is polled, empty before the first query
    Fundamentals fundamentals_;
    double stockMean_ = 0;
    int homeIndex_ = 0;
    int worldIndex_ = 0;
    double indexMean_ = 0;
    int polls_ = 0;         // since the charts were last drawn by one
    bool mayPoll_ = true;   // false once a quote of the operation could not be had
    QStringList messages_;  // of the operation, each once
};

}  // namespace guanchao
