#include <QBuffer>
#include <algorithm>
#include <chrono>

#include "formats/gbk.h"
#include "market/chart_box.h"
#include "market/form11.h"
#include "market/form21.h"
#include "platform/qt_http_client.h"
#include "tests/support/raw_service.h"
#include "tests/support/window_test.h"

namespace guanchao {

class MarketWindowsTest : public WindowTest {
protected:
    MarketWindowsTest() {
        globals_.yingyongmulu = store_.folder();
        services_.chart.host = services_.newspage.host = u"http://m"_s;
        services_.quote = services_.history = {services_.chart};
        services_.fundamentals = {services_.newspage};
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 10, 0);
        store_.addCode(u"SH600519"_s, u"贵州茅台"_s, 10, 0);
        store_.run({u"update tempcanshu set f10url='http://host/600000/'"_s});
        http_.answer = [this](const QString& path) { return reply(path); };
    }

    std::optional<QByteArray> reply(const QString& path) const {
        if (path.startsWith(u"/newchart/min/")) {
            return picture_;
        }
        if (path.startsWith(u"/news/")) {
            return "var stockF10ZxzbJson ={\"mqlt\":\"2.5\",\"mgsy\":\"0.75\",\"jzrq\":"
                   "\"2026-09-30\"};var stockDstx =";
        }
        if (path == u"/list=r_HSI") {
            return gbkFromText(u"\"恒生指数,20000.1,-1.5,-0.50\";"_s);
        }
        if (path.startsWith(u"/list=")) {
            return gbkFromText(u"x=\""_s + names_.value(path, u"上证指数"_s) +
                               u",9.9,10,10.5,11,9.8,0,0,1234500,2000000000,"_s +
                               u"149,10.4,"_s.repeated(5) + u"250,10.6,"_s.repeated(5) +
                               u"2026-11-24,10:30:00,00\";\n"_s);
        }
        return std::nullopt;
    }

    // Painting, and what waits for it.
    static void settle() {
        QApplication::processEvents();
        QApplication::processEvents();
    }
    // Its timers only run when a test fires them.
    void openQuotes() {
        open<Form21>();
        EXPECT_TRUE(http_.paths.isEmpty()) << "nothing is loaded before the window is shown";
        for (QTimer* timer : {find<QTimer>(u"Timer1"_s), find<QTimer>(u"Timer2"_s)}) {
            timer->setInterval(std::chrono::hours(1));
        }
        settle();
    }
    QColor colour(const QString& name) const {
        return find<QLabel>(name)->palette().color(QPalette::WindowText);
    }
    void fire(const QString& timer) const { timeIsUp(find<QTimer>(timer)); }
    const QHash<QString, QString> names_ = {{u"/list=sh600000"_s, u" 浦发银行 "_s},
                                            {u"/list=sh600519"_s, u"贵州茅台"_s}};
    const QByteArray picture_ = [] {
        QImage image(4, 2, QImage::Format_RGB32);
        image.fill(Qt::blue);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        image.save(&buffer, "PNG");
        return bytes;
    }();
};

