#include "market/live_quotes.h"

#include <QDir>
#include <QScopeGuard>
#include <utility>

#include "base/values.h"
#include "formats/gbk.h"
#include "formats/ini_file.h"
#include "market/stock_code.h"
#include "market/trading_session.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int pollsBetweenCharts = 12;
constexpr int pollsBeforeIndex = 3;

const QString section = u"read"_s;
const QString key = u"fenshidm"_s;

const QString noConnection = u"请检查网络连接，行情服务器连接不上!"_s;

QString noData(const QString& name) {
    return u"没有找到"_s + name + u"的数据!"_s;
}

// Names a fetch for the box that tells of a bad reply.
class QuoteActivity : public Activity {
public:
    QuoteActivity() : Activity(u"读取行情"_s, u"行情的自动更新已停止，点“查询”重新开始。"_s) {}
};

QStringView turnoverCode(const HomeIndex& index) {
    return index.turnoverCode.isEmpty() ? index.code : index.turnoverCode;
}

QString iniPath(const Globals& globals) {
    return globals.yingyongmulu + u"read.ini"_s;
}

QString lastCode(const Globals& globals) {
    const QString noted = IniFile(iniPath(globals)).value(section, key).value_or(QString());
    const QString code = trimBlanks(noted.section(QChar(u'\0'), 0, 0));
    return code.size() < codeLength ? u"SH600585"_s : code;
}

HomeIndexPanel readHomePanel(const QuoteRow& fields) {
    const QuoteActivity activity;
    return homeIndexPanel(fields);
}

Turnover readComposite(const QuoteRow& fields) {
    const QuoteActivity activity;
    return compositeTurnover(fields);
}

bool isHandedOver(const QString& dm) {
    return dm.size() >= codeLength && dm != u"SH000001" && dm != u"SZ399001" && dm != u"SH000100";
}

}  // namespace

LiveQuotes::LiveQuotes(Globals& globals, const Clock& clock, HttpClient& http,
                       const Services& services, MeanVolume& meanVolume, Dialogs& dialogs,
                       Failures& failures, Shell& shell, QuoteScreen& screen)
    : globals_(globals),
      clock_(clock),
      http_(http),
      services_(services),
      meanVolume_(meanVolume),
      dialogs_(dialogs),
      failures_(failures),
      shell_(shell),
      screen_(screen) {}

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
    stockRuns_.start([this](std::stop_token stop) { return fetchFundamentals(shownDm_, stop); });
}

void LiveQuotes::start(const QString& typed) {
    begin();
    readStock(typed);
    readHomeIndex(0);
    readWorldIndex(0);
    updateMarketFlag();
    end();
}

void LiveQuotes::query(const QString& typed) {
    begin();
    if (!readStock(typed)) {
        outcome_.mayPoll = false;
    }
    end();
}

void LiveQuotes::chooseHomeIndex(int index) {
    begin();
    readHomeIndex(index);
    end();
}

void LiveQuotes::chooseWorldIndex(int index) {
    begin();
    readWorldIndex(index);
    end();
}

void LiveQuotes::stop() {
    for (Runs* runs : {&stockRuns_, &homeRuns_, &worldRuns_, &pollRuns_}) {
        runs->stop();
    }
    screen_.setPolling(false, {});
}

void LiveQuotes::poll() {
    if (underWay_ == 0 && !pollRuns_.running()) {
        pollRuns_.start([this](std::stop_token stop) { return takePoll(stop); });
    }
}

QCoro::Task<> LiveQuotes::takePoll(std::stop_token stop) {
    outcome_ = {};
    ++polls_;
    if (polls_ > pollsBetweenCharts) {
        polls_ = 0;
        updateMarketFlag();
        if (!dm_.isEmpty()) {
            co_await showStockCharts(stop);
        }
        co_await showHomeIndexChart(stop);
    }
    if (polls_ > pollsBeforeIndex && marketOpen()) {
        const Runs::Job index = [this](std::stop_token token) { return fetchHomeIndex(token); };
        co_await attempt(index, stop);
    }
    if (marketOpen()) {
        const Runs::Job stock = [this](std::stop_token token) { return fetchStock(token); };
        co_await attempt(stock, stop);
    }
    screen_.setPolling(true, outcome_.failure ? outcome_.failure->reason() : outcome_.lack);
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
    if (underWay_++ == 0) {
        outcome_ = {};
        screen_.setPolling(false, {});
    }
}

void LiveQuotes::end() {
    if (--underWay_ == 0) {
        finish();
    }
}

void LiveQuotes::finish() {
    const Outcome outcome = std::exchange(outcome_, {});
    if (outcome.failure) {
        failures_.report(*outcome.failure);
        return;
    }
    screen_.setPolling(outcome.mayPoll, outcome.lack);
    for (const QString& message : outcome.messages) {
        dialogs_.tell(message);
    }
}

