#include "services/polite_http.h"

#include "tests/support/fakes.h"

namespace guanchao {

using Outcome = HttpReply::Outcome;

class PoliteHttpTest : public ::testing::Test {
protected:
    PoliteHttpTest() {
        http_.instead = [this](const QString&) {
            return status_ == 200 ? HttpReply{Outcome::answered, 200, {}}
                   : status_ == 0 ? HttpReply{Outcome::unreachable, 0, {}}
                                  : HttpReply{Outcome::refused, status_, {}};
        };
    }

    HttpReply get(const Service& service) { return outcomeOf(polite_.get(service, u"/"_s, {})); }
    // Gets so often an answer of that status; 0: nobody is there.
    Outcome get(int status, int times = 1) {
        status_ = status;
        HttpReply reply;
        for (int i = 0; i < times; ++i) {
            reply = get(service_);
        }
        return reply.outcome;
    }
    bool rests() {
        const qsizetype before = http_.paths.size();
        const HttpReply reply = get(service_);
        EXPECT_EQ(http_.paths.size() == before, reply.outcome == Outcome::resting);
        return reply.outcome == Outcome::resting;
    }

    FakeClock clock_;
    QList<qint64> waits_;
    int status_ = 200;
    FakeHttp http_;
    const Service service_ = {u"http://a"_s, {}};
    PoliteHttp polite_{http_, clock_,
                       [this](std::chrono::milliseconds time, std::stop_token) -> QCoro::Task<> {
                           waits_ << time.count();
                           clock_.moment = clock_.moment.addMSecs(time.count());
                           co_return;
                       }};
};

TEST_F(PoliteHttpTest, ALimitedAddressRests) {
    const std::tuple<int, int, Outcome> cases[] = {
        {200, 429, Outcome::limited}, {200, 456, Outcome::limited}, {200, 403, Outcome::limited},
        {500, 403, Outcome::refused}, {200, 500, Outcome::refused},
    };
    for (const auto& [before, status, outcome] : cases) {
        PoliteHttp fresh(http_, clock_);
        const auto ask = [&](int answer) {
            status_ = answer;
            return outcomeOf(fresh.get(service_, u"/"_s, {})).outcome;
        };
        ask(before);
        EXPECT_EQ(ask(status), outcome) << before << ' ' << status;
        EXPECT_EQ(ask(200), outcome == Outcome::limited ? Outcome::resting : Outcome::answered)
            << status;
    }
}

TEST_F(PoliteHttpTest, ARestIsOfOneAddressAndEnds) {
    get(429);
    status_ = 200;
    EXPECT_EQ(get({u"http://b"_s, {}}).outcome, Outcome::answered);
    const HttpReply reply = get(service_);
    EXPECT_EQ(reply.until, clock_.moment.addSecs(90));
    EXPECT_EQ(failureWords(reply), u"刚才要得太勤，被拒绝（429），10:01:30 以前不再去要"_s);
    EXPECT_TRUE(reply.turnedAway());
    clock_.moment = clock_.moment.addSecs(89);
    EXPECT_TRUE(rests());
    clock_.moment = clock_.moment.addSecs(1);
    EXPECT_FALSE(rests());
    get(429);
    clock_.moment = clock_.moment.addDays(-1);
    EXPECT_FALSE(rests()) << "the clock was set back";
}

TEST_F(PoliteHttpTest, TenFailuresInARowAreEnough) {
    get(503, 9);
    EXPECT_FALSE(rests());
    EXPECT_TRUE(rests());
    clock_.moment = clock_.moment.addSecs(90);
    get(503, 9);
    get(200);
    get(503, 9);
    EXPECT_FALSE(rests()) << "an answer between them";
    clock_.moment = clock_.moment.addSecs(90);
    get(404, 20);
    EXPECT_FALSE(rests()) << "a page that isn't there";
    EXPECT_EQ(get(0, 20), Outcome::unreachable);
}

TEST_F(PoliteHttpTest, KeepsThePauseOfAServiceBetweenItsRequests) {
    const Service paced = {u"http://a"_s, {}, 0, 1, 0.7};
    get(paced);
    get(paced);
    clock_.moment = clock_.moment.addMSecs(500);
    get(paced);
    clock_.moment = clock_.moment.addSecs(2);
    get(paced);
    get(service_);
    EXPECT_EQ(waits_, QList<qint64>({700, 200}));
    clock_.moment = clock_.moment.addDays(-1);
    get(paced);
    EXPECT_LE(waits_.last(), 7000) << "the clock was set back";
}

}  // namespace guanchao
