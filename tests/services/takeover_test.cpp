#include "market/quote_run.h"
#include "platform/qt_http_client.h"
#include "research/history_fill.h"
#include "services/fundamentals.h"
#include "services/polite_http.h"
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

// Two services, of which the first one goes while it is asked: A and B.
class TwoServices : public HttpClient {
public:
    QCoro::Task<HttpReply> get(Service service, QString path, std::stop_token stop) override {
        const bool isFirst = service.host == first_.host();
        asked += isFirst ? u'A' : u'B';
        if (isFirst && --requestsUntilItGoes == 0) {
            client_ = std::make_unique<QtHttpClient>();  // or the server waits for its connections
            first_.stop();
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

private:
    SmallMarket first_{listed(), {}, [] { return evening; }};
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

    // Those that both files have, each day of the year once.
    QStringList fillHistory() {
        know(QStringList{u"SH000001"_s} + fewStocks);
        QFile::remove(store_.stores.firstHistory.path);
        QFile::remove(store_.stores.secondHistory.path);
        RunControl control;
        Services all;
        all.history = services_;
        HistoryFill fill(
            store_.stores, clock_, http_, all, {1}, control, [](const RunProgress&) {}, noWait_);
        endOf(fill.run({}));
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

    QList<Service> services_;
    TwoServices two_;
    Wait noWait_ = [](std::chrono::milliseconds, std::stop_token) -> QCoro::Task<> { co_return; };
    PoliteHttp http_{two_, clock_, noWait_};
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
        {"history", u"sina"_s, u"tencent"_s, 4, &TakeoverTest::fillHistory, fewStocks},
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

}  // namespace guanchao
