#include "base/values.h"
#include "collector/code_table_job.h"
#include "collector/commodities_job.h"
#include "collector/companies_job.h"
#include "collector/themes_job.h"
#include "formats/gbk.h"
#include "heat/headline_store.h"
#include "tests/support/store_test.h"

namespace guanchao {

class CollectorJobsTest : public StoreTest {
protected:
    CollectorJobsTest() {
        runHeat(
            u"update canshu set yinqingurl='http://h/s?wd=tihuandm',today='2026-11-24 00:00:00'"_s);
        store_.addMember(u"白酒"_s, u"SH600519"_s, 5);
        store_.addMember(u"白酒"_s, u"SZ000858"_s, 5);
        store_.addMember(u"5G(通信)"_s, u"SZ000858"_s, 9);
        store_.addMember(u"冷门"_s, u"SH600000"_s, 2);
        store_.addCode(u"SH600519"_s, u"贵州茅台"_s, 1, 1);
        store_.addCode(u"SZ000858"_s, u"五粮液"_s, 1, 1);
    }

    static QStringList keys(const Job& job) { return textsOf(job.items(), &Item::key); }

    // With search pages, none of which has to be there for the path of the next.
    static QStringList requests(const Job& job, const Item& item) {
        QStringList requests;
        Asked asked;
        while (const std::optional<QString> next = job.nextRequest(item, asked)) {
            requests << *next;
            asked.pages << QByteArray();
        }
        return requests;
    }

    static QByteArray results(qint64 number) { return u"相关结果约%1个"_s.arg(number).toUtf8(); }

    void collectTheme(const QString& day, const QList<qint64>& counts) {
        runHeat(u"update canshu set today='"_s + day + u" 00:00:00'"_s);
        clock_.moment = QDateTime(QDate(2026, 11, 1), QTime(10, 0));
        ThemesJob job(store_.stores, readRunOrder(store_.stores.heat, clock_), settings_, pages_,
                      clock_);
        QList<QByteArray> pages;
        for (const qint64 count : counts) {
            pages << results(count);
        }
        job.write({u"5G(通信)"_s, {}}, {0, pages});
    }

