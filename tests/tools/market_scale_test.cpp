#include "tools/market_scale/market_scale.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "research/selection_scan.h"
#include "tests/support/fakes.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"
#include "tools/market_scale/history_scale.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

// The benches measure on them: what is chosen there must be worth measuring.
TEST(MarketScaleTest, TheScansFindThemesInAMarketOfAnySize) {
    const QTemporaryDir folder;
    makeMarketScale(folder.path(), {.stocks = 60, .themes = 6, .memberships = 120});
    Stores stores = storesIn(applicationFolder(folder.path()));
    EXPECT_EQ(TestStores::rows(stores.main,
                               u"select (select count(*) from dmb),count(*),count(distinct"
                               u" zhutiname),count(distinct dm)>50 from dzhzhuti"_s),
              QStringList{u"63|120|6|1"_s});
    for (const bool indexed : {true, false}) {
        const QString name = folder.filePath(indexed ? u"indexed"_s : u"bare"_s);
        stores.firstHistory = {name + u"1"_s, {}};
        stores.secondHistory = {name + u"2"_s, {}};
        makeHistoryScale(stores.firstHistory, stores.secondHistory,
                         {.stocks = 60, .days = 40, .themes = 6, .memberships = 120}, indexed);
        Globals globals;
        FakeDialogs dialogs;
        FakePump pump;
        ResearchRun run(pump, [](const ResearchProgress&) {});
        SelectionScan(stores, globals, dialogs, run).chooseThemes();
    }
    const QStringList chosen = TestStores::rows(
        stores.main, u"select count(*)/2,count(*)%2,count(distinct riqi)>5 from xuanticai"_s);
    EXPECT_TRUE(chosen.first().endsWith(u"|0|1"_s))
        << chosen.first().toStdString() << ": the same on both, on more than five days";
}

}  // namespace guanchao
