#include "collector/collection.h"
#include "collector/themes_job.h"
#include "market/quote_run.h"
#include "platform/qt_http_client.h"
#include "research/history_fill.h"
#include "services/boards.h"
#include "services/factors.h"
#include "services/fundamentals.h"
#include "services/polite_http.h"
#include "services/service_watch.h"
#include "tests/support/raw_service.h"
#include "tests/support/small_market.h"
#include "tests/support/store_test.h"

namespace guanchao {

namespace {

const QDateTime evening(QDate(2026, 11, 24), QTime(16, 0));
constexpr int stocksOfAnExchange = 110;

std::vector<PracticeStock> listed() {
    std::vector<PracticeStock> stocks = {{u"SH000001"_s, u"上证指数"_s},
                                         {u"SH000300"_s, u"沪深300"_s},
                                         {u"SZ399001"_s, u"深证成指"_s}};
    for (const QString& exchange : {u"SH600%1"_s, u"SZ000%1"_s}) {
        for (int it = 1; it <= stocksOfAnExchange; ++it) {
            stocks.push_back({exchange.arg(it, 3, 10, QChar(u'0')), u"某股"_s});
        }
    }
    return stocks;
}

const QStringList codes = textsOf(listed(), &PracticeStock::code);
const QStringList stocks = codes.mid(3);
const QStringList fewStocks = stocks.first(8);
const QList<QStringList> boards = {{u"甲板"_s, stocks.first()}};

// Two services, of which the first one goes while it is asked: A and B. Where harm is named, the
// first one does that to each request instead.
class TwoServices : public HttpClient {
public:
    QCoro::Task<HttpReply> get(Service service, QString path, std::stop_token stop) override {
        const bool isFirst = service.host == first_.host();
        asked += isFirst ? u'A' : u'B';
        if (isFirst && --requestsUntilItGoes == 0) {
            client_ = std::make_unique<QtHttpClient>();  // or the server waits for its connections
            first_.stop();
        }
        if (isFirst && harm) {
            raw_.answer = harm;
            service.host = raw_.service().host;
        }
        const HttpReply reply = co_await client_->get(service, path, stop);
        co_return HttpReply(reply);
    }

    void bringBack() { first_.start(first_.port); }
    QList<Service> ofKinds(const QString& first, const QString& second) const {
        return {first_.service(first), second_.service(second)};
    }

    QString asked;
    int requestsUntilItGoes = 0;
    std::function<void(QTcpSocket&)> harm;

private:
    RawService raw_;
    SmallMarket first_{listed(), boards, [] { return evening; }};
    SmallMarket second_{listed(), {}, [] { return evening; }};
    std::unique_ptr<QtHttpClient> client_ = std::make_unique<QtHttpClient>();
};

}  // namespace

// The uses of the services, each to its end; they give what is then there, once for each row.
class TakeoverTest : public StoreTest {
public:
    TakeoverTest() { clock_.moment = evening; }

    void know(const QStringList& known) {
        store_.run({u"delete from dmb"_s});
        for (const QString& dm : known) {
            store_.addCode(dm, u"旧名"_s, 0, 0);
        }
    }

    QStringList updateQuotes() {
        know(codes);
        endOf(quoteRun_.run([](const QuoteProgress&) {}, {}));
        return store_.rows(u"select dm from dmb where newhqtime>='2026-11-24' order by rowid"_s);
    }

    void fillHistory() {
        know(QStringList{u"SH000001"_s} + fewStocks);
        QFile::remove(store_.stores.firstHistory.path);
        QFile::remove(store_.stores.secondHistory.path);
        RunControl control;
        Services all;
        all.history = services_;
        HistoryFill fill(
            store_.stores, clock_, http_, all, {1}, control, [](const RunProgress&) {}, noWait_);
        endOf(fill.run({}));
    }
    // Those that both files have, each day of the year once.
    QStringList filledHistory() {
        fillHistory();
        QStringList filled = fewStocks;
        filled.removeIf([this](const QString& dm) {
            const QString query =
                u"select count(*)>200 and count(*)=count(distinct shijian),max(shijian) from "_s +
                dm;
            const QStringList whole = {u"1|2026-11-24"_s};
            return TestStores::rows(store_.stores.firstHistory, query) != whole ||
                   TestStores::rows(store_.stores.secondHistory, query) != whole;
        });
        return filled;
    }

    QStringList askKeyData() {
        QStringList answered = fewStocks;
        answered.removeIf([this](const QString& dm) {
            const FundamentalsReply reply = endOf(fetchFundamentals(http_, services_, dm, {}));
            return reply.fundamentals.floatInTenThousands() <= 0;
        });
        return answered;
    }

