#include <QProcess>
#include <QTest>
#include <span>

#include "tests/support/files.h"
#include "tests/support/raw_service.h"
#include "tests/support/store_test.h"
#include "tools/practice_market/practice_market.h"

namespace guanchao {

// The collector as a process of its own on the practice market, while this one reads and writes the
// same heat store.
class TwoProcessesTest : public StoreTest {
protected:
    static constexpr int themes = 60;

    TwoProcessesTest() {
        market_.start();
        for (int at = 0; at < themes; ++at) {
            store_.addMember(u"主题%1"_s.arg(at), u"SH600000"_s, 5);
        }
        QFile::copy(QStringLiteral(GUANCHAO_CAIJIQI), store_.folder() + u"caijiqi"_s);
        write(u"services.ini"_s, u"[search]\nhost="_s + market_.host());
        // Without a further try a failure of any kind would skip its item.
        write(u"caijiqi.ini"_s, u"[pace]\npause=0\nrandom=0\nretries=\n"_s);
        runHeat(u"update canshu set yinqingurl='http://nowhere.invalid/s?wd=tihuandm'"_s);
    }

    void write(const QString& name, const QString& text) {
        writeFile(store_.folder() + name, text.toUtf8());
    }

    int number(const QString& query) { return heatRows(query).first().toInt(); }

    void start(QProcess& collector, const QStringList& words = {u"zhuti"_s}) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nowhere"_s);
        collector.setProcessEnvironment(environment);
        collector.start(store_.folder() + u"caijiqi"_s, words);
        ASSERT_TRUE(collector.waitForStarted()) << collector.errorString().toStdString();
    }

    static QString said(QProcess& collector) {
        return QString::fromUtf8(collector.readAllStandardOutput() +
                                 collector.readAllStandardError());
    }

    int rowsOf(const QString& day) {
        return number(u"select count(*) from xinwenshul where date(riqi)='"_s + day + u"'"_s);
    }

    // Adds rows of its own and reads, without a pause, until so many rows are written or the
    // collector has ended. Returns how many rows of the day there are then.
    int meddleUntil(QProcess& collector, const QString& day, int rows) {
        const int before = rowsOf(day);
        int written = 0;
        while (written < rows && !collector.waitForFinished(0)) {
            runHeat(u"insert into shopname(shopname) values('%1')"_s.arg(++added_));
            written = rowsOf(day) - before;
        }
        return written + before;
    }

    // Kills a run somewhere on its way; nothing that was seen written is lost by it.
    void killOnItsWay(const QString& day, int rows) {
        QProcess killed;
        start(killed);
        const int seen = meddleUntil(killed, day, rows);
        killed.kill();
        killed.waitForFinished();
        EXPECT_GE(rowsOf(day), seen);
        EXPECT_EQ(heatRows(u"pragma integrity_check"_s), QStringList{u"ok"_s});
    }

    void runWhole(const QString& day) {
        QProcess whole;
        const int before = rowsOf(day);
        start(whole);
        meddleUntil(whole, day, themes + 1);
        const QString words = said(whole);
        const QString all =
            before == themes ? u"今天的 %1 项都已采集过。\n"_s.arg(themes)
            : before > 0
                ? u"采集完成：共 %1 项，今天已采集过 %2 项，写入 %3 项，跳过 0 项。\n"_s.arg(themes)
                      .arg(before)
                      .arg(themes - before)
                : u"采集完成：共 %1 项，写入 %1 项，跳过 0 项。\n"_s.arg(themes);
        EXPECT_TRUE(words.startsWith(all)) << words.toStdString();
    }

    PracticeMarket market_{PracticeQuotes({{u"SH600000"_s, u"浦发银行"_s}}),
                           [this] { return now_(); }};
    // Later than any clock.
    QDate day_{2099, 11, 2};
    std::function<QDateTime()> now_ = [this] { return QDateTime(day_, QTime(10, 0, 0)); };
    int added_ = 0;
};

TEST_F(TwoProcessesTest, NoRowIsLostWhenACollectorIsKilledAndBegunAgain) {
    const int rounds = 6;
    for (int round = 0; round < rounds; ++round) {
        const QString day = day_.addDays(round).toString(Qt::ISODate);
        runHeat(u"update canshu set today='"_s + day + u" 00:00:00'"_s);
        killOnItsWay(day, 1 + 9 * round);
        runWhole(day);
        // A row that takes the place of a former one is never half done.
        QProcess again;
        start(again, {u"zhuti"_s, u"--anew"_s});
        for (int turn = 0; turn < 20; ++turn) {
            runHeat(u"insert into shopname(shopname) values('%1')"_s.arg(++added_));
            ASSERT_EQ(rowsOf(day), themes);
        }
        again.kill();
        again.waitForFinished();
        ASSERT_EQ(rowsOf(day), themes);
    }
    EXPECT_EQ(number(u"select count(*) from xinwenshul"_s), rounds * themes);
    EXPECT_EQ(number(u"select count(*) from (select distinct date(riqi),zhutiname from"
                     u" xinwenshul where allcishu>0)"_s),
              rounds * themes);
    EXPECT_EQ(number(u"select count(*) from xinwenshul where allzhangfu=1000"_s), themes)
        << "only the first day has no base";
    EXPECT_EQ(number(u"select count(*) from shopname"_s), added_);
    EXPECT_EQ(heatRows(u"pragma integrity_check"_s), QStringList{u"ok"_s});
}

