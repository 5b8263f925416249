#include <QProcess>
#include <QTest>

#include "platform/log_file.h"
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

    // Runs one to its end; services of this process answer it meanwhile.
    void expectRun(const QStringList& words, int exitCode, const QString& says) {
        QProcess collector;
        start(collector, words);
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return collector.state() == QProcess::NotRunning; }, 30000));
        EXPECT_EQ(collector.exitCode(), exitCode) << words.join(u' ').toStdString();
        EXPECT_TRUE(holds(said(collector), says));
    }

    int rowsOf(const QString& day) {
        return number(u"select count(*) from xinwenshul where date(riqi)='"_s + day + u"'"_s);
    }

    // Begins a run, adds rows of its own without a pause until it is enough or the run has ended,
    // and kills it.
    void runUntil(const QStringList& words, const std::function<bool()>& enough) {
        QProcess collector;
        start(collector, words);
        while (!enough() && !collector.waitForFinished(0)) {
            runHeat(u"insert into shopname(shopname) values('%1')"_s.arg(++added_));
        }
        collector.kill();
        collector.waitForFinished();
        EXPECT_EQ(heatRows(u"pragma integrity_check"_s), QStringList{u"ok"_s});
    }

    // Later than any clock.
    const QDate day_{2099, 11, 2};
    PracticeMarket market_{PracticeQuotes({{u"SH600000"_s, u"浦发银行"_s}}),
                           [this] { return QDateTime(day_, QTime(10, 0, 0)); }};
    int added_ = 0;
};

TEST_F(TwoProcessesTest, NoRowIsLostWhenACollectorIsKilledAndBegunAgain) {
    const int rounds = 6;
    for (int round = 0; round < rounds; ++round) {
        const QString day = day_.addDays(round).toString(Qt::ISODate);
        runHeat(u"update canshu set today='"_s + day + u" 00:00:00'"_s);
        int seen = 0;
        runUntil({u"zhuti"_s}, [&] { return (seen = rowsOf(day)) > 9 * round; });
        EXPECT_GE(rowsOf(day), seen);
        runUntil({u"zhuti"_s}, [] { return false; });
        // A row that takes the place of a former one is never half done.
        const QString last = u"select max(rowid) from xinwenshul"_s;
        const int before = number(last);
        runUntil({u"zhuti"_s, u"--anew"_s}, [&] {
            EXPECT_EQ(rowsOf(day), themes);
            return number(last) > before + 20;
        });
        ASSERT_EQ(rowsOf(day), themes);
    }
    EXPECT_EQ(number(u"select count(*) from xinwenshul"_s), rounds * themes);
    EXPECT_EQ(number(u"select count(*) from (select distinct date(riqi),zhutiname from"
                     u" xinwenshul where allcishu>0)"_s),
              rounds * themes);
    EXPECT_EQ(number(u"select count(*) from xinwenshul where allzhangfu=1000"_s), themes)
        << "only the first day has no base";
    EXPECT_EQ(number(u"select count(*) from shopname"_s), added_);
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
        expectRun({it.word}, it.exitCode, it.said);
        runHeat(u"delete from shopname"_s);
        runHeat(u"insert into shopname(shopname,guanzhudu) values('铜',9)"_s);
    }
    EXPECT_EQ(number(u"select count(*) from gongsixinwen where dm='SH600000'"_s), 1);
    EXPECT_EQ(number(u"select count(*) from shophq where shopname='铜'"_s), 1);
    EXPECT_EQ(store_.rows(u"select jc from dmb"_s), QStringList{u"浦发银行"_s});
}

TEST_F(TwoProcessesTest, AnAddressThatLimitsIsLeftAloneAndTheNextServiceBringsTheCodes) {
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
            socket.write("HTTP/1.1 456 x\r\nContent-Length: 0\r\n\r\n");
            socket.disconnectFromHost();
        };
        write(u"services.ini"_s, u"[quote]\nhost="_s + limiting.service().host + u'\n' + it.second);
        expectRun({u"gengxindmb"_s}, it.exitCode, it.said);
        EXPECT_EQ(limiting.connections, 1);
        EXPECT_EQ(store_.rows(u"select jc from dmb"_s), QStringList{it.jc});
    }
}

TEST_F(TwoProcessesTest, AServiceThatNeverAnswersEndsTheRunWithItsWord) {
    write(u"caijiqi.ini"_s, u"[pace]\npause=0\nrandom=0\nretries=\ngiveup=1\ntimeout=1\n"_s);
    RawService search;
    for (const ServiceManner& it : {hangingUp, neverDone[0], neverDone[1]}) {
        SCOPED_TRACE(it.what);
        search.answer = it.answer;
        write(u"services.ini"_s, u"[search]\nhost="_s + search.service().host);
        expectRun({u"zhuti"_s}, 3, u"写入 0 项，跳过 1 项，没有采集 59 项"_s);
        const QString log = QString::fromUtf8(contentOf(store_.folder() + logOfCollector));
        EXPECT_EQ(log.count(u"\t网站\t搜索 网页 "_s + search.service().host), 1)
            << log.toStdString();
        QFile::remove(store_.folder() + logOfCollector);
    }
}

TEST_F(TwoProcessesTest, ASecondCollectorIsRefusedAndTheMainProgramsEndEndsTheRun) {
    write(u"caijiqi.ini"_s, u"[pace]\npause=0.3\nrandom=0\n"_s);
    runHeat(u"update canshu set today='2099-11-02 00:00:00'"_s);
    QProcess first;
    start(first);
    ASSERT_TRUE(QTest::qWaitFor([this] { return rowsOf(u"2099-11-02"_s) > 0; }, 30000));
    expectRun({u"zhuti"_s}, 1, u"采集程序已在运行"_s);
    runHeat(u"update canshu set mainisrun=0"_s);
    ASSERT_TRUE(first.waitForFinished());
    EXPECT_TRUE(said(first).startsWith(u"主程序已退出，采集结束："_s));
}

}  // namespace guanchao
