#include "market/live_quotes.h"

#include <QDir>
#include <utility>

#include "base/activity.h"
#include "base/first_failure.h"
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

bool isHandedOver(const QString& dm) {
    return dm.size() >= codeLength && dm != u"SH000001" && dm != u"SZ399001" && dm != u"SH000100";
}

}  // namespace

LiveQuotes::LiveQuotes(Globals& globals, const Clock& clock, Http& http, const Services& services,
                       MeanVolume& meanVolume, Dialogs& dialogs, Shell& shell, QuoteScreen& screen)
    : globals_(globals),
      clock_(clock),
      http_(http),
      services_(services),
      meanVolume_(meanVolume),
      dialogs_(dialogs),
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
    fetchFundamentals(shownDm_);
}

void LiveQuotes::start(const QString& typed) {
    begin();
    FirstFailure<OperationError> failure;
    failure.attempt([&] { queryStock(typed); });
    failure.attempt([&] { takeHomeIndex(0); });
    failure.attempt([&] { takeWorldIndex(0); });
    updateMarketFlag();
    failure.raise();
    end(true);
}

void LiveQuotes::query(const QString& typed) {
    begin();
    end(queryStock(typed));
}

void LiveQuotes::chooseHomeIndex(int index) {
    begin();
    takeHomeIndex(index);
    end(true);
}

void LiveQuotes::chooseWorldIndex(int index) {
    begin();
    takeWorldIndex(index);
    end(true);
}

void LiveQuotes::poll() {
    begin();
    ++polls_;
    if (polls_ > pollsBetweenCharts) {
        polls_ = 0;
        updateMarketFlag();
        if (!dm_.isEmpty()) {
            showStockCharts();
        }
        showHomeIndexChart();
    }
    if (polls_ > pollsBeforeIndex && marketOpen()) {
        fetchHomeIndex();
    }
    if (marketOpen()) {
        fetchStock();
    }
    end(true);
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
    mayPoll_ = true;
    messages_.clear();
    screen_.setPolling(false);
}

void LiveQuotes::end(bool polls) {
    screen_.setPolling(polls && mayPoll_);
    for (const QString& message : std::exchange(messages_, {})) {
        dialogs_.tell(message);
    }
}

bool LiveQuotes::queryStock(const QString& typed) {
    const QString dm = trimBlanks(typed).toUpper();
    if (!isStockCode(dm)) {
        noteMessage(u"只能输入沪深个股代码!"_s);
        if (dm_.isEmpty()) {
            showNoStockCharts();
        }
        return false;
    }
    if (dm != shownDm_) {
        screen_.clearStock();
    }
    shownDm_ = dm;
    dm_ = dm;
    fetchFundamentals(dm);
    IniFile(iniPath(globals_)).setValue(section, key, dm);
    showStockCharts();
    stockMean_ = meanVolume_.of(dm);
    fetchStock();
    return true;
}

void LiveQuotes::takeHomeIndex(int index) {
    if (index != homeIndex_) {
        screen_.clearHomeIndex();
    }
    homeIndex_ = index;
    showHomeIndexChart();
    const HomeIndex& home = homeIndexes[static_cast<size_t>(index)];
    // The mean belongs to the index whose turnover is shown.
    indexMean_ = home.hasRatio ? meanVolume_.of(turnoverCode(home).toString()) : 0;
    fetchHomeIndex();
}

void LiveQuotes::takeWorldIndex(int index) {
    if (index != worldIndex_) {
        screen_.clearWorldIndex();
    }
    worldIndex_ = index;
    const WorldIndex& world = worldIndexes[static_cast<size_t>(index)];
    showChart(QuoteChart::worldIndex, world.chartPath.toString());
    const QuoteActivity activity;
    const std::optional<QuoteRow> fields = fetchQuote(world.code);
    if (!fields) {
        return;
    }
    // As after every message of a failed fetch, the polls wait for the user's next query.
    if (!hasWorldIndex(*fields)) {
        mayPoll_ = false;
        noteMessage(u"没有找到该股数据!"_s);
        return;
    }
    screen_.showWorldIndex(worldIndexPanel(*fields));
}

