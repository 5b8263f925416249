#include "monitor/monitor_editors.h"

#include "tests/support/monitor_fixture.h"

namespace guanchao {

class MonitorEditorsTest : public MonitorFixture {
protected:
    MonitorEditorsTest() {
        globals_.yingyongmulu = u"/opt/观潮台/"_s;
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 10, 0);
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 10, 0);
        store_.addMembers(u"银'行"_s, {u"SH600000"_s, u"SZ000001"_s, u"SH601398"_s});
    }

    template <typename Editor>
    Editor open(EditorMode mode) {
        globals_.bianjimoshi = mode == EditorMode::modify ? 1 : 0;
        return Editor(store_.stores, globals_, dialogs_);
    }
    template <typename Editor>
    bool confirm(EditorMode mode, const MonitorFields& fields) {
        return open<Editor>(mode).confirm(fields);
    }

    static MonitorFields named(const QString& name) {
        MonitorFields fields;
        fields.name = name;
        return fields;
    }

    QStringList themeRows() { return store_.rows(u"select * from zhutijiankong"_s); }
    QStringList stockRows() { return store_.rows(u"select * from gegujiankong"_s); }
};

using enum EditorMode;

TEST_F(MonitorEditorsTest, RefusalsWriteNothingAndComeInTheirOrder) {
    addThemeMonitor(u"白酒"_s, u">"_s, 1);
    addStockMonitor(u"SH600000"_s, u"涨幅"_s, u">"_s, 1);
    watch({u"SH600000"_s, u"SZ000001"_s});
    setFrequency(4);
    const QString full =
        u"观潮台|此监控频率最多监控4只股票，请先改大监控频率或删除不必要的监控。"_s;
    const auto theme = [&](EditorMode mode, const QString& name) {
        EXPECT_FALSE(confirm<ThemeMonitorEditor>(mode, named(name)));
        return told();
    };
    const auto stock = [&](EditorMode mode, const QString& code) {
        EXPECT_FALSE(confirm<StockMonitorEditor>(mode, named(code)));
        return told();
    };
    const QStringList before = themeRows() + stockRows() + pollList();
    EXPECT_EQ(theme(add, u"白酒"_s), QStringList{u"观潮台|此主题已在监控中。主题名:白酒"_s});
    EXPECT_EQ(theme(add, u"无"_s), QStringList{u"观潮台|此主题不存在。主题名:无"_s});
    EXPECT_EQ(theme(add, u"银'行"_s), QStringList{full}) << "members on the list count again";
    EXPECT_EQ(theme(modify, QString()), QStringList{u"观潮台|此主题不存在。主题名:"_s});
    EXPECT_EQ(stock(add, u"sh600000"_s), QStringList{u"观潮台|此代码已在监控中。代码:SH600000"_s});
    EXPECT_EQ(stock(add, u"600000"_s), QStringList{u"观潮台|此代码不存在。代码:600000"_s});
    EXPECT_EQ(stock(modify, QString()), QStringList{u"观潮台|此代码不存在。代码:"_s});
    setFrequency(2);
    EXPECT_EQ(stock(add, u"SH600000"_s), QStringList{QString(full).replace(u'4', u'2')})
        << "the room is asked for first";
    EXPECT_EQ(themeRows() + stockRows() + pollList(), before);
    setFrequency(5);
    EXPECT_TRUE(confirm<ThemeMonitorEditor>(add, named(u" 银'行 "_s)));
    EXPECT_EQ(pollList(), QStringList({u"SH600000"_s, u"SH601398"_s, u"SZ000001"_s}));
}

TEST_F(MonitorEditorsTest, AChangeRefreshesTheMemberCountAndLeavesThePollListAlone) {
    addThemeMonitor(u"银'行"_s, u"<"_s, -2.5, u"/a'.mp3"_s, 0);
    addStockMonitor(u"SH600000"_s, u"股价"_s, u"<"_s, 9, QString(), 2);
    store_.run({u"update gegujiankong set jc='浦发',zhangfu=3"_s});
    setFrequency(0);
    globals_.dangqianzhuti = u"银'行"_s;
    globals_.dangqiandm = u"SH600000"_s;
    auto themeEditor = open<ThemeMonitorEditor>(modify);
    MonitorFields theme = themeEditor.load();
    EXPECT_EQ(theme.bijiaofu + theme.baojinzhi + theme.yinyue, u"<-2.5/a'.mp3"_s);
    EXPECT_FALSE(theme.tanchuform);
    auto stockEditor = open<StockMonitorEditor>(modify);
    MonitorFields stock = stockEditor.load();
    EXPECT_EQ(stock.jc + stock.leixin + stock.bijiaofu + stock.baojinzhi + stock.yinyue,
              u"浦发股价<9"_s);
    EXPECT_TRUE(stock.tanchuform);
    globals_.bianjimoshi = 0;
    theme.baojinzhi = u"abc"_s;
    stock.leixin = u"涨幅"_s;
    EXPECT_TRUE(themeEditor.confirm(theme)) << "the mode is the one it was opened in";
    EXPECT_TRUE(stockEditor.confirm(stock));
    EXPECT_EQ(themeRows(), QStringList{u"银'行|0|<|0|3|null|0|/a'.mp3"_s});
    EXPECT_EQ(stockRows(), QStringList{u"SH600000|浦发|0|3|涨幅|<|9|null|1|"_s});
    EXPECT_EQ(pollList(), QStringList());
    EXPECT_EQ(told(),
              QStringList({u"观潮台|修改主题监控完成。"_s, u"观潮台|修改个股监控完成。"_s}));
}

}  // namespace guanchao
