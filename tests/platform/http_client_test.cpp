#include "platform/qt_http_client.h"

#include <QTest>

#include "base/runs.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/raw_service.h"

namespace guanchao {

using Outcome = HttpReply::Outcome;

static const QByteArray nothing = "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n";

class HttpClientTest : public ::testing::Test {
protected:
    HttpReply get(const Service& service, const QString& path) {
        return QCoro::waitFor(client_.get(service, path, {}));
    }

    RawService raw_;
    QtHttpClient client_;
};

TEST_F(HttpClientTest, TellsAnAnswerFromEachKindOfFailure) {
    const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n";
    const struct {
        const char* what;
        QByteArray sent;
        bool hangsUp;
        Outcome outcome;
    } cases[] = {
        {"whole", head + "\xC6\xD6,1", false, Outcome::answered},
        {"nothing in it", nothing, false, Outcome::answered},
        {"half", head + "ab", true, Outcome::broken},
        {"reset before a word", {}, true, Outcome::unreachable},
        {"forbidden", "HTTP/1.1 403 No\r\nContent-Length: 3\r\n\r\nwhy", false, Outcome::refused},
        {"no HTTP", "hello\r\n\r\n", true, Outcome::unreachable},
    };
    for (const auto& it : cases) {
        raw_.answer = [&it](QTcpSocket& socket) {
            socket.write(it.sent);
            if (it.hangsUp) {
                socket.disconnectFromHost();
            }
        };
        const HttpReply reply = get(raw_.service(5), u"/list=sh600000,sz000001,"_s);
        EXPECT_EQ(reply.outcome, it.outcome) << it.what;
        const bool isWhole = reply.answered() || reply.outcome == Outcome::refused;
        EXPECT_EQ(reply.body, isWhole ? it.sent.mid(it.sent.indexOf("\r\n\r\n") + 4) : QByteArray())
            << it.what;
        EXPECT_EQ(failureWords(reply).isEmpty(), reply.answered()) << it.what;
    }
    EXPECT_EQ(get({}, u"/"_s).outcome, Outcome::notThere);
    EXPECT_EQ(get({u"http://127.0.0.1:1"_s, {}, 0}, u"/"_s).outcome, Outcome::unreachable);
    EXPECT_EQ(get({u"no address"_s, {}, 0}, u"/"_s).outcome, Outcome::unreachable);
}

TEST_F(HttpClientTest, SendsPathsAsTheyAreAndTheRefererOfItsServiceOnly) {
    raw_.answer = [](QTcpSocket& socket) { socket.write(nothing); };
    const QString path = u"/s?word=%D0%C2%C4%DC&list=sh600000,sz000001,&ignore=.csv"_s;
    Service service = raw_.service();
    service.referer = u"https://finance.sina.com.cn/"_s;
    get(service, path);
    EXPECT_TRUE(raw_.requests.startsWith(u"GET "_s + path + u" HTTP"_s));
    EXPECT_TRUE(raw_.requests.contains(u"\r\nReferer: "_s + service.referer + u"\r\n"_s,
                                       Qt::CaseInsensitive));
    raw_.requests.clear();
    get(raw_.service(), path);
    EXPECT_FALSE(raw_.requests.contains(u"Referer"_s, Qt::CaseInsensitive));
    qputenv("http_proxy", "http://127.0.0.1:1");
    EXPECT_TRUE(get(raw_.service(), u"/"_s).answered()) << "a loopback service needs no proxy";
    EXPECT_FALSE(get({u"http://outside.invalid"_s, {}, 0}, u"/"_s).answered());
    qunsetenv("http_proxy");
}

TEST_F(HttpClientTest, ATimeOutIsThatOfTheWholeRequest) {
    for (const ServiceManner& it : neverDone) {
        raw_.answer = it.answer;
        EXPECT_EQ(get(raw_.service(1), u"/"_s).outcome, Outcome::silent) << it.what;
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return raw_.hangUps == 2; })) << "nothing is left open";
}

TEST_F(HttpClientTest, AStopBreaksOffAtOnceAndLeavesTheOthers) {
    raw_.answer = [](QTcpSocket&) {};
    FakeFailures failures;
    const auto ask = [&](std::stop_token stop) -> QCoro::Task<> {
        co_await client_.get(raw_.service(), u"/"_s, stop);
    };
    Runs stopped(failures), others(failures);
    stopped.start(ask);
    others.start(ask);
    ASSERT_TRUE(QTest::qWaitFor([this] { return raw_.requests.count(u"GET"_s) == 2; }));
    stopped.stop();
    EXPECT_TRUE(!stopped.running() && others.running());
    EXPECT_TRUE(QTest::qWaitFor([this] { return raw_.hangUps == 1; }));
    EXPECT_TRUE(failures.texts.isEmpty());
}

}  // namespace guanchao