    CollectorSettings settings_;
    const QList<Service> pages_ = {Service()};
};

TEST_F(CollectorJobsTest, ItemsAreThoseOfMoreAttentionThanTheLimit) {
    runHeat(u"update canshu set guanzhudu=2,shopguanzhudu=4.5"_s);
    runHeat(u"insert into shopname(shopname,guanzhudu) values('铜',4),('铝(锭)',5)"_s);
    const RunOrder order = readRunOrder(store_.stores.heat, clock_);
    const ThemesJob themes(store_.stores, order, settings_, pages_, clock_);
    EXPECT_EQ(keys(themes), (QStringList{u"5G(通信)"_s, u"白酒"_s}));
    EXPECT_EQ(requests(themes, themes.items().first()),
              (QStringList{u"/s?wd=5G%20%CD%A8%D0%C5%20&lm=1"_s, u"/s?wd=5G%20%CD%A8%D0%C5%20"_s}));
    const CompaniesJob companies(store_.stores, order, settings_, pages_, clock_);
    EXPECT_EQ(keys(companies), (QStringList{u"SZ000858"_s, u"SH600519"_s}));
    store_.run({u"insert into zixuangu(dm) values('SH600519'),('SH600000')"_s});
    EXPECT_EQ(keys(companies), (QStringList{u"SH600519"_s, u"SZ000858"_s})) << "the watchlist";
    store_.run(
        {u"delete from zixuangu where dm='SH600519'"_s, u"delete from dmb where dm='SH600519'"_s});
    EXPECT_EQ(textsOf(companies.items(), &Item::name), (QStringList{u"五粮液"_s, u"SH600519"_s}))
        << "one that isn't in the code table";
    EXPECT_EQ(requests(companies, {u"SZ000858"_s, {}}).first(), u"/s?wd=000858&lm=1"_s);
    const CommoditiesJob commodities(store_.stores, order, settings_, pages_, clock_);
    EXPECT_EQ(keys(commodities), QStringList{u"铝(锭)"_s});
    EXPECT_EQ(requests(commodities, commodities.items().first()),
              QStringList{u"/s?wd=%C2%C1%20%B6%A7%20%20%BC%DB%B8%F1"_s});
}

TEST_F(CollectorJobsTest, ASecondRunTakesThePlaceOfTheDaysRowAndGrowthGoesByTheDayBefore) {
    const QString columns =
        u"select riqi,onecishu,onezhangfu,allcishu,allzhangfu,zdycishu,zdyzhangfu,zdytianshu,"
        u"yixiaza from xinwenshul order by riqi"_s;
    runHeat(u"update canshu set iszidinyinum=1,zidinyinum=30"_s);
    collectTheme(u"2026-11-21"_s, {0, 100, 50});
    collectTheme(u"2026-11-23"_s, {9, 9, 9});
    collectTheme(u"2026-11-23"_s, {3, 125, 40});
    EXPECT_EQ(heatRows(columns), (QStringList{u"2026-11-21 00:00:00|0|1000|100|1000|50|1000|30|1"_s,
                                              u"2026-11-23 00:00:00|3|1000|125|25|40|-20|30|1"_s}));
    runHeat(u"update canshu set zidinyinum=31"_s);
    collectTheme(u"2026-11-24"_s, {6, 125, 40});
    runHeat(u"update canshu set iszidinyinum=0"_s);
    collectTheme(u"2026-11-25"_s, {33, 0});
    EXPECT_EQ(heatRows(columns).mid(2),
              (QStringList{u"2026-11-24 00:00:00|6|100|125|0|40|1000|31|1"_s,
                           u"2026-11-25 00:00:00|33|450|0|-100|0|1000|0|1"_s}))
        << "custom counts compare over the same number of days only";
}

TEST_F(CollectorJobsTest, GrowthComparesWholeCountsOfOneKindOfServiceOnly) {
    const NewsNote whole{u"eastmoney"_s};
    const NewsNote bounds{u"eastmoney"_s, false, true, true};
    const struct {
        QString day;
        NewsNote note;
        qint64 all;
        QString growths;  // of one day, of all and of the custom days
        QString kept;     // notes of the day
    } cases[] = {
        {u"2026-11-18"_s, {}, 90, u"1000|1000|1000"_s, {}},
        {u"2026-11-19"_s, whole, 100, u"1000|1000|1000"_s, u"eastmoney|0|0|0"_s},
        {u"2026-11-20"_s, whole, 125, u"0|25|0"_s, u"eastmoney|0|0|0"_s},
        {u"2026-11-21"_s, bounds, 10000, u"0|1000|1000"_s, u"eastmoney|0|1|1"_s},
        {u"2026-11-22"_s, whole, 150, u"0|1000|1000"_s, u"eastmoney|0|0|0"_s},
        {u"2026-11-23"_s, {}, 90, u"1000|1000|1000"_s, {}},
        {u"2026-11-23"_s, whole, 300, u"0|100|0"_s, u"eastmoney|0|0|0"_s},
        {u"2026-11-23"_s, {}, 90, u"1000|1000|1000"_s, {}},
    };
    for (const auto& it : cases) {
        const CountsWriter writer(store_.stores.heat, QDate::fromString(it.day, Qt::ISODate));
        writer.writeTheme(u"白'酒"_s, {{7, it.all, 20, 30, it.note}, u"白'酒"_s});
        EXPECT_EQ(heatRows(u"select onezhangfu,allzhangfu,zdyzhangfu from xinwenshul where"
                           u" date(riqi)='%1'"_s.arg(it.day)),
                  QStringList{it.growths})
            << it.day.toStdString();
        if (it.day > u"2026-11-18"_s) {
            EXPECT_EQ(heatRows(u"select laiyuan,onexian,allxian,zdyxian from xinwenshuoming where"
                               u" riqi='%1'"_s.arg(it.day)),
                      it.kept.isEmpty() ? QStringList() : QStringList{it.kept});
        }
    }
}

TEST_F(CollectorJobsTest, HeadlinesAreThoseOfTheLastRunOfTheLastDay) {
    const auto write = [&](int day, const QString& words, int headlines) {
        FoundNews found{{}, words};
        for (int at = 0; at < headlines; ++at) {
            found.headlines << Headline{clock_.now().addSecs(-at), u"'题%1"_s.arg(at), u"媒'体"_s,
                                        u"http://h/'"_s};
        }
        CountsWriter(store_.stores.heat, QDate(2026, 11, day)).writeTheme(words, found);
    };
    const auto kept = [&](int day, const QString& words) {
        return readHeadlines(store_.stores.heat, words, u"2026-11-%1"_s.arg(day)).size();
    };
    EXPECT_EQ(kept(23, u"白酒"_s), 0) << "a store without the table";
    write(23, u"白酒"_s, 3);
    write(23, u"银行"_s, 120);
    EXPECT_EQ(kept(23, u"银行"_s), mostKeptHeadlines);
    write(23, u"白酒"_s, 2);
    const QList<Headline> found = readHeadlines(store_.stores.heat, u"白酒"_s, u"2026-11-23"_s);
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0], (Headline{clock_.now(), u"'题0"_s, u"媒'体"_s, u"http://h/'"_s}));
    write(24, u"银行"_s, 0);
    EXPECT_EQ(kept(23, u"白酒"_s) + kept(23, u"银行"_s) + kept(24, u"银行"_s), 0);
}