    void askFactors() { endOf(Factors(http_, services_).fetch(u"SH600001"_s, {})); }
    void askBoards() {
        const Boards asked(http_, services_);
        const BoardList list = endOf(asked.list(BoardSort::concepts, {}));
        const Board none = {u"gn_1"_s, u"甲板"_s, {}};
        endOf(asked.stocks(services_.first(), list.boards.value(0, none), {}));
    }
    void collectNews() {
        store_.run({u"delete from dzhzhuti"_s});
        for (const QString& dm : fewStocks) {
            store_.addMember(u"主题"_s + dm, dm, 5);
        }
        runHeat(u"delete from xinwenshul"_s);
        runHeat(u"update canshu set yinqingurl='http://h/s?wd=tihuandm'"_s);
        const CollectorSettings settings = {
            .allPeriod = {}, .weights = {}, .pause = 0, .randomPause = 0, .retries = {}};
        ThemesJob job(store_.stores, readRunOrder(store_.stores.heat, clock_), settings, services_,
                      clock_);
        const Pacing pacing(settings, [] { return 0.0; });
        const Wait turn = [](std::chrono::milliseconds, std::stop_token stop) {
            return pause(std::chrono::milliseconds(0), stop);
        };
        Collection collection(job, store_.stores.heat, http_, clock_, pacing, turn);
        collection.begin();
        endOf(collection.run({}));
    }

    QList<Service> services_;
    TwoServices two_;
    Wait noWait_ = [](std::chrono::milliseconds, std::stop_token) -> QCoro::Task<> { co_return; };
    PoliteHttp polite_{two_, clock_, noWait_};
    ServiceWatch http_{polite_, clock_};
    QuoteFeed quoteFeed_{store_.stores, globals_, clock_,
                         QuoteSource(http_, clock_, two_.ofKinds(u"sina"_s, u"tencent"_s))};
    QuoteRun quoteRun_{store_.stores, clock_, quoteFeed_};
};

TEST_F(TakeoverTest, TheNextServiceTakesOverInTheMiddleAndTheFirstOneComesBack) {
    const struct {
        const char* what;
        QString first, second;
        int requestsUntilItGoes;
        QStringList (TakeoverTest::*use)();
        QStringList wanted;
    } cases[] = {
        {"quotes", u"sina"_s, u"tencent"_s, 2, &TakeoverTest::updateQuotes, codes},
        {"history", u"sina"_s, u"tencent"_s, 4, &TakeoverTest::filledHistory, fewStocks},
        {"key data", u"sina"_s, u"page"_s, 3, &TakeoverTest::askKeyData, fewStocks},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.what);
        services_ = two_.ofKinds(it.first, it.second);
        two_.asked.clear();
        two_.requestsUntilItGoes = it.requestsUntilItGoes;
        EXPECT_EQ((this->*it.use)(), it.wanted);
        EXPECT_GE(two_.asked.count(u'A'), it.requestsUntilItGoes);
        EXPECT_TRUE(two_.asked.endsWith(u'B'));
        two_.bringBack();
        clock_.moment = clock_.moment.addSecs(120);
        two_.asked.clear();
        EXPECT_EQ((this->*it.use)(), it.wanted);
        EXPECT_FALSE(two_.asked.contains(u'B'));
    }
}

// However often it is asked meanwhile.
TEST_F(TakeoverTest, EachServiceThatFailsIsLoggedAsItBeginsAndAsItEnds) {
    const struct {
        const char* what;
        std::function<void()> use;
        QString kind = u"sina"_s;
    } uses[] = {
        {"quotes", [this] { updateQuotes(); }}, {"history", [this] { fillHistory(); }},
        {"factors", [this] { askFactors(); }},  {"key data", [this] { askKeyData(); }},
        {"boards", [this] { askBoards(); }},    {"news", [this] { collectNews(); }, u"eastmoney"_s},
    };
    const auto say = [](const QByteArray& words) {
        return [words](QTcpSocket& socket) {
            socket.write(words);
            socket.disconnectFromHost();
        };
    };
    const QByteArray page = "<html>请先登录</html>";
    const struct {
        std::function<void(QTcpSocket&)> harm;
        QString reason;
    } harms[] = {
        {say("HTTP/1.1 500 No\r\nContent-Length: 0\r\n\r\n"), u"被拒绝（500）"_s},
        {say({}), u"连接不上"_s},
        {say(httpHead(page.size()) + page), u"应答"_s},
    };
    for (const auto& use : uses) {
        for (const auto& it : harms) {
            SCOPED_TRACE(std::string(use.what) + " " + it.reason.toStdString());
            const KeptLog log(LogKind::service);
            services_ = two_.ofKinds(use.kind, {}).first(1);
            two_.harm = it.harm;
            two_.asked.clear();
            for (int time = 0; time < 4; ++time, clock_.moveOn(std::chrono::minutes(2))) {
                use.use();
            }
            const qsizetype asked = two_.asked.count(u'A');
            two_.harm = {};
            use.use();
            QCoreApplication::processEvents();
            const QStringList lines = log.lines.filter(services_.first().host);
            ASSERT_EQ(lines.size(), 2) << lines.join(u'\n').toStdString();
            EXPECT_TRUE(lines[0].contains(it.reason)) << lines[0].toStdString();
            EXPECT_TRUE(lines[1].contains(u"又应答了，"_s)) << lines[1].toStdString();
            const bool isToldEach = it.reason != u"应答"_s;
            EXPECT_TRUE(!isToldEach || lines[1].contains(u"失败 %1 次"_s.arg(asked)))
                << asked << lines[1].toStdString();
            clock_.moveOn(std::chrono::minutes(10));
        }
    }
}

}  // namespace guanchao