TEST_F(TwoProcessesTest, EachWordDoesItsJobAndABadStartEndsWithItsReason) {
    write(u"services.ini"_s,
          u"[search]\nhost="_s + market_.host() + u"\n[quote]\nhost="_s + market_.host() + u"\n"_s);
    store_.addCode(u"SH600000"_s, u"旧名"_s, 1, 1);
    runHeat(u"update canshu set today='2099-11-02 00:00:00'"_s);
    const struct {
        QString word;
        int exitCode;
        QString said;
    } cases[] = {
        {u"shop"_s, 0, u"没有要采集的项目"_s},
        {u"gongsi"_s, 0, u"采集完成：共 1 项，写入 1 项"_s},
        {u"shop"_s, 0, u"采集完成：共 1 项，写入 1 项"_s},
        {u"gengxindmb"_s, 0, u"采集完成：共 142 项，写入 142 项"_s},
        {u"zhutii"_s, 2, u"用法：caijiqi"_s},
        {u"zhuti"_s, 1, u"搜索网址不是带 tihuandm 的完整网址"_s},
    };
    for (const auto& it : cases) {
        if (it.exitCode == 1) {
            runHeat(u"update canshu set yinqingurl='nowhere'"_s);
        }
        QProcess collector;
        start(collector, {it.word});
        ASSERT_TRUE(collector.waitForFinished()) << it.word.toStdString();
        EXPECT_EQ(collector.exitCode(), it.exitCode);
        const QString words = said(collector);
        EXPECT_TRUE(words.contains(it.said)) << words.toStdString();
        runHeat(u"delete from shopname"_s);
        runHeat(u"insert into shopname(shopname,guanzhudu) values('铜',9)"_s);
    }
    EXPECT_EQ(number(u"select count(*) from gongsixinwen where dm='SH600000'"_s), 1);
    EXPECT_EQ(number(u"select count(*) from shophq where shopname='铜'"_s), 1);
    EXPECT_EQ(store_.rows(u"select jc from dmb"_s), QStringList{u"浦发银行"_s});
}

TEST_F(TwoProcessesTest, HeadlinesAreCountedWhereNoPageIs) {
    now_ = [] { return QDateTime::currentDateTime(); };
    const QString section = u"kind=eastmoney\nhost="_s + market_.host();
    const QString one = u"[search]\n"_s + section;
    const QString second = u"[search]\nhost=http://127.0.0.1:1\n[search.2]\n"_s + section;
    runHeat(u"update canshu set today='2099-11-02 00:00:00',iszidinyinum=1,zidinyinum=30"_s);
    store_.run({u"delete from dzhzhuti where rowid>12"_s});
    for (const QString& services : {one, second}) {
        runHeat(u"delete from xinwenshul"_s);
        write(u"services.ini"_s, services);
        QProcess collector;
        start(collector);
        ASSERT_TRUE(collector.waitForFinished());
        const QString words = said(collector);
        EXPECT_TRUE(words.startsWith(u"采集完成：共 12 项，写入 12 项"_s)) << words.toStdString();
    }
    const QString of = u" from xinwenshul,xinwenshuoming where item=zhutiname"_s;
    EXPECT_EQ(number(u"select count(*)"_s + of), 12);
    EXPECT_EQ(number(u"select count(*)"_s + of +
                     u" and (onecishu>allcishu or onecishu>zdycishu or zdycishu>300)"_s),
              0);
    EXPECT_GT(number(u"select count(*)"_s + of + u" and zdycishu=300 and zdyxian=1"_s), 0);
    EXPECT_GT(number(u"select count(*)"_s + of + u" and zdycishu<300 and zdyxian=0"_s), 0);
    EXPECT_EQ(number(u"select count(*) from xinwenshul where onecishu>"
                     u"(select count(*) from xinwenbiaoti where guanjianci=zhutiname)"
                     u" and onecishu<=100"_s),
              0)
        << "the headlines behind the counts";
    EXPECT_TRUE(market_.requests().filter(u"/s?"_s).isEmpty());
}

