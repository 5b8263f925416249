#include "market/live_quotes.h"

#include <algorithm>

#include "formats/gbk.h"
#include "formats/ini_file.h"
#include "market/f10_page.h"
#include "market/trading_session.h"
#include "tests/support/store_test.h"

namespace guanchao {

// Notes what is shown, in order.
class RecordingScreen : public QuoteScreen {
public:
    void beginStock(const QString&) override {}
    void showFundamentals(const FundamentalTexts& texts) override { shown << texts.mgsy; }
    void showChart(QuoteChart chart, const std::optional<QByteArray>& picture) override {
        shown << u"chart%1"_s.arg(static_cast<int>(chart)) + (picture ? u""_s : u" missing"_s);
    }
    void clearStock() override { shown << u"clear"_s; }
    void clearHomeIndex() override { shown << u"clear home"_s; }
    void clearWorldIndex() override { shown << u"clear world"_s; }
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
    void setLoading(QuotePart part, bool isLoading) override {
        loading.remove(part);
        if (isLoading) {
            loading.insert(part);
        }
    }
    void setPolling(bool on, const QString& words) override {
        polling = on;
        lack = words;
    }

    QStringList shown;
    QSet<QuotePart> loading;
    bool polling = false;
    QString lack;
};

// Every service answers, until a test takes a path away or replaces its reply.
class LiveQuotesTest : public StoreTest {
protected:
    LiveQuotesTest() {
        globals_.yingyongmulu = store_.folder();
        services_.quote = {{u"q"_s, {}}};
        services_.chart.host = u"c"_s;
        services_.newspage.host = u"http://news"_s;
        services_.fundamentals = {services_.newspage};
        services_.history = {{u"h"_s, {}}};
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
        if (path.startsWith(u"/list=int_") || path == u"/list=r_HSI") {
            return gbkFromText(u"var hq_str_x=\"恒生指数,20000,1,0.50\";"_s);
        }
        const QString volume = path.contains(u"399106") ? u"600000000"_s : u"2000000"_s;
        return gbkFromText(u"var hq_str_x=\"浦发银行,10,10,10.5,11,10,0,0,"_s + volume +
                           u",2000000000,"_s + u"100,10,"_s.repeated(10) +
                           u"2026-11-24,10:30:00,00\";\n"_s);
    }
    // Today, which isn't full yet, and the ten days before it.
    static QByteArray history(const QByteArray& volume) {
        QByteArray lines = "Date,Open,High,Low,Close,Volume\n2026-11-24,1,1,1,1,9000000\n";
        for (int day = 14; day <= 23; ++day) {
            lines += "2026-11-" + QByteArray::number(day) + ",1,1,1,1," + volume + '\n';
        }
        return lines;
    }
    void silence(const QString& path) { replies_[path] = std::nullopt; }

