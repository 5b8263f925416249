#include "research/history_fill.h"

#include "services/stock_code.h"
#include "tests/support/scripted_history.h"
#include "tests/support/store_test.h"

namespace guanchao {

class HistoryFillTest : public StoreTest {
protected:
    HistoryFillTest() {
        store_.stores.firstHistory = {store_.folder() + u"a/first"_s, {}};
        store_.stores.secondHistory = {store_.folder() + u"a/second"_s, {}};
        setDay(today_);
        for (const QDate& day : days_) {
            market_.closes[leadingIndex][day] = 3000;
        }
        market_.quotes[leadingIndex] = {3000, 3000};
    }

    // With the same close each day.
    void list(const QString& dm, double close = 10) {
        store_.addCode(dm, u"x"_s, 0, 0);
        for (const QDate& day : days_) {
            market_.closes[dm][day] = close;
        }
    }
    // As many, from SH600100 on.
    QStringList listMany(int count) {
        QStringList codes;
        for (int it = 0; it < count; ++it) {
            codes << u"SH%1"_s.arg(600100 + it);
            list(codes.last());
        }
        return codes;
    }

    void setDay(const QDate& day) {
        clock_.moment = QDateTime(day, QTime(16, 0));
        market_.today = day;
    }

    FillTally fill(bool onlyNewDays = false) {
        market_.asked.clear();
        RunControl control;
        HistoryFill fill(
            store_.stores, clock_, market_, services_, {1, onlyNewDays}, control,
            [](const RunProgress&) {}, wait_);
        return endOf(fill.run({}));
    }
    QStringList first(const QString& query) {
        return TestStores::rows(store_.stores.firstHistory, query);
    }
    QStringList second(const QString& query) {
        return TestStores::rows(store_.stores.secondHistory, query);
    }
    // Day of the month, close, former close and factor.
    QStringList days(const QString& dm, const QString& from) {
        const QString query =
            u"select substr(shijian,9)||' '||sp||' '||qiansp||' '||round(fuquanyz,4) from %1"
            u" where shijian>='%2' order by shijian"_s.arg(dm, from);
        EXPECT_EQ(first(query), second(query)) << dm.toStdString();
        return first(query);
    }

