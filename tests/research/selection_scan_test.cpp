#include "research/selection_scan.h"

#include <optional>

#include "tests/research/scan_judge.h"
#include "tests/support/random_history.h"
#include "tests/support/store_test.h"
#include "tests/support/test_history.h"

namespace guanchao {

class SelectionScanTest : public StoreTest {
protected:
    using Scan = QCoro::Task<> (SelectionScan::*)(std::stop_token);

    void write(const MarketHistory& history, bool indexed = true) {
        writeHistory(history, store_.stores.firstHistory, store_.stores.secondHistory, indexed);
    }
    // A theme with as many stocks at their limit on each of the days; their codes begin with the
    // letter.
    static void addTheme(MarketHistory& history, const QString& name, QChar letter, int count,
                         int atLimit, const QStringList& days = {u"2017-04-10"_s}) {
        for (int at = 0; at < count; ++at) {
            const QString dm = letter + QString::number(600000 + at);
            const int sp = at < atLimit ? 1100 : 1000;
            history.members << qMakePair(name, dm);
            for (const QString& day : days) {
                history.stocks[dm] << HistoryRow{.day = day, .zg = sp, .sp = sp};
            }
        }
    }
    // Each stock has traded on ten days before, and trades on the day behind.
    static void tradeAround(MarketHistory& history, const QString& dayBehind) {
        for (const auto& [theme, dm] : history.members) {
            for (const QString& former : tradingDays(10)) {
                history.stocks[dm].prepend({.day = former});
            }
            history.stocks[dm] << HistoryRow{.day = dayBehind};
        }
    }
    // A stock without a table needs a lock on the second history for its own: what holds that one
    // holds the scan in the middle of its first day.
    void endHeld(Scan scan, std::stop_token stop, const std::function<void()>& meanwhile) {
        store_.stores.secondHistory.open().execute(u"drop table A600000"_s);
        std::optional<Connection> other(held(store_.stores.secondHistory, u"immediate"_s));
        const QCoro::Task<> task = (scan_.*scan)(stop);
        until([this] { return seen_.step == u"选中题材:题"_s; });
        EXPECT_EQ(seen_.caption + seen_.subject, u"计算到时间:2017-04-10题"_s);
        meanwhile();
        other.reset();
        endOf(task);
    }
    QStringList chosen() { return store_.rows(u"select ticai from xuanticai order by rowid"_s); }