void LiveQuotes::updateMarketFlag() {
    globals_.jiaoyishiduan = inTradingSession(clock_.now()) ? 1 : 0;
}

void LiveQuotes::noteMessage(const QString& text) {
    if (!messages_.contains(text)) {
        messages_ << text;
    }
}

// Nothing, and a message, for an empty reply as for none.
std::optional<QString> LiveQuotes::fetch(const Service& service, const QString& path) {
    const QByteArray body = http_.get(service, path).value_or(QByteArray());
    if (body.isEmpty()) {
        noteMessage(noConnection);
        return std::nullopt;
    }
    return textFromGbk(body);
}

std::optional<QuoteRow> LiveQuotes::fetchQuote(QStringView code) {
    const std::optional<QString> reply = fetch(services_.quote, u"/list="_s + code);
    if (!reply) {
        mayPoll_ = false;
        return std::nullopt;
    }
    return quoteRow(*reply);
}

// A service that the user has taken out of services.ini is not missed.
void LiveQuotes::fetchFundamentals(const QString& dm) {
    fundamentals_ = {};
    if (!services_.newspage.host.isEmpty()) {
        const std::optional<QString> page = fetch(services_.newspage, fundamentalsPath(dm));
        fundamentals_ = readFundamentals(page.value_or(QString()));
    }
    screen_.showFundamentals(fundamentalTexts(fundamentals_));
}

void LiveQuotes::fetchStock() {
    if (dm_.isEmpty()) {
        return;
    }
    const QuoteActivity activity;
    const std::optional<QuoteRow> fields = fetchQuote(dm_.toLower());
    if (!fields) {
        return;
    }
    if (hasStock(*fields)) {
        screen_.showStock(stockPanel(*fields, fundamentals_, stockMean_, marketOpen()));
    } else {
        screen_.showNoStock(noData(dm_));
    }
}

void LiveQuotes::fetchHomeIndex() {
    const QuoteActivity activity;
    const HomeIndex& index = homeIndexes[static_cast<size_t>(homeIndex_)];
    const std::optional<QuoteRow> fields = fetchQuote(index.code);
    if (!fields) {
        return;
    }
    if (!hasHomeIndex(*fields)) {
        screen_.showNoHomeIndex(noData(index.name.toString()));
        return;
    }
    HomeIndexPanel panel = homeIndexPanel(*fields);
    // Already now: the reply that completes it may be broken.
    screen_.showHomeIndex(panel);
    completeTurnover(index, *fields, panel);
    screen_.showHomeIndex(panel);
}

// Without the composite's reply the index keeps the turnover of its own, which no mean belongs to.
void LiveQuotes::completeTurnover(const HomeIndex& index, const QuoteRow& fields,
                                  HomeIndexPanel& panel) {
    if (!index.turnoverCode.isEmpty()) {
        const std::optional<QuoteRow> composite = fetchQuote(index.turnoverCode);
        if (!composite || !hasHomeIndex(*composite)) {
            return;
        }
        panel.turnover = compositeTurnover(*composite);
    }
    if (index.hasRatio) {
        panel.ratio = indexRatio(fields, panel.turnover, indexMean_, marketOpen());
    }
}

void LiveQuotes::showChart(QuoteChart chart, const QString& path) {
    screen_.showChart(chart, http_.get(services_.chart, path));
}

void LiveQuotes::showStockCharts() {
    const QString code = dm_.toLower();
    showChart(QuoteChart::intraday, u"/newchart/min/n/"_s + code + u".gif"_s);
    showChart(QuoteChart::daily, u"/newchart/daily/n/"_s + code + u".gif"_s);
}

void LiveQuotes::showNoStockCharts() {
    screen_.showChart(QuoteChart::intraday, std::nullopt);
    screen_.showChart(QuoteChart::daily, std::nullopt);
}

void LiveQuotes::showHomeIndexChart() {
    showChart(QuoteChart::homeIndex,
              homeIndexes[static_cast<size_t>(homeIndex_)].chartPath.toString());
}

}  // namespace guanchao
