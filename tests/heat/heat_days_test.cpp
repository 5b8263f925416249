#include "heat/heat_days.h"

#include <cmath>

#include "grid/heat_colour.h"
#include "heat/day_gains.h"
#include "heat/heat_map.h"
#include "tests/support/store_test.h"

namespace guanchao {

class HeatDaysTest : public StoreTest {
protected:
    HeatDaysTest() {
        for (const QString& it :
             {u"'2026-10-25 10:00:00','旧题',1,1000.0"_s,
              u"'2026-10-26 10:00:00','银行',4,1000.0"_s,
              u"'2026-11-23 10:00:00','银行',300,50.0"_s,
              u"'2026-11-24 09:00:00','银行',6,-150.0"_s, u"'2026-11-24 10:00:00','银行',8,-20.0"_s,
              u"'2026-11-24 10:00:00','O''x',30,1000.0"_s, u"'2026-11-24 10:00:00',null,7,1.0"_s}) {
            runHeat(u"insert into xinwenshul(riqi,zhutiname,onecishu,onezhangfu) values("_s + it +
                    u')');
        }
        Connection heat = store_.stores.heat.open();
        writeNewsNote(heat, {u"xinwenshul"_s, u"银行"_s, u"2026-11-23"_s},
                      {u"eastmoney"_s, true, false, false});
        writeNewsNote(heat, {u"xinwenshul"_s, u"银行"_s, u"2026-11-24"_s}, {u"eastmoney"_s});
    }

    HeatDays read(qsizetype field, int days = sparklineDays) {
        Connection heat = store_.stores.heat.open();
        return readHeatDays(heat, themes_, themes_.fields[field], days);
    }
    DayOfNews news(const HeatSubject& subject, const QDate& day) {
        Connection heat = store_.stores.heat.open();
        const HeatDays days = readHeatDays(heat, subject, subject.fields[0], sparklineDays);
        return newsAgainstGain(store_.stores, subject, subject.fields[0], days, day);
    }
    static QString told(const DayOfNews& news) {
        return textsOf(
                   news.items,
                   [](const NewsAndGain& it) {
                       return u"%1%2 %3 %4"_s.arg(it.name, it.item).arg(it.news.value).arg(it.gain);
                   })
            .join(u'|');
    }

    const HeatSubject themes_ = themeNews();
    const QDate day_ = QDate(2026, 11, 24);
};

TEST_F(HeatDaysTest, EachItemHasItsFigureOfEachDayThatWasCollected) {
    const HeatDays days = read(0);
    EXPECT_EQ(days.days, (QList{QDate(2026, 10, 26), QDate(2026, 11, 23), day_}))
        << "30 days with the latest";
    const ItemDays& bank = days.items[0];
    EXPECT_EQ(bank.item + days.items[1].item, u"银行O'x"_s);
    EXPECT_EQ(bank.figures[0].value, 4);
    EXPECT_EQ(bank.figures[2].value, 8) << "the row that was written last";
    EXPECT_TRUE(bank.figures[1].isLowerBound && !bank.figures[2].isLowerBound);
    EXPECT_TRUE(std::isnan(days.items[1].figures[1].value)) << "not collected is not 0";
    EXPECT_EQ(comparableFigures(bank).mid(1), QList<double>({300, 8}));
    EXPECT_TRUE(std::isnan(comparableFigures(bank)[0])) << "counted by another kind of service";
    EXPECT_EQ(sparklineWords(themes_.fields[0], bank),
              u"近30天 一日数量：采集 2 天，最少 8，最多 300，最近 8"_s);
    EXPECT_EQ(read(0, 31).items.size(), 3);
}

TEST_F(HeatDaysTest, TheMapHasTheNewestDayFirstAndItsItemsByTheirFiguresOfIt) {
    fillHeatMap(read(0), themes_, themes_.fields[0], grid_);
    EXPECT_EQ(rowTexts(grid_), (QStringList{u"序号|主题名称|11-24|11-23|10-26"_s, u"1|O'x|30||"_s,
                                            u"2|银行|8|≥300|4"_s}));
    const auto ground = [&](int row, int col) {
        return grid_.data(grid_.index(row - 1, col), ResultGrid::BackColourRole);
    };
    EXPECT_EQ(ground(1, 2), heatColour(1, 1)) << "its own most";
    EXPECT_EQ(ground(2, 2), heatColour(8, 300));
    EXPECT_FALSE(ground(1, 3).isValid());
    fillHeatMap(read(1), themes_, themes_.fields[1], grid_);
    EXPECT_EQ(rowTexts(grid_).mid(1), (QStringList{u"1|O'x|无||"_s, u"2|银行|-20|50|无"_s}));
    EXPECT_FALSE(ground(2, 4).isValid()) << "compares with nothing";
    EXPECT_EQ(ground(2, 2), heatColour(-20, fullGrowth));
}

TEST_F(HeatDaysTest, TheGainsOfADayComeFromItsQuotesOrFromWhatTheStoresHoldOfIt) {
    const HeatSubject companies = companyNews();
    store_.addCode(u"SH600000"_s, u"浦发"_s, 10, 3);
    store_.addCode(u"SH600001"_s, u"邯钢"_s, 10, -1);
    store_.run(
        {u"insert into dzhzhuti(zhutiname,dm) values('银行','SH600000'),"
         u"('银行','SH600001'),('银行','SH600002')"_s,
         u"update dmb set newhqtime='2026-11-24 15:00:00'"_s,
         u"insert into geguhq(dm,riqi,zhangfu) values('SH600000','2026-11-23 00:00:00',7)"_s});
    runHeat(
        u"insert into gongsixinwen(riqi,dm,jc,onecishu) values('2026-11-24','SH600000','浦发',5),"
        u"('2026-11-23','SH600000','浦发',9)"_s);
    EXPECT_EQ(told(news(themes_, day_)), u"银行 8 1"_s) << "the mean of the members with quotes";
    EXPECT_TRUE(
        news(themes_, day_)
            .line.startsWith(u"涨幅取自行情列表（15:00 更新），共 1 个主题。另有 1 个没有涨幅"_s));
    EXPECT_EQ(told(news(companies, day_)), u"浦发SH600000 5 3"_s);
    EXPECT_EQ(told(news(themes_, day_.addDays(-1))), u"银行 300 7"_s);
    EXPECT_EQ(told(news(companies, day_.addDays(-1))), u"浦发SH600000 9 7"_s);
    EXPECT_TRUE(news(companies, day_.addDays(-1)).line.contains(u"对比时下载"_s));
    const DayOfNews missing = news(themes_, QDate(2026, 10, 26));
    EXPECT_EQ(told(missing), QString());
    EXPECT_TRUE(missing.line.startsWith(u"没有 2026-10-26 的涨幅"_s));
}

}  // namespace guanchao
