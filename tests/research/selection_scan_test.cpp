#include "research/selection_scan.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QScopeGuard>
#include <optional>

#include "store/store_error.h"
#include "tests/research/scan_oracle.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/statement_log.h"
#include "tests/support/test_history.h"
#include "tests/support/test_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList sorted(QStringList rows) {
    rows.sort();
    return rows;
}

}  // namespace

class SelectionScanTest : public ::testing::Test {
protected:
    SelectionScanTest() {
        store_.stores.firstHistory = {store_.folder() + u"first.db3"_s, {}};
        store_.stores.secondHistory = {store_.folder() + u"second.db3"_s, {}};
    }

    void write(const MarketHistory& history, bool indexed = true) {
        writeHistory(history, store_.stores.firstHistory, store_.stores.secondHistory, indexed);
    }
    // A theme with as many stocks at their limit on the day; their codes begin with the letter.
    static void addTheme(MarketHistory& history, const QString& name, QChar letter, int count,
                         int atLimit) {
        for (int at = 0; at < count; ++at) {
            const QString dm = letter + QString::number(600000 + at);
            const int sp = at < atLimit ? 1100 : 1000;
            history.members << qMakePair(name, dm);
            history.stocks[dm] = {{.day = u"2017-04-10"_s, .zg = sp, .sp = sp}};
        }
    }
    QStringList storedStocks() { return sorted(store_.rows(u"select * from xuanticaigu"_s)); }
    QStringList chosen() { return store_.rows(u"select date(riqi),ticai from xuanticai"_s); }

    TestStores store_;
    Globals globals_;
    FakeDialogs dialogs_;
    FakePump pump_;
    ResearchProgress seen_;
    std::function<void()> onShow_;
    ResearchRun run_{pump_, [this](const ResearchProgress& it) {
                         seen_ = it;
                         if (const auto handler = onShow_) {
                             handler();
                         }
                     }};
    SelectionScan scan_{store_.stores, globals_, dialogs_, run_};
};

TEST_F(SelectionScanTest, StoresWhatAPlainReadingOfTheHistoryGives) {
    for (const unsigned seed : {1U, 2U}) {
        SCOPED_TRACE(seed);
        const MarketHistory history = randomHistory(seed);
        write(history, seed == 1);
        const QByteArray first = contentOf(store_.stores.firstHistory.path);
        const QByteArray second = contentOf(store_.stores.secondHistory.path);
        store_.run(
            {u"delete from xuanticai"_s, u"delete from xuanticaigu"_s, u"delete from dmb"_s});
        for (const QString& dm : history.stocks.keys()) {
            store_.addCode(dm, u"股"_s + dm, 0, 0);
        }
        ScanOracle oracle(history, store_);

        scan_.chooseThemes();
        oracle.chooseThemes();
        EXPECT_GT(oracle.themes.size(), 3);
        EXPECT_EQ(store_.rows(u"select * from xuanticai"_s), oracle.themes);
        EXPECT_EQ(storedStocks(), sorted(oracle.stocks));
        EXPECT_TRUE(dialogs_.shown.isEmpty());

        // A day before the index's first is taken along, one before the first of all is not.
        oracle.chosen.prepend({u"2017-03-20"_s, u"主题1"_s});
        store_.run({u"insert into xuanticai(riqi,ticai) values('2017-03-20 00:00:00','主题1')"_s,
                    u"insert into xuanticai(riqi,ticai) values('2006-04-06','主题2')"_s});
        scan_.addStocks();
        oracle.addStocks(false);
        EXPECT_EQ(storedStocks(), sorted(oracle.stocks));
        EXPECT_TRUE(dialogs_.shown.isEmpty());

        const qsizetype before = oracle.stocks.size();
        scan_.addFallenStocks();
        oracle.addStocks(true);
        EXPECT_GT(oracle.stocks.size(), before);
        EXPECT_EQ(storedStocks(), sorted(oracle.stocks));
        EXPECT_EQ(std::exchange(dialogs_.shown, {}), QStringList(u"听涛阁|完成!"_s));

        // Indexed or not, the histories are read only.
        EXPECT_TRUE(contentOf(store_.stores.firstHistory.path) == first);
        EXPECT_TRUE(contentOf(store_.stores.secondHistory.path) == second);
    }
}

