#include "market/quote_window.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include "market/f10_page.h"
#include "platform/gbk.h"
#include "platform/ini_file.h"
#include "store/prepared_stores.h"
#include "store/store_error.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// Notes what is shown, in order.
class RecordingScreen : public QuoteScreen {
public:
    void showFundamentals(const FundamentalTexts& texts) override { shown << texts.mgsy; }
    void showChart(QuoteChart chart, const std::optional<QByteArray>& picture) override {
        shown << u"chart%1"_s.arg(static_cast<int>(chart)) + (picture ? u""_s : u" missing"_s);
    }
    void clearStock() override { shown << u"clear"_s; }
    void showStock(const StockPanel& panel) override {
        shown << panel.name + u' ' + panel.gain + u' ' + panel.ratio.value_or(u"-"_s);
    }
    void showNoStock(const QString& words) override { shown << words; }
    void showHomeIndex(const HomeIndexPanel& panel) override {
        shown << panel.name + u' ' + panel.turnover.volume + u' ' + panel.ratio.value_or(u"-"_s);
    }
    void showNoHomeIndex(const QString& words) override { shown << words; }
    void showWorldIndex(const WorldIndexPanel& panel) override {
        shown << panel.name + u' ' + panel.gain;
    }
    void setPolling(bool on) override { polling = on; }

    QStringList shown;
    bool polling = false;
};

// Every service answers, until a test takes a path away or replaces its reply.
class QuoteWindowTest : public ::testing::Test {
protected:
    QuoteWindowTest() {
        globals_.yingyongmulu = store_.folder();
        services_.quote.host = services_.chart.host = services_.newspage.host =
            services_.history.host = u"http://market"_s;
        services_.stockpage.host = u"http://pages"_s;
        http_.answer = [this](const QString& path) { return reply(path); };
    }

    std::optional<QByteArray> reply(const QString& path) const {
        if (replies_.contains(path)) {
            return replies_.value(path);
        }
        if (path.startsWith(u"/newchart/")) {
            return "gif";
        }
        if (path.startsWith(u"/news/")) {
            return "var stockF10ZxzbJson ={\"mqlt\":\"2\",\"mgsy\":\"1\",\"mgjzc\":\"1\"};var "
                   "stockDstx =";
        }
        if (path.startsWith(u"/table.csv")) {
            return history_;
        }
        return gbkFromText(path.startsWith(u"/list=int_") || path == u"/list=r_HSI"
                               ? u"var hq_str_x=\"恒生指数,20000,1,0.50\";"_s
                               : fullReply(u"浦发银行"_s, path.contains(u"399106") ? 6e8 : 2e6));
    }
    static QString fullReply(const QString& name, double volume) {
        return u"var hq_str_x=\""_s + name + u",10,10,10.5,11,10,0,0,"_s +
               QString::number(volume, 'f', 0) + u",2000000000,"_s + u"100,10,"_s.repeated(10) +
               u"2026-11-24,10:30:00,00\";\n"_s;
    }
    void silence(const QString& path) { replies_[path] = std::nullopt; }

    TestStores store_;
    Globals globals_;
    FakeClock clock_;  // a Tuesday at 10:00
    FakeHttp http_;
    Services services_;
    FakeDialogs dialogs_;
    FakeShell shell_;
    RecordingScreen screen_;
    QHash<QString, std::optional<QByteArray>> replies_;
    QByteArray history_ =
        "Date,Open,High,Low,Close,Volume\n2026-11-24,1,1,1,1,9000000\n2026-11-23,1,1,1,1,8000000\n"
        "2026-11-20,1,1,1,1,4000000\n";
    QuoteWindow quotes_{globals_, clock_, http_, services_, dialogs_, shell_, screen_};
};

const QString connectionMessage = u"观潮台|请检查网络连接，行情服务器连接不上!"_s;

