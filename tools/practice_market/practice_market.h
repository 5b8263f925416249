// The practice market: an HTTP server on loopback which answers what the program asks of the
// public services (quotes, charts, pages of a stock, day history, boards, the vendor's site), in
// GBK, and the collector of a search engine and of a list of news, in UTF-8, so that both work with
// no network. Tests run
// it in-process and give it faults. Safe to call from any one thread while the server's own threads
// answer; start() throws std::runtime_error, nothing else throws.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "tools/practice_market/practice_boards.h"
#include "tools/practice_market/practice_quotes.h"

namespace httplib {
class Server;
struct Request;
struct Response;
}  // namespace httplib

namespace guanchao {

// What goes wrong with the quotes (the other pages stay well).
enum class MarketFault {
    none,
    slow,        // the answer comes when the fault is lifted
    refused,     // 403
    halfReply,   // the transfer breaks off in the middle of the last line
    errorPage,   // 200 with a page of HTML
    shortPiece,  // the second line ends after 10 values
};

class PracticeMarket {
public:
    // `now` is called on the server's threads.
    PracticeMarket(PracticeQuotes quotes, std::function<QDateTime()> now,
                   PracticeBoards boards = PracticeBoards());
    ~PracticeMarket();
    PracticeMarket(const PracticeMarket&) = delete;
    PracticeMarket& operator=(const PracticeMarket&) = delete;

    // Listens on 127.0.0.1 and returns the port; 0 asks for any free one.
    int start(int port = 0);
    // At once, or after a second when a client keeps an idle connection open.
    void stop();
    QString host() const;  // "http://127.0.0.1:PORT"

    void setFault(MarketFault fault);

    // From now on an answer with quotes takes so long, as one from far away does.
    void setDelay(std::chrono::milliseconds delay);

    // From now on quotes asked for without exactly this Referer are refused; empty lifts it.
    void setReferer(const QString& referer);

    // The last paths that were asked, each with its query, in order.
    QStringList requests() const;

private:
    void addRoutes();
    void note(const httplib::Request& request);
    void answerQuotes(const httplib::Request& request, httplib::Response& response);
    void answerHistory(const httplib::Request& request, httplib::Response& response) const;
    void answerBoards(const httplib::Request& request, httplib::Response& response) const;
    void answerChart(const httplib::Request& request, httplib::Response& response) const;
    void answerPage(const httplib::Request& request, httplib::Response& response) const;
    void answerSearch(const httplib::Request& request, httplib::Response& response) const;
    void answerHeadlines(const httplib::Request& request, httplib::Response& response) const;
    void answerVersion(httplib::Response& response) const;
    bool isRefused(const httplib::Request& request) const;
    MarketFault fault() const;
    QString quotesFor(const QString& kind, const QString& codeList) const;
    void waitForAnswer();

    const PracticeQuotes quotes_;
    const std::function<QDateTime()> now_;
    const PracticeBoards boards_;
    std::unique_ptr<httplib::Server> server_;
    std::thread listener_;
    std::atomic<int> port_ = 0;

    mutable std::mutex mutex_;  // guards all below
    std::condition_variable awake_;
    bool stopping_ = false;
    MarketFault fault_ = MarketFault::none;
    std::chrono::milliseconds delay_{0};
    QString referer_;
    QStringList requests_;
};

}  // namespace guanchao