    const Scan choose = &SelectionScan::chooseThemes;
    const Scan add = &SelectionScan::addStocks;
    const Scan fallen = &SelectionScan::addFallenStocks;
    ResearchProgress seen_;
    std::function<void()> onBegin_;
    ResearchRun run_{[this](const ResearchProgress& it) {
        seen_ = it;
        if (const auto handler = std::exchange(onBegin_, nullptr)) {
            handler();
        }
    }};
    SelectionScan scan_{store_.stores, globals_, dialogs_, run_, std::make_shared<HistoryShelf>()};
};

TEST_F(SelectionScanTest, AThemeDayCountsTheStocksAtTheirLimit) {
    const QString day = u"2017-04-10"_s;
    MarketHistory history;
    history.stocks[u"SH000001"_s] = {
        {.day = u"2017-04-06"_s}, {.day = day, .sp = 1005}, {.day = u"2017-04-11"_s}};
    const QList<HistoryRow> rows = {
        {.day = day, .zg = 1105, .sp = 1105}, {.day = day, .zg = 1100, .zd = 1100, .sp = 1100},
        {.day = day, .zg = 1096, .sp = 1096}, {.day = day, .zg = 1100, .sp = 1100},
        {.day = day, .zg = 1101, .sp = 1100},  // fell back from its high
        {.day = day, .zg = 1095, .sp = 1095},  // just not above 9.5 %
    };
    for (const HistoryRow& row : rows) {
        const QString dm = u"SH60000%1"_s.arg(history.members.size());
        history.members << qMakePair(u"题"_s, dm);
        history.stocks[dm] = {row, row};
        history.stocks[dm].first().day = u"2017-04-06"_s;  // the last day that the scan leaves out
    }
    history.members << qMakePair(u"题"_s, u"SH600009"_s);  // has not traded
    QList<HistoryRow>& longest = history.stocks[u"SH600000"_s];
    for (const QString& former : tradingDays(10)) {
        longest.prepend({.day = former});
    }
    longest << HistoryRow{.day = u"2017-04-12"_s};
    for (const bool indexed : {true, false}) {
        write(history, indexed);
        const QByteArray first = contentOf(store_.stores.firstHistory.path);
        store_.run({u"delete from xuanticai"_s, u"delete from xuanticaigu"_s});
        endOf(scan_.chooseThemes({}));
        EXPECT_EQ(store_.rows(u"select * from xuanticai"_s),
                  QStringList(u"2017-04-10 00:00:00|题|9.93|4|1|6|0.5|10.5"_s));
        EXPECT_EQ(store_.rows(u"select riqi,dm,sp,zg from xuanticaigu"_s),
                  QStringList(u"2017-04-10 00:00:00|SH600000|1105|null"_s));
        EXPECT_TRUE(contentOf(store_.stores.firstHistory.path) == first) << "read only";
    }
}

TEST_F(SelectionScanTest, AFallToExactlyTheBarCountsAndMovesTheAnchor) {
    const QStringList days = tradingDays(15);
    MarketHistory history;
    for (const int third : {9300, 9301}) {
        const QString dm = u"SZ00%1"_s.arg(third);
        history.members << qMakePair(u"题"_s, dm) << qMakePair(u"题"_s, dm + u"short"_s);
        for (int at = 0; at < 15; ++at) {
            history.stocks[dm] << HistoryRow{.day = days[at], .sp = at == 13 ? third : 10000};
        }
        history.stocks[dm + u"short"_s] = history.stocks[dm].first(13);
    }
    write(history);
    store_.run({u"insert into xuanticai(riqi,ticai) values('%1','题')"_s.arg(days[11])});
    endOf(scan_.addFallenStocks({}));
    EXPECT_EQ(store_.rows(u"select riqi,dm,fuquansp,qian1sp,hou1sp from xuanticaigu"_s),
              QStringList(days[11] + u" 00:00:00|SZ009300|9300|10000|10000"_s));
}

TEST_F(SelectionScanTest, AStopEndsTheReadingOfTheHistory) {
    MarketHistory history;
    history.stocks[u"SH000001"_s] = {{.day = u"2017-04-10"_s}};
    addTheme(history, u"题"_s, u'A', 3, 3);
    write(history);
    onBegin_ = [this] { run_.stop(); };
    endOf(scan_.chooseThemes({}));
    EXPECT_EQ(seen_.total, 3) << "stocks: no day has begun";
}

// Over histories as no program of ours would make them.
TEST_F(SelectionScanTest, TheColumnsComeToWhatThePlainRuleComesTo) {
    store_.addCode(u"SZ000001"_s, u"名"_s, 0, 0);
    const auto rows = [this](const QString& table) {
        return store_.rows(u"select * from "_s + table + u" order by rowid"_s);
    };
    qsizetype themes = 0, fallenStocks = 0;
    int passedOver = 0;
    for (unsigned seed = 0; seed < 8; ++seed) {
        SCOPED_TRACE(seed);
        writeRandomHistory(seed, store_.stores.firstHistory, store_.stores.secondHistory);
        for (const Scan scan : {choose, add, fallen}) {
            const auto clear = [&] {
                store_.run({u"delete from xuanticaigu"_s});
                if (scan == choose) {
                    store_.run({u"delete from xuanticai"_s});
                }
            };
            clear();
            ScanJudge judge(store_.stores);
            scan == choose ? judge.chooseThemes() : judge.addStocks(scan == fallen);
            const QStringList wanted = rows(u"xuanticai"_s) + rows(u"xuanticaigu"_s);
            clear();
            endOf((scan_.*scan)({}));
            EXPECT_EQ(rows(u"xuanticai"_s) + rows(u"xuanticaigu"_s), wanted);
            EXPECT_TRUE(judge.passedOver() == 0 ||
                        seen_.step.contains(u"略过 %1 行"_s.arg(judge.passedOver())))
                << seen_.step.toStdString() << judge.passedOver();
            passedOver += judge.passedOver();
        }
        themes += chosen().size();
        fallenStocks += store_.rows(u"select dm from xuanticaigu"_s).size();
    }
    EXPECT_GT(themes, 100);
    EXPECT_GT(fallenStocks, 50);
    EXPECT_GT(passedOver, 100);
}

TEST_F(SelectionScanTest, AnEarlyEndKeepsTheDaysThatAreComplete) {
    const QStringList days = {u"2017-04-10"_s, u"2017-04-11"_s, u"2017-04-12"_s};
    MarketHistory history;
    addTheme(history, u"题"_s, u'A', 3, 3, days);
    addTheme(history, u"后"_s, u'B', 3, 3, {days[2]});
    for (const QString& day : days) {
        history.stocks[u"SH000001"_s] << HistoryRow{.day = day};
    }
    const auto lose = [this] {
        for (const QString& table : {u"B600001"_s, u"nishihq2"_s}) {
            store_.stores.secondHistory.open().execute(u"drop table "_s + table);
        }
    };
    const auto refuse = [this] {
        store_.run(
            {u"create trigger refuse before insert on xuanticai when new.riqi>'2017-04-12'"
             u" begin select raise(abort,'no'); end"_s});
    };
    std::stop_source window;
    const auto writeAtOnce = [this] {
        const Connection::BusyTimeout none(std::chrono::milliseconds(0));
        store_.run({u"update tempcanshu set id=1"_s});
    };
    const QString scan = u"选历年主题"_s;
    // What comes before the run, what in its middle, the days that stay, and what failed.
    const std::tuple<const char*, std::function<void()>, std::function<void()>, qsizetype, QString>
        cases[] = {
            {"the user stops", {}, [this] { run_.stop(); }, 1, {}},
            {"another writes", {}, writeAtOnce, 4, {}},
            {"a table is lost", lose, {}, 2, scan},
            {"the store refuses a row", refuse, {}, 2, scan},
            {"the window closes", {}, [&] { window.request_stop(); }, 0, {}},
        };
    for (const auto& [name, before, meanwhile, complete, failing] : cases) {
        SCOPED_TRACE(name);
        write(history);
        store_.run({u"delete from xuanticai"_s, u"drop trigger if exists refuse"_s});
        QString failed;
        try {
            if (meanwhile) {
                endHeld(choose, window.get_token(), meanwhile);
            } else {
                before();
                endOf(scan_.chooseThemes({}));
            }
        } catch (const OperationError& failure) {
            failed = failure.activity();
            EXPECT_TRUE(failure.remains().contains(u"已经写入并保留：此前各日的结果。"_s));
        } catch (const Cancelled&) {
            QThreadPool::globalInstance()->waitForDone();
        }
        EXPECT_EQ(failed, failing);
        EXPECT_EQ(chosen().size(), complete);
        EXPECT_FALSE(seen_.running || run_.running());
    }
}

TEST_F(SelectionScanTest, RowsWithoutANumberAreLeftOutCountedAndNamed) {
    MarketHistory history;
    history.stocks[u"SH000001"_s] = {{.day = u"2017-04-10"_s}, {.day = u"2017-04-11"_s}};
    addTheme(history, u"题"_s, u'A', 8, 8);
    tradeAround(history, u"2017-04-11"_s);
    write(history);
    const QString onTheDay = u" and date(shijian)='2017-04-10'"_s;
    Connection first = store_.stores.firstHistory.open();
    first.execute(u"update geguhq set sp=null where dm='A600000'"_s + onTheDay);
    first.execute(u"update geguhq set shijian='x' where dm='A600001'"_s + onTheDay);
    first.execute(u"update geguhq set qiansp=0 where dm='A600002'"_s + onTheDay);  // a first day
    store_.stores.secondHistory.open().execute(
        u"update A600001 set chengjiaol=null where date(shijian)='2017-03-06'"_s);
    endOf(scan_.chooseThemes({}));
    for (const QString& words : {u"完成：2 天，1 个题材，7 行股票；"_s,
                                 u"缺少数值，略过 1 行：hangqing2006-2017.db3 A600001 2017-03-06"_s,
                                 u"2017dan.db3 的 geguhq 有 2 行没有价格或日期，没有算进题材："
                                 u"A600000 2017-04-10、A600001 x"_s}) {
        EXPECT_TRUE(holds(seen_.step, words));
    }
}

// All are read before the first day; who needs one that can't be read meets the failure.
TEST_F(SelectionScanTest, AStockThatCannotBeReadFailsWhereItIsChosenOnly) {
    MarketHistory history;
    history.stocks[u"SH000001"_s] = {{.day = u"2017-04-10"_s}, {.day = u"2017-04-11"_s}};
    addTheme(history, u"题"_s, u'A', 3, 3);
    addTheme(history, u"别"_s, u'B', 3, 0);
    tradeAround(history, u"2017-04-11"_s);
    write(history);
    const auto spoil = [this](const QString& dm) {
        Connection second = store_.stores.secondHistory.open();
        second.execute(u"drop table "_s + dm);
        second.execute(u"create table "_s + dm + u"(x)"_s);
    };
    spoil(u"B600001"_s);
    endOf(scan_.chooseThemes({}));
    EXPECT_EQ(store_.rows(u"select dm from xuanticaigu"_s),
              QStringList({u"A600000"_s, u"A600001"_s, u"A600002"_s}));
    spoil(u"A600002"_s);
    EXPECT_THROW(endOf(scan_.chooseThemes({})), StoreError);
}

// Former rows: of a day that is scanned, of one that no history has, and of a theme of the second
// day that is not chosen any more.
TEST_F(SelectionScanTest, TheUserSaysWhatBecomesOfFormerRows) {
    const QStringList days = {u"2017-04-10"_s, u"2017-04-11"_s};
    MarketHistory history;
    addTheme(history, u"题"_s, u'A', 3, 3, days);
    tradeAround(history, u"2017-04-12"_s);
    for (const QString& day : days) {
        history.stocks[u"SH000001"_s] << HistoryRow{.day = day};
    }
    const QStringList former = {u"2015-01-05|旧"_s, u"2017-04-10|题"_s, u"2017-04-11|旧"_s};
    const QStringList fresh = {u"2017-04-10|题"_s, u"2017-04-11|题"_s};
    // A stop comes on the first day. Themes and stocks afterwards, and how many of these.
    const std::tuple<const char*, Scan, Existing, bool, QStringList, QStringList, int> cases[] = {
        {"choose, add", choose, Existing::add, false, former + fresh, former + fresh, 3 + 6},
        {"choose, replace", choose, Existing::replace, false, fresh, fresh, 6},
        {"choose, leave", choose, Existing::leave, false, former, former, 3},
        {"choose, stop", choose, Existing::replace, true, former, former, 4},
        {"stocks, replace", add, Existing::replace, false, former, {former[1]}, 3},
        {"stocks, add", add, Existing::add, false, former, former, 6},
        {"fallen, replace", fallen, Existing::replace, false, former, {}, 0},
    };
    for (const auto& [name, scan, answer, stops, themes, stocks, count] : cases) {
        SCOPED_TRACE(name);
        write(history);
        for (const QString& table : {u"xuanticai"_s, u"xuanticaigu"_s}) {
            store_.run({u"delete from "_s + table});
            for (const QString& row : former) {
                store_.run({u"insert into "_s + table + u"(riqi,ticai) values('"_s + row.first(10) +
                            u" 00:00:00','"_s + row.last(1) + u"')"_s});
            }
        }
        dialogs_.existing = answer;
        stops ? endHeld(scan, {}, [this] { run_.stop(); }) : endOf((scan_.*scan)({}));
        const auto stored = [this](const QString& table) {
            const QStringList rows = store_.rows(u"select date(riqi),ticai from "_s + table);
            return QSet(rows.begin(), rows.end());
        };
        EXPECT_EQ(stored(u"xuanticai"_s), QSet(themes.begin(), themes.end()));
        EXPECT_EQ(stored(u"xuanticaigu"_s), QSet(stocks.begin(), stocks.end()));
        EXPECT_EQ(store_.rows(u"select 1 from xuanticaigu"_s).size(), count);
        EXPECT_TRUE(dialogs_.shown.first().contains(u"以前选出的股票"_s));
    }
}

TEST_F(SelectionScanTest, NoScanBeginsWhileAnImportWrites) {
    globals_.hqmang = 1;
    for (const Scan scan : {choose, add, fallen}) {
        endOf((scan_.*scan)({}));
    }
    EXPECT_EQ(dialogs_.shown, QStringList(3, u"观潮台|正在写入数据，请稍后再选股。"_s));
}

}  // namespace guanchao
