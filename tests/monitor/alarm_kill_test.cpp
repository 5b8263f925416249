#include <QProcess>
#include <random>

#include "tests/support/monitor_fixture.h"

namespace guanchao {

class AlarmKillTest : public MonitorFixture {
protected:
    AlarmKillTest() {
        setFrequency(0);
        QStringList codes;
        for (int at = 10; at < 30; ++at) {
            codes << u"SH6000%1"_s.arg(at);
            addStockMonitor(codes.last(), u"涨幅"_s, u">"_s, 0, codes.last());
            store_.addMember(at % 2 == 0 ? u"双数"_s : u"单数"_s, codes.last());
        }
        watch(codes);
        addThemeMonitor(u"双数"_s, u">"_s, 0, u"双数"_s);
        addThemeMonitor(u"单数"_s, u">"_s, 0, u"单数"_s);
    }

    // Kills a process that polls, at any point after it has asked for so many quotes.
    void pollUntilKilled(int requests) {
        QProcess process;
        process.start(QStringLiteral(GUANCHAO_POLL_LOOP), {store_.folder()});
        for (qsizetype seen = 0; seen < requests;) {
            ASSERT_TRUE(process.waitForReadyRead()) << process.errorString().toStdString();
            seen += process.readAll().size();
        }
        process.kill();
        process.waitForFinished();
    }

    // The next poll finds every price above the threshold: whoever is below it now must fire.
    QStringList belowTheThreshold() {
        return store_.rows(
            u"select zhutiname from zhutijiankong where zhangfu<0 union all select dm from"
            u" gegujiankong where zhangfu<0"_s);
    }

    std::mt19937 random_{20261124};
};

TEST_F(AlarmKillTest, StoresStayWholeAndTheNextPollGoesByWhatWasWritten) {
    qsizetype alarms = 0;
    for (int round = 0; round < 40; ++round) {
        pollUntilKilled(std::uniform_int_distribution<int>(1, 5)(random_));
        if (HasFatalFailure()) {
            return;
        }
        ASSERT_EQ(store_.rows(u"pragma integrity_check"_s), QStringList{u"ok"_s});
        ASSERT_EQ(store_.rows(u"select count(distinct zhangfu) from jiankonghq"_s),
                  QStringList{u"1"_s})
            << "half a batch was written";
        const QStringList expected = belowTheThreshold();
        rung_.clear();
        replies_ = true;
        for (const QString& dm : store_.rows(u"select lower(dm) from jiankonghq"_s)) {
            feedPrices_.insert(dm, 10.7);
        }
        engine_.tick();
        ASSERT_EQ(rung_, expected) << "round " << round;
        alarms += expected.size();
        engine_.tick();
        ASSERT_EQ(rung_, expected) << "an alarm is not given twice";
    }
    EXPECT_GT(alarms, 0);
}

}  // namespace guanchao