void LiveQuotes::read(QuotePart part, Runs& runs, const Runs::Job& job) {
    runs.stop();
    runs.start([=, this](std::stop_token stop) { return readPart(part, job, stop); });
}

QCoro::Task<> LiveQuotes::readPart(QuotePart part, Runs::Job job, std::stop_token stop) {
    {
        ++underWay_;
        screen_.setLoading(part, true);
        const auto ended = qScopeGuard([=, this] {
            --underWay_;
            screen_.setLoading(part, false);
        });
        co_await attempt(job, stop);
    }
    if (underWay_ == 0) {
        finish();
    }
}

// A bad reply doesn't keep what else is under way from the screen.
QCoro::Task<> LiveQuotes::attempt(Runs::Job job, std::stop_token stop) {
    try {
        co_await job(stop);
    } catch (const OperationError& failure) {
        if (!outcome_.failure) {
            outcome_.failure = failure;
        }
    }
}

// False if the code is refused.
bool LiveQuotes::readStock(const QString& typed) {
    const QString dm = trimBlanks(typed).toUpper();
    if (!isStockCode(dm)) {
        refuseStock();
        return false;
    }
    if (dm != shownDm_) {
        screen_.clearStock();
        stockMean_ = 0;
    }
    shownDm_ = dm;
    dm_ = dm;
    read(QuotePart::stock, stockRuns_,
         [this, dm](std::stop_token stop) { return takeStock(dm, stop); });
    return true;
}

void LiveQuotes::refuseStock() {
    stockRuns_.stop();
    noteMessage(u"只能输入沪深个股代码!"_s);
    shownDm_.clear();
    dm_.clear();
    screen_.clearStock();
}

void LiveQuotes::readHomeIndex(int index) {
    if (index != homeIndex_) {
        screen_.clearHomeIndex();
        indexMean_ = 0;
    }
    homeIndex_ = index;
    read(QuotePart::homeIndex, homeRuns_,
         [this](std::stop_token stop) { return takeHomeIndex(stop); });
}

void LiveQuotes::readWorldIndex(int index) {
    if (index != worldIndex_) {
        screen_.clearWorldIndex();
    }
    worldIndex_ = index;
    read(QuotePart::worldIndex, worldRuns_,
         [this](std::stop_token stop) { return takeWorldIndex(stop); });
}

QCoro::Task<> LiveQuotes::takeStock(QString dm, std::stop_token stop) {
    co_await fetchFundamentals(dm, stop);
    IniFile(iniPath(globals_)).setValue(section, key, dm);
    co_await showStockCharts(stop);
    stockMean_ = co_await meanVolume_.of(dm, stop);
    co_await fetchStock(stop);
}

QCoro::Task<> LiveQuotes::takeHomeIndex(std::stop_token stop) {
    co_await showHomeIndexChart(stop);
    const HomeIndex home = homeIndexes[static_cast<size_t>(homeIndex_)];
    // The mean belongs to the index whose turnover is shown.
    if (home.hasRatio) {
        const QString code = turnoverCode(home).toString();
        indexMean_ = co_await meanVolume_.of(code, stop);
    }
    co_await fetchHomeIndex(stop);
}

QCoro::Task<> LiveQuotes::takeWorldIndex(std::stop_token stop) {
    const WorldIndex world = worldIndexes[static_cast<size_t>(worldIndex_)];
    const QString path = world.chartPath.toString();
    co_await showChart(QuoteChart::worldIndex, path, stop);
    const QString code = world.code.toString();
    const std::optional<QuoteRow> fields = co_await fetchQuote(code, stop);
    if (fields) {
        showWorldIndex(*fields);
    }
}

void LiveQuotes::showWorldIndex(const QuoteRow& fields) {
    const QuoteActivity activity;
    if (hasWorldIndex(fields)) {
        screen_.showWorldIndex(worldIndexPanel(fields));
        return;
    }
    outcome_.lack = u"没有外围指数的数据"_s;
    noteMessage(u"没有找到该股数据!"_s);
}

void LiveQuotes::updateMarketFlag() {
    globals_.jiaoyishiduan = inTradingSession(clock_.now()) ? 1 : 0;
}

void LiveQuotes::noteMessage(const QString& text) {
    if (!outcome_.messages.contains(text)) {
        outcome_.messages << text;
    }
}

