#include "platform/curl_http.h"

#include "tests/support/qt_printers.h"
#include "tools/practice_market/practice_market.h"

namespace guanchao {

// Requests over a real loopback connection, to the practice market.
class CurlHttpTest : public ::testing::Test {
protected:
    CurlHttpTest() {
        market_.start();
        service_.host = market_.host();
    }

    PracticeMarket market_{PracticeQuotes({{u"SH600000"_s, u"浦发银行"_s}}),
                           [] { return QDateTime(QDate(2026, 11, 24), QTime(10, 30, 0)); }};
    CurlHttp curl_;
    Service service_;
};

TEST_F(CurlHttpTest, HostsRefererAndTimeoutsComeFromTheService) {
    const QString path = u"/list=sh600000,"_s;
    EXPECT_FALSE(curl_.get(Service(), path)) << "no host";
    EXPECT_FALSE(curl_.get({u"http://127.0.0.1:1"_s, {}, 0}, path)) << "nobody listens";
    EXPECT_FALSE(curl_.get(service_, u"/nothing"_s)) << "not found";
    market_.setReferer(u"https://finance.sina.com.cn/"_s);
    EXPECT_FALSE(curl_.get(service_, path));
    EXPECT_TRUE(curl_.get({market_.host(), u"https://finance.sina.com.cn/"_s, 0}, path));
    EXPECT_FALSE(curl_.get(service_, path)) << "a referer does not stay for other services";
    market_.setReferer({});
    market_.setFault(MarketFault::slow);
    EXPECT_FALSE(curl_.get({market_.host(), {}, 1}, path)) << "past its time-out";
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
    EXPECT_EQ(http.get(service_, path), curl_.get(service_, path));
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