TEST_F(SelectionScanTest, TheFirstThemeBelowTheBarEndsTheDay) {
    const struct {
        QString eight;  // the name of a theme of 8 stocks, 4 of them at their limit
        QString nine;   // and of one of 9 stocks, which stands level with it in the ranking
        int chosen;
    } cases[] = {{u"甲"_s, QString(), 1},
                 {QString(), u"甲"_s, 0},
                 {u"乙"_s, u"甲"_s, 1},
                 {u"甲"_s, u"乙"_s, 0}};
    for (const auto& it : cases) {
        MarketHistory history;
        history.stocks[u"SH000001"_s] = {{.day = u"2017-04-10"_s}};
        if (!it.eight.isEmpty()) {
            addTheme(history, it.eight, u'E', 8, 4);
        }
        if (!it.nine.isEmpty()) {
            addTheme(history, it.nine, u'N', 9, 4);
        }
        write(history);
        store_.run({u"delete from xuanticai"_s});
        scan_.chooseThemes();
        // 乙 sorts before 甲.
        EXPECT_EQ(chosen().size(), it.chosen) << it.eight.toStdString();
    }
}

TEST_F(SelectionScanTest, AStockWithoutATableGetsTheTemplate) {
    MarketHistory history;
    history.stocks[u"SH000001"_s] = {{.day = u"2017-04-10"_s}};
    addTheme(history, u"题"_s, u'A', 4, 4);
    write(history);
    const StoreFile& second = store_.stores.secondHistory;
    second.open().execute(u"drop table A600001"_s);
    second.open().execute(u"insert into nishihq2(shijian,sp) values('2017-01-01',7)"_s);

    scan_.chooseThemes();
    EXPECT_EQ(TestStores::rows(second, u"select * from A600001"_s),
              TestStores::rows(second, u"select * from nishihq2"_s));
    // The test for a fall comes before a table is made.
    second.open().execute(u"drop table A600001"_s);
    EXPECT_THROW(scan_.addFallenStocks(), StoreError);
    EXPECT_TRUE(dialogs_.shown.isEmpty());
}

TEST_F(SelectionScanTest, AFallToExactlyTheBarCountsAndMovesTheAnchor) {
    const QStringList days = tradingDays(20);
    for (const int third : {9300, 9301}) {
        MarketHistory history;
        history.members << qMakePair(u"题"_s, u"SZ000001"_s) << qMakePair(u"题"_s, u"SZ000002"_s);
        for (int at = 0; at < 15; ++at) {
            history.stocks[u"SZ000001"_s]
                << HistoryRow{.day = days[at], .sp = at == 13 ? third : 10000};
        }
        history.stocks[u"SZ000002"_s] = history.stocks[u"SZ000001"_s].first(13);
        write(history);
        store_.run(
            {u"delete from xuanticai"_s,
             u"insert into xuanticai(riqi,ticai) values('%1 00:00:00','题')"_s.arg(days[11])});
        scan_.addFallenStocks();
    }
    EXPECT_EQ(store_.rows(u"select riqi,dm,fuquansp,qian1sp,hou1sp from xuanticaigu"_s),
              QStringList(days[11] + u" 00:00:00|SZ000001|9300|10000|10000"_s));
}

