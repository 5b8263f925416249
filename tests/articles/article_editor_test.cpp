#include "articles/article_editor.h"

#include "tests/support/store_test.h"

namespace guanchao {

class ArticleEditorTest : public StoreTest {
protected:
    ArticleEditorTest() {
        store_.addArticle(u"'2016-04-01 00:00:00',' 张三 ','主题','白酒','它''s 标题',' 正文 '"_s);
        store_.addArticle(u"'2016-04-01','张三','主题','机器人','第二篇','  '"_s);
        globals_.yingyongmulu = store_.folder();
    }

    static ArticleFields typed() {
        return {{},          {u"1990"_s, u"1"_s, u"1"_s}, u" O'N "_s, u"主'题"_s, u"'"_s,
                u" it's "_s, u" 第一行'\n第二行 "_s};
    }

    QStringList article(int id) {
        return articleRows(
            u"select rq,zuozhe,dalei,xiaolei,biaoti,leirong,cishu from wenzhang"
            u" where id="_s +
            QString::number(id));
    }
    QStringList counts() { return articleRows(u"select cishu from wenzhang order by id"_s); }

    std::optional<ArticleFields> open(int id) {
        globals_.dangqianwenzhang = id;
        return editor_.open();
    }

    ArticleEditor editor_{store_.stores, globals_, clock_, dialogs_};
};

TEST_F(ArticleEditorTest, EveryReadingCountsAndSavingDoesNot) {
    globals_.wenzhangdalei = u"主题"_s;
    std::optional<ArticleFields> fields = open(1);
    const DateTexts day = {u"2016"_s, u"4"_s, u"1"_s};
    EXPECT_EQ(*fields, (ArticleFields{u"1"_s, day, u"张三"_s, u"主题"_s, u"白酒"_s, u"它's 标题"_s,
                                      u" 正文 "_s}));
    EXPECT_EQ(globals_.wenzhangdalei + QString::number(globals_.dangqianwenzhang), u"0"_s);
    EXPECT_EQ(editor_.moveTo(2)->body, QString()) << "a blank body shows as empty";
    fields = editor_.moveTo(1);
    EXPECT_EQ(editor_.save(*fields), u"修改完毕!"_s);
    EXPECT_EQ(counts(), QStringList({u"2"_s, u"1"_s}));
    EXPECT_EQ(article(1), QStringList{u"2016-04-01|张三|主题|白酒|它's 标题| 正文 |2"_s});
}

TEST_F(ArticleEditorTest, FieldsAreCheckedInTheirOrder) {
    const std::pair<void (*)(ArticleFields&), QString> cases[] = {
        {[](ArticleFields& it) { it.date.year = u"1989"_s, it.category.clear(); },
         u" 请检查一下日期!"_s},
        {[](ArticleFields& it) { it.date = {}; }, u" 请检查一下日期!"_s},
        {[](ArticleFields& it) { it.category = u"  "_s, it.title.clear(); }, u" 大类不能为空!"_s},
        {[](ArticleFields& it) { it.title = u"  "_s, it.body.clear(); }, u" 标题不能为空!"_s},
        {[](ArticleFields& it) { it.body = u"   "_s; }, u" 文章内容不能为空!"_s},
    };
    for (const auto& [type, answer] : cases) {
        for (const bool add : {true, false}) {
            ArticleFields fields = typed();
            type(fields);
            dialogs_.shown.clear();
            EXPECT_FALSE(add ? editor_.add(fields) : !editor_.save(fields).isEmpty());
            EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|"_s + answer});
        }
    }
    EXPECT_EQ(counts().size(), 2);
}

TEST_F(ArticleEditorTest, AnAddKeepsTheTextAndTheFirstSaveAdds) {
    ArticleFields fields = typed();
    EXPECT_EQ(editor_.save(fields), u"添加完毕!"_s) << "a new article";
    EXPECT_EQ(fields.id, u"3"_s);
    EXPECT_EQ(article(3),
              QStringList{u"1990-01-01 00:00:00|O'N|主'题|'|it's| 第一行'\n第二行 |0"_s});
    fields.author.clear();
    EXPECT_EQ(editor_.save(fields), u"修改完毕!"_s);
    EXPECT_EQ(article(3), QStringList{u"1990-01-01||主'题|'|it's| 第一行'\n第二行 |0"_s});
    EXPECT_TRUE(editor_.add(fields)) << "a further add makes another copy";
    EXPECT_EQ(fields.id, u"4"_s);
}

TEST_F(ArticleEditorTest, RelatedListsExcludeTheArticleAndBeginWithTheMostRead) {
    const ArticleFields fresh = *editor_.open();
    EXPECT_TRUE(editor_.related(fresh).sameDay.isEmpty());
    runArticle(
        u"insert into wenzhang(rq,zuozhe,dalei,xiaolei,biaoti,cishu) with recursive n(i) as (select"
        u" 0 union all select i+1 from n where i<209) select"
        u" '2016-04-02','张三','主题','白酒','篇',i from n"_s);
    const ArticleFields fields = *open(1);
    const RelatedArticles related = editor_.related(fields);
    EXPECT_EQ(related.sameDay, QStringList{u"2  第二篇"_s});
    EXPECT_EQ(related.sameAuthor.size(), 200);
    EXPECT_EQ(related.sameCategory.first(), u"212  篇"_s);
    EXPECT_FALSE(related.sameCategory.contains(u"1  它's 标题"_s));
    EXPECT_EQ(idOfLine(u" 212  篇 12"_s), 212);
    EXPECT_THROW(idOfLine(u"篇 12"_s), OperationError);
}

TEST_F(ArticleEditorTest, AnArticleDeletedElsewhereIsTold) {
    ArticleFields fields = *open(1);
    ArticleEditor other(store_.stores, globals_, clock_, dialogs_);
    globals_.dangqianwenzhang = 2;
    const ArticleFields second = *other.open();
    for (const bool agrees : {false, true}) {
        dialogs_.answer = agrees;
        EXPECT_EQ(outcomeOf(other.remove(second, {})), agrees);
    }
    EXPECT_FALSE(editor_.moveTo(2));
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|此文章已删除!"_s);
    EXPECT_EQ(counts(), QStringList{u"1"_s}) << "a reading that finds nothing does not count";
    fields.body = u"写了很久"_s;
    globals_.dangqianwenzhang = 1;
    EXPECT_TRUE(outcomeOf(other.remove(fields, {})));
    EXPECT_EQ(globals_.dangqianwenzhang, 0);
    dialogs_.shown.clear();
    EXPECT_EQ(editor_.save(fields), QString());
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|此文章已删除!"_s});
    EXPECT_EQ(editor_.save(fields), ArticleEditor::added) << "nothing written is lost";
    EXPECT_TRUE(article(fields.id.toInt()).first().endsWith(u"|写了很久|0"_s));
}

}  // namespace guanchao
