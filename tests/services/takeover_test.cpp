#include <QRegularExpression>

#include "collector/collection.h"
#include "collector/themes_job.h"
#include "exchange/board_import.h"
#include "exchange/code_table_update.h"
#include "market/quote_run.h"
#include "platform/qt_http_client.h"
#include "research/history_fill.h"
#include "services/fundamentals.h"
#include "services/polite_http.h"
#include "tests/support/store_test.h"
#include "tools/practice_market/practice_market.h"

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

QStringList codes() {
    QStringList codes;
    for (const PracticeStock& it : listed()) {
        codes << it.code;
    }
    return codes;
}

QStringList stocks() {
    return codes().mid(3);
}

QStringList fewStocks() {
    return stocks().first(8);
}

PracticeBoards boards() {
    QList<QStringList> rows;
    for (const QString& board : {u"甲板"_s, u"乙板"_s, u"丙板"_s, u"丁板"_s}) {
        for (const QString& dm : stocks()) {
            rows << QStringList{board, dm};
        }
    }
    return PracticeBoards(listed(), rows);
}

struct SmallMarket : PracticeMarket {
    SmallMarket()
        : PracticeMarket(
              PracticeQuotes(listed()), [] { return evening; }, boards()) {
        port = start();
    }
    int port;
};

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
        return {{first_.host(), {}, 10, 1, 0, first}, {second_.host(), {}, 10, 1, 0, second}};
    }
    // Who was asked, without repetitions.
    QString turns() const {
        static const QRegularExpression repetition(u"(.)\\1+"_s);
        return QString(asked).replace(repetition, u"\\1"_s);
    }

    QString asked;
    int requestsUntilItGoes = 0;

private:
    SmallMarket first_;
    SmallMarket second_;
    std::unique_ptr<QtHttpClient> client_ = std::make_unique<QtHttpClient>();
};

}  // namespace

// The uses of the services, each to its end, and what they have stored, once for each row.
class TakeoverTest : public StoreTest {
public:
    TakeoverTest() {
        clock_.moment = evening;
        store_.stores.firstHistory = {store_.folder() + u"a/first"_s, {}};
        store_.stores.secondHistory = {store_.folder() + u"a/second"_s, {}};
        runHeat(u"update canshu set yinqingurl='http://h/s?wd=tihuandm'"_s);
    }

    void knowCodes(const QStringList& codes) {
        store_.run({u"delete from dmb"_s});
        for (const QString& dm : codes) {
            store_.addCode(dm, u"旧名"_s, 0, 0);
        }
    }

    void updateQuotes() {
        knowCodes(codes());
        endOf(quoteRun_.run([](const QuoteProgress&) {}, {}));
    }
    QStringList quoted() {
        return store_.rows(u"select dm from dmb where newhqtime>='2026-11-24' order by rowid"_s);
    }

    void fillHistory() {
        knowCodes(QStringList{u"SH000001"_s} + fewStocks());
        QDir(store_.folder() + u"a"_s).removeRecursively();
        RunControl control;
        Services all;
        all.history = services_;
        HistoryFill fill(
            store_.stores, clock_, http_, all, {1}, control, [](const RunProgress&) {}, noWait_);
        endOf(fill.run({}));
    }
    // Those that both files have, each day of the year once.
    QStringList filled() {
        QStringList filled;
        for (const QString& dm : fewStocks()) {
            const QString query =
                u"select count(*)>200 and count(*)=count(distinct shijian),max(shijian) from "_s +
                dm;
            const QStringList whole = {u"1|2026-11-24"_s};
            if (TestStores::rows(store_.stores.firstHistory, query) == whole &&
                TestStores::rows(store_.stores.secondHistory, query) == whole) {
                filled << dm;
            }
        }
        return filled;
    }

    void askKeyData() {
        keyData_.clear();
        for (const QString& dm : fewStocks()) {
            const FundamentalsReply reply = endOf(fetchFundamentals(http_, services_, dm, {}));
            if (reply.fundamentals.floatInTenThousands() > 0) {
                keyData_ << dm;
            }
        }
    }

    QStringList answered() { return keyData_; }

    // The user reads the list once more where boards have failed.
    void importBoards() {
        store_.run({u"delete from dzhzhuti"_s});
        for (bool isWhole = false; !isWhole;) {
            RunControl control;
            const BoardImport::Watch watch = {[](const Board&) { return true; },
                                              [](const RunProgress&) {},
                                              [](const BoardOutcome&) {}};
            BoardImport import(store_.stores, clock_, http_, control, watch, noWait_);
            const Boards boards(http_, services_);
            const BoardList list = endOf(boards.list(BoardSort::concepts, {}));
            ASSERT_FALSE(list.boards.isEmpty()) << list.lacks.join(u' ').toStdString();
            isWhole = endOf(import.run(list.service, list.boards, {})).failed.isEmpty();
        }
    }
    QStringList wholeBoards() {
        return store_.rows(
            u"select zhutiname from dzhzhuti group by zhutiname having count(*)=%1"
            u" and count(distinct dm)=%1 order by zhutiname"_s.arg(stocks().size()));
    }

