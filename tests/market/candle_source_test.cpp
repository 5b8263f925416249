#include "market/candle_source.h"

#include "research/history_candles.h"
#include "tests/support/store_test.h"
#include "tests/support/test_history.h"

namespace guanchao {

class CandleSourceTest : public StoreTest {
protected:
    CandleSourceTest() {
        services_.history = {{u"http://h"_s, {}, 0, 1, 0, u"sina"_s}};
        services_.factors = {{u"http://f"_s, {}, 0}};
        http_.answer = [this](const QString& path) {
            return path.contains(u"list=") ? quotes_ : path.endsWith(u"hfq.js") ? factors_ : bars_;
        };
        stores_.secondHistory = {store_.folder() + u"second.db3"_s, {}};
    }

    // What the services are asked for, and the reply: "from|lack|day close factor,…".
    QString fetch(const QString& dm = u"SH600000"_s, QDate around = {}) {
        http_.paths.clear();
        const CandleSource source(http_, clock_, services_, stored_);
        const CandleReply reply = endOf(source.fetch(dm, around, {}));
        const QStringList days = textsOf(reply.days, [](const Candle& it) {
            return u"%1 %2 %3"_s.arg(it.day.toString(u"MM-dd"_s)).arg(it.close).arg(it.factor);
        });
        return reply.from + u'|' + reply.lack + u'|' + days.join(u',');
    }
    void store(const QList<HistoryRow>& days) {
        MarketHistory history;
        history.stocks[u"SH600000"_s] = days;
        writeHistory(history, {store_.folder() + u"first.db3"_s, {}}, stores_.secondHistory, true);
    }
    static HistoryRow row(const QString& day, int close, double factor = 1) {
        return {day, close, close, close, close, 1000, 100, factor};
    }

    Services services_;
    Stores stores_ = store_.stores;
    HistoryCandles stored_{stores_};
    std::optional<QByteArray> quotes_;
    std::optional<QByteArray> bars_ =
        R"([{"day":"2026-11-20","open":"10","high":"10","low":"10","close":"10","volume":"5"},)"
        R"({"day":"2026-11-23","open":"6","high":"6","low":"6","close":"6","volume":"5"}])";
    std::optional<QByteArray> factors_ =
        R"(var sh600000hfq={"data":[{"d":"2026-11-23","f":"2"},{"d":"1900-01-01","f":"1"}]}/* {} */)";
};

TEST_F(CandleSourceTest, TheServicesTellTheDaysWithTheirFactors) {
    EXPECT_EQ(fetch(), u"历史行情服务 新浪||11-20 10 1,11-23 6 2"_s);
    EXPECT_EQ(http_.paths.size(), 2);
    stores_.secondHistory = {store_.stores.main.path, u"wrong"_s};
    EXPECT_EQ(fetch(), u"历史行情服务 新浪||11-20 10 1,11-23 6 2"_s)
        << "a history that can't be read is as good as none";
    EXPECT_EQ(fetch(u"SH000001"_s), u"历史行情服务 新浪||11-20 10 1,11-23 6 1"_s)
        << "an index has no factors";
    for (const char* none :
         {"<html>", R"(var sh600000hfq={"total":0})", R"(var sz000001hfq={"data":[]})",
          R"(var sh600000hfq={"data":[{"d":"2019-06-03","f":"0"}]})",
          R"(var sh600000hfq={"data":[{"d":"2019-06-03","f":"x"}]})",
          R"(var sh600000hfq={"data":[{"d":"1900-01-01","f":"1"},{"d":"2019-06-03","f":"2"}]})"}) {
        factors_ = none;
        EXPECT_EQ(fetch(),
                  u"历史行情服务 新浪|复权因子没有取到，各日都没有复权|11-20 10 1,11-23 6 1"_s);
    }
    bars_ = "[]";
    EXPECT_EQ(fetch(), u"历史行情服务 新浪|历史行情服务没有这只股票的日线|"_s);
    bars_.reset();
    EXPECT_TRUE(fetch().contains(u"过一会儿再按“重读”"_s));
}

// It is a Tuesday morning: the last day that is over is Monday.
TEST_F(CandleSourceTest, AHistoryThatReachesUpToNowNeedsNoService) {
    store({row(u"2026-11-20"_s, 1000), row(u"2026-11-21"_s, 0), row(u"2026-11-23"_s, 612, 2)});
    stores_.secondHistory.open().execute(
        u"insert into SH600000(shijian,kp,zg,zd,sp,fuquanyz) values('2026-11-20',1010,1010,1010,"
        u"1010,1)"_s);
    EXPECT_EQ(fetch(), u"本机的历史行情||11-20 10.1 1,11-23 6.12 2"_s);
    EXPECT_EQ(http_.paths, QStringList());
    clock_.moment = QDateTime(QDate(2026, 11, 24), QTime(15, 0));
    EXPECT_EQ(fetch().section(u'|', 0, 0), u"历史行情服务 新浪"_s) << "today is over";
    EXPECT_EQ(fetch(u"SH600000"_s, QDate(2026, 11, 23)),
              u"本机的历史行情||11-20 10.1 1,11-23 6.12 2"_s)
        << "who asks for a day has found it in the history";
    bars_.reset();
    const QString old = fetch();
    EXPECT_TRUE(old.startsWith(u"本机的历史行情|只到 2026-11-23："_s)) << old.toStdString();
    EXPECT_TRUE(old.endsWith(u"|11-20 10.1 1,11-23 6.12 2"_s)) << old.toStdString();
    clock_.moment = QDateTime(QDate(2026, 11, 22), QTime(12, 0));
    EXPECT_EQ(fetch().section(u'|', 1, 1), QString()) << "on a Sunday";
}

// The former close of the day that goes on is 3.06, half of Monday's: a dividend lies between.
TEST_F(CandleSourceTest, TheDayThatGoesOnStandsBehindTheDaysThatAreOver) {
    services_.quote = {{u"http://q"_s, {}, 0, 1, 0, u"sina"_s}};
    store({row(u"2026-11-20"_s, 1000), row(u"2026-11-23"_s, 612, 2)});
    const auto quote = [](const QByteArray& low, const QByteArray& day) -> QByteArray {
        return "var hq_str_sh600000=\"N,3.1,3.06,3.2,3.3," + low + ",0,0,700,2200" +
               QByteArray(",0").repeated(20) + "," + day + ",10:00:00,00\";\n";
    };
    const QString over = u"本机的历史行情||11-20 10 1,11-23 6.12 2"_s;
    quotes_ = quote("3.0", "2026-11-24");
    EXPECT_EQ(fetch(), over + u",11-24 3.2 4"_s);
    quotes_ = quote("0", "2026-11-24");
    EXPECT_EQ(fetch(), over) << "no trade yet";
    quotes_ = quote("3.0", "2026-11-23");
    EXPECT_EQ(fetch(), over) << "the quote of Monday";
    quotes_.reset();
    EXPECT_EQ(fetch(), over) << "no quote";
    quotes_ = quote("3.0", "2026-11-24");
    clock_.moment = QDateTime(QDate(2026, 11, 25), QTime(10, 0));
    bars_.reset();
    EXPECT_FALSE(fetch().contains(u"11-24"_s)) << "a day is missing between";
}

}  // namespace guanchao
