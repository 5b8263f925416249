#include "market/live_quotes.h"

#include <QDir>
#include <QScopeGuard>
#include <utility>

#include "base/values.h"
#include "formats/ini_file.h"
#include "market/trading_session.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int pollsBetweenCharts = 12;
constexpr int pollsBeforeIndex = 3;

const QString section = u"read"_s;
const QString key = u"fenshidm"_s;

// What is read, as the line of the window names it.
const QString quoteWords = u"行情"_s;
const QString fundamentalsWords = u"资料"_s;
const QString meanWords = u"均量"_s;

// What the box names that tells of a bad reply.
class QuoteActivity : public Activity {
public:
    QuoteActivity() : Activity(u"读取行情"_s, u"行情的自动更新已停止，点“查询”重新开始。"_s) {}
};

QString iniPath(const Globals& globals) {
    return globals.yingyongmulu + u"read.ini"_s;
}

QString lastCode(const Globals& globals) {
    const QString noted = IniFile(iniPath(globals)).value(section, key).value_or(QString());
    const QString code = trimBlanks(noted.section(QChar(u'\0'), 0, 0));
    return code.size() < codeLength ? u"SH600585"_s : code;
}

bool isHandedOver(const QString& dm) {
    return dm.size() >= codeLength && dm != u"SH000001" && dm != u"SZ399001" && dm != u"SH000100";
}

}  // namespace

LiveQuotes::LiveQuotes(Globals& globals, const Clock& clock, HttpClient& http,
                       const Services& services, MeanVolume& meanVolume, PolledDay& polledDay,
                       Dialogs& dialogs, Failures& failures, Shell& shell, QuoteScreen& screen)
    : globals_(globals),
      clock_(clock),
      http_(http),
      services_(services),
      meanVolume_(meanVolume),
      polledDay_(polledDay),
      failures_(failures),
      shell_(shell),
      screen_(screen),
      desk_(http, clock, services, screen),
      indexes_(desk_, meanVolume, globals, screen),
      readings_(dialogs, failures, [this] { setPolls(polls_); }) {}

LiveQuotes::Opening LiveQuotes::load() {
    QDir(globals_.yingyongmulu).mkpath(u"down/pic/pic1"_s);
    const Opening handedOver = {std::exchange(globals_.dangqiandm, {}),
                                std::exchange(globals_.dangqianjc, {})};
    const Opening opening =
        isHandedOver(handedOver.dm) ? handedOver : Opening{lastCode(globals_), {}};
    shownDm_ = opening.dm;
    return opening;
}

// Its failure is told by the first query, which reads the page again.
void LiveQuotes::showOpeningFundamentals() {
    const Reading fundamentals = {fundamentalsWords, [this](std::stop_token stop) {
                                      return takeFundamentals(shownDm_, stop);
                                  }};
    stockRuns_.start(
        [=, this](std::stop_token stop) { return readings_.takeQuietly(fundamentals, stop); });
}

void LiveQuotes::start(const QString& typed) {
    begin();
    setPolls(false);
    const bool accepted = readStock(typed);
    readHomeIndex(0);
    readWorldIndex(0);
    updateMarketFlag();
    if (!accepted) {
        setPolls(true);  // of the index
    }
    readings_.end();
}

void LiveQuotes::query(const QString& typed) {
    begin();
    setPolls(false);
    readStock(typed);
    readings_.end();
}

// A poll may be reading the former one.
void LiveQuotes::chooseHomeIndex(int index) {
    begin();
    readHomeIndex(index);
    setPolls(!awaitsQuote_);
    readings_.end();
}

void LiveQuotes::chooseWorldIndex(int index) {
    begin();
    readWorldIndex(index);
    setPolls(!awaitsQuote_);
    readings_.end();
}

void LiveQuotes::stop() {
    for (Runs* runs : {&stockRuns_, &homeRuns_, &worldRuns_}) {
        runs->stop();
    }
    setPolls(polls_);
}

void LiveQuotes::setPolls(bool on) {
    polls_ = on;
    screen_.setPolling(on, readings_.lackWords(quoteWords));
}

void LiveQuotes::poll() {
    if (!pollRuns_.running()) {
        pollRuns_.start([this](std::stop_token stop) { return takePoll(stop); });
    }
}

QCoro::Task<> LiveQuotes::takePoll(std::stop_token stop) {
    ++pollsSinceCharts_;
    if (pollsSinceCharts_ > pollsBetweenCharts) {
        pollsSinceCharts_ = 0;
        updateMarketFlag();
        chartRuns_.stop();
        chartRuns_.start([this](std::stop_token token) { return pollCharts(token); });
    }
    if (pollsSinceCharts_ > pollsBeforeIndex && marketOpen()) {
        const Reading index = indexes_.homePoll();
        co_await readings_.takeQuietly(index, stop);
    }
    if (marketOpen()) {
        const Reading stock = {quoteWords,
                               [this](std::stop_token token) { return fetchStock(token); }};
        co_await readings_.takeQuietly(stock, stop);
    }
    setPolls(true);
}

// No quote waits for them.
QCoro::Task<> LiveQuotes::pollCharts(std::stop_token stop) {
    if (!dm_.isEmpty()) {
        co_await showStockCharts(stop);
    }
    co_await indexes_.showHomeChart(stop);
    const Reading world = indexes_.worldIndex();
    if (readings_.lacks(world.what)) {
        co_await readings_.takeQuietly(world, stop);
    }
}