TEST_F(QuoteWindowTest, TheOpeningTakesTheCurrentStockOrTheLastOne) {
    IniFile ini(store_.folder() + u"read.ini"_s);
    const struct {
        QString dangqiandm, noted, dm, jc;
    } cases[] = {
        {u"SH600000"_s, u"SZ000001"_s, u"SH600000"_s, u"简称"_s},
        {u"SH000300"_s, u"SZ000001"_s, u"SH000300"_s, u"简称"_s},
        {u"SH000001"_s, u"SZ000001"_s, u"SZ000001"_s, {}},
        {u"SZ399001"_s, u" SZ000001 "_s, u"SZ000001"_s, {}},
        {u"SH000100"_s, u"SZ000001"_s + QChar(0) + u"rest"_s, u"SZ000001"_s, {}},
        {u"600000"_s, u"SZ00001"_s, u"SH600585"_s, {}},
        {{}, {}, u"SH600585"_s, {}},
    };
    for (const auto& it : cases) {
        ini.setValue(u"read"_s, u"fenshidm"_s, it.noted);
        globals_.dangqiandm = it.dangqiandm;
        globals_.dangqianjc = u"简称"_s;
        const QuoteWindow::Opening opening = quotes_.load();
        EXPECT_EQ(opening.dm, it.dm) << it.dangqiandm.toStdString();
        EXPECT_EQ(opening.jc, it.jc);
        EXPECT_TRUE(globals_.dangqiandm.isEmpty() && globals_.dangqianjc.isEmpty());
    }
    EXPECT_TRUE(QFileInfo(store_.folder() + u"down/pic/pic1"_s).isDir());
}

TEST_F(QuoteWindowTest, AQueryGoesThroughItsSteps) {
    quotes_.query(u" sh600000 "_s);
    EXPECT_EQ(http_.paths,
              QStringList({u"/news/stock/600000.shtml"_s, u"/newchart/min/n/sh600000.gif"_s,
                           u"/newchart/daily/n/sh600000.gif"_s,
                           u"/table.csv?s=600000.ss&a=9&b=15&c=2026&d=10&e=23&f=2026&g=d"
                           u"&ignore=.csv"_s,
                           u"/list=sh600000"_s}));
    // The mean is that of the two days before today.
    EXPECT_EQ(screen_.shown, QStringList({u"clear"_s, u"1（元）"_s, u"chart0"_s, u"chart1"_s,
                                          u"浦发银行 5% 0.33"_s}));
    EXPECT_TRUE(screen_.polling);
    EXPECT_EQ(IniFile(store_.folder() + u"read.ini"_s).value(u"read"_s, u"fenshidm"_s),
              u"SH600000"_s);
    http_.paths.clear();
    screen_.shown.clear();
    quotes_.query(u"SH600000"_s);
    EXPECT_EQ(http_.paths.size(), 4) << "the mean is fetched once a day";
    EXPECT_FALSE(screen_.shown.contains(u"clear"_s)) << "the same stock keeps its figures";
    clock_.moment = clock_.moment.addDays(1);
    quotes_.query(u"SH600000"_s);
    EXPECT_EQ(http_.paths.size(), 4 + 5);
}

TEST_F(QuoteWindowTest, OtherCodesAreRefused) {
    for (const QString& typed : {u"SH60000"_s, u"SH6000000"_s, u"SH000001"_s, u""_s}) {
        quotes_.query(typed);
        EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|只能输入沪深个股代码!"_s});
        EXPECT_FALSE(screen_.polling);
        dialogs_.shown.clear();
    }
    EXPECT_TRUE(http_.paths.isEmpty());
}

