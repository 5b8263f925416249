#include "themes/theme_table.h"
#include "tests/support/store_test.h"

namespace guanchao {

class ThemeTableTest : public StoreTest {
protected:
    ThemeTableTest() {
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 10.5, 2);
        store_.addCode(u"SH600519"_s, u"贵州茅台"_s, 1500, -1);
        store_.addCode(u"SZ000001"_s, u"平安银行"_s, 0, 0);
        store_.addCode(u"SZ000002"_s, u"万科A"_s, 8, 5);
        store_.addMember(u"银行"_s, u"SH600000"_s, 3);
        store_.addMember(u"银行"_s, u"SZ000001"_s, 2);
        store_.addMember(u"银行"_s, u"SH699999"_s, 9);
        store_.addMember(u"白酒"_s, u"SH600519"_s, 1);
        store_.addMember(u"冷'门"_s, u"SH600519"_s, 0);
        store_.addMember(u"冷'门"_s, u"SZ000001"_s, 0);
    }

    void refresh(const QString& threshold) {
        table_.refresh(threshold, [this](const UpdateLabels& labels) {
            labels_ = QStringList{labels.themes, labels.quotes};
        });
    }

    ResultGrid themes_;
    ResultGrid stocks_;
    QStringList labels_;
    ThemeTable table_{store_.stores, globals_, clock_, dialogs_, themes_, stocks_};
};

TEST_F(ThemeTableTest, RefreshShowsMeanGainsAboveTheThresholdAndSetsBothSessionFlags) {
    refresh(u"0"_s);
    EXPECT_EQ(labels_, QStringList({u"主题库更新时间：2026-11-01 08:00:00"_s,
                                    u"行情更新时间：2026-11-02 15:00:00"_s}));
    // The member that the code table lacks counts neither in the mean nor in the attention.
    EXPECT_EQ(rowTexts(themes_), QStringList({u"序号|主题名称|涨幅|只数|关注度|添加时间"_s,
                                              u"1|银行|1.00|2|3|2026-10-01 00:00:00"_s,
                                              u"2|白酒|-1.00|1|1|2026-10-01 00:00:00"_s}));
    store_.run({u"delete from tempcanshu"_s});
    labels_.clear();
    refresh(u"0"_s);
    EXPECT_TRUE(labels_.isEmpty()) << "without a row of times the labels stay";
    const std::pair<QString, int> cases[] = {
        {u"2"_s, 1}, {u"2.5x"_s, 1}, {u"abc"_s, 2}, {QString(), 2}, {u"-1"_s, 3}};
    for (const auto& [threshold, themes] : cases) {
        refresh(threshold);
        EXPECT_EQ(themes_.rows() - 1, themes) << threshold.toStdString();
    }
    refresh(u"20"_s);
    EXPECT_EQ(themes_.rows(), 1) << "no theme, told by no box";
    EXPECT_TRUE(dialogs_.shown.isEmpty());
    EXPECT_EQ(globals_.jiankongkaiqi + globals_.jiaoyishiduan, 2);
    clock_.moment = QDateTime(QDate(2026, 11, 21), QTime(10, 0, 0));
    refresh(u"0"_s);
    EXPECT_EQ(globals_.jiankongkaiqi + globals_.jiaoyishiduan, 0) << "a Saturday";
}

TEST_F(ThemeTableTest, MembersAreShownWithTheirColours) {
    table_.xianshizhutigu(u"银行"_s);
    EXPECT_EQ(
        rowTexts(stocks_).first(2),
        QStringList(
            {u"序号|主题名称|代码|简称|相关度|收盘|涨跌|涨幅|开盘|最高|最低|成交量|成交金额|更新时间"_s,
             u"1|银行|SH600000|浦发银行|5|10.50|0.00|2.00|0.00|0.00|0.00|0|0|"_s}));
    EXPECT_EQ(stocks_.cellForeColor(1, 7), riseColour);
    table_.xianshizhutigu(u"白酒"_s);
    EXPECT_EQ(stocks_.cellForeColor(1, 7), fallColour);
    table_.xianshizhutigu(u"无此主题"_s);
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|没有找到数据！"_s});
    EXPECT_EQ(stocks_.rows(), 1) << "no row of a former theme stays, not even an empty one";
}

// Themes by name, members as they joined, all stocks as the code table has them, each with the last
// of its themes: no version of the library has a say in it.
TEST_F(ThemeTableTest, EqualGainsHaveTheirOrderToo) {
    store_.run({u"update dmb set zhangfu=0"_s});
    const QStringList themes = {u"主题名称"_s, u"冷'门"_s, u"白酒"_s, u"银行"_s};
    refresh(u"-1"_s);
    EXPECT_EQ(columnTexts(themes_, 1), themes);
    table_.searchByCode(u"60"_s);
    EXPECT_EQ(columnTexts(themes_, 1), themes);
    table_.searchByName(QString());
    EXPECT_EQ(columnTexts(themes_, 1), themes);
    store_.addMember(u"银行"_s, u"SH600519"_s);
    table_.xianshizhutigu(u"银行"_s);
    EXPECT_EQ(columnTexts(stocks_, 2),
              QStringList({u"代码"_s, u"SH600000"_s, u"SZ000001"_s, u"SH600519"_s}));
    table_.xianshizhutigu(allStocks);
    EXPECT_EQ(columnTexts(stocks_, 2),
              QStringList({u"代码"_s, u"SH600000"_s, u"SH600519"_s, u"SZ000001"_s, u"SZ000002"_s}));
    EXPECT_EQ(columnTexts(stocks_, 1),
              QStringList({u"主题名称"_s, u"银行"_s, u"银行"_s, u"银行"_s, QString()}));
}

TEST_F(ThemeTableTest, SearchesShowTheFirstThemesStocksAndIgnoreTheThreshold) {
    table_.searchByCode(u"sh60"_s);
    EXPECT_EQ(themes_.rows(), 4);
    table_.searchByCode(u"h6000"_s);
    EXPECT_EQ(rowTexts(themes_), QStringList({u"序号|主题名称|涨幅|只数"_s, u"1|银行|2.00|1"_s}));
    EXPECT_EQ(stocks_.textMatrix(1, 1), u"银行"_s);
    table_.searchByCode(QString());
    EXPECT_EQ(stocks_.rows(), 5) << "an empty box shows all stocks";
    table_.searchByCode(u"SZ3"_s);
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|此代码没有找到主题！"_s});
    EXPECT_EQ(themes_.rows(), 4) << "the table stays";
    table_.searchByName(u"冷'"_s);
    EXPECT_EQ(rowTexts(themes_), QStringList({u"序号|主题名称|涨幅|只数|关注度|添加时间"_s,
                                              u"1|冷'门|-0.50|2|0|2026-10-01 00:00:00"_s}));
    EXPECT_EQ(stocks_.textMatrix(1, 1), u"冷'门"_s);
    EXPECT_EQ(stocks_.rows(), 3);
    table_.searchByName(u"没有"_s);
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|没有找到包含 没有 的主题！"_s);
}

}  // namespace guanchao