void LiveQuotes::openIntradayPage(const QString& typed) {
    openPage(services_.stockpage, u"/realstock/company/%1/nc.shtml"_s, typed);
}

void LiveQuotes::openDailyPage(const QString& typed) {
    openPage(services_.newspage, u"/news/stock/%1/cpbd.shtml"_s, typed);
}

// Without a host the shell would take the path for a file of this computer.
void LiveQuotes::openPage(const Service& service, const QString& path, const QString& typed) {
    const QString code = trimBlanks(typed).toLower();
    if (!service.host.isEmpty() && !code.isEmpty()) {
        shell_.open(service.host + path.arg(code));
    }
}

void LiveQuotes::begin() {
    pollRuns_.stop();
    chartRuns_.stop();
    readings_.begin();
}

void LiveQuotes::read(QuotePart part, Runs& runs, const QList<Reading>& readings) {
    runs.stop();
    const auto loading = [=, this](bool on) { screen_.setLoading(part, on); };
    runs.start(
        [=, this](std::stop_token stop) { return readings_.takeAll(readings, loading, stop); });
}

// False if the code is refused.
bool LiveQuotes::readStock(const QString& typed) {
    const QString dm = trimBlanks(typed).toUpper();
    if (!isStockCode(dm) && !isOfBeijing(dm)) {
        refuseStock();
        return false;
    }
    if (dm != shownDm_) {
        screen_.clearStock();
        stockMean_ = 0;
    }
    shownDm_ = dm;
    dm_ = dm;
    stockFields_.reset();
    screen_.beginStock(dm);
    IniFile(iniPath(globals_)).setValue(section, key, dm);
    read(QuotePart::stock, stockRuns_,
         {{quoteWords, [this](std::stop_token stop) { return takeQuote(stop); }},
          {fundamentalsWords,
           [=, this](std::stop_token stop) { return takeFundamentals(dm, stop); }},
          {chartWords, [this](std::stop_token stop) { return showStockCharts(stop); }},
          {meanWords, [=, this](std::stop_token stop) { return takeMean(dm, stop); }}});
    return true;
}

void LiveQuotes::refuseStock() {
    stockRuns_.stop();
    stockFields_.reset();
    readings_.forget(quoteWords);
    readings_.forget(fundamentalsWords);
    readings_.say(u"只能输入沪深个股代码!"_s);
    shownDm_.clear();
    dm_.clear();
    screen_.clearStock();
    screen_.beginStock({});
}

void LiveQuotes::readHomeIndex(int index) {
    indexes_.chooseHome(index);
    read(QuotePart::homeIndex, homeRuns_, indexes_.home());
}

void LiveQuotes::readWorldIndex(int index) {
    indexes_.chooseWorld(index);
    read(QuotePart::worldIndex, worldRuns_, indexes_.world());
}

QCoro::Task<> LiveQuotes::takeQuote(std::stop_token stop) {
    awaitsQuote_ = true;
    const auto ended = qScopeGuard([this] { awaitsQuote_ = false; });
    co_await fetchStock(stop);
    setPolls(true);
}

QCoro::Task<> LiveQuotes::takeMean(QString dm, std::stop_token stop) {
    stockMean_ = co_await meanVolume_.of(dm, stop);
    showStockAgain();
}

void LiveQuotes::updateMarketFlag() {
    globals_.jiaoyishiduan = inTradingSession(clock_.now()) ? 1 : 0;
}

// A service that the user has taken out of services.ini is not missed.
QCoro::Task<> LiveQuotes::takeFundamentals(QString dm, std::stop_token stop) {
    fundamentals_ = {};
    const FundamentalsReply reply =
        co_await fetchFundamentals(http_, services_.fundamentals, dm, stop);
    fundamentals_ = reply.fundamentals;
    screen_.showFundamentals(fundamentalTexts(fundamentals_));
    if (!reply.lack.isEmpty()) {
        throw NotHad{reply.lack, noConnection};
    }
    if (reply.isNamed) {
        showStockAgain();
    }
}

QCoro::Task<> LiveQuotes::fetchStock(std::stop_token stop) {
    if (dm_.isEmpty()) {
        co_return;
    }
    const QString code = dm_.toLower();
    const QuoteRow fields = co_await desk_.fetch(code, stop);
    polledDay_.note(dm_, fields);
    showStock(fields);
}

void LiveQuotes::showStock(const QuoteRow& fields) {
    const QuoteActivity activity;
    if (hasStock(fields)) {
        screen_.showStock(stockPanel(fields, fundamentals_, stockMean_, marketOpen(), dm_));
        stockFields_ = fields;
    } else {
        screen_.showNoStock(noData(dm_));
    }
}

// With what has come since its quote.
void LiveQuotes::showStockAgain() {
    if (stockFields_) {
        showStock(QuoteRow(*stockFields_));
    }
}

QCoro::Task<> LiveQuotes::showStockCharts(std::stop_token stop) {
    const QString code = dm_.toLower();
    const QString intraday = u"/newchart/min/n/"_s + code + u".gif"_s;
    const QString daily = u"/newchart/daily/n/"_s + code + u".gif"_s;
    co_await desk_.showChart(QuoteChart::intraday, intraday, stop);
    co_await desk_.showChart(QuoteChart::daily, daily, stop);
}

}  // namespace guanchao
