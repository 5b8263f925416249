#include "monitor/monitor_manager.h"

#include "tests/support/monitor_fixture.h"

namespace guanchao {

class MonitorManagerTest : public MonitorFixture {
protected:
    QString frequency() { return store_.rows(u"select jiankongpinlu from tempcanshu"_s)[0]; }

    FakeClipboard clipboard_;
    ResultGrid& themes_ = grid_;
    ResultGrid stocks_;
    MonitorManager manager_{store_.stores, globals_, dialogs_, clipboard_,
                            removals_,     themes_,  stocks_};
};

TEST_F(MonitorManagerTest, TheLoadShowsTheNewestFirstRewrittenForTheEye) {
    addThemeMonitor(u"银'行"_s, u">"_s, 5, u"/alarm.mp3"_s);
    addThemeMonitor(u"白酒"_s, u"<"_s, -2.345, u"ab"_s, 0);
    addStockMonitor(u"SH600000"_s, u"涨幅"_s, u">"_s, 5, QString(), 0);
    store_.run({u"update gegujiankong set jc='浦发银行',baojintime='2026-11-24 10:00:00'"_s});
    watch({u"SH600000"_s, u"SZ000001"_s});
    globals_.dangqianzhuti = globals_.dangqiandm = globals_.dangqianjc = u"x"_s;
    const MonitorManager::Loaded loaded = manager_.load();
    EXPECT_EQ(*loaded.frequency + loaded.monitored, u"20已监控2只股票。"_s);
    EXPECT_EQ(globals_.dangqianzhuti + globals_.dangqiandm + globals_.dangqianjc, QString());
    EXPECT_EQ(rowTexts(themes_),
              QStringList({u"序号|主题名称|涨幅|比较符|报警值|支数|报警时间|窗口提示|音乐提示"_s,
                           u"1|白酒|0.00|<|-2.345|0||不提示|无音乐"_s,
                           u"2|银'行|0.00|>|5.00|0||提示|/alarm.mp3"_s}));
    EXPECT_EQ(
        rowTexts(stocks_),
        QStringList({u"序号|代码|简称|收盘|涨幅|比较值|比较符|报警值|报警时间|窗口提示|音乐提示"_s,
                     u"1|SH600000|浦发银行|0.00|0.00|涨幅|>|5.00|2026-11-24 10:00:00|不提示|"
                     u"无音乐"_s}));
    QCoro::waitFor(manager_.clearAll({}));
    EXPECT_EQ(manager_.load().monitored, u"已监控0只股票。"_s);
    EXPECT_EQ(themes_.rows(), 1);
}

TEST_F(MonitorManagerTest, AFrequencyMustCoverThePollList) {
    watch({u"SH600000"_s, u"SH600519"_s, u"SZ000001"_s});
    manager_.load();
    const QString refused =
        u"观潮台|此监控频率最多监控%1只股票，请改大监控频率或删除不必要的监控记录。"_s;
    const QString outside = u"观潮台|监控频率要在-32768到32767之间。"_s;
    const std::tuple<QString, QString, QString> cases[] = {
        {u"3"_s, u"3"_s, {}},
        {u"2"_s, u"3"_s, refused.arg(2)},
        {u" 2.6 "_s, u"3"_s, refused.arg(3)},
        {u"4.5秒"_s, u"4"_s, {}},
        {u"5.5"_s, u"6"_s, {}},
        {u"abc"_s, u"6"_s, refused.arg(0)},
        {u"32767.4"_s, u"32767"_s, {}},
        {u"32767.5"_s, u"32767"_s, outside},
        {u"-32768.5"_s, u"32767"_s, refused.arg(-32768)},
        {u"-32769"_s, u"32767"_s, outside},
        {u"1e999"_s, u"32767"_s, outside}};
    for (const auto& [typed, stored, message] : cases) {
        const QString before = frequency();
        const std::optional<QString> putBack = manager_.changeFrequency(typed);
        EXPECT_EQ(frequency(), stored) << typed.toStdString();
        EXPECT_EQ(told().join(u'/'), message);
        EXPECT_EQ(putBack, message.isEmpty() ? std::nullopt : std::optional(before));
    }
    QCoro::waitFor(manager_.clearAll({}));
    EXPECT_EQ(manager_.changeFrequency(u"abc"_s), std::nullopt) << "nothing is monitored";
    EXPECT_EQ(manager_.changeFrequency(u"-0.4"_s), u"0"_s) << "less than no stock at all";
}

TEST_F(MonitorManagerTest, ADeletionSweepsWhatNothingElseNeeds) {
    store_.addMembers(u"银'行"_s, {u"SH600000"_s, u"SZ000001"_s});
    store_.addMembers(u"上海"_s, {u"SH600000"_s, u"SH600519"_s});
    addThemeMonitor(u"银'行"_s, u">"_s, 5);
    addThemeMonitor(u"上海"_s, u">"_s, 5);
    addStockMonitor(u"SH600000"_s, u"涨幅"_s, u">"_s, 5);
    watch({u"SH600000"_s, u"SH600519"_s, u"SZ000001"_s});
    setQuote(u"SH600000"_s, 10.5, 2);
    // Joined since its theme is monitored: the sweep adds none.
    store_.addMember(u"上海"_s, u"SH688001"_s);

    globals_.dangqianzhuti = u"银'行"_s;
    manager_.deleteTheme();
    EXPECT_EQ(pollList(), QStringList({u"SH600000"_s, u"SH600519"_s}));
    store_.run({u"delete from dzhzhuti where dm='SH600519'"_s});
    globals_.dangqianzhuti.clear();  // no selection: the sweep runs all the same
    manager_.deleteTheme();
    EXPECT_EQ(pollList(), QStringList{u"SH600000"_s});
    globals_.dangqianzhuti = u"上海"_s;
    manager_.deleteTheme();
    EXPECT_EQ(store_.rows(u"select dm,sp,zhangfu,tempdel from jiankonghq"_s),
              QStringList{u"SH600000|10.5|2|0"_s});
    globals_.dangqiandm = u"SH600000"_s;
    globals_.dangqianjc = u"浦发银行"_s;
    manager_.deleteStock();
    EXPECT_EQ(pollList(), QStringList());
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|个股(浦发银行)监控已删除。"_s);
}

}  // namespace guanchao