TEST_F(MarketWindowsTest, Form21ShowsTheStockAndTheIndexes) {
    globals_.dangqiandm = u"SH600000"_s;
    globals_.dangqianjc = u"浦发银行"_s;
    openQuotes();
    EXPECT_EQ(label(u"earnings"_s), u"0.75（元）"_s) << "before the first query";
    fire(u"Timer1"_s);
    EXPECT_EQ(form_->windowTitle(), u"分时行情——浦发银行"_s);
    const QStringList cases = {
        u"Label5=浦发银行 stockOpen=9.9 stockFormerClose=10 stockLatest=10.5 stockHigh=11"_s,
        u"stockLow=9.8 stockGain=5% stockSwing=12.12% stockVolume=12345手 stockAmount=200000万元"_s,
        u"limitUp=11.00 limitDown=9.00 askPrice5=10.6 askLots1=3 bidPrice1=10.4 bidLots5=1"_s,
        u"priceEarnings=10.50 turnoverRate=0.49% priceToBook=10.50 stockRatio=--"_s,
        u"earnings=0.75（元） freeFloat=2.5（亿） netAssets=（元） stockTime=10:30:00"_s,
        u"indexName=上证指数 indexLatest=10.5 indexFormerClose=10 indexOpen=9.9 indexHigh=11"_s,
        u"indexLow=9.8 indexChange=0.5 indexGain=5% indexVolume=123万手 indexAmount=20.00亿元"_s,
        u"indexTime=10:30:00 worldName=恒生指数 worldIndex=20000.1 worldChange=-1.5"_s,
        u"worldGain=-0.5%"_s};
    for (const QString& it : cases.join(u' ').split(u' ')) {
        EXPECT_EQ(label(it.section(u'=', 0, 0)), it.section(u'=', 1)) << it.toStdString();
    }
    EXPECT_EQ(label(u"stockDay"_s), u"2026-11-24"_s);
    EXPECT_EQ(colour(u"stockGain"_s), QColor(255, 0, 255));
    EXPECT_EQ(colour(u"stockLow"_s), QColor::fromRgb(fallColour));
    const QImage chart = find<ChartBox>(u"Picture1"_s)->grab().toImage();
    EXPECT_EQ(chart.pixelColor(chart.width() / 2, chart.height() / 2), QColor(Qt::blue));
    EXPECT_TRUE(dialogs_.shown.isEmpty());
}

TEST_F(MarketWindowsTest, NothingOfAFormerStockOrIndexStays) {
    openQuotes();
    const QColor plain = colour(u"stockLatest"_s);
    edit(u"Text7"_s)->setText(u"SH600000"_s);
    fire(u"Timer1"_s);
    http_.answer = nullptr;
    edit(u"Text7"_s)->setText(u"SH600519"_s);
    button(u"Command1"_s)->click();
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|请检查网络连接，行情服务器连接不上!"_s});
    EXPECT_EQ(label(u"pollState"_s), u"没有读到行情（没有应答）；更新已停止，点“查询”重新开始"_s);
    for (const auto& [combo, path] : {std::pair(u"Combo1"_s, u"/list=sh000300"_s),
                                      std::pair(u"Combo2"_s, u"/list=int_nasdaq"_s)}) {
        find<QComboBox>(combo)->setCurrentIndex(2);
        emit find<QComboBox>(combo)->activated(2);
        settle();
        EXPECT_TRUE(http_.paths.contains(path));
    }
    EXPECT_EQ(form_->windowTitle() + label(u"Label5"_s), u"分时行情"_s);
    for (const QString& name :
         {u"stockLatest"_s, u"stockGain"_s, u"limitUp"_s, u"askPrice1"_s, u"bidLots5"_s,
          u"indexName"_s, u"indexLatest"_s, u"indexGain"_s, u"worldName"_s, u"worldGain"_s}) {
        EXPECT_TRUE(label(name) == u"--" && colour(name) == plain) << name.toStdString();
    }
}

TEST_F(MarketWindowsTest, Form21TakesTheFirstCandidateAndPollsInFrontOnly) {
    openQuotes();
    const QTimer* Timer2 = find<QTimer>(u"Timer2"_s);
    http_.answer = [&](const QString& path) {
        EXPECT_FALSE(Timer2->isActive() && path == u"/list=sh600519") << "no poll before its quote";
        return reply(path);
    };
    auto* box = edit(u"Text7"_s);
    auto* list = find<QListWidget>(u"List1"_s);
    EXPECT_EQ(box->text(), u"SH600585"_s);
    QTest::keyClicks(QApplication::focusWidget(), u"6005"_s);
    fire(u"Timer1"_s);
    ASSERT_TRUE(list->isVisible());
    EXPECT_EQ(box->text(), u"6005"_s) << "the first query lets a code be typed";
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(box->text(), u"SH600519"_s);
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(form_->windowTitle(), u"分时行情——贵州茅台"_s);
    EXPECT_TRUE(Timer2->isActive() && Timer2->isSingleShot());
    http_.paths.clear();
    globals_.jiaoyishiduan = 1;
    form_->activateWindow();
    settle();
    fire(u"Timer2"_s);
    EXPECT_EQ(http_.paths, QStringList{u"/list=sh600519"_s}) << "the stock last queried";
    QWidget other;
    other.show();
    other.activateWindow();
    settle();
    ASSERT_FALSE(form_->isActiveWindow());
    fire(u"Timer2"_s);
    EXPECT_EQ(http_.paths.size(), 1);
    EXPECT_TRUE(Timer2->isActive()) << "it waits for the window to come to the front";
}

