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

}  // namespace guanchao