TEST_F(TwoProcessesTest, AnAddressThatLimitsIsLeftAloneAndTheNextServiceBringsTheCodes) {
    write(u"caijiqi.ini"_s, u"[pace]\npause=0\nrandom=0\nretries=\n"_s);
    store_.addCode(u"SH600000"_s, u"旧名"_s, 1, 1);
    const QString second = u"[quote.2]\nkind=tencent\nhost="_s + market_.host();
    const struct {
        QString second;
        int exitCode;
        QString said;
        QString jc;
    } cases[] = {{{}, 3, u"要得太勤，被拒绝（456）），请过一两个小时再采集"_s, u"旧名"_s},
                 {second, 0, u"采集完成：共 142 项，写入 142 项"_s, u"浦发银行"_s}};
    for (const auto& it : cases) {
        RawService limiting;
        limiting.answer = [](QTcpSocket& socket) {
            socket.write("HTTP/1.1 456 x\r\nConnection: close\r\nContent-Length: 0\r\n\r\n");
            socket.disconnectFromHost();
        };
        write(u"services.ini"_s, u"[quote]\nhost="_s + limiting.service().host + u'\n' + it.second);
        QProcess collector;
        start(collector, {u"gengxindmb"_s});
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return collector.state() == QProcess::NotRunning; }, 30000));
        EXPECT_EQ(collector.exitCode(), it.exitCode);
        const QString words = said(collector);
        EXPECT_TRUE(words.contains(it.said)) << words.toStdString();
        EXPECT_EQ(limiting.connections, 1);
        EXPECT_EQ(store_.rows(u"select jc from dmb"_s), QStringList{it.jc});
    }
}

TEST_F(TwoProcessesTest, AServiceThatNeverAnswersEndsTheRunWithItsWord) {
    write(u"caijiqi.ini"_s, u"[pace]\npause=0\nrandom=0\nretries=\ngiveup=1\ntimeout=1\n"_s);
    RawService search;
    const auto expectGivenUp = [this](const QString& host, const char* what) {
        write(u"services.ini"_s, u"[search]\nhost="_s + host);
        QProcess collector;
        start(collector);
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return collector.state() == QProcess::NotRunning; }, 30000));
        EXPECT_EQ(collector.exitCode(), 3) << what;
        const QString words = said(collector);
        EXPECT_TRUE(words.startsWith(u"接连没有读到网页，采集提前结束"_s)) << words.toStdString();
        EXPECT_TRUE(words.contains(u"写入 0 项，跳过 1 项，没有采集 59 项"_s))
            << words.toStdString();
    };
    expectGivenUp(u"http://127.0.0.1:1"_s, "dead");
    for (const auto& manners :
         {std::span<const ServiceManner>(hangingUp), std::span<const ServiceManner>(neverDone)}) {
        for (const ServiceManner& it : manners) {
            search.answer = it.answer;
            expectGivenUp(search.service().host, it.what);
        }
    }
}

TEST_F(TwoProcessesTest, ARunThatWritesNothingEndsEarlyAndIsNotComplete) {
    const struct {
        const char* what;
        QString pages;  // of caijiqi.ini
        QString trigger;
        QString said;
        int most;  // pages asked for
    } cases[] = {
        {"no page can be read",
         u"[page]\nresults=no(.)\n"_s,
         {},
         u"接连没有读到网页，采集提前结束（网页里没有要找的内容）"_s,
         20},
        {"a store that refuses each row",
         {},
         u"create trigger no before insert on xinwenshul begin select raise(abort,'no'); end"_s,
         u"采集库接连不能写入，采集提前结束"_s,
         40},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.what);
        const qsizetype before = market_.requests().size();
        write(u"caijiqi.ini"_s, u"[pace]\npause=0\nrandom=0\nretries=9\n"_s + it.pages);
        if (!it.trigger.isEmpty()) {
            runHeat(it.trigger);
        }
        QProcess collector;
        start(collector);
        ASSERT_TRUE(collector.waitForFinished());
        EXPECT_EQ(collector.exitCode(), 3);
        const QString words = said(collector);
        EXPECT_TRUE(words.startsWith(it.said)) << words.toStdString();
        EXPECT_EQ(market_.requests().size() - before, it.most);
    }
}

TEST_F(TwoProcessesTest, ASecondCollectorIsRefusedAndTheMainProgramsEndEndsTheRun) {
    write(u"caijiqi.ini"_s, u"[pace]\npause=0.3\nrandom=0\n"_s);
    runHeat(u"update canshu set today='2099-11-02 00:00:00'"_s);
    QProcess first;
    start(first);
    meddleUntil(first, u"2099-11-02"_s, 1);
    QProcess second;
    start(second);
    ASSERT_TRUE(second.waitForFinished());
    EXPECT_EQ(second.exitCode(), 1);
    EXPECT_TRUE(said(second).contains(u"采集程序已在运行"_s));
    runHeat(u"update canshu set mainisrun=0"_s);
    ASSERT_TRUE(first.waitForFinished());
    EXPECT_TRUE(said(first).startsWith(u"主程序已退出，采集结束："_s));
}

}  // namespace guanchao
