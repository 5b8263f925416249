#include "platform/curl_http.h"
#include "platform/qt_http_client.h"

#include <gtest/gtest.h>

#include "market/day_history.h"
#include "market/quote_feed.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"
#include "tools/practice_market/practice_market.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// Requests over a real loopback connection, to the practice market.
class CurlHttpTest : public ::testing::Test {
protected:
    CurlHttpTest()
        : market_(PracticeQuotes({{u"SH600000"_s, u"浦发银行"_s}, {u"SZ000001"_s, u"平安银行"_s}}),
                  [] { return QDateTime(QDate(2026, 11, 24), QTime(10, 30, 0)); }) {
        market_.start();
        service_.host = market_.host();
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 1, 7);
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 1, 7);
    }

    // How many of the two codes a request for both has brought up to date.
    int updatedCodes(const QString& list) {
        QuoteFeed feed(store_.stores, globals_, clock_, client_, service_);
        missed_ = QCoro::waitFor(feed.gengxinhq({list, static_cast<int>(list.count(u','))}, 0, {}));
        return store_.rows(u"select count(*) from dmb where newhqtime is not null"_s)[0].toInt();
    }

    TestStores store_;
    Globals globals_;
    FakeClock clock_;
    PracticeMarket market_;
    CurlHttp http_;
    QtHttpClient client_;
    MissedQuotes missed_;
    Service service_;
};

TEST_F(CurlHttpTest, BringsQuotesOfThePracticeMarket) {
    EXPECT_EQ(updatedCodes(u"sh600000,sz000001,sh609999,"_s), 2);
    EXPECT_EQ(market_.requests(), QStringList{u"/list=sh600000,sz000001,sh609999,"_s});
}

TEST_F(CurlHttpTest, BringsTheDayHistoryOfThePracticeMarket) {
    const DayHistory history(http_, service_);
    const QDate monday(2026, 11, 9);
    const QList<HistoryDay> days =
        history.fetch(u"SZ000001"_s, monday, monday.addDays(8)).value_or(QList<HistoryDay>());
    ASSERT_EQ(days.size(), 7) << "weekdays only";
    EXPECT_EQ(days.first().day, monday);
    EXPECT_GT(days.last().close, 0);
    EXPECT_TRUE(history.fetch(u"SZ999999"_s, monday, monday.addDays(8))
                    .value_or(QList<HistoryDay>())
                    .isEmpty());
}

TEST_F(CurlHttpTest, FailuresOfTheServiceGiveNothing) {
    for (const MarketFault fault :
         {MarketFault::refused, MarketFault::halfReply, MarketFault::errorPage}) {
        market_.setFault(fault);
        EXPECT_EQ(updatedCodes(u"sh600000,sz000001,"_s), 0) << static_cast<int>(fault);
        EXPECT_EQ(globals_.hqmang, 0);
    }
    market_.setFault(MarketFault::shortPiece);
    updatedCodes(u"sh600000,sz000001,"_s);
    EXPECT_FALSE(missed_.refusals.isEmpty());
    market_.setFault(MarketFault::none);
    EXPECT_EQ(updatedCodes(u"sh600000,sz000001,"_s), 2) << "the next good reply is taken";
}

TEST_F(CurlHttpTest, HostsRefererAndTimeoutsComeFromTheService) {
    const QString path = u"/list=sh600000,"_s;
    EXPECT_FALSE(http_.get(Service(), path)) << "no host";
    EXPECT_FALSE(http_.get({u"http://127.0.0.1:1"_s, {}, 0}, path)) << "nobody listens";
    EXPECT_FALSE(http_.get(service_, u"/nothing"_s)) << "not found";
    market_.setReferer(u"https://finance.sina.com.cn/"_s);
    EXPECT_FALSE(http_.get(service_, path));
    EXPECT_TRUE(http_.get({market_.host(), u"https://finance.sina.com.cn/"_s, 0}, path));
    EXPECT_FALSE(http_.get(service_, path)) << "a referer does not stay for other services";
    market_.setReferer({});
    market_.setFault(MarketFault::slow);
    EXPECT_FALSE(http_.get({market_.host(), {}, 1}, path)) << "past its time-out";
}

TEST_F(CurlHttpTest, ARequestMayLetEventsHappenAndBeBrokenOff) {
    const QString path = u"/list=sh600000,"_s;
    int calls = 0;
    int callsUntilAnswer = 0;
    bool wanted = true;
    std::optional<QByteArray> inside = QByteArray();
    CurlHttp* asked = nullptr;
    CurlHttp http([&] {
        inside = asked->get(service_, path);
        if (++calls == callsUntilAnswer) {
            market_.setFault(MarketFault::none);
        }
        return wanted;
    });
    asked = &http;
    EXPECT_EQ(http.get(service_, path), http_.get(service_, path));
    EXPECT_FALSE(http.get(service_, u"/nothing"_s));
    EXPECT_FALSE(http.get({u"http://127.0.0.1:1"_s, {}, 0}, path));
    market_.setFault(MarketFault::slow);
    calls = 0;
    callsUntilAnswer = 5;
    EXPECT_TRUE(http.get(service_, path)) << "the market answers once it has been called so often";
    EXPECT_FALSE(inside) << "one at a time";
    market_.setFault(MarketFault::slow);
    wanted = false;
    calls = 0;
    EXPECT_FALSE(http.get(service_, path));
    EXPECT_EQ(calls, 1);
    market_.setFault(MarketFault::none);
    wanted = true;
    EXPECT_TRUE(http.get(service_, path)) << "the next request is a new one";
}

}  // namespace guanchao
