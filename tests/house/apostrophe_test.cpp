// An apostrophe is a letter like any other: of a theme, an author, a title and a proxy, on their
// whole way through the program. The folder of the stores has one in every test.
#include "articles/article_editor.h"
#include "base/values.h"
#include "exchange/article_import.h"
#include "exchange/backup_export.h"
#include "exchange/news_import.h"
#include "exchange/theme_import.h"
#include "research/selection_search.h"
#include "research/theme_history.h"
#include "tests/exchange/exchange_fixture.h"
#include "utilities/proxies.h"

namespace guanchao {

class ApostropheTest : public ExchangeFixture {
protected:
    ApostropheTest() {
        store_.addCode(dm_, u"浦''发"_s, 10, 1);
        globals_.yingyongmulu = store_.folder();
    }

    QStringList themes() { return store_.rows(u"select zhutiname,dm,jc from dzhzhuti"_s); }
    QStringList articles() {
        return articleRows(u"select zuozhe,dalei,xiaolei,biaoti,leirong from wenzhang"_s);
    }
    QStringList news() { return heatRows(u"select zhutiname,onecishu from xinwenshul"_s); }

    const QString name_ = u"'it''s');delete x;"_s;
    const QString dm_ = u"SH600000"_s;
};

TEST_F(ApostropheTest, OfAThemeThatIsCompared) {
    store_.addMember(name_, dm_);
    store_.run({u"insert into geguhq values('SH000001','2026-11-02 00:00:00',1,9)"_s,
                u"insert into geguhq values('SH600000','2026-11-02 00:00:00',2,9)"_s});
    AskedHistory asked;
    const DateTexts day = dateTexts({2026, 11, 2});
    ThemeHistory history(store_.stores, globals_, clock_, dialogs_,
                         PastPrices{{http_, clock_, {}}, {http_, {}}}, asked, grid_,
                         [](const ThemeHistoryStep&) {});
    endOf(history.compare(day, day, name_, {}));
    EXPECT_EQ(store_.rows(u"select zhutiname,zhutizhangfu from zhutidapanhq"_s),
              QStringList{name_ + u"|2"_s});
}

TEST_F(ApostropheTest, OfAThemeThatIsSearched) {
    const QString insert = u"insert into %1 values('2017-04-10 00:00:00',%2)"_s;
    store_.run({insert.arg(u"xuanticai(riqi,ticai)"_s, quoted(name_)),
                insert.arg(u"xuanticaigu(riqi,ticai,dm)"_s, quoted(name_) + u",'SH600000'"_s)});
    SelectionQuery query;
    query.byTheme = true;
    query.theme = name_;
    endOf(SelectionSearch(store_.stores, globals_, grid_).search(query, {}, [] {}, {}));
    EXPECT_EQ(grid_.textMatrix(1, 1), dm_);
}

TEST_F(ApostropheTest, OutIntoAFolderAndBackIn) {
    store_.run({u"insert into dzhzhuti(zhutiname,dm,jc) values("_s + quoted(name_) +
                u",'SH600000','浦''发')"_s});
    runHeat(u"insert into xinwenshul(riqi,zhutiname,onecishu) values('2026-11-23',"_s +
            quoted(name_) + u",7)"_s);
    ArticleEditor editor(store_.stores, globals_, clock_, dialogs_);
    ArticleFields fields = *editor.open();
    fields.author = fields.category = fields.subcategory = fields.title = fields.body = name_;
    EXPECT_TRUE(editor.add(fields));
    const QList<QStringList> before = {themes(), articles(), news()};

    dialogs_.typed = exportFolder();
    endOf(BackupExport(store_.stores, dialogs_, run_).exportData({}));
    store_.run({u"delete from dzhzhuti"_s});
    runArticle(u"delete from wenzhang"_s);
    runHeat(u"delete from xinwenshul"_s);
    for (int time = 0; time < 2; ++time) {
        endOf(ThemeImport(store_.stores, clock_, dialogs_, run_, removals_, edits_)
                  .importLibrary(library().path, {}));
        dialogs_.picked = exportFolder() + u"wenzhang.ztb"_s;
        endOf(importArticles(store_.stores, dialogs_, run_, {}));
        dialogs_.picked = exportFolder() + u"caijiqi.ztb"_s;
        endOf(importNews(store_.stores, dialogs_, run_, {}));
        EXPECT_EQ((QList<QStringList>{themes(), articles(), news()}), before);
    }
}

TEST_F(ApostropheTest, OfAProxy) {
    Service vendor;
    Proxies proxies(store_.stores, dialogs_, http_, vendor);
    EXPECT_TRUE(proxies.add({{}, name_, u"80"_s, true, name_, name_, name_, true}));
    const std::optional<Proxy> proxy = proxies.proxyOf(proxies.load().lines.value(0));
    ASSERT_TRUE(proxy);
    EXPECT_EQ(proxy->server + proxy->user + proxy->password + proxy->note, name_.repeated(4));
}

}  // namespace guanchao