TEST_F(MarketWindowsTest, Form21WorksWhileItsServicesDoNot) {
    http_.client = std::make_unique<QtHttpClient>();
    for (const ServiceManner& it : neverDone) {
        RawService raw;
        raw.answer = it.answer;
        // The client may keep a connection that it has made for a request that it never sent.
        const auto brokenOff = [&] { return raw.hangUps >= raw.requests.count(u"GET "_s); };
        services_.chart = services_.newspage = raw.service();
        services_.fundamentals = {raw.service()};
        services_.quote = {raw.service()};
        ASSERT_TRUE(open<Form21>()) << it.what;
        auto* stop = button(u"stopRun"_s);
        EXPECT_EQ(label(u"pollState"_s), u"正在读取…"_s);
        ASSERT_TRUE(QTest::qWaitFor([&] { return stop->isVisible(); })) << it.what;
        EXPECT_EQ(label(u"Label5"_s) + label(u"worldName"_s), u"正在读取…"_s.repeated(2))
            << it.what;
        auto* box = edit(u"Text7"_s);
        box->clear();
        QTest::keyClicks(box, u"6005"_s);
        EXPECT_TRUE(find<QListWidget>(u"List1"_s)->isVisible()) << it.what;
        QTest::keyClick(box, Qt::Key_Return);
        const QString next = u"GET /news/stock/600519.shtml"_s;
        EXPECT_TRUE(QTest::qWaitFor([&] { return raw.requests.contains(next); })) << it.what;
        QTest::keyClick(form_.data(), Qt::Key_Escape);
        EXPECT_FALSE(stop->isVisible());
        EXPECT_EQ(label(u"pollState"_s), u"更新已停止，点“查询”重新开始"_s);
        EXPECT_EQ(label(u"Label5"_s) + label(u"indexName"_s), u"--"_s);
        EXPECT_TRUE(QTest::qWaitFor(brokenOff)) << it.what;
        press(form_, u"Command1"_s);
        EXPECT_TRUE(stop->isVisible());
        closeWindows();
        EXPECT_TRUE(dialogs_.shown.isEmpty() && failures_.texts.isEmpty()) << it.what;
    }
}

TEST_F(MarketWindowsTest, Form21MayCloseAtEachOfItsRequests) {
    constexpr int requestsOfOpeningAndPoll = 12;
    for (int held = 1; held <= requestsOfOpeningAndPoll; ++held) {
        int asked = 0;
        const auto gate = std::make_shared<Later<bool>>();
        http_.onGet = [&] { http_.gate = ++asked == held ? gate : nullptr; };
        http_.paths.clear();
        openQuotes();
        fire(u"Timer1"_s);
        if (find<QTimer>(u"Timer2"_s)->isActive()) {
            form_->activateWindow();
            settle();
            fire(u"Timer2"_s);
        }
        ASSERT_GE(asked, held);
        const qsizetype requests = http_.paths.size();
        closeWindows();
        deleteClosedWindows();
        gate->deliver(true);
        EXPECT_EQ(http_.paths.size(), requests) << held;
    }
    EXPECT_TRUE(dialogs_.shown.isEmpty() && failures_.texts.isEmpty());
}

