#include "themes/stock_themes.h"
#include "tests/themes/theme_fixture.h"

namespace guanchao {

class StockThemesTest : public ThemeFixture {
protected:
    StockThemesTest() {
        store_.run(
            {u"insert into dzhzhuti(zhutiname,dm,jc) values('银行','SH600000','浦发银行集团'),"
             u"('上海','SH600000','浦发银行集团'),('退市','SH699999','老股')"_s});
    }

    void share(const QString& dm, const QString& jc) {
        globals_.dangqiandm = dm;
        globals_.dangqianjc = jc;
    }
    StockThemes::Stock load() {
        StockThemes::Stock shown;
        themes_.load([&](const StockThemes::Stock& stock) { shown = stock; });
        return shown;
    }

    StockThemes themes_{store_.stores, globals_, clock_, dialogs_, edits_, grid_};
};

TEST_F(StockThemesTest, FindHandsTheTypedStockToTheNextLoad) {
    EXPECT_EQ(themes_.find(u" SZ000001"_s), std::nullopt);
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台| 此代码没有找到主题!"_s});
    EXPECT_EQ(globals_.dangqiandm, QString());
    EXPECT_EQ(themes_.find(u" SH600000 "_s), u"浦发银行集团"_s);
    EXPECT_EQ(globals_.dangqiandm + globals_.dangqianjc, u"SH600000浦发银行集团"_s);
    load();
    EXPECT_EQ(grid_.rows(), 3);
    store_.run({u"delete from dzhzhuti where zhutiname='上海'"_s});
    EXPECT_TRUE(themes_.find(u"sh600000"_s));
    EXPECT_EQ(load().code, u"SH600000"_s);
    EXPECT_EQ(grid_.rows(), 2);
}

TEST_F(StockThemesTest, TheStockOfTheRowJoinsATypedTheme) {
    share(u"SH600000"_s, u"银行"_s);
    EXPECT_FALSE(outcomeOf(themes_.joinAnother({})));
    dialogs_.typed = u"上海"_s;
    EXPECT_FALSE(outcomeOf(themes_.joinAnother({})));
    dialogs_.typed = u" 新主题 "_s;
    dialogs_.onInput = [this] { share(u"SH699999"_s, u"退市"_s); };
    EXPECT_TRUE(outcomeOf(themes_.joinAnother({})));
    dialogs_.onInput = nullptr;
    share(u"SH600000"_s, u"银行"_s);
    EXPECT_EQ(store_.rows(u"select * from dzhzhuti where zhutiname='新主题'"_s),
              QStringList{u"新主题|SH600000|浦发银行|2026-11-24 00:00:00|5|0"_s});
    dialogs_.typed = u"x'y"_s;
    EXPECT_TRUE(outcomeOf(themes_.joinAnother({})));
    share(u"SH699999"_s, u"退市"_s);
    dialogs_.typed = u"新主题"_s;
    EXPECT_THROW(outcomeOf(themes_.joinAnother({})), OperationError) << "no short name to be had";
    share(u"SH600000"_s, u"银行"_s);
    themes_.leave();
    EXPECT_EQ(store_.rows(u"select zhutiname from dzhzhuti where dm='SH600000'"_s),
              QStringList({u"x'y"_s, u"上海"_s, u"新主题"_s}));
}

}  // namespace guanchao
