#include "articles/article_browser.h"

#include "articles/article_removal.h"
#include "tests/support/store_test.h"

namespace guanchao {

class ArticleBrowserTest : public StoreTest {
protected:
    void addSome() {
        store_.addArticle(u"'2016-04-01','张三','主题','白酒','茅台涨了','涨价 it''s 提货'"_s);
        store_.addArticle(
            u"'2016-05-31 00:00:00','李四','个股','SH600519贵州茅台','调研','提货'"_s);
        store_.addArticle(u"'2016-05-02','张三','主题','机器人','订单','涨价'"_s);
    }

    QStringList idsOf(void (*type)(ArticleQuery&)) {
        ArticleQuery query;
        query.first = {u"2016"_s, u"4"_s, u"1"_s};
        query.last = {u"2016"_s, u"5"_s, u"31"_s};
        type(query);
        browser_.list(query);
        return grid_.rows() > 1 ? columnTexts(grid_, 1).mid(1) : QStringList();
    }

    void listAll() {
        idsOf([](ArticleQuery& it) { it.all = true; });
    }

    QStringList stored() { return articleRows(u"select id from wenzhang order by id"_s); }

    ArticleBrowser browser_{store_.stores, globals_, clock_, dialogs_, removals_, grid_};
};

TEST_F(ArticleBrowserTest, TheLoadReadsDatesAndListsAndTakesTheContext) {
    const DateTexts today{u"2026"_s, u"11"_s, u"24"_s};
    EXPECT_EQ(browser_.load().first, today) << "of an empty table";
    EXPECT_EQ(browser_.load().last, today);
    addSome();
    globals_.wenzhangdalei = u"主题"_s;
    globals_.wenzhangxiaolei = u"白酒"_s;
    const BrowserLoad load = browser_.load();
    EXPECT_EQ(load.first, (DateTexts{u"2016"_s, u"4"_s, u"1"_s}));
    EXPECT_EQ(load.last, (DateTexts{u"2016"_s, u"5"_s, u"31"_s}));
    EXPECT_EQ(load.lists.categories, QStringList({u"个股"_s, u"主题"_s}));
    EXPECT_EQ(load.lists.authors, QStringList({u"张三"_s, u"李四"_s})) << "by the first article";
    EXPECT_EQ(load.contextKind + load.contextValue, u"主题白酒"_s);
    EXPECT_EQ(browser_.load().contextKind, QString());
    EXPECT_EQ(subcategoriesOf(store_.stores, u" 主题 "_s), QStringList({u"机器人"_s, u"白酒"_s}));
}

TEST_F(ArticleBrowserTest, TheConditionsChoose) {
    addSome();
    store_.addArticle(u"'2016-05-02','张三','主题','机器人','同日','后来'"_s);
    const QString all = u"2 4 3 1"_s, none;
    const std::tuple<const char*, void (*)(ArticleQuery&), QString> cases[] = {
        {"newest first, of a day too", [](ArticleQuery&) {}, all},
        {"all whatever is typed", [](ArticleQuery& it) { it.all = true, it.limit = u"1"_s; }, all},
        {"blanks", [](ArticleQuery& it) { it.author = it.titleWord = it.limit = u"  "_s; }, all},
        {"author", [](ArticleQuery& it) { it.author = u" 张三 "_s; }, u"4 3 1"_s},
        {"category", [](ArticleQuery& it) { it.category = u"个股"_s; }, u"2"_s},
        {"subcategory", [](ArticleQuery& it) { it.subcategory = u"白酒 "_s; }, u"1"_s},
        {"dates", [](ArticleQuery& it) { it.first.month = it.last.month = u"5"_s; }, u"2 4 3"_s},
        {"no such day", [](ArticleQuery& it) { it.first.day = u"32"_s; }, u"2 4 3"_s},
        {"a limit", [](ArticleQuery& it) { it.limit = u" 2篇"_s; }, u"2 4"_s},
        {"a limit of none", [](ArticleQuery& it) { it.limit = u"abc"_s; }, none},
        {"a limit that no number holds", [](ArticleQuery& it) { it.limit = u"1e20"_s; }, all},
        {"words",
         [](ArticleQuery& it) {
             it.contentWords = {u"涨价"_s, {}, u"提货"_s};
         },
         u"1"_s},
        {"apostrophe", [](ArticleQuery& it) { it.contentWords[1] = u" it's "_s; }, u"1"_s},
        {"no such author", [](ArticleQuery& it) { it.author = u"O'N"_s; }, none},
        {"title", [](ArticleQuery& it) { it.titleWord = u"茅台"_s; }, u"1"_s},
    };
    for (const auto& [name, type, ids] : cases) {
        EXPECT_EQ(idsOf(type).join(u' '), ids) << name;
    }
    runArticle(
        u"insert into wenzhang(rq) with recursive n(i) as (select 1 union all select i+1 from n"
        u" where i<1000) select '2016-06-01' from n"_s);
    ArticleQuery newest;
    newest.all = true;
    const ArticleCounts counts = browser_.list(newest);
    EXPECT_EQ(grid_.rows(), 1 + 1000);
    EXPECT_EQ(counts.found, 1004);
    EXPECT_EQ(counts.listed, 1000);
}

TEST_F(ArticleBrowserTest, APressHoldsTheArticleOfAListOfSeveral) {
    addSome();
    listAll();
    browser_.press(2);
    EXPECT_EQ(globals_.dangqianwenzhang, 3);
    EXPECT_EQ(grid_.toolTipText(), u"订单"_s);
    idsOf([](ArticleQuery& it) { it.limit = u"1"_s; });
    browser_.press(1);
    EXPECT_EQ(globals_.dangqianwenzhang, 3) << "a list of one holds nothing";
    grid_.biaoji(1);
    EXPECT_TRUE(outcomeOf(browser_.removeCurrent({})));
    EXPECT_EQ(stored(), QStringList({u"1"_s, u"3"_s})) << "what the box names is what goes";
    EXPECT_TRUE(browser_.takeChosenRow());
    EXPECT_EQ(globals_.dangqianwenzhang, 2);
}

TEST_F(ArticleBrowserTest, DeletionsAskAndTakeWhatTheListShows) {
    addSome();
    listAll();
    browser_.press(3);
    grid_.biaoji(3);
    for (const bool agrees : {false, true}) {
        dialogs_.answer = agrees;
        EXPECT_EQ(outcomeOf(browser_.removeCurrent({})), agrees);
        EXPECT_EQ(stored().size(), agrees ? 2 : 3);
    }
    EXPECT_EQ(globals_.dangqianwenzhang, 0) << "a new article can be begun";
    globals_.dangqianwenzhang = 2;
    idsOf([](ArticleQuery& it) { it.limit = u"1"_s; });
    for (const bool agrees : {false, true}) {
        dialogs_.answer = agrees;
        EXPECT_EQ(endOf(browser_.removeListed({})), agrees);
        EXPECT_EQ(stored().size(), agrees ? 1 : 2) << "what the limit left out stays";
    }
    EXPECT_EQ(stored(), QStringList{u"3"_s});
    EXPECT_EQ(globals_.dangqianwenzhang, 0);
    const RemovedRows listed = *removals_.last(articleWindowPlace);
    bringBack(listed);
    removals_.forget(listed);
    listAll();
    TestStores::refuse(store_.stores.article, u"delete on wenzhang when old.id=3"_s);
    EXPECT_THROW(endOf(browser_.removeListed({})), StoreError);
    EXPECT_EQ(stored().size(), 2) << "all or none";
    EXPECT_FALSE(removals_.last(articleWindowPlace));
    EXPECT_EQ(dialogs_.shown[1], u"观潮台|确实要删除文章《茅台涨了》吗?"_s);
    EXPECT_EQ(dialogs_.shown[4], u"观潮台|确实要删除本表中显示的所有文章吗?（1 篇文章）"_s);
}

}  // namespace guanchao