    void updateCodes() {
        knowCodes(codes().first(200));
        RunControl control;
        CodeTableUpdate update(store_.stores, clock_, http_, services_,
                               QStringLiteral(GUANCHAO_SOURCE_DIR "/data/initials.csv"), control,
                               [](const RunProgress&) {});
        endOf(update.run(false, {}));
    }
    QStringList named() { return store_.rows(u"select dm from dmb where jc='某股' order by dm"_s); }

    void collectNews() {
        store_.run({u"delete from dzhzhuti"_s});
        for (const QString& dm : fewStocks()) {
            store_.addMember(u"主题"_s + dm, dm, 5);
        }
        runHeat(u"delete from xinwenshul"_s);
        // Both share what nobody has counted before; what the first one has counted stays with it.
        const CountsWriter before(store_.stores.heat, clock_.now().date().addDays(-1));
        for (const QString& dm : fewStocks()) {
            before.writeTheme(u"主题"_s + dm, {{0, 0, 0, 0, {services_.first().kind}}, dm});
        }
        ThemesJob job(store_.stores, readRunOrder(store_.stores.heat, clock_), settings_, services_,
                      clock_);
        Collection collection(job, store_.stores.heat, http_, clock_, pacing_, turn_);
        collection.begin();
        endOf(collection.run({}));
    }
    QStringList counted() {
        return heatRows(
            u"select substr(zhutiname,3) from xinwenshul where allcishu>0 order by 1"_s);
    }

    QList<Service> services_;
    TwoServices two_;
    Wait noWait_ = [](std::chrono::milliseconds, std::stop_token) -> QCoro::Task<> { co_return; };
    Wait turn_ = [](std::chrono::milliseconds, std::stop_token stop) {
        return pause(std::chrono::milliseconds(0), stop);
    };
    PoliteHttp http_{two_, clock_, noWait_};
    QuoteFeed quoteFeed_{store_.stores, globals_, clock_,
                         QuoteSource(http_, clock_, two_.ofKinds(u"sina"_s, u"tencent"_s))};
    QuoteRun quoteRun_{store_.stores, clock_, quoteFeed_};
    QStringList keyData_;
    CollectorSettings settings_{
        .allPeriod = {}, .weights = {}, .pause = 0, .randomPause = 0, .retries = {}};
    Pacing pacing_{settings_, [] { return 0.0; }};
};

TEST_F(TakeoverTest, TheNextServiceTakesOverInTheMiddleAndTheFirstOneComesBack) {
    const QStringList boards = {u"丁板"_s, u"丙板"_s, u"乙板"_s, u"甲板"_s};
    const struct {
        const char* what;
        QString first, second;
        int requestsUntilItGoes;
        void (TakeoverTest::*use)();
        QStringList (TakeoverTest::*stored)();
        QStringList wanted;
    } cases[] = {
        {"quotes", u"sina"_s, u"tencent"_s, 2, &TakeoverTest::updateQuotes, &TakeoverTest::quoted,
         codes()},
        {"history", u"sina"_s, u"tencent"_s, 4, &TakeoverTest::fillHistory, &TakeoverTest::filled,
         fewStocks()},
        {"key data", u"sina"_s, u"page"_s, 3, &TakeoverTest::askKeyData, &TakeoverTest::answered,
         fewStocks()},
        {"boards", u"sina"_s, u"eastmoney"_s, 6, &TakeoverTest::importBoards,
         &TakeoverTest::wholeBoards, boards},
        {"stocks", u"sina"_s, u"eastmoney"_s, 3, &TakeoverTest::updateCodes, &TakeoverTest::named,
         stocks()},
        {"news", u"eastmoney"_s, u"page"_s, 4, &TakeoverTest::collectNews, &TakeoverTest::counted,
         fewStocks()},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.what);
        services_ = two_.ofKinds(it.first, it.second);
        two_.asked.clear();
        two_.requestsUntilItGoes = it.requestsUntilItGoes;
        (this->*it.use)();
        EXPECT_EQ((this->*it.stored)(), it.wanted);
        EXPECT_GE(two_.asked.count(u'A'), it.requestsUntilItGoes);
        EXPECT_TRUE(two_.asked.endsWith(u'B'));
        two_.bringBack();
        clock_.moment = clock_.moment.addSecs(120);
        two_.asked.clear();
        (this->*it.use)();
        EXPECT_EQ((this->*it.stored)(), it.wanted);
        EXPECT_EQ(two_.turns(), u"A"_s);
    }
}

}  // namespace guanchao