    const QDate today_{2026, 11, 24};  // a Tuesday
    const QList<QDate> days_ = ScriptedHistory::weekdays({2026, 11, 2}, today_);
    ScriptedHistory market_;
    Services services_ = ScriptedHistory::services();
    QList<std::chrono::milliseconds> waits_;
    Wait wait_ = [this](std::chrono::milliseconds time, std::stop_token) -> QCoro::Task<> {
        waits_ << time;
        co_return;
    };
};

TEST_F(HistoryFillTest, BothFilesGetTheDaysWithTheirRealGains) {
    list(u"SH600000"_s);
    market_.closes[u"SH600000"_s][{2026, 11, 23}] = 8;
    market_.closes[u"SH600000"_s][today_] = 8.8;
    market_.factors[u"SH600000"_s][{2026, 11, 23}] = 1.2;
    list(u"SZ000001"_s, 20);
    for (const QDate& day : ScriptedHistory::weekdays({2026, 11, 16}, {2026, 11, 20})) {
        market_.closes[u"SZ000001"_s].remove(day);  // halted
    }
    market_.closes[u"SZ000001"_s][{2026, 11, 23}] = 21;
    store_.addCode(u"SZ000002"_s, u"x"_s, 0, 0);  // which no service knows
    store_.addMember(u"银行"_s, u"SH600000"_s);
    const FillTally tally = fill();
    EXPECT_EQ(market_.asked.value(0), u"history SH000001"_s);
    EXPECT_EQ(tally.rows, 16 + 16 + 11) << "of none the first day, whose gain nobody knows";
    EXPECT_EQ(tally.unknown, 1);
    EXPECT_EQ(days(u"SH600000"_s, u"2026-11-20"_s),
              QStringList({u"20 1000 1000 1.0"_s, u"23 800 833 1.2"_s, u"24 880 800 1.2"_s}))
        << "a gain of -4 % on the day of the dividend";
    EXPECT_EQ(days(u"SZ000001"_s, u"2026-11-13"_s),
              QStringList({u"13 2000 2000 1.0"_s, u"23 2100 2000 1.0"_s, u"24 2000 2100 1.0"_s}));
    EXPECT_EQ(first(u"select count(*) from geguhq where dm='SH000001'"_s), QStringList{u"0"_s});
    EXPECT_EQ(first(u"select * from dzhzhuti"_s), QStringList{u"银行|SH600000"_s});

    store_.run({u"update dzhzhuti set zhutiname='新'"_s});
    EXPECT_EQ(fill().rows, 0);
    EXPECT_EQ(market_.asked, QStringList({u"quotes SH000001,SZ399001"_s, u"history SZ000002"_s}))
        << "what was answered for is not asked for again, the halted week neither";
    EXPECT_EQ(first(u"select zhutiname from dzhzhuti"_s), QStringList{u"新"_s});
}

// Days before, between and behind stored ones of another make, with a dividend in the first hole
// and on the last day. Former close and factor of each, by the stored factors about the dividend.
TEST_F(HistoryFillTest, AFilledHoleJoinsTheStoredDaysOnBothSides) {
    const QString dm = u"SH600000"_s;
    const struct {
        const char* what;
        double before, behind;
        qint64 told;  // former close of the stored day behind the first hole
        QString filled;
    } cases[] = {
        {"the factors agree", 2, 4, 500,
         u"1000 2.0|1000 2.0|1000 2.0|550 4.0|600 4.0|700 4.0|800 4.0|450 8.0"_s},
        {"the stored ones know less of a dividend", 2, 3, 667,
         u"1000 2.0|1000 2.0|1000 2.0|733 3.0|600 3.0|700 3.0|800 3.0|450 6.0"_s},
        {"the stored ones know of none", 1.7, 1.7, 1000,
         u"1000 1.7|1000 1.7|1000 1.7|1100 1.7|600 1.7|700 1.7|800 1.7|450 3.4"_s},
        {"an exchange told the former close", 2, 4, 605,
         u"1000 2.0|1000 2.0|1000 2.0|550 4.0|605 4.0|700 4.0|800 4.0|450 8.0"_s},
    };
    const QString filled =
        u"select group_concat(qiansp||' '||round(fuquanyz,4),'|') from (select * from %1 where"
        u" shijian>='2026-11-13' order by shijian)"_s;
    list(dm);
    market_.closes[dm] = {{{2026, 11, 12}, 10}, {{2026, 11, 13}, 10},  {{2026, 11, 16}, 10},
                          {{2026, 11, 17}, 11}, {{2026, 11, 18}, 6},   {{2026, 11, 19}, 6.9},
                          {{2026, 11, 20}, 8},  {{2026, 11, 23}, 8.9}, {{2026, 11, 24}, 9}};
    market_.factors[dm] = {{{2026, 11, 18}, 2}, {{2026, 11, 24}, 4}};
    for (const auto& it : cases) {
        QFile::remove(store_.stores.firstHistory.path);
        QFile::remove(store_.stores.secondHistory.path);
        addToHistory({store_.stores.firstHistory.path, store_.stores.secondHistory.path},
                     {{dm, {2026, 11, 16}, 1, 1, 1, 1000, 1000, 1, 1, it.before},
                      {dm, {2026, 11, 19}, 1, 1, 1, 700, it.told, 1, 1, it.behind},
                      {dm, {2026, 11, 23}, 1, 1, 1, 900, 700, 1, 1, it.behind}},
                     {});
        fill();
        for (const QString& table : {dm, u"geguhq"_s}) {
            EXPECT_EQ(first(filled.arg(table)), QStringList{it.filled}) << it.what;
        }
        EXPECT_EQ(second(filled.arg(dm)), QStringList{it.filled}) << it.what;
    }
}

// What has been asked for counts as long as its days are there.
TEST_F(HistoryFillTest, DaysThatHaveGoneAreAskedForAgain) {
    const QString dm = u"SH600000"_s;
    // The statements are of both files.
    const std::tuple<QString, QStringList, QStringList> cases[] = {
        {u"nothing"_s, {}, {}},
        {u"all days of the code"_s, {u"delete from SH600000"_s}, {dm}},
        {u"its table"_s, {u"drop table SH600000"_s}, {dm}},
        {u"one day"_s, {u"delete from SH600000 where shijian='2026-11-18'"_s}, {dm}},
        {u"a day of the index"_s,
         {u"delete from SH000001 where shijian='2026-11-18'"_s},
         {leadingIndex}},
        {u"a day to come stands there"_s,
         {u"delete from SH600000 where shijian>='2026-11-23'"_s,
          u"insert into SH600000(shijian,sp,qiansp) values('2062-11-23',1000,1000)"_s,
          u"insert into SH000001(shijian,sp,qiansp) values('2062-11-23',1000,1000)"_s},
         {dm}},
        {u"all, in a file of before"_s,
         {u"delete from SH600000"_s, u"alter table lishifanwei rename to former"_s,
          u"create table lishifanwei (dm text primary key,cong text,dao text)"_s,
          u"insert into lishifanwei select dm,cong,dao from former"_s, u"drop table former"_s},
         {dm}},
    };
    list(dm);
    list(u"SH600001"_s);
    market_.closes[u"SH600001"_s].remove({2026, 11, 18});  // halted
    fill();
    const QStringList whole = days(dm, u"2026-11-02"_s);
    for (const auto& [what, statements, codes] : cases) {
        for (const StoreFile& file : {store_.stores.firstHistory, store_.stores.secondHistory}) {
            Connection store(file.path, {});
            for (const QString& statement : statements) {
                store.execute(statement);
            }
        }
        fill();
        QStringList asked = market_.asked.filter(u"history"_s);
        EXPECT_EQ(asked.replaceInStrings(u"history "_s, QString()), codes) << what.toStdString();
        EXPECT_EQ(days(dm, u"2026-11-02"_s).first(whole.size()), whole) << what.toStdString();
        EXPECT_EQ(fill().newestDay, today_);
        EXPECT_EQ(market_.asked, QStringList{u"quotes SH000001,SZ399001"_s})
            << "and no more: " << what.toStdString();
    }
}

TEST_F(HistoryFillTest, TheSecondFileCatchesUpAfterAKillBetweenTheTwo) {
    list(u"SH600000"_s);
    setDay({2026, 11, 20});
    fill();
    const QString& path = store_.stores.secondHistory.path;
    EXPECT_TRUE(QFile::copy(path, path + u".then"_s));
    setDay(today_);
    fill();
    for (const bool isOlder : {true, false}) {
        EXPECT_TRUE(QFile::remove(path));
        EXPECT_TRUE(!isOlder || QFile::copy(path + u".then"_s, path));
        fill();
        EXPECT_EQ(market_.asked, QStringList{u"quotes SH000001,SZ399001"_s}) << isOlder;
        EXPECT_EQ(days(u"SH600000"_s, u"2026-11-23"_s).size(), 2) << isOlder;
        EXPECT_EQ(second(u"select * from lishifanwei order by dm"_s),
                  first(u"select * from lishifanwei order by dm"_s));
        EXPECT_EQ(second(u"select count(*) from nishihq2"_s), QStringList{u"0"_s});
    }
}

TEST_F(HistoryFillTest, FailuresInARowEndIt) {
    using Outcome = HttpReply::Outcome;
    const struct {
        Outcome outcome;
        int rests;
        QString words;
    } cases[] = {{Outcome::silent, 0, u"没有应答"_s}, {Outcome::limited, 3, u"要得太勤"_s}};
    listMany(12);
    services_.history[0].ahead = 3;
    for (const auto& it : cases) {
        waits_.clear();
        market_.outcome = [&](const QString& dm) {
            return dm.startsWith(u"SH6001"_s) && dm != u"SH600100"_s ? it.outcome
                                                                     : Outcome::answered;
        };
        const FillTally tally = fill();
        EXPECT_TRUE(holds(tally.ending, u"连续 10 次"_s));
        EXPECT_TRUE(holds(tally.words(), it.words));
        EXPECT_EQ(waits_.size(), it.rests);
        EXPECT_EQ(tally.lacking.size(), 10);
        EXPECT_EQ(first(u"select distinct dm from geguhq"_s).size(), 1) << "what came before stays";
    }
    market_.outcome = [this](const QString& dm) {
        return dm.startsWith(u"SH6001"_s) && waits_.isEmpty() ? Outcome::limited
                                                              : Outcome::answered;
    };
    waits_.clear();
    EXPECT_EQ(fill().codes, 11) << "after a rest all are asked for again";
    market_.outcome = nullptr;
    market_.closes[leadingIndex].clear();
    QFile::remove(store_.stores.firstHistory.path);
    EXPECT_TRUE(fill().ending.contains(u"上证指数"_s));
    EXPECT_FALSE(QFile::exists(store_.stores.firstHistory.path));
}

TEST_F(HistoryFillTest, ACodeWithoutItsFactorsIsLeftForAnotherTime) {
    list(u"SH600000"_s);
    market_.outcome = [this](const QString& dm) {
        return dm == u"SH600000"_s && market_.asked.last().startsWith(u"factors"_s)
                   ? HttpReply::Outcome::silent
                   : HttpReply::Outcome::answered;
    };
    EXPECT_EQ(fill().lacking, QStringList{u"SH600000"_s});
    services_.history[0].kind = u"tencent"_s;
    EXPECT_TRUE(fill().ending.contains(u"配套"_s));
    const QList<Service> history = std::exchange(services_.history, {});
    const QString off = fill().words();
    EXPECT_TRUE(off.contains(u"历史行情的网站都停用了"_s) && !off.contains(u"网络"_s));
    services_.history = history;
    services_.factors.clear();
    services_.history[0].kind = u"sina"_s;
    EXPECT_EQ(fill().codes, 1) << "none are named: prices as they are";
    EXPECT_EQ(days(u"SH600000"_s, u"2026-11-24"_s), QStringList{u"24 1000 1000 1.0"_s});
}

// A dividend on the 18th, and one in a hole; one whose former close an exchange told.
TEST_F(HistoryFillTest, StoredDaysWithoutFactorsGetThem) {
    const QString whole = u"SH600000"_s, hole = u"SH600001"_s, own = u"SH600002"_s;
    const QString told = u"SH600003"_s;
    QList<DayRow> there;
    for (const QString& dm : {whole, hole, own}) {
        list(dm);
        market_.factors[dm] = {{{2026, 11, 18}, 2}, {{2026, 11, 20}, 2.5}};
        for (const QDate& day : days_) {
            const bool isLater = day >= QDate(2026, 11, 18);
            const int close = isLater ? 500 : 1000, former = day > QDate(2026, 11, 18) ? 500 : 1000;
            market_.closes[dm][day] = isLater ? 5 : 10;
            if (dm != hole || day != QDate(2026, 11, 20)) {
                const double factor = dm == own && isLater ? 1.9 : 1.0;
                there << DayRow{dm, day, 1, 1, 1, close, former, 1, 1, factor};
            }
        }
    }
    list(told);
    market_.factors[told] = {{{2026, 11, 18}, 2}};
    for (const QDate& day : days_) {
        there << DayRow{told, day, 1, 1, 1, 1000, day == QDate(2026, 11, 18) ? 505 : 1000, 1, 1, 1};
    }
    const HistoryFiles files = {store_.stores.firstHistory.path, store_.stores.secondHistory.path};
    addToHistory(files, there, {});
    services_.factors.clear();
    fill();
    const QStringList before = days(whole, u"2026-11-17"_s);
    services_.factors = ScriptedHistory::services().factors;
    fill(true);
    EXPECT_EQ(days(whole, u"2026-11-17"_s), before) << "a daily update asks for the new days alone";
    const QString& path = store_.stores.secondHistory.path;
    EXPECT_TRUE(QFile::copy(path, path + u".then"_s));
    const FillTally tally = fill();
    EXPECT_EQ(market_.asked.filter(u"factors"_s),
              QStringList({u"factors SH600000"_s, u"factors SH600001"_s, u"factors SH600003"_s}));
    EXPECT_EQ(tally.refactored, 3);
    EXPECT_TRUE(tally.words().contains(u"3 只原来的日线没有复权因子"_s));
    const QStringList joined = {u"17 1000 1000 1.0"_s, u"18 500 500 2.0"_s, u"19 500 500 2.0"_s,
                                u"20 500 400 2.5"_s,   u"23 500 500 2.5"_s, u"24 500 500 2.5"_s};
    EXPECT_EQ(days(whole, u"2026-11-17"_s), joined);
    EXPECT_EQ(days(hole, u"2026-11-17"_s), joined);
    EXPECT_EQ(first(u"select dm,count(*) from geguhq where fuquanyz>1 group by dm"_s),
              QStringList({u"SH600000|5"_s, u"SH600001|5"_s, u"SH600002|5"_s, u"SH600003|5"_s}));
    EXPECT_EQ(days(own, u"2026-11-24"_s), QStringList{u"24 500 500 1.9"_s});
    EXPECT_EQ(days(told, u"2026-11-18"_s).first(2),
              QStringList({u"18 1000 505 2.0"_s, u"19 1000 1000 2.0"_s}));
    EXPECT_EQ(fill().refactored, 0);
    EXPECT_EQ(market_.asked, QStringList{u"quotes SH000001,SZ399001"_s}) << "once and for all";
    EXPECT_TRUE(QFile::remove(path) && QFile::rename(path + u".then"_s, path));
    fill();
    EXPECT_EQ(days(whole, u"2026-11-17"_s), joined) << "after a kill between the two files";
}

// Codes that have left the market are unknown; not those that have a quote.
TEST_F(HistoryFillTest, AServiceThatKnowsNoCodeThatIsTradedEndsIt) {
    const QStringList codes = listMany(60);
    for (const QString& dm : codes) {
        market_.closes.remove(dm);
    }
    EXPECT_EQ(fill().unknown, 60);
    for (const QString& dm : codes) {
        market_.quotes[dm] = {10, 11};
    }
    const FillTally tally = fill();
    EXPECT_TRUE(holds(tally.ending, u"其中 50 只正在交易"_s));
    EXPECT_EQ(tally.unknown, 50);
}

// The codes that reach to the day before get the close from the quotes, the others are asked for.
TEST_F(HistoryFillTest, TheDayAfterTheCloseTakesAFewRequests) {
    const QString plain = u"SH600000"_s, dividend = u"SH600001"_s;
    const QString gap = u"SH600002"_s, halted = u"SH600003"_s;
    for (const QString& dm : {plain, dividend, gap, halted}) {
        list(dm);
        market_.quotes[dm] = {10, 11};
        market_.closes[dm][today_] = 11;
    }
    market_.closes[halted].remove(today_);
    market_.quotes[halted] = {10, 0};
    market_.quotes[dividend] = {8, 8.8};
    market_.closes[dividend][today_] = 8.8;
    setDay({2026, 11, 20});
    fill();
    store_.addCode(u"SH600009"_s, u"x"_s, 0, 0);
    market_.closes[u"SH600009"_s] = market_.closes[plain];
    setDay({2026, 11, 23});
    market_.outcome = [&](const QString& dm) {
        return dm == gap ? HttpReply::Outcome::silent : HttpReply::Outcome::answered;
    };
    market_.quoteMoment = u"2026-11-23,14:59:57"_s;  // not the close yet
    fill(true);
    EXPECT_EQ(days(gap, u"2026-11-23"_s), QStringList());

    market_.outcome = nullptr;
    market_.quoteMoment = u"2026-11-24,15:00:03"_s;
    market_.factors[dividend][today_] = 1.25;
    setDay(today_);
    fill(true);
    const QString quoted = u"quotes SH600000,SH600001,SH600003"_s;
    EXPECT_EQ(market_.asked,
              QStringList({u"history SH000001"_s, u"quotes SH000001,SZ399001"_s, quoted,
                           u"history SH600001"_s, u"factors SH600001"_s, u"history SH600002"_s,
                           u"factors SH600002"_s, u"history SH600003"_s, u"factors SH600003"_s}));
    EXPECT_EQ(days(plain, u"2026-11-24"_s), QStringList{u"24 1100 1000 1.0"_s});
    EXPECT_EQ(first(u"select chengjiaol,chengjiaoe from SH600000 where shijian='2026-11-24'"_s),
              QStringList{u"700|8000"_s});
    EXPECT_EQ(days(dividend, u"2026-11-24"_s), QStringList{u"24 880 800 1.25"_s});
    EXPECT_EQ(days(gap, u"2026-11-23"_s),
              QStringList({u"23 1000 1000 1.0"_s, u"24 1100 1000 1.0"_s}));
    EXPECT_EQ(days(halted, u"2026-11-23"_s).size(), 1);
}

}  // namespace guanchao
