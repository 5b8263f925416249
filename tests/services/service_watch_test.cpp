#include "services/service_watch.h"

#include "services/service_trouble.h"
#include "tests/support/fakes.h"
#include "tests/support/outcome_of.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

// A moment in seconds, a service (s sina, t tencent) and what becomes of its request: a answered,
// c answered and complained of, f failed, r at rest.
struct Asked {
    int second;
    char service;
    char outcome;
};

class ServiceWatchTest : public ::testing::Test {
protected:
    struct Scripted : HttpClient {
        QCoro::Task<HttpReply> get(Service, QString, std::stop_token) override {
            co_return HttpReply{outcome, 0, {}};
        }
        HttpReply::Outcome outcome = HttpReply::Outcome::answered;
    };

    ServiceWatchTest() {
        // Of one host; each purpose and kind counts by itself.
        services_.quote = {{u"http://h"_s, {}, 0, 1, 0, u"sina"_s, u"quote"_s},
                           {u"http://h"_s, {}, 0, 1, 0, u"tencent"_s, u"quote"_s}};
        services_.history = {{u"http://h"_s, {}, 0, 1, 0, u"sina"_s, u"history"_s}};
    }

    QString after(const QList<Asked>& asked) {
        ServiceWatch watch(http_, clock_);
        const QDateTime start = clock_.moment;
        for (const Asked& it : asked) {
            clock_.moment = start.addSecs(it.second);
            const Service service = services_.quote[it.service == 's' ? 0 : 1];
            http_.outcome = it.outcome == 'f'   ? HttpReply::Outcome::silent
                            : it.outcome == 'r' ? HttpReply::Outcome::resting
                                                : HttpReply::Outcome::answered;
            outcomeOf(watch.get(service, {}, {}));
            if (it.outcome != 'a') {
                watch.complain(service, u"应答里没有行情"_s);
            }
        }
        clock_.moment = start;
        return troubleLines(services_, watch, start.addSecs(600)).join(u'|');
    }

    FakeClock clock_;
    Scripted http_;
    Services services_;
};

TEST_F(ServiceWatchTest, TellsWhatFailsTimeAndAgain) {
    const struct {
        const char* name;
        QList<Asked> asked;
        QString words;
    } cases[] = {
        {"a single miss, of requests that were under way together",
         {{0, 's', 'f'}, {0, 's', 'f'}, {0, 's', 'f'}, {1, 's', 'f'}, {1, 's', 'f'}},
         {}},
        {"again after a while",
         {{0, 's', 'f'}, {1, 't', 'a'}, {90, 's', 'f'}},
         u"行情：新浪 10:00 起没有应答，在用腾讯"_s},
        {"five in a row, each a second behind the one before",
         {{0, 's', 'f'},
          {1, 's', 'f'},
          {2, 's', 'f'},
          {3, 's', 'f'},
          {4, 's', 'f'},
          {5, 's', 'f'},
          {6, 's', 'f'},
          {7, 's', 'f'},
          {8, 's', 'f'}},
         u"行情：新浪 10:00 起没有应答"_s},
        {"it is back", {{0, 's', 'f'}, {90, 's', 'f'}, {180, 's', 'a'}}, {}},
        {"a rest is neither back nor a failure",
         {{0, 's', 'f'}, {90, 's', 'f'}, {180, 's', 'r'}},
         u"行情：新浪 10:00 起没有应答"_s},
        {"one miss and a rest", {{0, 's', 'f'}, {90, 's', 'r'}, {180, 's', 'r'}}, {}},
        {"answers that nobody can read",
         {{0, 's', 'c'}, {90, 's', 'c'}, {91, 't', 'a'}},
         u"行情：新浪 10:00 起应答里没有行情，在用腾讯"_s},
        {"a failure is counted once, though it is complained of",
         {{0, 's', 'f'}, {3, 's', 'f'}, {6, 's', 'f'}, {9, 's', 'f'}},
         {}},
        {"the one behind is of no matter", {{0, 's', 'a'}, {1, 't', 'f'}, {90, 't', 'f'}}, {}},
        {"both",
         {{60, 's', 'f'}, {61, 't', 'f'}, {150, 's', 'f'}, {151, 't', 'f'}},
         u"行情：新浪 10:01 起没有应答，其余的也读不到"_s},
    };
    for (const auto& it : cases) {
        EXPECT_EQ(after(it.asked), it.words) << it.name;
    }
}

}  // namespace guanchao
