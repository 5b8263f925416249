#include "tools/practice_market/practice_market.h"

#include <httplib.h>
#include <sys/socket.h>

#include <algorithm>
#include <stdexcept>

#include "formats/gbk.h"
#include "tools/practice_market/practice_bars.h"
#include "tools/practice_market/practice_charts.h"
#include "tools/practice_market/practice_headlines.h"
#include "tools/practice_market/practice_pages.h"
#include "tools/practice_market/practice_search.h"
#include "tools/practice_market/practice_tencent.h"

namespace guanchao {

namespace {

constexpr int shortPieceFields = 10;
constexpr size_t keptAliveRequests = 100000;
constexpr time_t keepAliveSeconds = 1;
// More than any test asks for.
constexpr qsizetype notedRequests = 1000;

constexpr char loopback[] = "127.0.0.1";
constexpr char quoteType[] = "application/javascript; charset=GB18030";
constexpr char textType[] = "text/plain; charset=GB18030";
// Of a type that the library leaves uncompressed: its encoder takes ten times as long as the days.
constexpr char historyType[] = "application/octet-stream";
constexpr char chartType[] = "image/gif";
constexpr char pageType[] = "text/html; charset=GB18030";
constexpr char searchType[] = "text/html; charset=utf-8";
constexpr char headlinesType[] = "application/javascript; charset=utf-8";
constexpr char refusal[] = "Kinsoku jikou desu!";
constexpr char errorPage[] =
    "<html><head><title>502 Bad Gateway</title></head>"
    "<body><h1>502 Bad Gateway</h1></body></html>\n";

std::string inGbk(const QString& text) {
    return gbkFromText(text).toStdString();
}

// The second line with fewer values; a reply of one line stays as it is.
QString withShortPiece(const QString& reply) {
    QStringList lines = reply.split(u'\n');
    const QStringList values = lines[1].split(u',');
    if (values.size() > shortPieceFields) {
        lines[1] = values.first(shortPieceFields).join(u',') + QStringLiteral("\";");
    }
    return lines.join(u'\n');
}

// Announces the whole body and closes the connection within its last line.
void sendHalf(const std::string& body, httplib::Response& response) {
    const size_t lastLine = body.rfind('\n', body.size() - 2) + 1;  // npos + 1 is 0
    const size_t sent = (lastLine + body.size()) / 2;
    response.set_content_provider(body.size(), quoteType,
                                  [body, sent](size_t, size_t, httplib::DataSink& sink) {
                                      sink.write(body.data(), sent);
                                      return false;
                                  });
}

void refuse(httplib::Response& response) {
    response.status = 403;
    response.set_content(refusal, textType);
}

QString parameter(const httplib::Request& request, const char* name) {
    return QString::fromStdString(request.get_param_value(name));
}

// A port in use stays refused: httplib's own options would share it.
void reuseAddressOnly(int socket) {
    const int on = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
}

}  // namespace

PracticeMarket::PracticeMarket(PracticeQuotes quotes, std::function<QDateTime()> now,
                               PracticeBoards boards)
    : quotes_(std::move(quotes)), now_(std::move(now)), boards_(std::move(boards)) {}

PracticeMarket::~PracticeMarket() {
    stop();
}

int PracticeMarket::start(int port) {
    stop();
    stopping_ = false;
    server_ = std::make_unique<httplib::Server>();
    server_->set_tcp_nodelay(true);
    server_->set_keep_alive_max_count(keptAliveRequests);
    server_->set_keep_alive_timeout(keepAliveSeconds);
    server_->set_socket_options(reuseAddressOnly);
    addRoutes();
    if (port == 0) {
        port = server_->bind_to_any_port(loopback);
    } else if (!server_->bind_to_port(loopback, port)) {
        port = -1;
    }
    if (port < 0) {
        throw std::runtime_error("the practice market cannot listen on its port");
    }
    port_ = port;
    listener_ = std::thread([server = server_.get()] { server->listen_after_bind(); });
    while (!server_->is_running()) {  // until then httplib ignores stop()
        std::this_thread::yield();
    }
    return port;
}

void PracticeMarket::stop() {
    if (!listener_.joinable()) {
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    awake_.notify_all();
    server_->stop();
    listener_.join();
}

QString PracticeMarket::host() const {
    return QStringLiteral("http://127.0.0.1:%1").arg(port_.load());
}

void PracticeMarket::setFault(MarketFault fault) {
    const std::lock_guard lock(mutex_);
    fault_ = fault;
    awake_.notify_all();
}

void PracticeMarket::setDelay(std::chrono::milliseconds delay) {
    const std::lock_guard lock(mutex_);
    delay_ = delay;
}

void PracticeMarket::setReferer(const QString& referer) {
    const std::lock_guard lock(mutex_);
    referer_ = referer;
}

QStringList PracticeMarket::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

void PracticeMarket::addRoutes() {
    using Handled = httplib::Server::HandlerResponse;
    server_->set_pre_routing_handler([this](const auto& request, auto&) {
        note(request);
        return Handled::Unhandled;
    });
    server_->Get(R"(/(list|q)=(.*))",
                 [this](const httplib::Request& request, httplib::Response& response) {
                     answerQuotes(request, response);
                 });
    // Before the pages, among which the factors lie.
    server_->Get(R"(/table\.csv|/quotes_service/.+getKLineData|/appstock/app/fqkline/get)"
                 R"(|/api/qt/stock/kline/get|/realstock/company/\w+/hfq\.js)",
                 [this](const httplib::Request& request, httplib::Response& response) {
                     answerHistory(request, response);
                 });
    server_->Get(
        R"(/q/view/newFLJK\.php|/quotes_service/.+getHQNode(?:Data|StockCount)|/api/qt/clist/get)",
        [this](const httplib::Request& request, httplib::Response& response) {
            answerBoards(request, response);
        });
    server_->Get("/newchart/.+",
                 [this](const httplib::Request& request, httplib::Response& response) {
                     answerChart(request, response);
                 });
    server_->Get(R"(/(realstock|news)/.+|/\d{6}/|/[Ss][HhZz]\d{6}\.html)",
                 [this](const httplib::Request& request, httplib::Response& response) {
                     answerPage(request, response);
                 });
    server_->Get("/s", [this](const httplib::Request& request, httplib::Response& response) {
        answerSearch(request, response);
    });
    server_->Get("/search/jsonp",
                 [this](const httplib::Request& request, httplib::Response& response) {
                     answerHeadlines(request, response);
                 });
    server_->Get(
        "/chaoxin/banbenupdate\\.txt",
        [this](const httplib::Request&, httplib::Response& response) { answerVersion(response); });
    server_->Get("/chaoxin/dlfwq\\.htm", [](const httplib::Request&, httplib::Response& response) {
        response.set_content(inGbk(practiceProxyPage()), pageType);
    });
}

void PracticeMarket::note(const httplib::Request& request) {
    const std::lock_guard lock(mutex_);
    requests_ << QString::fromStdString(request.target);
    if (requests_.size() > notedRequests) {
        requests_.removeFirst();
    }
}

void PracticeMarket::answerQuotes(const httplib::Request& request, httplib::Response& response) {
    if (isRefused(request)) {
        refuse(response);
        return;
    }
    const MarketFault fault = this->fault();
    const QString reply = quotesFor(QString::fromStdString(request.matches[1]),
                                    QString::fromStdString(request.matches[2]));
    switch (fault) {
        case MarketFault::refused:
            refuse(response);
            return;
        case MarketFault::errorPage:
            response.set_content(errorPage, pageType);
            return;
        case MarketFault::halfReply:
            sendHalf(inGbk(reply), response);
            return;
        case MarketFault::shortPiece:
            response.set_content(inGbk(withShortPiece(reply)), quoteType);
            return;
        case MarketFault::slow:
        case MarketFault::none:
            waitForAnswer();
            response.set_content(inGbk(reply), quoteType);
    }
}

void PracticeMarket::answerHistory(const httplib::Request& request,
                                   httplib::Response& response) const {
    const std::optional<QString> bars =
        practiceBars(quotes_, QString::fromStdString(request.target), now_());
    if (!bars) {
        response.status = 404;
        return;
    }
    response.set_content(inGbk(*bars), historyType);
}

void PracticeMarket::answerBoards(const httplib::Request& request,
                                  httplib::Response& response) const {
    const auto reply = boards_.reply(QString::fromStdString(request.target));
    response.set_content(reply.value_or(QByteArray()).toStdString(), textType);
}

void PracticeMarket::answerChart(const httplib::Request& request,
                                 httplib::Response& response) const {
    const QByteArray chart = practiceChart(quotes_, QString::fromStdString(request.path), now_());
    if (chart.isEmpty()) {
        response.status = 404;
        return;
    }
    response.set_content(chart.toStdString(), chartType);
}

void PracticeMarket::answerPage(const httplib::Request& request,
                                httplib::Response& response) const {
    const QString page = practicePage(quotes_, QString::fromStdString(request.path), now_());
    if (page.isEmpty()) {
        response.status = 404;
        return;
    }
    response.set_content(inGbk(page), pageType);
}

void PracticeMarket::answerSearch(const httplib::Request& request,
                                  httplib::Response& response) const {
    const QString words = textFromGbk(QByteArray::fromStdString(request.get_param_value("wd")));
    const int days = parameter(request, "lm").toInt();
    response.set_content(practiceSearchPage(words, days, now_().date()).toStdString(), searchType);
}

void PracticeMarket::answerHeadlines(const httplib::Request& request,
                                     httplib::Response& response) const {
    const QByteArray reply =
        practiceHeadlines(parameter(request, "cb"),
                          QByteArray::fromStdString(request.get_param_value("param")), now_());
    response.set_content(reply.toStdString(), headlinesType);
}

void PracticeMarket::answerVersion(httplib::Response& response) const {
    const QString text = QStringLiteral("[chaoxin]\nbanben=3.7\ndownurl=%1/download\n").arg(host());
    response.set_content(inGbk(text), textType);
}

bool PracticeMarket::isRefused(const httplib::Request& request) const {
    const QString referer = QString::fromStdString(request.get_header_value("Referer"));
    const std::lock_guard lock(mutex_);
    return !referer_.isEmpty() && referer != referer_;
}

MarketFault PracticeMarket::fault() const {
    const std::lock_guard lock(mutex_);
    return fault_;
}

// `q` is asked of Tencent; a code with `_i` asks for its key data.
QString PracticeMarket::quotesFor(const QString& kind, const QString& codeList) const {
    const QStringList codes =
        (codeList.endsWith(u',') ? codeList.chopped(1) : codeList).split(u',');
    if (kind == u"q") {
        return practiceTencentReply(quotes_, codes, now_());
    }
    const bool isKeyData = std::ranges::all_of(codes, [](const QString& code) {
        return code.size() == 10 && code.endsWith(QStringLiteral("_i"));
    });
    return isKeyData ? practiceKeyData(quotes_, codes, now_()) : quotes_.reply(codes, now_());
}

void PracticeMarket::waitForAnswer() {
    std::unique_lock lock(mutex_);
    // Under a clock that a test has set a wait of no time would never end.
    if (delay_.count() > 0) {
        awake_.wait_for(lock, delay_, [this] { return stopping_; });
    }
    awake_.wait(lock, [this] { return stopping_ || fault_ != MarketFault::slow; });
}

}  // namespace guanchao
