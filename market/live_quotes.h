// What the stock quote window does: the opening, the query of a stock, its polls and those of the
// domestic index, and what is told where something can't be had. Asks the quote, chart, news and
// history services; writes the code last queried to read.ini in the application folder. Nothing
// waits for a service: all that the window shows is asked for at once, and what is read anew
// replaces what is under way. Bad replies are reported. The polls begin when the stock's quote has
// come, whatever else is on its way, and only that quote's failure leaves them off.
#pragma once

#include <QCoro/QCoroTask>
#include <QString>
#include <optional>
#include <stop_token>

#include "base/globals.h"
#include "base/runs.h"
#include "market/index_quotes.h"
#include "market/mean_volume.h"
#include "market/polled_day.h"
#include "market/quote_desk.h"
#include "market/readings.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/http_client.h"
#include "platform/shell.h"
#include "services/fundamentals.h"
#include "services/services.h"

namespace guanchao {

class LiveQuotes {
public:
    LiveQuotes(Globals& globals, const Clock& clock, HttpClient& http, const Services& services,
               MeanVolume& meanVolume, PolledDay& polledDay, Dialogs& dialogs, Failures& failures,
               Shell& shell, QuoteScreen& screen);

    // Makes the folders and takes over the current stock; without one, the code last queried.
    struct Opening {
        QString dm;
        QString jc;
    };
    Opening load();

    // The fundamentals of the stock that the window opened with, once it is on the screen.
    void showOpeningFundamentals();

    // The first query, the first entries of both indexes and the start of the polls. A bad reply to
    // one of the three doesn't keep the others from the screen; it is reported at the end.
    void start(const QString& typed);

    void query(const QString& typed);
    void chooseHomeIndex(int index);
    void chooseWorldIndex(int index);

    // Breaks off what is loading. The polls go on if the stock's quote has come.
    void stop();

    // One poll: quotes while the market is open, the charts every 13th time, and then an outside
    // index that is missing. What it can't have is told in the words of the polling, which goes on.
    void poll();

    // The public pages behind the two charts.
    void openIntradayPage(const QString& typed);
    void openDailyPage(const QString& typed);

private:
    void begin();
    void setPolls(bool on);
    void read(QuotePart part, Runs& runs, const QList<Reading>& readings);
    bool readStock(const QString& typed);
    void refuseStock();
    void readHomeIndex(int index);
    void readWorldIndex(int index);
    QCoro::Task<> takeQuote(std::stop_token stop);
    QCoro::Task<> takeMean(QString dm, std::stop_token stop);
    QCoro::Task<> takePoll(std::stop_token stop);
    QCoro::Task<> pollCharts(std::stop_token stop);
    void updateMarketFlag();
    bool marketOpen() const { return globals_.jiaoyishiduan > 0; }
    void openPage(const Service& service, const QString& path, const QString& typed);
    QCoro::Task<> takeFundamentals(QString dm, std::stop_token stop);
    QCoro::Task<> fetchStock(std::stop_token stop);
    void showStock(const QuoteRow& fields);
    void showStockAgain();
    QCoro::Task<> showStockCharts(std::stop_token stop);

    Globals& globals_;
    const Clock& clock_;
    HttpClient& http_;
    const Services& services_;
    MeanVolume& meanVolume_;
    PolledDay& polledDay_;
    Failures& failures_;
    Shell& shell_;
    QuoteScreen& screen_;
    QuoteDesk desk_;
    IndexQuotes indexes_;

    QString shownDm_;  // whose name and figures are on the screen
    QString dm_;       // 代码: the stock that is polled, empty before the first query
    Fundamentals fundamentals_;
    double stockMean_ = 0;
    int pollsSinceCharts_ = 0;
    std::optional<QuoteRow> stockFields_;  // of its last quote
    bool awaitsQuote_ = false;             // of the stock that was queried
    bool polls_ = false;                   // that they go on
    Readings readings_;

    Runs stockRuns_{failures_};
    Runs homeRuns_{failures_};
    Runs worldRuns_{failures_};
    Runs pollRuns_{failures_};
    Runs chartRuns_{failures_};  // of polls
};

}  // namespace guanchao
