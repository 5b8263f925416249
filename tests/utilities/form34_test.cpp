#include "utilities/form34.h"

#include "platform/qt_http_client.h"
#include "services/standard_file.h"
#include "tests/support/small_market.h"
#include "tests/support/window_test.h"

namespace guanchao {

class Form34Test : public WindowTest {
protected:
    void begin(const QString& ini) {
        writeFile(path_, ini.toUtf8());
        services_ = readServices(path_);
        open<Form34>();
    }
    // Sections on an address of this computer.
    static QString local(const QStringList& names) {
        return u"["_s + names.join(u"]\nhost=http://127.0.0.1:1\n["_s) +
               u"]\nhost=http://127.0.0.1:1\n"_s;
    }
    QString row(int number) { return rowText(grid(), number); }
    void mark(int number) { clickCell(view(), number, 1); }
    void key(const QString& name, Qt::Key key) { QTest::keyClick(find<QWidget>(name), key); }

    const QStringList others_ = {u"factors"_s, u"fundamentals"_s, u"boards"_s,   u"stocklist"_s,
                                 u"chart"_s,   u"stockpage"_s,    u"sitepage"_s, u"newspage"_s};
    QString path_ = store_.folder() + u"services.ini"_s;
};

TEST_F(Form34Test, TheUsersChoiceIsStoredAndHoldsAtOnce) {
    begin(u"[quote]\nkind=sina\nhost=http://s\n[quote.2]\nkind=tencent\n"_s);
    EXPECT_EQ(row(2), u"2|行情|2|腾讯|https://qt.gtimg.cn|在用|||"_s);
    key(u"down"_s, Qt::Key_Space);
    EXPECT_EQ(row(2), u"2|行情|2|新浪|http://s|在用|||"_s);
    EXPECT_EQ(services_.quote.first().kind, u"tencent"_s);
    EXPECT_EQ(grid().markedRow(), 2) << "the service that was moved";
    key(u"use"_s, Qt::Key_Space);
    EXPECT_EQ(row(2), u"2|行情|2|新浪|http://s|停用|||"_s);
    EXPECT_EQ(services_.quote.size(), 1);
    key(u"use"_s, Qt::Key_Space);
    edit(u"host"_s)->selectAll();
    QTest::keyClicks(edit(u"host"_s), u"http://other:81/"_s);
    for (const QString& moves : {u"up"_s, u"down"_s}) {
        key(moves, Qt::Key_Space);
        EXPECT_EQ(text(u"host"_s), u"http://other:81/"_s) << "typed, not saved yet";
    }
    mark(1);
    EXPECT_EQ(text(u"host"_s), u"https://qt.gtimg.cn"_s);
    mark(2);
    EXPECT_EQ(text(u"host"_s), u"http://other:81/"_s);
    key(u"host"_s, Qt::Key_Return);
    EXPECT_EQ(services_.quote.value(1).host, u"http://other:81"_s);
    EXPECT_EQ(text(u"host"_s), u"http://other:81"_s);
    QFile::remove(path_);
    QDir().mkdir(path_);
    EXPECT_THROW(click(u"up"_s), OperationError);
    EXPECT_EQ(services_.quote.first().kind, u"tencent"_s);
}

// Made-up prices never come among real ones, and nothing real is called made up.
TEST_F(Form34Test, AFolderForPracticeTakesNoRealService) {
    begin(u"[practice]\n"_s + local(others_ + QStringList{u"quote"_s, u"history"_s}) +
          u"[quote.2]\nkind=tencent\n"_s);
    const auto* band = find<QLabel>(u"practiceBand"_s);
    EXPECT_TRUE(
        band->text().endsWith(u"这些网站是真的，请在“工具 / 行情来源”里停用：行情（腾讯）"_s));
    EXPECT_FALSE(button(u"standard"_s)->isEnabled());
    mark(2);
    key(u"use"_s, Qt::Key_Space);
    EXPECT_EQ(band->text(), u"练习行情：价格都是编造的，和真实的市场无关"_s);
    EXPECT_EQ(button(u"use"_s)->accessibleName(), u"启用或停用"_s) << "the seen word first";
    EXPECT_THROW(click(u"use"_s), OperationError);
    EXPECT_EQ(services_.quote.size(), 1);
    mark(1);
    edit(u"host"_s)->setText(u"https://hq.sinajs.cn"_s);
    EXPECT_THROW(click(u"saveHost"_s), OperationError);
    EXPECT_EQ(services_.quote.first().host, u"http://127.0.0.1:1"_s);
    edit(u"host"_s)->setText(u"http://localhost:2"_s);
    key(u"host"_s, Qt::Key_Return);
    EXPECT_EQ(services_.quote.first().host, u"http://localhost:2"_s);
    EXPECT_EQ(band->text(), u"练习行情：价格都是编造的，和真实的市场无关"_s);
}

// The program goes on asking what it has asked until the last of them is out of use.
TEST_F(Form34Test, RealServicesWrittenByHandDontComeIntoAFolderForPractice) {
    const QString ini = local(others_);
    begin(u"[practice]\n[quote]\nhost=http://127.0.0.1:1\n[history]\nhost=http://localhost\n"_s +
          ini);
    const QByteArray byHand = (u"[quote]\nhost=http://127.0.0.1:1\n[quote.2]\nkind=tencent\n"
                               u"[history]\nkind=sina\n"_s +
                               ini)
                                  .toUtf8();
    writeFile(path_, byHand);
    open<Form34>();
    const auto* band = find<QLabel>(u"practiceBand"_s);
    EXPECT_TRUE(holds(band->text(), u"停用：行情（腾讯）、历史行情（新浪）"_s));
    EXPECT_THROW(click(u"down"_s), OperationError);
    mark(2);
    EXPECT_THROW(click(u"up"_s), OperationError);
    EXPECT_EQ(contentOf(path_), byHand);
    click(u"use"_s);
    EXPECT_THROW(click(u"up"_s), OperationError) << "the history is real still";
    EXPECT_EQ(services_.history.first().host, u"http://localhost"_s);
    mark(3);
    edit(u"host"_s)->setText(u"http://localhost:3"_s);
    key(u"host"_s, Qt::Key_Return);
    EXPECT_EQ(services_.history.first().host, u"http://localhost:3"_s);
    EXPECT_EQ(band->text(), u"练习行情：价格都是编造的，和真实的市场无关"_s);
    mark(1);
    click(u"down"_s);
    EXPECT_EQ(services_.quote.size(), 1) << "the real one stays out of use";
    EXPECT_TRUE(services_.isPractice) << "though the file doesn't say it any more";
}

TEST_F(Form34Test, TheStandardIsTakenBackWhereTheUserAgrees) {
    begin(u"[quote]\nkind=sina\nhost=http://s\n"_s);
    dialogs_.answer = false;
    click(u"standard"_s);
    EXPECT_EQ(services_.quote.first().host, u"http://s"_s);
    dialogs_.answer = true;
    click(u"standard"_s);
    EXPECT_EQ(contentOf(path_), standardFile());
    EXPECT_EQ(row(2), u"2|行情|2|腾讯|https://qt.gtimg.cn|在用|||"_s);
}

TEST_F(Form34Test, HowEachHasAnsweredIsShownWhileTheWindowIsOpen) {
    begin(u"[quote]\nkind=sina\nhost=http://s\n"_s);
    http_.answer = [](const QString&) { return QByteArray("x"); };
    outcomeOf(watch_.get(services_.quote.first(), {}, {}));
    clock_.moment = clock_.moment.addSecs(125);
    auto* ages = find<QTimer>(u"ages"_s);
    timeIsUp(ages);
    EXPECT_EQ(row(1), u"1|行情|1|新浪|http://s|在用||10:00:00（2 分钟前）|"_s);
    watch_.complain(services_.quote.first(), u"应答里没有行情"_s);
    timeIsUp(ages);
    EXPECT_EQ(row(1), u"1|行情|1|新浪|http://s|在用|||10:02:05（0 秒前） 应答里没有行情"_s);
    form_->hide();
    EXPECT_FALSE(ages->isActive());
}

TEST_F(Form34Test, ATestShowsEachServiceAsItAnswers) {
    const SmallMarket market({{u"SH600036"_s, u"招商银行"_s}});
    const QString host = u"host="_s + market.host() + u'\n';
    const QString ini =
        u"[quote]\nkind=sina\n"_s + host + u"[quote.2]\nkind=tencent\nuse=0\n"_s + host +
        u"[fundamentals]\nkind=sina\n"_s + host +
        local({u"history"_s, u"factors"_s, u"boards"_s, u"stocklist"_s, u"chart"_s, u"stockpage"_s,
               u"sitepage"_s, u"newspage"_s, u"vendor"_s, u"search"_s});
    http_.client = std::make_unique<QtHttpClient>();
    begin(ini);
    click(u"test"_s);
    EXPECT_TRUE(button(u"stop"_s)->isVisible());
    until([this] { return !grid().textMatrix(1, 6).isEmpty(); });
    EXPECT_TRUE(holds(grid().textMatrix(1, 6), u"毫秒：2 行：招商银行"_s));
    EXPECT_FALSE(button(u"test"_s)->isEnabled()) << "the others are still to come";
    until([this] { return button(u"test"_s)->isEnabled(); });
    EXPECT_EQ(grid().textMatrix(2, 6), QString()) << "switched off";
    EXPECT_TRUE(grid().textMatrix(3, 6).startsWith(u"× 股票 不通，"_s));
    EXPECT_TRUE(grid().textMatrix(3, 6).contains(u"；指数 不通，"_s));
    for (int row = 4; row < grid().rows(); ++row) {
        const bool isSearch = grid().textMatrix(row, 1) == u"搜索"_s;
        EXPECT_EQ(grid().textMatrix(row, 6).isEmpty(), isSearch) << this->row(row).toStdString();
    }
    EXPECT_EQ(label(u"step"_s), u"测试完：通 2，不通 11"_s);
    EXPECT_EQ(failures_.texts.size(), 1) << "the store has no address to search by";
}

}  // namespace guanchao