    Services services_;
    FakeShell shell_;
    RecordingScreen screen_;
    MeanVolume meanVolume_{http_, services_.history, clock_};
    PolledDay polledDay_;
    QHash<QString, std::optional<QByteArray>> replies_;
    QByteArray history_ = history("6000000");
    LiveQuotes quotes_{globals_,   clock_,   http_,     services_, meanVolume_,
                       polledDay_, dialogs_, failures_, shell_,    screen_};
};

const QString connectionMessage = u"观潮台|请检查网络连接，行情服务器连接不上!"_s;

TEST_F(LiveQuotesTest, TheOpeningTakesTheCurrentStockOrTheLastOne) {
    IniFile ini(store_.folder() + u"read.ini"_s);
    const std::tuple<QString, QString, QString, QString> cases[] = {
        {u"SH600000"_s, u"SZ000001"_s, u"SH600000"_s, u"简称"_s},
        {u"SH000300"_s, u"SZ000001"_s, u"SH000300"_s, u"简称"_s},
        {u"SH000001"_s, u"SZ000001"_s, u"SZ000001"_s, {}},
        {u"SZ399001"_s, u" SZ000001 "_s, u"SZ000001"_s, {}},
        {u"SH000100"_s, u"SZ000001"_s + QChar(0) + u"rest"_s, u"SZ000001"_s, {}},
        {u"600000"_s, u"SZ00001"_s, u"SH600585"_s, {}},
        {{}, {}, u"SH600585"_s, {}},
    };
    for (const auto& [chosen, noted, dm, jc] : cases) {
        ini.setValue(u"read"_s, u"fenshidm"_s, noted);
        globals_.dangqiandm = chosen;
        globals_.dangqianjc = u"简称"_s;
        const LiveQuotes::Opening opening = quotes_.load();
        EXPECT_EQ(opening.dm + opening.jc, dm + jc) << chosen.toStdString();
        EXPECT_TRUE(globals_.dangqiandm.isEmpty() && globals_.dangqianjc.isEmpty());
    }
    EXPECT_TRUE(QFileInfo(store_.folder() + u"down/pic/pic1"_s).isDir());
}

TEST_F(LiveQuotesTest, AQueryGoesThroughItsSteps) {
    quotes_.query(u" sh600000 "_s);
    EXPECT_EQ(http_.addresses,
              QStringList({u"q/list=sh600000"_s, u"http://news/news/stock/600000.shtml"_s,
                           u"c/newchart/min/n/sh600000.gif"_s, u"c/newchart/daily/n/sh600000.gif"_s,
                           u"h/table.csv?s=600000.ss&a=9&b=15&c=2026&d=10&e=23&f=2026&g=d"
                           u"&ignore=.csv"_s}));
    EXPECT_EQ(screen_.shown,
              QStringList({u"clear"_s, u"浦发银行 5% -"_s, u"1（元）"_s, u"浦发银行 5% -"_s,
                           u"chart0"_s, u"chart1"_s, u"浦发银行 5% 0.33"_s}));
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

TEST_F(LiveQuotesTest, OtherCodesAreRefused) {
    quotes_.query(u"SH60000"_s);
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|只能输入沪深个股代码!"_s});
    EXPECT_FALSE(screen_.polling);
    EXPECT_EQ(screen_.shown, QStringList{u"clear"_s}) << "nothing of the former one stays";
    quotes_.start(u"SH000300"_s);
    EXPECT_EQ(dialogs_.shown.size(), 2);
    EXPECT_TRUE(screen_.polling) << "the opening leads to the polls of the index all the same";
    http_.paths.clear();
    for (int poll = 1; poll <= 13; ++poll) {
        quotes_.poll();
    }
    EXPECT_EQ(http_.paths.filter(u"sh000001"_s).size(), http_.paths.size()) << "no stock yet";
    EXPECT_EQ(http_.paths.size(), 9 + 1);
}

TEST_F(LiveQuotesTest, AServiceThatIsDeadIsToldOnceAndEndsThePolls) {
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
    EXPECT_EQ(screen_.lack, u"没有读到行情（应答是空的）"_s);
    EXPECT_EQ(dialogs_.shown.size(), 1) << "a poll shows no box";
    EXPECT_TRUE(screen_.polling) << "the next poll tries again";
    quotes_.query(u"SH600000"_s);
    EXPECT_EQ(dialogs_.shown.size(), 2) << "an empty reply is as good as none";
    EXPECT_FALSE(screen_.polling);
    services_.fundamentals.clear();
    replies_.clear();
    http_.paths.clear();
    quotes_.query(u"SH600000"_s);
    EXPECT_FALSE(http_.paths.contains(u"/news/stock/600000.shtml"_s));
    EXPECT_EQ(dialogs_.shown.size(), 2) << "a service that isn't there is not missed";
}

TEST_F(LiveQuotesTest, RepliesWithoutAStockAndBrokenOnes) {
    replies_[u"/list=sh600000"_s] = "var hq_str_sh600000=\"\";\n";
    quotes_.query(u"SH600000"_s);
    EXPECT_EQ(screen_.shown.value(1), u"没有找到SH600000的数据!"_s);
    EXPECT_TRUE(screen_.polling);
    for (const QString& path : {u"/list=sh600000"_s, u"/list=sh000001"_s, u"/list=r_HSI"_s}) {
        replies_.clear();
        replies_[path] = "x=\"a,b,c,d,e,f,g,h,i,j,k,l,m,n,o,p\";";
        quotes_.start(u"SH600000"_s);
        const bool isStock = path == u"/list=sh600000";
        const QStringList failed = std::exchange(failures_.told, {});
        EXPECT_EQ(failed.size(), 1) << path.toStdString();
        EXPECT_TRUE(failed.value(0).startsWith(isStock ? u"读取行情"_s : u"读取指数"_s));
        EXPECT_EQ(screen_.shown.contains(u"恒生指数 0.5%"_s), path != u"/list=r_HSI")
            << "a broken part doesn't take the others along";
        screen_.shown.clear();
        EXPECT_EQ(screen_.polling, !isStock) << path.toStdString();
        EXPECT_FALSE(screen_.lack.isEmpty());
    }
    EXPECT_TRUE(dialogs_.shown.isEmpty());
}

TEST_F(LiveQuotesTest, ShenzhenShowsTheTurnoverOfTheWholeExchange) {
    history_ = history("600000000");
    const QString composite = u"/list=sz399106"_s;
    quotes_.chooseHomeIndex(1);
    EXPECT_EQ(http_.paths.first(2), QStringList({u"/list=sz399001"_s, composite}));
    EXPECT_TRUE(http_.paths[2].startsWith(u"/table.csv?s=399106.sz&"));
    EXPECT_EQ(screen_.shown,
              QStringList({u"clear home"_s, u"浦发银行 200万手 -"_s, u"浦发银行 600万手 -"_s,
                           u"浦发银行 600万手 1.00"_s, u"chart2"_s}));
    replies_[composite] = "var hq_str_sz399106=\"\";";
    const QStringList itsOwn = {u"浦发银行 200万手 -"_s, u"chart2"_s};
    const auto shownBy = [this](int index) {
        screen_.shown.clear();
        quotes_.chooseHomeIndex(index);
        return screen_.shown;
    };
    EXPECT_EQ(shownBy(1), itsOwn);
    EXPECT_TRUE(screen_.polling && dialogs_.shown.isEmpty());
    silence(composite);
    EXPECT_EQ(shownBy(1), itsOwn) << "the first reply's turnover";
    EXPECT_EQ(dialogs_.shown, QStringList{connectionMessage});
    EXPECT_EQ(screen_.lack, u"没有读到国内指数（没有应答）"_s);
    replies_[composite] = "x=\"x,1,2,3,4,5\";";
    EXPECT_EQ(shownBy(1), itsOwn);
    EXPECT_EQ(failures_.texts.size(), 1);
    EXPECT_EQ(shownBy(2), QStringList{u"clear home"_s} + itsOwn) << "沪深300 has no ratio";
    replies_[u"/list=sh000300"_s] = "\"a,b,c,d\";";
    EXPECT_EQ(shownBy(2).first(), u"没有找到沪深300的数据!"_s);
}

TEST(TradingSession, EachBoundaryToTheSecond) {
    const std::pair<QTime, bool> cases[] = {
        {{0, 0, 0}, false},   {{9, 20, 0}, false},  {{9, 20, 59}, false}, {{9, 21, 0}, true},
        {{11, 34, 59}, true}, {{11, 35, 0}, false}, {{12, 55, 0}, false}, {{12, 55, 59}, false},
        {{12, 56, 0}, true},  {{15, 4, 59}, true},  {{15, 5, 0}, false},  {{23, 59, 59}, false},
    };
    const QDate monday(2026, 11, 23);
    for (const auto& [time, open] : cases) {
        for (int day = 0; day < 7; ++day) {
            EXPECT_EQ(inTradingSession(QDateTime(monday.addDays(day), time)), open && day < 5)
                << day << ' ' << time.toString().toStdString();
        }
    }
}

TEST_F(LiveQuotesTest, PollsFollowTheMarketAndTheCounter) {
    quotes_.start(u"SH600000"_s);
    EXPECT_EQ(screen_.shown.mid(7),
              QStringList({u"浦发银行 200万手 -"_s, u"浦发银行 200万手 33.33"_s, u"chart2"_s,
                           u"恒生指数 0.5%"_s, u"chart3"_s}));
    EXPECT_EQ(globals_.jiaoyishiduan, 1);
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

// The first request of the opening is held, the stock's quote: all else comes beside it.
TEST_F(LiveQuotesTest, AQueryReplacesTheOneUnderWay) {
    const auto gate = std::make_shared<Later<bool>>();
    http_.gate = gate;
    http_.onGet = [this] {
        if (http_.paths.size() > 1) {
            http_.gate = nullptr;
        }
    };
    quotes_.start(u"SH600000"_s);
    EXPECT_EQ(screen_.loading, QSet{QuotePart::stock});
    EXPECT_TRUE(screen_.shown.contains(u"chart1"_s) && screen_.shown.contains(u"恒生指数 0.5%"_s));
    EXPECT_FALSE(screen_.polling) << "until it is there";
    quotes_.chooseWorldIndex(1);
    EXPECT_EQ(screen_.shown.last(), u"chart3"_s);
    EXPECT_EQ(screen_.loading, QSet{QuotePart::stock}) << "it goes on";
    quotes_.query(u"SZ000001"_s);
    EXPECT_TRUE(screen_.loading.isEmpty() && screen_.polling);
    const qsizetype requests = http_.paths.size();
    gate->deliver(true);
    EXPECT_EQ(http_.paths.size(), requests) << "nothing of the first query follows";
    EXPECT_TRUE(dialogs_.shown.isEmpty());
}

TEST_F(LiveQuotesTest, TheStockIsShownAndPolledWhileAllElseHangsAndAStopEndsWhatHangs) {
    QList<std::shared_ptr<Later<bool>>> held;
    http_.onGet = [&] {
        held << std::make_shared<Later<bool>>();
        http_.gate = http_.paths.last() == u"/list=sh600000"_s ? nullptr : held.last();
    };
    quotes_.start(u"SH600000"_s);
    EXPECT_TRUE(screen_.shown.contains(u"浦发银行 5% -"_s) && screen_.polling);
    http_.paths.clear();
    globals_.jiaoyishiduan = 1;
    quotes_.poll();
    EXPECT_EQ(http_.paths, QStringList{u"/list=sh600000"_s});
    quotes_.stop();
    EXPECT_TRUE(screen_.loading.isEmpty());
    EXPECT_TRUE(screen_.polling) << "what was stopped is what hung";
}

TEST_F(LiveQuotesTest, TheMeanIsThatOfTheLastTenDaysInAnyOrder) {
    QList<QByteArray> days;
    for (int day = 10; day <= 23; ++day) {
        days << "2026-11-" + QByteArray::number(day) + ",1,1,1,1," +
                    (day > 13 ? "1000000" : "9000000");
    }
    // One window for all: a mean that can't be had is asked for again.
    const auto ratio = [&](const QList<QByteArray>& lines) {
        history_ = "Date,Open,High,Low,Close,Volume\n" + lines.join('\n');
        quotes_.query(u"SH600000"_s);
        return screen_.shown.last();
    };
    EXPECT_EQ(ratio(days.first(9)), u"浦发银行 5% -"_s) << "too few";
    globals_.jiaoyishiduan = 1;
    http_.paths.clear();
    quotes_.poll();
    EXPECT_EQ(http_.paths, QStringList{u"/list=sh600000"_s}) << "by the next query only";
    globals_.jiaoyishiduan = 0;
    QList<QByteArray> damaged = days;
    damaged[5] = "2026-11-18,1,1,1,1,1e300";
    EXPECT_EQ(ratio(damaged), u"浦发银行 5% -"_s) << "no volume of a market";
    std::ranges::reverse(days);
    EXPECT_EQ(ratio(days), u"浦发银行 5% 2.00"_s);
    EXPECT_TRUE(dialogs_.shown.isEmpty());
}

TEST_F(LiveQuotesTest, TheF10PageTakesItsHostFromTheStore) {
    const std::tuple<QString, QString, QString> cases[] = {
        {u"'https://basic.example/600000/'"_s, u"SZ000001"_s, u"https://basic.example/000001/"_s},
        {u"'http://host:8610/a/b?c=600000'"_s, u" SH600519 "_s, u"http://host:8610/600519/"_s},
        {u"'http://600000.example/x'"_s, u"SZ000001"_s, u"http://000001.example/000001/"_s},
        {u"'http://host'"_s, {}, u"http://host/600000/"_s},
        {u"'ftp://host/600000/'"_s, u"SZ000001"_s, {}},
        {u"null"_s, u"SZ000001"_s, {}},
    };
    for (const auto& [f10url, dm, address] : cases) {
        store_.run({u"update tempcanshu set f10url="_s + f10url});
        globals_.dangqiandm = dm;
        globals_.dangqianjc = u" 平安银行 "_s;
        const std::optional<F10Page> page = takeF10Page(store_.stores, globals_, dialogs_);
        EXPECT_EQ(page ? page->address : QString(), address);
        EXPECT_TRUE(globals_.dangqiandm.isEmpty() && globals_.dangqianjc.isEmpty());
    }
    EXPECT_EQ(dialogs_.shown.size(), 2);
}

}  // namespace guanchao