TEST_F(CollectorJobsTest, CompaniesAndCommoditiesHaveTheirRowsToo) {
    const RunOrder order = readRunOrder(store_.stores.heat, clock_);
    CompaniesJob companies(store_.stores, order, settings_, pages_, clock_);
    companies.write({u"SH600519"_s, u"茅'台"_s}, {0, {results(1), results(2)}});
    companies.write({u"SH600519"_s, u"茅'台"_s}, {0, {results(3), results(4)}});
    companies.write({u"SZ000858"_s, u"SZ000858"_s}, {0, {results(5), results(6)}});
    EXPECT_EQ(heatRows(u"select riqi,dm,jc,onecishu,allcishu from gongsixinwen order by dm"_s),
              (QStringList{u"2026-11-24 00:00:00|SH600519|茅'台|3|4"_s,
                           u"2026-11-24 00:00:00|SZ000858||5|6"_s}));

    runHeat(u"insert into shopname(shopname,guanzhudu,aboutgegu) values('铜',4,'SH601899')"_s);
    runHeat(u"insert into shophq(shopname,riqi,zongfen) values('铜','2026-11-20 09:00:00',-4)"_s);
    CommoditiesJob commodities(store_.stores, order, settings_, pages_, clock_);
    const QByteArray page = u"相关结果约1个 大涨 暴涨暴涨 升 跌跌跌 大跌 暴跌 降降"_s.toUtf8();
    commodities.write({u"铜"_s, u"铜"_s}, {0, {page}});
    commodities.write({u"铜"_s, u"铜"_s}, {0, {page}});
    const QString figures =
        u"zhangzi,shengzi,dazhang,baozhang,diezi,jiangzi,dadie,baodie,zongfen,zhangfu"_s;
    const QString expected = u"2026-11-24 00:00:00|3|1|1|2|5|2|1|1|1|125"_s;
    EXPECT_EQ(heatRows(u"select riqi,"_s + figures + u" from shophq order by riqi"_s).mid(1),
              QStringList{expected});
    EXPECT_EQ(heatRows(u"select riqi,"_s + figures + u",aboutgegu from shopname"_s),
              QStringList{expected + u"|SH601899"_s});
    runHeat(u"delete from shopname"_s);
    runHeat(u"delete from shophq"_s);
    EXPECT_THROW(commodities.write({u"铜"_s, u"铜"_s}, {0, {page}}), OperationError)
        << "deleted by the user while its page was asked for";
    EXPECT_TRUE(heatRows(u"select * from shophq"_s).isEmpty());
}

