#include "research/history_shelf.h"

#include "tests/support/store_test.h"
#include "tests/support/test_history.h"

namespace guanchao {

class HistoryShelfTest : public StoreTest {};

TEST_F(HistoryShelfTest, RunsShareWhatIsReadButNeverAtOnce) {
    MarketHistory history;
    for (const QString& dm : {u"SH000001"_s, u"SH600000"_s}) {
        history.stocks[dm] = {{.day = u"2017-04-10"_s}};
    }
    history.members << qMakePair(u"题"_s, u"SH600000"_s);
    const auto& [first, second] = std::tie(store_.stores.firstHistory, store_.stores.secondHistory);
    writeHistory(history, first, second, true);
    SharedHistory shared;
    const auto ofOneWindow = shared.shelf();
    {
        const auto ofAnother = shared.shelf();
        HistoryLoan other(ofAnother);
        HistoryLoan one(ofOneWindow);
        EXPECT_NE(&one.columns(), &other.columns());
        one.columns().take(first, second);
        one.columns().readAll(first, second, [](int, int) {});
    }
    {
        // Though the empty ones were laid back last.
        HistoryLoan again(shared.shelf());
        EXPECT_TRUE(again.columns().stocks().contains(u"SH600000"_s));
    }
    SharedHistory other;
    const std::weak_ptr<HistoryShelf> left = other.shelf();
    EXPECT_TRUE(left.expired()) << "what was read goes with the last window";
}

}  // namespace guanchao