TEST_F(SelectionScanTest, StatementsGoInTheirOrderToTheLetter) {
    MarketHistory history;
    addTheme(history, u"题"_s, u'A', 3, 3);
    // The second day is a quiet one.
    history.stocks[u"SH000001"_s] = {{.day = u"2017-04-10"_s}, {.day = u"2017-04-11"_s}};
    for (const QString& day : tradingDays(28)) {
        history.stocks[u"A600000"_s].prepend({.day = day});
    }
    for (const QString& day : {u"2017-04-11"_s, u"2017-04-12"_s, u"2017-04-13"_s}) {
        history.stocks[u"A600000"_s] << HistoryRow{.day = day};
    }
    write(history);
    QStringList statements;
    {
        const StatementLog log;
        scan_.chooseThemes();
        scan_.addFallenStocks();
        statements = StatementLog::statements();
    }
    statements.removeIf([](const QString& it) {
        return it.contains(u"pragma"_s) || it.contains(u"A600002"_s) ||
               it.contains(u"from sqlite_master where type"_s) || it.contains(u"count(*) from"_s);
    });
    const auto themesOf = [](const QString& day) -> QString {
        return u"first.db3: select  zhutiname,round(avg(round((cast(sp as Double)/cast(qiansp as"
               u" Double)-1)*100,2)),2) as 涨幅,max(round((cast(sp as Double)/cast(qiansp as"
               u" Double)-1)*100,2)) as touguzhangfu,count(*) as 只数,SUM(iif((cast(sp as"
               u" Double)/cast(qiansp as Double)-1)*100>9.5 and zg=sp,1,0)) as"
               u" zhangtinshu,SUM(iif((cast(sp as Double)/cast(qiansp as Double)-1)*100>9.5 and"
               u" zg=zd,1,0)) as yizishu from dzhzhuti AS dzhzhuti1 INNER JOIN geguhq AS geguhq1"
               u" on dzhzhuti1.dm=geguhq1.dm  where date(shijian)='"_s +
               day + u"'    group by zhutiname order by (zhangtinshu-只数/4-2) desc,zhutiname"_s;
    };
    const QString members =
        u"first.db3: select  zhutiname,dm from dzhzhuti   where zhutiname='题' order by rowid"_s;
    const QString select =
        u"select  date(shijian) as shijian,fuquanyz*cast(sp as Double) as"
        u" fuquansp,fuquanyz*cast(kp as Double) as fuquankp,cast(sp as Double) as"
        u" sp,cast(zg as Double) as zg,cast(zd as Double) as zd,chengjiaol from "_s;
    EXPECT_EQ(
        statements,
        QStringList({
            u"first.db3: select  date(shijian) as shijian,round((cast(sp as"
            u" Double)/cast(qiansp as Double)-1)*100,2) as zhangfu from SH000001   where"
            u" date(shijian)>'2017-04-06' order by date(shijian) asc"_s,
            themesOf(u"2017-04-10"_s),
            members,
            u"second.db3: select sql from sqlite_master where tbl_name='A600000'"_s,
            u"second.db3: "_s + select +
                u"A600000   where date(shijian)<='2017-04-10' order by date(shijian) desc limit 30"_s,
            u"second.db3: "_s + select +
                u"A600000   where  date(shijian)>'2017-04-10' order by date(shijian) asc limit 10"_s,
            u"dzhzhuti.mzdat: select  dm,jc from dmb  where dm='A600000'"_s,
            u"second.db3: select sql from sqlite_master where tbl_name='A600001'"_s,
            u"second.db3: "_s + select +
                u"A600001   where date(shijian)<='2017-04-10' order by date(shijian) desc limit 30"_s,
            u"dzhzhuti.mzdat: begin immediate"_s,
            u"dzhzhuti.mzdat: insert into"
            u" xuanticai(riqi,ticai,ticaizhang,zhangtinshu,yizishu,zonggeshu,dapanzhang"
            u",touguzhangfu) values('2017-04-10 00:00:00','题',10,3,0,3,0,10)"_s,
            u"dzhzhuti.mzdat: insert into"
            u" xuanticaigu(riqi,dm,jc,ticai,fuquansp,sp,qian1sp,qian3sp,qian10sp,qian30sp"
            u",fuquankp,chengjl,chengjl10ri,hou1kp,hou2kp,hou1sp,hou2sp,hou5sp,hou10sp"
            u",hou1liang) values('2017-04-10"
            u" 00:00:00','A600000','','题',1100,1100,1000,1000,1000,1000,1000,100,100,1000"
            u",1000,1000,1000,0,0,100)"_s,
            u"dzhzhuti.mzdat: commit"_s,
            themesOf(u"2017-04-11"_s),
            u"dzhzhuti.mzdat: begin immediate"_s,
            u"dzhzhuti.mzdat: commit"_s,
            u"dzhzhuti.mzdat: select  date(riqi) as shijian,ticai from xuanticai   where"
            u" date(riqi)>'2006-04-06' order by date(riqi) asc,ticai"_s,
            members,
            u"second.db3: "_s + select +
                u"A600000   where  date(shijian)>='2017-04-10' order by date(shijian) asc limit 10"_s,
            u"second.db3: select sql from sqlite_master where tbl_name='A600000'"_s,
            u"second.db3: "_s + select +
                u"A600000   where date(shijian)<='2017-04-12' order by date(shijian) desc limit 30"_s,
            u"second.db3: "_s + select +
                u"A600000   where  date(shijian)>'2017-04-12' order by date(shijian) asc limit 10"_s,
            u"dzhzhuti.mzdat: select  dm,jc from dmb  where dm='A600000'"_s,
            u"second.db3: "_s + select +
                u"A600001   where  date(shijian)>='2017-04-10' order by date(shijian) asc limit 10"_s,
            u"dzhzhuti.mzdat: begin immediate"_s,
            u"dzhzhuti.mzdat: insert into"
            u" xuanticaigu(riqi,dm,jc,ticai,fuquansp,sp,zg,qian1sp,qian3sp,qian10sp,qian30sp"
            u",fuquankp,chengjl,chengjl10ri,hou1kp,hou2kp,hou1sp,hou2sp,hou5sp,hou10sp"
            u",hou1liang) values('2017-04-10"
            u" 00:00:00','A600000','','题',1000,1000,1000,1000,1000,1000,1000,1000,100,100,1000,0"
            u",1000,0,0,0,100)"_s,
            u"dzhzhuti.mzdat: commit"_s,
        }));
}