TEST_F(CollectorJobsTest, WordsOfHeadlinesCompareWithThoseOfHeadlines) {
    runHeat(u"insert into shopname(shopname,guanzhudu) values('铜(沪)',4)"_s);
    const Item copper{u"铜(沪)"_s, {}};
    Service headlines;
    headlines.kind = u"eastmoney"_s;
    const auto collect = [&](int day, int way, const QString& said) {
        const RunOrder order = {.day = QDate(2026, 11, day),
                                .yinqingurl = u"http://h/s?wd=tihuandm"_s};
        CommoditiesJob job(store_.stores, order, settings_, {headlines, Service()}, clock_);
        const QString path = job.nextRequest(copper, {way, {}}).value();
        const QString call = path.section(u"cb="_s, 1).section(u'&', 0, 0);
        const QString hits =
            uR"({"date":"2026-11-24 09:55:00","title":"%1","content":"铜 涨跌"})"_s.arg(said);
        const QString reply =
            uR"(%1({"code":0,"hitsTotal":%2,"result":{"cmsArticleWebOld":[%3]}}))"_s.arg(
                call, said.isEmpty() ? u"0"_s : u"9"_s, said.isEmpty() ? QString() : hits);
        const QByteArray page = (way == 0 ? reply : u"相关结果约1个"_s + said).toUtf8();
        EXPECT_FALSE(job.faultOf(copper, {way, {}}, page));
        EXPECT_FALSE(job.nextRequest(copper, {way, {page}}));
        job.write(copper, {way, {page}});
    };
    collect(20, 1, u"涨涨"_s);
    collect(21, 0, u"铜 大涨"_s);
    collect(22, 0, u"铜 涨涨"_s);
    collect(23, 0, {});
    collect(24, 1, u"涨涨涨"_s);
    EXPECT_EQ(heatRows(u"select zhangzi,diezi,dazhang,zongfen,zhangfu from shophq order by riqi"_s),
              (QStringList{u"2|0|0|2|1000"_s, u"2|1|1|3|1000"_s, u"3|1|0|2|-33.33"_s,
                           u"0|0|0|0|-100"_s, u"3|0|0|3|1000"_s}));
    EXPECT_EQ(heatRows(u"select riqi,laiyuan from xinwenshuoming where item='铜(沪)' and"
                       u" biao='shophq' order by riqi"_s),
              (QStringList{u"2026-11-21|eastmoney"_s, u"2026-11-22|eastmoney"_s,
                           u"2026-11-23|eastmoney"_s}));
}

TEST_F(CollectorJobsTest, TheDayIsThatOfTheLaunchUnlessThatHasPassed) {
    const std::pair<QString, QDate> cases[] = {{u"2026-11-25 00:00:00"_s, QDate(2026, 11, 25)},
                                               {u"2026-11-23 00:00:00"_s, QDate(2026, 11, 24)},
                                               {{}, QDate(2026, 11, 24)}};
    for (const auto& [today, day] : cases) {
        runHeat(u"update canshu set zidinyinum=7,today="_s + quoted(today));
        const RunOrder order = readRunOrder(store_.stores.heat, clock_);
        EXPECT_EQ(order.day, day);
        EXPECT_EQ(order.customDays, 0) << "the custom period is off";
    }
    runHeat(u"update canshu set iszidinyinum=1,zidinyinum=1e300"_s);
    EXPECT_EQ(readRunOrder(store_.stores.heat, clock_).customDays, 0);
    runHeat(u"delete from canshu"_s);
    EXPECT_EQ(readRunOrder(store_.stores.heat, clock_).day, QDate(2026, 11, 24));
}