TEST_F(QuoteWindowTest, AServiceThatIsDeadIsToldOnceAndEndsThePolls) {
    http_.answer = nullptr;
    quotes_.start(u"SH600000"_s);
    EXPECT_EQ(dialogs_.shown, QStringList{connectionMessage});
    EXPECT_FALSE(screen_.polling);
    EXPECT_TRUE(screen_.shown.contains(u"chart0 missing"_s));
    dialogs_.shown.clear();
    http_.answer = [this](const QString& path) { return reply(path); };
    silence(u"/news/stock/600000.shtml"_s);
    quotes_.query(u"SH600000"_s);
    EXPECT_EQ(dialogs_.shown, QStringList{connectionMessage});
    EXPECT_TRUE(screen_.polling) << "quotes come without the fundamentals";
    replies_[u"/list=sh600000"_s] = QByteArray();
    quotes_.poll();
    EXPECT_EQ(dialogs_.shown.size(), 2) << "an empty reply is as good as none";
    EXPECT_FALSE(screen_.polling);
    services_.newspage.host.clear();
    replies_.clear();
    http_.paths.clear();
    quotes_.query(u"SH600000"_s);
    EXPECT_FALSE(http_.paths.contains(u"/news/stock/600000.shtml"_s));
    EXPECT_EQ(dialogs_.shown.size(), 2) << "a service that isn't there is not missed";
}

TEST_F(QuoteWindowTest, RepliesWithoutAStockAndBrokenOnes) {
    replies_[u"/list=sh600000"_s] = "var hq_str_sh600000=\"\";\n";
    quotes_.query(u"SH600000"_s);
    EXPECT_EQ(screen_.shown.last(), u"没有找到SH600000的数据!"_s);
    EXPECT_TRUE(screen_.polling);
    for (const QString& path : {u"/list=sh600000"_s, u"/list=sh000001"_s, u"/list=r_HSI"_s}) {
        replies_.clear();
        replies_[path] = "x=\"a,b,c,d,e,f,g,h,i,j,k,l,m,n,o,p\";";
        try {
            quotes_.start(u"SH600000"_s);
            ADD_FAILURE() << path.toStdString();
        } catch (const OperationError& failure) {
            EXPECT_EQ(failure.activity(), u"读取行情"_s);
        }
        EXPECT_FALSE(screen_.polling);
    }
    EXPECT_TRUE(dialogs_.shown.isEmpty());
}

TEST_F(QuoteWindowTest, TheStartLoadsBothIndexesAndTheFlag) {
    quotes_.start(u"SH600000"_s);
    EXPECT_EQ(screen_.shown.mid(5), QStringList({u"chart2"_s, u"浦发银行 200万手 33.33"_s,
                                                 u"chart3"_s, u"恒生指数 0.5%"_s}));
    EXPECT_EQ(globals_.jiaoyishiduan, 1);
    EXPECT_EQ(globals_.hangqingkaiguo, 1);
    EXPECT_TRUE(screen_.polling);
}

TEST_F(QuoteWindowTest, ShenzhenShowsTheTurnoverOfTheWholeExchange) {
    history_.replace("8000000", "400000000").replace("4000000\n", "800000000\n");
    const QString composite = u"/list=sz399106"_s;
    quotes_.chooseHomeIndex(1);
    EXPECT_EQ(http_.paths.mid(2), QStringList({u"/list=sz399001"_s, composite}));
    EXPECT_TRUE(http_.paths[1].startsWith(u"/table.csv?s=399106.sz&"));
    EXPECT_EQ(screen_.shown.last(), u"浦发银行 600万手 1.00"_s);
    replies_[composite] = "var hq_str_sz399106=\"\";";
    quotes_.chooseHomeIndex(1);
    EXPECT_EQ(screen_.shown.last(), u"浦发银行 200万手 -"_s);
    EXPECT_TRUE(screen_.polling && dialogs_.shown.isEmpty());
    silence(composite);
    quotes_.chooseHomeIndex(1);
    EXPECT_EQ(screen_.shown.last(), u"浦发银行 200万手 -"_s) << "the first reply's turnover";
    EXPECT_EQ(dialogs_.shown, QStringList{connectionMessage});
    EXPECT_FALSE(screen_.polling);
    quotes_.chooseHomeIndex(2);
    EXPECT_EQ(screen_.shown.last(), u"浦发银行 200万手 -"_s) << "沪深300 has no ratio";
    replies_[u"/list=sh000300"_s] = "\"a,b,c,d\";";
    quotes_.chooseHomeIndex(2);
    EXPECT_EQ(screen_.shown.last(), u"没有找到沪深300的数据!"_s);
}