TEST_F(MarketWindowsTest, TheChartsOfForm21LeadOnAndAWindowWithoutAnF10PageCloses) {
    openQuotes();
    auto* chart = find<ChartBox>(u"Picture1"_s);
    edit(u"Text7"_s)->setText(u" SH600000 "_s);
    find<QLabel>(u"Label5"_s)->setText(u"浦发银行"_s);
    services_.stockpage.host = u"http://p"_s;
    QTest::mouseClick(chart, Qt::LeftButton);
    QTest::mouseDClick(chart, Qt::LeftButton);
    QTest::mouseRelease(chart, Qt::LeftButton);  // of a double click, which opens it once
    QTest::mouseClick(find<ChartBox>(u"Picture2"_s), Qt::LeftButton);
    EXPECT_EQ(shell_.opened, QStringList({u"http://p/realstock/company/sh600000/nc.shtml"_s,
                                          u"http://m/news/stock/sh600000/cpbd.shtml"_s}));
    QTest::mousePress(chart, Qt::RightButton);
    EXPECT_FALSE(popup().isEmpty());
    EXPECT_EQ(globals_.dangqiandm + globals_.dangqianjc, u"SH600000浦发银行"_s);
    trigger(u"F10资料"_s);
    settle();
    EXPECT_EQ(shownWindow<Form11>()->windowTitle(), u"浦发银行(SH600000)-----F10资料"_s);
    EXPECT_EQ(shell_.opened.last(), u"http://host/600000/"_s);
    store_.run({u"delete from tempcanshu"_s});
    open<Form11>();
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|没有找到该股F10资料。"_s});
    fire(u"Timer1"_s);
    EXPECT_FALSE(shownWindow<Form11>());
    EXPECT_EQ(shell_.opened.size(), 3);
}

#ifdef GUANCHAO_BROWSER_LIBRARY
TEST_F(MarketWindowsTest, Form11KeepsTheGoodPageWhereALinkFails) {
    RawService raw;
    raw.answer = [&raw](QTcpSocket& socket) {
        const QString path = raw.requests.section(u"GET "_s, -1).section(u' ', 0, 0);
        if (path == u"/silent"_s) {
            return;
        }
        if (path == u"/600000/"_s || path == u"/next"_s) {
            const QByteArray page = "<title>" + path.toUtf8() + "</title>";
            socket.write(httpHead(page.size()) + page);
            return;
        }
        socket.disconnectFromHost();
    };
    ASSERT_TRUE(QFile::link(QStringLiteral(GUANCHAO_BROWSER_LIBRARY),
                            store_.folder() + u"libguanchao_browser.so"_s));
    store_.run({u"update tempcanshu set f10url='"_s + raw.service().host + u"/600000/'"_s});
    open<Form11>();
    settle();
    const QList<QWidget*> parts = form_->findChildren<QWidget*>();
    QWidget* browser = *std::ranges::find_if(
        parts, [](const QWidget* it) { return it->inherits("QWebEngineView"); });
    const auto* stop = button(u"stopRun"_s);
    const auto untilItShows = [&](const QString& title) {
        until([&] { return browser->property("title").toString() == title && !stop->isVisible(); });
    };
    const auto follow = [&](const QString& path) {
        browser->setProperty("url", QUrl(raw.service().host + path));
    };
    untilItShows(u"/600000/"_s);
    EXPECT_TRUE(browser->isVisible() && !find<QLabel>(u"Label1"_s)->isVisible());
    const auto* state = find<QLabel>(u"state"_s);
    follow(u"/next"_s);
    untilItShows(u"/next"_s);
    follow(u"/dead"_s);
    until([&] { return state->text().startsWith(u"网页打不开："_s); });
    EXPECT_TRUE(browser->isVisible());
    const Service site = {raw.service().host, {}, 0, 1, 0, {}, u"F10资料"_s};
    EXPECT_EQ(watch_.stateOf(site).reason, u"网页打不开"_s);
    untilItShows(u"/next"_s);
    EXPECT_EQ(watch_.stateOf(site).answers, 2);
    follow(u"/silent"_s);
    until([&] { return stop->isVisible(); });
    form_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_));
    QTest::keyClick(form_.data(), Qt::Key_Escape);
    untilItShows(u"/next"_s);  // Esc stops the link and leaves the window
    button(u"back"_s)->click();
    untilItShows(u"/600000/"_s);
    QTest::keyClick(form_.data(), Qt::Key_Escape);
    EXPECT_FALSE(shownWindow<Form11>());
    deleteClosedWindows();
    EXPECT_TRUE(shell_.opened.isEmpty());
}

#endif

}  // namespace guanchao