TEST_F(CollectorJobsTest, ItemsKnowTheirRowOfTheDayAndWhoCountedThemBefore) {
    const auto write = [&](int day, const QString& theme, const QString& laiyuan, int days) {
        CountsWriter(store_.stores.heat, QDate(2026, 11, day))
            .writeTheme(theme, {{1, 2, 3, days, {laiyuan}}, theme});
    };
    write(22, u"白酒"_s, {}, 0);
    write(23, u"白酒"_s, u"eastmoney"_s, 0);
    write(23, u"5G(通信)"_s, {}, 0);
    write(24, u"5G(通信)"_s, u"eastmoney"_s, 0);
    write(24, u"冷门"_s, {}, 30);
    const auto known = [&] {
        const RunOrder order = readRunOrder(store_.stores.heat, clock_);
        return textsOf(ThemesJob(store_.stores, order, settings_, pages_, clock_).items(),
                       [](const Item& it) -> QString {
                           return it.key + (it.isDone ? u"|done|"_s : u"|"_s) +
                                  it.laiyuan.value_or(u"none"_s);
                       });
    };
    EXPECT_EQ(known(), (QStringList{u"5G(通信)|done|"_s, u"白酒|eastmoney"_s, u"冷门|none"_s}));
    runHeat(u"update canshu set iszidinyinum=1,zidinyinum=30"_s);
    EXPECT_EQ(known(), (QStringList{u"5G(通信)|"_s, u"白酒|eastmoney"_s, u"冷门|done|none"_s}))
        << "only counts over the same custom days are whole";
}

TEST_F(CollectorJobsTest, TheCodeTableGainsNewCodesAndNewNamesAndLosesNothing) {
    store_.run({u"delete from dmb"_s});
    store_.addCode(u"SH600000"_s, u"浦发"_s, 9, 1);
    store_.addCode(u"SH600001"_s, u"邯郸钢铁"_s, 8, 1);
    store_.addCode(u"SH600003"_s, u"东北高速"_s, 7, 1);
    const Initials initials({{u"银行"_s, u"yh"_s}});
    CodeTableJob job(store_.stores, clock_, initials, {Service()});
    const QList<Item> items = job.items();
    QStringList all = keys(job).join(u',').split(u',');
    EXPECT_EQ(all.size(), 14000);
    EXPECT_EQ(all.removeDuplicates(), 0);
    EXPECT_TRUE(all.contains(u"sz003999"_s) && all.contains(u"sh689999"_s));
    EXPECT_TRUE(requests(job, items.first()).first().startsWith(u"/list=sh600000,sh600001,"_s));

    const Item batch{u"sh600000,sh600001,sh600002,sh600003"_s, {}};
    const auto line = [](const QString& code, const QString& value) {
        return gbkFromText(u"var hq_str_"_s + code + u"=\"" + value + u"\";\n"_s);
    };
    const QByteArray page = line(u"sh600000"_s, u"浦 发银行,9.1"_s) + line(u"sh600001"_s, {}) +
                            line(u"sh600002"_s, u"齐鲁银行,5"_s) +
                            line(u"sh600003"_s, u"XD东北高,7"_s);
    EXPECT_FALSE(job.faultOf(batch, {}, page));
    EXPECT_TRUE(job.faultOf(batch, {}, line(u"sh600000"_s, u"浦发银行"_s))) << "it broke off";
    job.write(batch, {0, {page}});
    EXPECT_EQ(store_.rows(u"select dm,numdm,jc,shenmu,sp,newdmtime from dmb order by dm"_s),
              (QStringList{u"SH600000|600000|浦发银行|pfyh|9|null"_s,
                           u"SH600001|600001|邯郸钢铁||8|null"_s,
                           u"SH600002|600002|齐鲁银行|qlyh|0|2026-11-24 10:00:00"_s,
                           u"SH600003|600003|东北高速||7|null"_s}));
}

}  // namespace guanchao