TEST_F(QuoteWindowTest, AnOutsideIndexWithoutDataIsTold) {
    replies_[u"/list=int_dji"_s] = "var hq_str_int_dji=\"\";";
    quotes_.chooseWorldIndex(1);
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|没有找到该股数据!"_s});
    EXPECT_TRUE(screen_.polling) << "the stock is polled on";
}

TEST_F(QuoteWindowTest, PollsFollowTheMarketAndTheCounter) {
    quotes_.start(u"SH600000"_s);
    const QStringList charts = {u"/newchart/min/n/sh600000.gif"_s,
                                u"/newchart/daily/n/sh600000.gif"_s,
                                u"/newchart/small/nsh000001.gif?1236996310078"_s};
    const auto pathsOfPoll = [this] {
        http_.paths.clear();
        quotes_.poll();
        return http_.paths;
    };
    for (int poll = 1; poll <= 3; ++poll) {
        EXPECT_EQ(pathsOfPoll(), QStringList{u"/list=sh600000"_s});
    }
    for (int poll = 4; poll <= 12; ++poll) {
        EXPECT_EQ(pathsOfPoll(), QStringList({u"/list=sh000001"_s, u"/list=sh600000"_s}));
    }
    EXPECT_EQ(pathsOfPoll(), charts + QStringList{u"/list=sh600000"_s});
    clock_.moment.setTime(QTime(15, 5));
    for (int poll = 1; poll <= 12; ++poll) {
        EXPECT_EQ(pathsOfPoll().last(), u"/list=sh600000"_s) << "the flag is from the last charts";
    }
    EXPECT_EQ(pathsOfPoll(), charts);
    EXPECT_EQ(globals_.jiaoyishiduan, 0);
    EXPECT_EQ(pathsOfPoll(), QStringList());
}

TEST_F(QuoteWindowTest, AMeanThatCannotBeHadIsAskedForAgainByTheNextQueryOnly) {
    silence(u"/table.csv?s=600000.ss&a=9&b=15&c=2026&d=10&e=23&f=2026&g=d&ignore=.csv"_s);
    quotes_.query(u"SH600000"_s);
    EXPECT_EQ(screen_.shown.last(), u"浦发银行 5% -"_s);
    globals_.jiaoyishiduan = 1;
    http_.paths.clear();
    quotes_.poll();
    EXPECT_EQ(http_.paths, QStringList{u"/list=sh600000"_s});
    EXPECT_TRUE(dialogs_.shown.isEmpty());
    replies_.clear();
    quotes_.query(u"SH600000"_s);
    EXPECT_EQ(screen_.shown.last(), u"浦发银行 5% 1.33"_s);
}

TEST_F(QuoteWindowTest, TheMeanIsThatOfTheLastTenDays) {
    history_ = "Date,Open,High,Low,Close,Volume\n";
    for (int day = 23; day >= 10; --day) {
        history_ += "2026-11-" + QByteArray::number(day) + ",1,1,1,1," +
                    (day > 13 ? "1000000" : "9000000") + '\n';
    }
    quotes_.query(u"SH600000"_s);
    EXPECT_EQ(screen_.shown.last(), u"浦发银行 5% 2.00"_s);
}

TEST_F(QuoteWindowTest, ChartsLeadToThePagesOfTheStock) {
    quotes_.openIntradayPage(u" SZ000001 "_s);
    quotes_.openDailyPage(u"SH600000"_s);
    EXPECT_EQ(shell_.opened, QStringList({u"http://pages/realstock/company/sz000001/nc.shtml"_s,
                                          u"http://market/news/stock/sh600000/cpbd.shtml"_s}));
}

