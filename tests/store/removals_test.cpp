#include "store/removals.h"

#include "tests/support/store_test.h"

namespace guanchao {

class RemovalsTest : public StoreTest {
protected:
    void addMembers(const QStringList& themes) {
        for (const QString& theme : themes) {
            store_.addMember(theme, u"SH600519"_s);
        }
    }
    void removeThemes(const QString& condition, const QString& words,
                      const QString& place = u"甲"_s) {
        Connection store = store_.stores.main.open();
        Removal removal(removals_, store, store_.stores.main);
        Transaction transaction(store);
        removal.keep({u"dzhzhuti"_s, {u"zhutiname"_s, u"dm"_s}}, condition);
        store.execute(u"delete from dzhzhuti "_s + condition);
        transaction.commit();
        removal.complete(place, words);
    }
    QString wordsOf(const QString& place) {
        const auto last = removals_.last(place);
        return last ? last->words : QString();
    }
    void undo(const QString& place = u"甲"_s) {
        const RemovedRows last = *removals_.last(place);
        bringBack(last);
        removals_.forget(last);
    }
    QString rows() {
        return store_.rows(u"select rowid,zhutiname from dzhzhuti order by rowid"_s).join(u' ');
    }
};

TEST_F(RemovalsTest, TheLastOfAPlaceComesBackFirstToWhereItWas) {
    addMembers({u"一"_s, u"二"_s, u"三"_s, u"四"_s});
    const QString all = rows();
    removeThemes(u"where zhutiname='二'"_s, u"二"_s);
    removeThemes(u"where zhutiname='三'"_s, u"三"_s, u"乙"_s);
    removeThemes({}, u"其余"_s);
    removeThemes({}, u"没有"_s);
    EXPECT_EQ(wordsOf(u"甲"_s), u"其余"_s) << "what took nothing is none";
    undo();
    EXPECT_EQ(rows(), u"1|一 4|四"_s);
    EXPECT_EQ(wordsOf(u"甲"_s), u"二"_s);
    undo(u"乙"_s);
    undo();
    EXPECT_EQ(rows(), all);
    EXPECT_EQ(wordsOf(u"甲"_s), QString());
    const QString folder = store_.folder() + u"撤消/"_s;
    EXPECT_EQ(QDir(folder).count(), 2) << "no file is left";
    writeFile(folder + u"1.mzdat"_s);  // of a killed one
    const Removals next(folder);
    EXPECT_FALSE(QFile::exists(folder));
}

TEST_F(RemovalsTest, RowsWhosePlacesAreTakenComeBackBehindAndNoneTwice) {
    addMembers({u"一"_s, u"二"_s});
    removeThemes({}, u"全部"_s);
    addMembers({u"新"_s, u"二"_s});
    const RemovedRows last = *removals_.last(u"甲"_s);
    bringBack(last);
    bringBack(last);
    EXPECT_EQ(rows(), u"1|新 2|二 3|一"_s);
}

TEST_F(RemovalsTest, KeyedRowsComeBackWithTheirValuesAndAreKeptUnderTheKey) {
    runArticle(u"insert into wenzhang(id,biaoti,cishu) values(7,'茅台',3),(9,null,1)"_s);
    const QString query = u"select id,biaoti,cishu,leirong from wenzhang order by id"_s;
    const QStringList all = articleRows(query);
    {
        Connection store = store_.stores.article.open();
        Removal removal(removals_, store, store_.stores.article);
        removal.keep({u"wenzhang"_s, {}}, u"where id=7"_s);
        removal.keep({u"wenzhang"_s, {}}, u"where id=9"_s);
        store.execute(u"delete from wenzhang where id=7"_s);
        removal.complete(u"甲"_s, u"文章"_s);
    }
    const QString kept = removals_.last(u"甲"_s)->keptIn;
    EXPECT_THROW(Connection(kept, {}), StoreError);
    EXPECT_EQ(TestStores::rows({kept, store_.stores.article.key}, u"select id from wenzhang"_s),
              QStringList{u"7"_s})
        << "what has stayed isn't kept";
    undo();
    EXPECT_EQ(articleRows(query), all);
}

}  // namespace guanchao
