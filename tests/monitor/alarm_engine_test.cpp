#include "monitor/alarm_engine.h"

#include "base/activity.h"
#include "tests/support/monitor_fixture.h"

namespace guanchao {

class AlarmEngineTest : public MonitorFixture {
protected:
    AlarmEngineTest() {
        setFrequency(1);
        watch({u"SH600000"_s, u"SZ000001"_s});
    }

    // Two stocks that fire at the next poll.
    void addTwoThatFire() {
        addStockMonitor(u"SH600000"_s, u"涨幅"_s, u">"_s, 1, u"/a.mp3"_s);
        addStockMonitor(u"SZ000001"_s, u"涨幅"_s, u">"_s, 1, u"/b.mp3"_s);
        setQuote(u"SH600000"_s, 10, 2);
        setQuote(u"SZ000001"_s, 10, 2);
    }
    QStringList themes() {
        return store_.rows(u"select zhutiname,zhangfu,baojintime from zhutijiankong"_s);
    }

    // One poll of a monitor on one stock's gain (leixin 涨幅) or price, a poll a value.
    QList<bool> firings(const QString& leixin, const QString& bijiaofu, double baojinzhi,
                        const QList<double>& values) {
        store_.run({u"delete from gegujiankong"_s});
        addStockMonitor(u"SH600000"_s, leixin, bijiaofu, baojinzhi);
        QList<bool> fired;
        for (const double value : values) {
            const bool isGain = leixin == u"涨幅"_s;
            setQuote(u"SH600000"_s, isGain ? 10 : value, isGain ? value : 0);
            engine_.tick();
            fired << !std::exchange(rung_, {}).isEmpty();
        }
        return fired;
    }
};

TEST_F(AlarmEngineTest, ACrossingIsStrictOnBothSides) {
    const std::tuple<QString, QString, double, QList<double>, QList<bool>> cases[] = {
        {u"涨幅"_s, u">"_s, 3, {2.9, 3.1, 3.2, 2.5, 3.1}, {false, true, false, false, true}},
        {u"涨幅"_s, u">"_s, 3, {2.9, 3, 3.1}, {false, false, false}},
        {u"涨幅"_s, u">"_s, 3, {3.1, 4}, {true, false}},
        {u"涨幅"_s, u"<"_s, -3, {-3.1, -2, -3, -4}, {true, false, false, false}},
        {u"涨幅"_s, u">"_s, 0, {0.5, -0.5, 0.5}, {false, false, true}},
        {u"涨幅"_s, u">"_s, -1, {-0.5, -2, 0}, {false, false, true}},
        {u"股价"_s, u">"_s, 10, {10.5, 9, 10, 11}, {true, false, false, false}},
        {u"股价"_s, u"<"_s, 10, {9, 11, 9}, {false, false, true}},
        {u"股价"_s, u"="_s, 10, {9, 11, 10}, {false, false, false}},
        {u"收盘"_s, u">"_s, 10, {9, 11}, {false, false}},
    };
    for (const auto& [leixin, bijiaofu, baojinzhi, values, fired] : cases) {
        EXPECT_EQ(firings(leixin, bijiaofu, baojinzhi, values), fired)
            << leixin.toStdString() << bijiaofu.toStdString() << baojinzhi;
    }
}

TEST_F(AlarmEngineTest, ALineOrAMonitorThatCannotBeReadTakesNoOtherAlarmAlong) {
    replyWith({{u"sh600000"_s, 12}, {u"sz000001"_s, 12}});
    const auto whole = http_.answer;
    http_.answer = [&](const QString& path) {
        return whole(path)->replace("sz000001=\"x,10,", "sz000001=\"x,zehn,");
    };
    addStockMonitor(u"SH600000"_s, u"股价"_s, u">"_s, 11);
    engine_.tick();
    EXPECT_EQ(failures_.texts.size(), 1);
    EXPECT_EQ(rung_, QStringList{u"/s.mp3"_s});
    store_.run({u"insert into gegujiankong(dm,sp) values('SZ000001',null)"_s});
    addStockMonitor(u"SH600000"_s, u"涨幅"_s, u">"_s, 1, u"/g.mp3"_s);
    engine_.tick();
    engine_.tick();
    EXPECT_EQ(rung_, QStringList({u"/s.mp3"_s, u"/g.mp3"_s}));
    store_.run({u"delete from tempcanshu"_s});
    engine_.tick();
    ASSERT_EQ(failures_.texts.size(), 3) << "while it lasts, others are told at once";
    EXPECT_EQ(failures_.texts[1], u"SZ000001：缺少一个数值（空值）"_s);
}

TEST_F(AlarmEngineTest, AThemeIsJudgedByTheMeanOfItsListedMembers) {
    store_.addMembers(u"银行"_s, {u"SH600000"_s, u"SZ000001"_s, u"SH699999"_s});
    store_.addMember(u"空"_s, u"SH699999"_s);
    addThemeMonitor(u"银行"_s, u">"_s, 1);
    addThemeMonitor(u"空"_s, u"<"_s, 1);
    store_.run({u"update zhutijiankong set zhangfu=7 where zhutiname='空'"_s});
    setQuote(u"SH600000"_s, 10, 1.00015);
    setQuote(u"SZ000001"_s, 0, 1.00035);
    engine_.tick();
    // 1.00025 goes to the even digit; the member without a row counts not at all.
    EXPECT_EQ(themes(), QStringList({u"银行|1.0002|2026-11-24 10:00:00"_s, u"空|7|null"_s}));
    setQuote(u"SZ000001"_s, 10, 0);
    clock_.moment = clock_.moment.addSecs(20);
    engine_.tick();
    EXPECT_EQ(themes()[0], u"银行|0.5001|2026-11-24 10:00:00"_s) << "the time of the alarm stays";
    EXPECT_EQ(shown_, 1);
}

TEST_F(AlarmEngineTest, AMonitorWithoutARowTakesTheValuesOfTheOneBefore) {
    addStockMonitor(u"SH688001"_s, u"股价"_s, u">"_s, 1);
    addStockMonitor(u"SH600000"_s, u"股价"_s, u">"_s, 5);
    addStockMonitor(u"SH688002"_s, u"股价"_s, u">"_s, 5);
    addStockMonitor(u"SZ000001"_s, u"股价"_s, u">"_s, 5);
    setQuote(u"SH600000"_s, 9, 2);
    setQuote(u"SZ000001"_s, 0, 3);
    engine_.tick();
    EXPECT_EQ(store_.rows(u"select dm,sp,zhangfu,time(baojintime) from gegujiankong"_s),
              QStringList({u"SH688001|0|0|null"_s, u"SH600000|9|2|10:00:00"_s,
                           u"SH688002|9|2|10:00:00"_s, u"SZ000001|0|0|null"_s}))
        << "the first has nothing before it, the last is suspended";
}

TEST_F(AlarmEngineTest, SeveralFiredMonitorsPromptEachThoughTheirWindowFails) {
    addTwoThatFire();
    addStockMonitor(u"SZ000001"_s, u"股价"_s, u"<"_s, 10.5, u"x"_s);
    store_.run({u"update gegujiankong set jc='平安银行',sp=11 where leixin='股价'"_s});
    store_.addMember(u"银行"_s, u"SH600000"_s);
    addThemeMonitor(u"银行"_s, u">"_s, 1.5, u"/t.mp3"_s, 0);
    screen_.onShow = [] { throw std::runtime_error("the window could not be shown"); };
    engine_.tick();
    EXPECT_EQ(failures_.texts.size(), 1);
    EXPECT_EQ(shown_, 1) << "one window for all that fired";
    EXPECT_EQ(rung_, QStringList({u"/t.mp3"_s, u"/a.mp3"_s, u"/b.mp3"_s}))
        << "one character is no file";
    EXPECT_EQ(screen_.told, (QStringList{u"银行 涨幅 2 > 1.5"_s, u"SH600000 涨幅 2 > 1"_s,
                                         u"SZ000001 涨幅 2 > 1"_s, u"平安银行 股价 10 < 10.5"_s}));
}

TEST_F(AlarmEngineTest, TheCounterFollowsTheFrequencyTheFlagAndTheBusyBatch) {
    const auto pollsOf = [this](int ticks) {
        const qsizetype before = http_.paths.size();
        for (int tick = 0; tick < ticks; ++tick) {
            engine_.tick();
        }
        return http_.paths.size() - before;
    };
    setFrequency(3);
    EXPECT_EQ(pollsOf(2), 0);
    EXPECT_EQ(pollsOf(2), 1);
    globals_.jiankongkaiqi = 0;
    EXPECT_EQ(pollsOf(5), 0);
    globals_.jiankongkaiqi = 1;
    EXPECT_EQ(pollsOf(1), 0) << "the counter stands while monitoring is off";
    EXPECT_EQ(pollsOf(1), 1);
    globals_.hqmang = 1;
    EXPECT_EQ(pollsOf(4), 0);
    globals_.hqmang = 0;
    EXPECT_EQ(pollsOf(1), 1) << "it runs on during a batch";
    for (const int each : {0, -5}) {
        setFrequency(each);
        EXPECT_EQ(pollsOf(2), 2) << each;
    }
    http_.onGet = [this] { engine_.tick(); };
    EXPECT_EQ(pollsOf(1), 1) << "a tick during a poll doesn't poll";
}

TEST_F(AlarmEngineTest, AFailureThatLastsIsToldAgainAfterTenMinutes) {
    store_.run({u"delete from tempcanshu"_s});
    QList<int> toldAt;
    for (int second = 0; second < 1300; ++second) {
        const qsizetype before = failures_.texts.size();
        engine_.tick();
        if (failures_.texts.size() > before) {
            toldAt << second;
        }
        clock_.moment = clock_.moment.addSecs(1);
    }
    EXPECT_EQ(toldAt, QList<int>({0, 600, 1200}));
    clock_.moment = clock_.moment.addDays(-1);
    engine_.tick();
    EXPECT_EQ(failures_.texts.size(), 4) << "the clock has been set back";

    store_.run({u"insert into tempcanshu(jiankongpinlu) values(1)"_s, u"delete from jiankonghq"_s});
    engine_.tick();
    store_.run({u"delete from tempcanshu"_s});
    clock_.moment = clock_.moment.addDays(1);
    engine_.tick();
    EXPECT_EQ(failures_.texts.size(), 4) << "nothing is followed that could be missed";
}

// The value that the first of them writes is the memory of the second too: both must fire, though
// another program gets in between and they are judged again.
TEST_F(AlarmEngineTest, AStoreThatIsTakenBetweenTwoMonitorsOfOneCodeLosesNoAlarm) {
    addStockMonitor(u"SH600000"_s, u"涨幅"_s, u">"_s, 1, u"/a.mp3"_s);
    addStockMonitor(u"SH600000"_s, u"股价"_s, u">"_s, 5, u"/b.mp3"_s);
    setQuote(u"SH600000"_s, 10, 2);
    replies_ = true;
    std::optional<Connection> other(store_.stores.main.open());
    int asked = 0;  // the time: at the beginning, for the quotes, by each monitor that fires
    clock_.onNow = [&] {
        if (++asked != 4) {
            return;
        }
        try {
            other->execute(u"begin exclusive"_s);
        } catch (const OperationError&) {
            // Held by the poll, which then can't end while another reads.
            other->execute(u"begin"_s);
            other->execute(u"select count(*) from gegujiankong"_s);
        }
    };
    engine_.tick();
    EXPECT_TRUE(engine_.polling());
    EXPECT_TRUE(rung_.isEmpty());
    other.reset();
    until([this] { return !engine_.polling(); });
    EXPECT_EQ(rung_, QStringList({u"/a.mp3"_s, u"/b.mp3"_s}));
    EXPECT_TRUE(failures_.texts.isEmpty());
}

TEST_F(AlarmEngineTest, QuotesThatStayAwayShowUntilOneComes) {
    const QByteArray replies[] = {"", "var hq_str_sh600000=\"\";\nvar hq_str_sz000001=\"\";\n",
                                  "var hq_str_sh600000=\"abc,def,ghi\n"};
    QDateTime last = clock_.moment;  // the beginning
    http_.onGet = [this] { clock_.moment = clock_.moment.addSecs(15); };
    const auto good = http_.answer;
    for (const QByteArray& reply : replies) {
        screen_.stale.clear();
        http_.answer = [&](const QString&) { return reply; };
        engine_.tick();
        EXPECT_EQ(screen_.stale.size(), 1) << "the first of them tells";
        engine_.tick();
        EXPECT_EQ(screen_.stale, QList<QDateTime>{last}) << reply.toStdString();
        http_.answer = good;
        replyWith({{u"sh600000"_s, 12}});
        engine_.tick();
        engine_.tick();
        EXPECT_EQ(screen_.stale.value(1, last), QDateTime());
        last = clock_.moment;
    }
}

TEST_F(AlarmEngineTest, AWindowThatMayNotOpenWaitsAndTheSoundDoesNot) {
    addTwoThatFire();
    screen_.popupStands = true;
    engine_.tick();
    globals_.jiankongkaiqi = 0;
    engine_.tick();
    EXPECT_EQ(shown_, 2) << "asked again, though monitoring was stopped meanwhile";
    EXPECT_EQ(rung_.size(), 2);
    screen_.popupStands = false;
    engine_.tick();
    engine_.tick();
    EXPECT_EQ(shown_, 3) << "one window for both";
    EXPECT_EQ(rung_.size(), 2);
}

}  // namespace guanchao