// Nothing, and a message, for an empty reply as for none.
QCoro::Task<std::optional<QString>> LiveQuotes::fetch(Service service, QString path, QString what,
                                                      std::stop_token stop) {
    const HttpReply reply = co_await http_.get(service, path, stop);
    if (reply.body.isEmpty()) {
        const QString why = reply.answered() ? u"应答是空的"_s : failureWords(reply);
        outcome_.lack = u"没有读到%1（%2）"_s.arg(what, why);
        noteMessage(noConnection);
        co_return std::nullopt;
    }
    co_return textFromGbk(reply.body);
}

QCoro::Task<std::optional<QuoteRow>> LiveQuotes::fetchQuote(QString code, std::stop_token stop) {
    const QString path = u"/list="_s + code;
    const QString what = u"行情"_s;
    const std::optional<QString> reply = co_await fetch(services_.quote, path, what, stop);
    if (!reply) {
        outcome_.mayPoll = false;
        co_return std::nullopt;
    }
    const QuoteActivity activity;
    co_return quoteRow(*reply);
}

// A service that the user has taken out of services.ini is not missed.
QCoro::Task<> LiveQuotes::fetchFundamentals(QString dm, std::stop_token stop) {
    fundamentals_ = {};
    if (!services_.newspage.host.isEmpty()) {
        const QString path = fundamentalsPath(dm);
        const QString what = u"资料"_s;
        const std::optional<QString> page = co_await fetch(services_.newspage, path, what, stop);
        fundamentals_ = readFundamentals(page.value_or(QString()));
    }
    screen_.showFundamentals(fundamentalTexts(fundamentals_));
}

QCoro::Task<> LiveQuotes::fetchStock(std::stop_token stop) {
    if (dm_.isEmpty()) {
        co_return;
    }
    const QString code = dm_.toLower();
    const std::optional<QuoteRow> fields = co_await fetchQuote(code, stop);
    if (fields) {
        showStock(*fields);
    }
}

void LiveQuotes::showStock(const QuoteRow& fields) {
    const QuoteActivity activity;
    if (hasStock(fields)) {
        screen_.showStock(stockPanel(fields, fundamentals_, stockMean_, marketOpen()));
    } else {
        screen_.showNoStock(noData(dm_));
    }
}

QCoro::Task<> LiveQuotes::fetchHomeIndex(std::stop_token stop) {
    const HomeIndex index = homeIndexes[static_cast<size_t>(homeIndex_)];
    const QString code = index.code.toString();
    const std::optional<QuoteRow> fields = co_await fetchQuote(code, stop);
    if (!fields) {
        co_return;
    }
    if (!hasHomeIndex(*fields)) {
        screen_.showNoHomeIndex(noData(index.name.toString()));
        co_return;
    }
    const HomeIndexPanel panel = readHomePanel(*fields);
    // Already now: the reply that completes it may be broken.
    screen_.showHomeIndex(panel);
    if (index.turnoverCode.isEmpty()) {
        showRatio(index, panel, *fields);
    } else {
        co_await fetchComposite(index, panel, *fields, stop);
    }
}

// Without the composite's reply the index keeps the turnover of its own, which no mean belongs to.
QCoro::Task<> LiveQuotes::fetchComposite(HomeIndex index, HomeIndexPanel panel, QuoteRow fields,
                                         std::stop_token stop) {
    const QString code = index.turnoverCode.toString();
    const std::optional<QuoteRow> composite = co_await fetchQuote(code, stop);
    if (composite && hasHomeIndex(*composite)) {
        panel.turnover = readComposite(*composite);
        showRatio(index, panel, fields);
    }
}

void LiveQuotes::showRatio(const HomeIndex& index, HomeIndexPanel panel, const QuoteRow& fields) {
    const QuoteActivity activity;
    if (index.hasRatio) {
        panel.ratio = indexRatio(fields, panel.turnover, indexMean_, marketOpen());
    }
    screen_.showHomeIndex(panel);
}

QCoro::Task<> LiveQuotes::showChart(QuoteChart chart, QString path, std::stop_token stop) {
    const HttpReply reply = co_await http_.get(services_.chart, path, stop);
    screen_.showChart(chart, reply.answered() ? std::optional(reply.body) : std::nullopt);
}

QCoro::Task<> LiveQuotes::showStockCharts(std::stop_token stop) {
    const QString code = dm_.toLower();
    const QString intraday = u"/newchart/min/n/"_s + code + u".gif"_s;
    const QString daily = u"/newchart/daily/n/"_s + code + u".gif"_s;
    co_await showChart(QuoteChart::intraday, intraday, stop);
    co_await showChart(QuoteChart::daily, daily, stop);
}

QCoro::Task<> LiveQuotes::showHomeIndexChart(std::stop_token stop) {
    const HomeIndex index = homeIndexes[static_cast<size_t>(homeIndex_)];
    const QString path = index.chartPath.toString();
    co_await showChart(QuoteChart::homeIndex, path, stop);
}

}  // namespace guanchao
