#include "themes/watch_quotes.h"

#include "tests/themes/theme_fixture.h"

namespace guanchao {

using namespace std::chrono_literals;

class WatchQuotesTest : public ThemeFixture {
protected:
    WatchQuotesTest() {
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 10, 0);
        store_.addCode(u"SZ000005"_s, u"股"_s, 10, 0);
        store_.run({u"insert into zixuangu(dm) values('SH600000'),('SZ000005'),('SH699999')"_s,
                    u"insert into zixuanzugu values('短线','SZ000001'),('短线','SH600519')"_s,
                    u"insert into tuishi(dm) values('SZ000005')"_s});
        answerQuotes({{u"sh600000"_s, 11}, {u"sz000001"_s, 9}});
    }

    // Until so many have looked whether a request is due.
    void followUntil(int looks) {
        int looked = 0;
        clock_.onNow = [&looked] { ++looked; };
        Runs runs(failures_);
        runs.start([this](std::stop_token stop) {
            return quotes_.follow(
                1ms, [] { return QString(); }, [this](const QString& lack) { came_ << lack; },
                stop);
        });
        until([&] { return looked >= looks; });
        clock_.onNow = nullptr;
    }

    QStringList came_;
    QuoteFeed feed_{store_.stores, globals_, clock_, QuoteSource(http_, clock_, {Service()})};
    WatchQuotes quotes_{store_.stores, globals_, clock_, feed_};
};

TEST_F(WatchQuotesTest, AListAsksForItsOwnCodesOnly) {
    outcomeOf(quotes_.update({}, {}));
    const QuoteTally tally = outcomeOf(quotes_.update(u"短线"_s, {}));
    EXPECT_EQ(http_.paths,
              QStringList({u"/list=sh600000,sh000001,"_s, u"/list=sh600519,sz000001,"_s}));
    EXPECT_EQ(tally.missed(), 1);
    EXPECT_EQ(store_.rows(u"select dm,sp from dmb where newhqtime is not null order by dm"_s),
              QStringList({u"SH600000|11"_s, u"SZ000001|9"_s}));
    http_.paths.clear();
    outcomeOf(quotes_.update(u"空"_s, {}));
    EXPECT_EQ(http_.paths, QStringList()) << "nothing is asked for an empty list";
}

TEST_F(WatchQuotesTest, ItAsksAgainAndAgainWhileTheMarketIsOpenAndNobodyElseWrites) {
    followUntil(12);
    EXPECT_GE(http_.paths.size(), 2);
    EXPECT_EQ(came_.count(QString()), came_.size());
    http_.paths.clear();
    globals_.hqmang = 1;
    followUntil(4);
    globals_.hqmang = 0;
    clock_.moment = QDateTime(QDate(2026, 11, 28), QTime(10, 0));
    followUntil(4);
    EXPECT_EQ(http_.paths, QStringList()) << "on a Saturday";
}

}  // namespace guanchao
