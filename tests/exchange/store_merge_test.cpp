#include "exchange/article_import.h"
#include "exchange/news_import.h"
#include "exchange/theme_import.h"
#include "heat/news_notes.h"
#include "store/prepared_stores.h"
#include "tests/exchange/exchange_fixture.h"

namespace guanchao {

class StoreMergeTest : public ExchangeFixture {
protected:
    // A store file of the schema with the rows of the statements, picked in the file dialog.
    StoreFile pick(Schema schema, const QString& key, const QStringList& statements) {
        const StoreFile file{store_.folder() + u"%1.ztb"_s.arg(++files_), key};
        createStore(file.path, file.key, schemaText(schema));
        execute(file, statements);
        dialogs_.picked = file.path;
        return file;
    }
    int files_ = 0;
    ThemeImport theme_{store_.stores, clock_, dialogs_, run_, removals_, edits_};
};

TEST_F(StoreMergeTest, NewsThatIsMissingArrivesAndNewsThatIsThereStays) {
    execute(
        store_.stores.heat,
        {u"insert into xinwenshul(riqi,zhutiname,onecishu) values('2026-11-23 18:00:00','白酒',7)"_s,
         u"insert into shopname(shopname,riqi,zhangzi) values('铜','2026-11-23',7)"_s});
    pick(
        Schema::heat, store_.stores.heat.key,
        {u"insert into xinwenshul values('2026-11-23 09:00:00','白酒',1,1,1,1,1,1,1,1)"_s,
         u"insert into xinwenshul values('2026-11-24 09:30:05','白酒',1,2.25,3,-0.5,5,1e20,30,1)"_s,
         u"insert into shophq values('铜','2026-11-24 10:00:00',1,2,3,4,5,6,7,8,9.5,-10.25)"_s,
         u"insert into shopname values('铜',9,'新','','',1,1,1,1,1,1,1,1,1,1)"_s,
         u"insert into shopname values('锌',3,'驰宏锌锗','2016-04-01 "
         u"09:30:05','2026-11-24',1,2,3,4,5,"
         u"6,7,8,9.5,-10.25)"_s,
         u"insert into shopname values('铅',null,null,null,null,1,null,3,4,5,6,7,8,9,10)"_s});
    {
        Connection file(dialogs_.picked, store_.stores.heat.key);
        for (const QString& day : {u"2026-11-23"_s, u"2026-11-24"_s}) {
            writeNewsNote(file, {u"xinwenshul"_s, u"白酒"_s, day}, {u"eastmoney"_s, false, true});
        }
    }
    for (const int count : {4, 0}) {
        endOf(importNews(store_.stores, dialogs_, run_, {}));
        EXPECT_EQ(heatRows(u"select * from xinwenshuoming"_s),
                  QStringList{u"xinwenshul|2026-11-24|白酒|eastmoney|0|1|0"_s})
            << "of the row that came";
        EXPECT_EQ(told().last(), u"观潮台|导入主题新闻数量完成，共导入新的记录：%1条"_s.arg(count));
        EXPECT_EQ(heatRows(u"select * from xinwenshul"_s),
                  QStringList({u"2026-11-23 18:00:00|白酒|7|0|0|0|0|0|0|0"_s,
                               u"2026-11-24 00:00:00|白酒|1|2.25|3|-0.5|5|1E+20|30|1"_s}));
        EXPECT_EQ(heatRows(u"select * from shophq"_s),
                  QStringList{u"铜|2026-11-24 00:00:00|1|2|3|4|5|6|7|8|9.5|-10.25"_s});
        EXPECT_EQ(
            heatRows(u"select * from shopname"_s).mid(1),
            QStringList({u"锌|3|驰宏锌锗|2016-04-01 09:30:05|2026-11-24 00:00:00|1|2|3|4|5|6|7|8"
                         u"|9.5|-10.25"_s,
                         u"铅|null||||1|null|3|4|5|6|7|8|9|10"_s}));
    }
}

TEST_F(StoreMergeTest, AFailureKeepsTheTablesBeforeIt) {
    pick(Schema::heat, store_.stores.heat.key,
         {u"insert into xinwenshul values('2026-11-24','白酒',1,1,1,1,1,1,1,1)"_s,
          u"insert into shophq values('锌','2026-11-24',1,1,1,1,1,1,1,1,1,1)"_s,
          u"insert into shophq values('铜','2026-11-24',1,'1);delete',1,1,1,1,1,1,1,1)"_s});
    const auto failure =
        raisedBy<OperationError>([this] { endOf(importNews(store_.stores, dialogs_, run_, {})); });
    EXPECT_EQ(failure.activity(), u"导入新闻和商品"_s);
    EXPECT_EQ(failure.reason(),
              u"文件 "_s + dialogs_.picked + u" 的第 2 行，dazhang 不是数字：1);delete"_s);
    EXPECT_EQ(failure.remains(), u"已经写入并保留：主题新闻数量。其余没有写入。"_s);
    EXPECT_EQ(heatRows(u"select * from xinwenshul"_s).size(), 1);
    EXPECT_EQ(heatRows(u"select * from shophq"_s), QStringList());
}

TEST_F(StoreMergeTest, ArticlesAreKnownByCategorySubcategoryAndTitle) {
    const QStringList rows = {
        u"insert into wenzhang values(1,'2021-01-01','乙','主题','白酒','旧题','新文',5)"_s,
        u"insert into wenzhang values(2,'2021-01-01','乙','主题','银行','旧题','第一',5)"_s,
        u"insert into wenzhang values(3,'2021-01-02 08:30:00','乙','主题','银行','旧题','第二',5)"_s,
        u"insert into wenzhang values(4,'2021-01-01','乙','个股','白酒',null,'无题',5)"_s,
        u"insert into wenzhang values(5,null,null,'','','只有题',null,5)"_s};
    execute(store_.stores.article, {rows[0]});
    pick(Schema::article, store_.stores.article.key, rows);
    const QStringList merged = {u"2021-01-01|乙|主题|白酒|旧题|新文|5"_s,
                                u"2021-01-01 00:00:00|乙|主题|银行|旧题|第一|0"_s,
                                u"||||只有题||0"_s};
    for (const int count : {2, 0}) {
        endOf(importArticles(store_.stores, dialogs_, run_, {}));
        EXPECT_EQ(told().last(), u"观潮台|导入文章完成，共导入新的文章：%1篇"_s.arg(count));
        EXPECT_EQ(
            articleRows(u"select rq,zuozhe,dalei,xiaolei,biaoti,leirong,cishu from wenzhang"_s),
            merged);
    }
    pick(Schema::article, store_.stores.article.key,
         {u"insert into wenzhang values(1,'2021-01-01','乙','个股','x','好的','文',0)"_s,
          u"insert into wenzhang values(2,'2021-01-01','乙','个股','x','坏的','文',0)"_s});
    execute(store_.stores.article,
            {u"create trigger full before insert on wenzhang when new.biaoti='坏的'"
             u" begin select raise(abort,''); end"_s});
    EXPECT_THROW(endOf(importArticles(store_.stores, dialogs_, run_, {})), StoreError);
    EXPECT_EQ(articleRows(u"select id from wenzhang"_s).size(), 3) << "nothing of the run remains";
}

TEST_F(StoreMergeTest, ALibraryAddsWhatIsMissing) {
    execute(store_.stores.main,
            {u"insert into dzhzhuti values('白酒','SH600519','旧','2020-01-01',1,2)"_s,
             u"insert into dmb(dm,jc,newdmtime) values('SH600519','旧','2020-01-01')"_s});
    const StoreFile file =
        pick(Schema::backup, store_.stores.backupKey,
             {u"insert into dzhzhuti values('白酒','SH600519','新','2015-01-01',9,9)"_s,
              u"insert into dzhzhuti values('白酒','sh600519','新','2015-01-01',9,9)"_s,
              u"insert into dzhzhuti values('银行','sh600519','新','2015-01-01',7,6)"_s,
              u"insert into dmb values('SH600519','600519','新','x','2015-01-01')"_s,
              u"insert into dmb values('SZ000858','000858','五粮液','wly','2015-01-01')"_s,
              u"insert into dmb values('SZ0008581','0008581','长','c','2015-01-01')"_s,
              u"insert into dmb values('HK00700','00700','外','w','2015-01-01')"_s,
              u"insert into dmb values('sz000001','000001','平安','pa','')"_s});
    for (const int count : {1, 0}) {
        endOf(theme_.importLibrary(file.path, {}));
        EXPECT_EQ(told(), QStringList{u"观潮台|导入主题完成，共导入新的数据：%1条"_s.arg(count)});
        EXPECT_EQ(store_.rows(u"select * from dzhzhuti"_s),
                  QStringList({u"白酒|SH600519|旧|2020-01-01|1|2"_s,
                               u"银行|SH600519|新|2026-11-24 10:00:00|7|6"_s}));
        EXPECT_EQ(store_.rows(u"select dm,numdm,jc,shenmu,newdmtime from dmb"_s),
                  QStringList({u"SH600519|null|旧|null|2020-01-01"_s,
                               u"SZ000858|000858|五粮液|wly|2026-11-24 10:00:00"_s,
                               u"SZ000001|000001|平安|pa|2026-11-24 10:00:00"_s}));
    }
    EXPECT_EQ(store_.rows(u"select xiugaizhutitime from tempcanshu"_s),
              QStringList{u"2026-11-01 08:00:00"_s})
        << "this import leaves the stamp alone";
}

TEST_F(StoreMergeTest, FilesThatAreNoStoresFail) {
    const QString wrongKey = pick(Schema::article, u"anderer"_s, {}).path;
    const QString noTables = pick(Schema::pinyin, store_.stores.heat.key, {}).path;
    const QString article =
        u"insert into wenzhang(leirong) values('%1')"_s.arg(QString(9000, u'文'));
    const QString damaged = pick(Schema::article, store_.stores.article.key, {article}).path;
    spoil(damaged, 1024);
    const QString articles = u"文章库"_s, news = u"主题新闻数量库"_s, theme = u"主题库"_s;
    const struct {
        QString path, kind, matter;
    } cases[] = {
        {wrongKey, articles, u" 不是文章库，或者密码不对"_s},
        {noTables, articles, u" 不是文章库，或者密码不对"_s},
        {noTables, news, u" 不是主题新闻数量库"_s},
        {store_.stores.article.path, theme, u" 不是主题库"_s},
        {damaged, articles, u" 已损坏"_s},
    };
    for (const auto& it : cases) {
        dialogs_.picked = it.path;
        const auto refusal = raisedBy<OperationError>([&] {
            endOf(it.kind == theme  ? theme_.importLibrary(it.path, {})
                  : it.kind == news ? importNews(store_.stores, dialogs_, run_, {})
                                    : importArticles(store_.stores, dialogs_, run_, {}));
        });
        EXPECT_TRUE(begins(refusal.reason(), u"文件 "_s + it.path + it.matter +
                                                 u"，请选择“导出数据”写的另一个"_s + it.kind));
    }
    dialogs_.picked = store_.folder();
    EXPECT_THROW(endOf(importNews(store_.stores, dialogs_, run_, {})), StoreError) << "a folder";
    dialogs_.picked.clear();
    endOf(importNews(store_.stores, dialogs_, run_, {}));
    EXPECT_EQ(told().last(), u"观潮台|没有选择文件。"_s);
}

TEST_F(StoreMergeTest, AnImportMeetsWhatOthersHaveWrittenMeanwhile) {
    const StoreFile file = pick(Schema::backup, store_.stores.backupKey,
                                {u"insert into dzhzhuti values('白酒','SH600519','','',1,1)"_s,
                                 u"insert into dzhzhuti values('银行','SH600000','','',1,1)"_s});
    Connection other = held(store_.stores.main, u"immediate"_s);
    other.execute(
        u"insert into dzhzhuti(zhutiname,dm,ztktime) values('银行','SH600000','2020-01-01')"_s);
    runs_.start([&](std::stop_token stop) { return theme_.importLibrary(file.path, stop); });
    ASSERT_TRUE(QTest::qWaitFor([this] { return seen_.last().progress.done == 2; }));
    other.execute(u"commit"_s);
    ASSERT_TRUE(allEnded());
    EXPECT_EQ(store_.rows(u"select zhutiname,ztktime from dzhzhuti order by rowid"_s),
              QStringList({u"银行|2020-01-01"_s, u"白酒|2026-11-24 10:00:00"_s}));
}

}  // namespace guanchao
