#include "research/forward_returns.h"

#include "tests/support/store_test.h"

namespace guanchao {

namespace {

// Days of open and close, one a day.
QList<AdjustedDay> daysOf(const QList<QPair<double, double>>& prices) {
    QList<AdjustedDay> history;
    for (const auto& [open, close] : prices) {
        history << AdjustedDay{QString::number(history.size()), open, close};
    }
    return history;
}

QList<double> listed(const ForwardGains& gains) {
    return {gains.yirizhang, gains.errizhang, gains.wurizhang, gains.daoqizhang, gains.kaipanzhang};
}

}  // namespace

TEST(ForwardGainsTest, FollowThePurchase) {
    // The gains of one, two and five days, to the report and of the opening.
    const std::tuple<const char*, QList<QPair<double, double>>, QList<double>> cases[] = {
        {"no history: the two days of the former stay", {}, {0, 7, 0, 0, 0}},
        {"one day: only its opening", {{99, 100}}, {0, 7, 0, 0, -1}},
        {"no opening: taken as the close", {{0, 100}}, {0, 7, 0, 0, 0}},
        {"no close either", {{99, 0}}, {0, 7, 0, 0, 0}},
        {"all days",
         {{100, 100}, {100, 101}, {1, 102}, {1, 103}, {1, 104}, {1, 105}, {1, 106}},
         {1, 2, 5, 6, 0}},
        {"no sixth day: the last", {{100, 100}, {100, 101}, {1, 102}, {1, 103}}, {1, 2, 3, 3, 0}},
        {"exactly at the limit", {{1000, 1000}, {1099, 1200}}, {9.19, 9.19, 9.19, 9.19, 0}},
        {"at the limit once: a day later",
         {{100, 100}, {110, 110}, {100, 120}},
         {10, 20, 20, 20, 0}},
        {"at the limit twice: bought on the fourth day, untested, with its close for the second",
         {{100, 100}, {110, 110}, {121, 121}, {200, 210}},
         {-45, 5, 5, 5, 0}},
        {"at the limit twice, then nothing", {{100, 100}, {110, 110}, {121, 121}}, {0, 7, 0, 0, 0}},
    };
    for (const auto& [name, prices, gains] : cases) {
        EXPECT_EQ(listed(forwardGains(daysOf(prices), {.errizhang = 7})), gains) << name;
    }
}

using ForwardReturnsTest = StoreTest;

// The two codes are without rows of their own, so that the store refuses no statement.
TEST_F(ForwardReturnsTest, EndsEarlyAfterACodeAndMarksIt) {
    createStore(store_.stores.firstHistory.path, {},
                u"create table SH600001(shijian,kp,sp,fuquanyz,chengjiaoe)"_s);
    store_.run({u"insert into dmb(dm) values(''),('A1')"_s,
                u"insert into yejiyuyuejinqi(dm,todayriqi) values(null,'2016-04-01 00:00:00'),"
                u"(x'4131','2016-04-01 00:00:00'),('SH600001','2016-03-31 00:00:00')"_s});
    const QString early = u"代码总数:2 提前停止:"_s;
    const QString complete = u"代码总数:2 当前代码:A1"_s;
    const std::tuple<bool, bool, bool, QString, int, QString> cases[] = {
        {true, false, false, early, 1, {}},
        {false, true, false, early, 1, {}},
        {false, false, false, complete, 2, u"听涛阁|取后期涨幅完成!"_s},
        {false, false, true, {}, 2, u"观潮台|正在写入数据，请稍后再取后期涨幅。"_s},
    };
    QStringList shown;
    bool stops = false;
    ResearchRun run([&](const ResearchProgress& it) {
        shown = QStringList{it.subject, it.step};
        if (stops && !it.stopping) {
            run.stop();
        }
    });
    ForwardReturns returns(store_.stores, globals_, dialogs_, run);
    for (const auto& [ticked, stopped, writing, labels, marked, words] : cases) {
        stops = stopped;
        globals_.hqmang = writing ? 1 : 0;
        shown.clear();
        endOf(returns.takeForwardReturns(ticked, {}));
        EXPECT_EQ(shown.join(u' '), labels);
        EXPECT_EQ(store_.rows(u"select dm from dmb where temp=1"_s).size(), marked);
        EXPECT_EQ(told().join(u' '), words);
    }
}

}  // namespace guanchao
