#include "themes/watchlist.h"
#include "tests/themes/theme_fixture.h"

namespace guanchao {

class WatchlistTest : public ThemeFixture {
protected:
    WatchlistTest() {
        store_.addCode(u"SH600000"_s, u"浦发银行"_s, 10.5, 1);
        store_.addCode(u"SH600519"_s, u"贵州茅台"_s, 1500, 2);
        store_.run({u"update dmb set newhqtime='2026-11-24 09:59:00' where dm='SH600519'"_s});
    }

    QStringList column(int col) {
        watchlist_.list(grid_);
        return columnTexts(grid_, col);
    }

    Watchlist watchlist_{store_.stores, dialogs_};
};

TEST_F(WatchlistTest, TheListShowsTheQuotesOfKnownCodes) {
    EXPECT_EQ(column(1), QStringList{u"代码"_s});
    for (const QString& dm : {u"SH600000"_s, u"SH699999"_s, u"SH600519"_s}) {
        watchlist_.add(dm, u"旧名"_s);
    }
    EXPECT_EQ(column(2), QStringList({u"简称"_s, u"贵州茅台"_s, u"浦发银行"_s}));
    EXPECT_EQ(column(11), QStringList({u"行情时间"_s, u"2026-11-24 09:59:00"_s, QString()}));
    store_.run({u"update dmb set zhangfu=1"_s});
    EXPECT_EQ(column(1), QStringList({u"代码"_s, u"SH600000"_s, u"SH600519"_s})) << "as they came";
    watchlist_.remove(u"SH600519"_s, u"贵州茅台"_s);
    EXPECT_EQ(column(11), QStringList({u"行情时间"_s, QString()}))
        << "no time is left from the row that was there";
}

TEST_F(WatchlistTest, ATypedCodeIsAddedOnceInUpperCase) {
    EXPECT_FALSE(outcomeOf(watchlist_.addTyped({})));
    dialogs_.typed = u"sh600000"_s;
    EXPECT_TRUE(outcomeOf(watchlist_.addTyped({})));
    EXPECT_FALSE(outcomeOf(watchlist_.addTyped({})));
    EXPECT_EQ(dialogs_.shown.last(), u"观潮台|此股票已在自选股中。"_s);
    EXPECT_EQ(store_.rows(u"select dm,jc from zixuangu"_s), QStringList{u"SH600000|"_s});
}

}  // namespace guanchao