TEST_F(SelectionScanTest, ACopyOfTheHistoryTellsOfItselfAndEndsEarly) {
    MarketHistory history;
    history.stocks[u"SH000001"_s] = {{.day = u"2017-04-10"_s}};
    history.members.fill(qMakePair(u"题"_s, u"SZ000001"_s), 20000);
    write(history, false);
    const QString words = u"正在整理历史行情…"_s;
    for (const bool closes : {false, true}) {
        int during = 0;
        pump_.onRun = [&] {
            EXPECT_EQ(seen_.label3, words);
            // Events of the copy itself, and not those before it only.
            if (++during == 5) {
                closes ? run_.cancel() : run_.stop();
            }
        };
        scan_.chooseThemes();
        EXPECT_EQ(during, closes ? 5 : 6);
        EXPECT_EQ(seen_.label3 + seen_.caption, QString());
        EXPECT_FALSE(run_.running());
        EXPECT_TRUE(chosen().isEmpty());
    }
}

TEST_F(SelectionScanTest, AnEarlyEndKeepsTheDaysThatAreComplete) {
    Connection::setBusyTimeout(std::chrono::milliseconds(0));
    const auto restore = qScopeGuard([] { Connection::setBusyTimeout(std::chrono::seconds(5)); });
    std::optional<Connection> other;
    std::optional<Transaction> lock;
    // What happens while the stocks of that day are taken.
    const auto onDay = [this](const QString& day, const std::function<void()>& what) {
        return [=, this] {
            if (seen_.label6 == day && seen_.label3 == u"选中题材:题"_s) {
                onShow_ = nullptr;
                what();
            }
        };
    };
    const StoreFile& second = store_.stores.secondHistory;
    const struct {
        const char* name;
        QString theme;
        std::function<void()> onShow;
        qsizetype days;
        QString failed;  // what was being done
        bool writing = false;
    } cases[] = {
        {"the user stops", u"题"_s, onDay(u"2017-04-11"_s, [&] { run_.stop(); }), 2, {}},
        {"the window closes", u"题"_s, onDay(u"2017-04-11"_s, [&] { run_.cancel(); }), 1, {}},
        {"a second start", u"题"_s, onDay(u"2017-04-11"_s, [&] { scan_.addStocks(); }), 1,
         u"根据选中的主题补充股票"_s},
        {"a table is lost", u"题"_s,
         onDay(u"2017-04-12"_s,
               [&] {
                   second.open().execute(u"drop table A600001"_s);
                   second.open().execute(u"drop table nishihq2"_s);
               }),
         2, u"选历年主题"_s},
        {"an import writes", u"题"_s, {}, 0, {}, true},
        {"an apostrophe", u"题'"_s, {}, 0, u"选历年主题"_s},
        {"another writes",
         u"题"_s,
         onDay(u"2017-04-11"_s, [&] { store_.run({u"insert into zixuangu(dm) values('x')"_s}); }),
         3,
         {}},
        {"the store is locked", u"题"_s,
         onDay(u"2017-04-12"_s,
               [&] {
                   other.emplace(store_.stores.main.open());
                   lock.emplace(*other);
               }),
         2, u"选历年主题"_s},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.name);
        globals_.hqmang = it.writing ? 1 : 0;
        MarketHistory history;
        addTheme(history, it.theme, u'A', 3, 3);
        for (const QString& day : {u"2017-04-10"_s, u"2017-04-11"_s, u"2017-04-12"_s}) {
            history.stocks[u"SH000001"_s] << HistoryRow{.day = day};
        }
        for (const auto& [theme, dm] : history.members) {
            HistoryRow row = history.stocks[dm].first();
            for (const QString& day : {u"2017-04-11"_s, u"2017-04-12"_s}) {
                row.day = day;
                history.stocks[dm] << row;
            }
        }
        write(history);
        store_.run({u"delete from xuanticai"_s});
        onShow_ = it.onShow;
        QString failed;
        QString remains;
        try {
            scan_.chooseThemes();
        } catch (const OperationError& failure) {
            failed = failure.activity();
            remains = failure.remains();
        }
        EXPECT_EQ(failed, it.failed);
        EXPECT_EQ(remains.contains(u"已经写入并保留：此前各日的结果。"_s),
                  it.days > 0 && !it.failed.isEmpty());
        EXPECT_EQ(chosen().size(), it.days);
        EXPECT_FALSE(seen_.running);
        EXPECT_FALSE(run_.running());
    }
}

}  // namespace guanchao
