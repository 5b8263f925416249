// An apostrophe is a letter like any other: of a theme, an author, a title, a proxy and a folder,
// on their whole way through the program.
#include "articles/article_editor.h"
#include "base/values.h"
#include "exchange/article_import.h"
#include "exchange/backup_export.h"
#include "exchange/news_import.h"
#include "exchange/theme_import.h"
#include "research/selection_scan.h"
#include "research/selection_search.h"
#include "research/theme_history.h"
#include "tests/exchange/exchange_fixture.h"
#include "tests/support/test_history.h"
#include "utilities/proxies.h"

namespace guanchao {

class ApostropheTest : public ExchangeFixture, public ::testing::WithParamInterface<const char*> {
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

    const QString name_ = QString::fromUtf8(GetParam());
    const QString dm_ = u"SH600000"_s;
};

TEST_P(ApostropheTest, OfAThemeThatIsCompared) {
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

TEST_P(ApostropheTest, OfAThemeThatAScanChooses) {
    const QString day = u"2017-04-10"_s;
    MarketHistory market;
    market.stocks[u"SH000001"_s] = {{.day = day}};
    market.members << qMakePair(name_, u"SH6'\"0"_s);
    for (int at = 0; at < 8; ++at) {
        const QString dm = u"SH60000%1"_s.arg(at);
        market.members << qMakePair(name_, dm);
        market.stocks[dm] = {{.day = day, .zg = 1100, .sp = 1100}};
    }
    writeQuietHistory(store_.stores, store_.folder());
    writeHistory(market, store_.stores.firstHistory, store_.stores.secondHistory, true);
    ResearchRun research([](const ResearchProgress&) {});
    endOf(
        SelectionScan(store_.stores, globals_, dialogs_, research, std::make_shared<HistoryShelf>())
            .chooseThemes({}));
    EXPECT_EQ(store_.rows(u"select ticai from xuanticai"_s), QStringList{name_});
    store_.run(
        {u"insert into xuanticaigu(riqi,dm,ticai) select riqi,'SH600000',ticai from"
         u" xuanticai"_s});
    SelectionQuery query;
    query.byTheme = true;
    query.theme = name_;
    endOf(SelectionSearch(store_.stores, globals_, grid_).search(query, {}, [] {}, {}));
    EXPECT_EQ(grid_.textMatrix(1, 1), dm_);
}

TEST_P(ApostropheTest, OutIntoAFolderAndBackIn) {
    store_.run({u"insert into dzhzhuti(zhutiname,dm,jc) values("_s + quoted(name_) +
                u",'SH600000','浦''发')"_s});
    runHeat(u"insert into xinwenshul(riqi,zhutiname,onecishu) values('2026-11-23',"_s +
            quoted(name_) + u",7)"_s);
    ArticleEditor editor(store_.stores, globals_, clock_, dialogs_);
    ArticleFields fields = *editor.open();
    fields.author = fields.category = fields.subcategory = fields.title = fields.body = name_;
    EXPECT_TRUE(editor.add(fields));
    const QList<QStringList> before = {themes(), articles(), news()};

    const QString folder = store_.folder() + u"it's/"_s;
    ASSERT_TRUE(QDir().mkpath(folder));
    dialogs_.typed = folder;
    endOf(BackupExport(store_.stores, dialogs_, run_).exportData({}));
    store_.run({u"delete from dzhzhuti"_s});
    runArticle(u"delete from wenzhang"_s);
    runHeat(u"delete from xinwenshul"_s);
    for (int time = 0; time < 2; ++time) {
        endOf(ThemeImport(store_.stores, clock_, dialogs_, run_, removals_, edits_)
                  .importLibrary(folder + u"zhutibackup.ztb"_s, {}));
        dialogs_.picked = folder + u"wenzhang.ztb"_s;
        endOf(importArticles(store_.stores, dialogs_, run_, {}));
        dialogs_.picked = folder + u"caijiqi.ztb"_s;
        endOf(importNews(store_.stores, dialogs_, run_, {}));
        EXPECT_EQ((QList<QStringList>{themes(), articles(), news()}), before);
    }
}

TEST_P(ApostropheTest, OfAProxy) {
    Service vendor;
    Proxies proxies(store_.stores, dialogs_, http_, vendor);
    EXPECT_TRUE(proxies.add({{}, name_, u"80"_s, true, name_, name_, name_, true}));
    const std::optional<Proxy> proxy = proxies.proxyOf(proxies.load().lines.value(0));
    ASSERT_TRUE(proxy);
    EXPECT_EQ(proxy->server + proxy->user + proxy->password + proxy->note, name_.repeated(4));
}

INSTANTIATE_TEST_SUITE_P(Names, ApostropheTest,
                         ::testing::Values("it's", "'", "''a'", "');delete x;"));

}  // namespace guanchao