TEST_F(QuoteWindowTest, TheF10PageTakesItsHostFromTheStore) {
    const struct {
        QString f10url, dm, address;
    } cases[] = {
        {u"'https://basic.example/600000/'"_s, u"SZ000001"_s, u"https://basic.example/000001/"_s},
        {u"'http://host:8610/a/b?c=600000'"_s, u" SH600519 "_s, u"http://host:8610/600519/"_s},
        {u"'http://600000.example/x'"_s, u"SZ000001"_s, u"http://000001.example/000001/"_s},
        {u"'http://host'"_s, {}, u"http://host/600000/"_s},
        {u"'ftp://host/600000/'"_s, u"SZ000001"_s, {}},
        {u"null"_s, u"SZ000001"_s, {}},
    };
    for (const auto& it : cases) {
        store_.run({u"update tempcanshu set f10url="_s + it.f10url});
        globals_.dangqiandm = it.dm;
        globals_.dangqianjc = u" 平安银行 "_s;
        const std::optional<F10Page> page = takeF10Page(store_.stores, globals_, dialogs_);
        EXPECT_EQ(page ? page->address : QString(), it.address);
        EXPECT_TRUE(globals_.dangqiandm.isEmpty() && globals_.dangqianjc.isEmpty());
    }
    EXPECT_EQ(dialogs_.shown.size(), 2);
    store_.run({u"delete from tempcanshu"_s});
    EXPECT_FALSE(takeF10Page(store_.stores, globals_, dialogs_));
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|没有找到该股F10资料。"_s);
    store_.run({u"insert into tempcanshu(id,f10url) values(1,'http://h/')"_s});
    globals_.dangqiandm = u"SZ000001"_s;
    globals_.dangqianjc = u"平安银行"_s;
    EXPECT_EQ(takeF10Page(store_.stores, globals_, dialogs_)->caption,
              u"平安银行(SZ000001)-----F10资料"_s);
}

TEST_F(QuoteWindowTest, OnlyAPracticeFolderIsLedToThePracticeMarket) {
    const auto f10url = [this] { return store_.rows(u"select f10url from tempcanshu"_s)[0]; };
    const auto lead = [&](const QString& url) {
        store_.run({u"update tempcanshu set f10url='"_s + url + u"'"_s});
        leadPagesTo(store_.folder(), u"http://127.0.0.1:9"_s);
        return f10url();
    };
    EXPECT_EQ(lead(u"https://basic.10jqka.com.cn/600000/"_s), u"http://127.0.0.1:9/600000/"_s);
    EXPECT_EQ(lead(u"http://127.0.0.1:8/600000/"_s), u"http://127.0.0.1:9/600000/"_s);
    EXPECT_EQ(lead(u"http://mine.example/600000/"_s), u"http://mine.example/600000/"_s);

    const auto leadSearch = [&](const QString& url) {
        store_.stores.heat.open().execute(u"update canshu set yinqingurl='"_s + url + u"'"_s);
        leadPagesTo(store_.folder(), u"http://127.0.0.1:9"_s);
        return TestStores::rows(store_.stores.heat, u"select yinqingurl from canshu"_s)[0];
    };
    const QString practice = u"http://127.0.0.1:9/s?wd=tihuandm"_s;
    EXPECT_EQ(leadSearch(u"https://www.baidu.com/s?wd=tihuandm"_s), practice);
    EXPECT_EQ(leadSearch(u"http://127.0.0.1:8/s?wd=tihuandm"_s), practice);
    EXPECT_EQ(leadSearch(u"http://mine.example/?q=tihuandm"_s),
              u"http://mine.example/?q=tihuandm"_s);
}

}  // namespace guanchao
