#include "research/history_shelf.h"

#include "tests/support/store_test.h"
#include "tests/support/test_history.h"

namespace guanchao {

class HistoryShelfTest : public StoreTest {
protected:
    void read(HistoryLoan& loan) {
        loan.columns().take(first_, second_);
        loan.columns().readAll(first_, second_, [](int, int) {});
    }

    const StoreFile first_ = {store_.folder() + QStringLiteral("first.db3"), {}};
    const StoreFile second_ = {store_.folder() + QStringLiteral("second.db3"), {}};
    SharedHistory shared_;
};

TEST_F(HistoryShelfTest, RunsShareWhatIsReadButNeverAtOnce) {
    MarketHistory history;
    history.stocks[QStringLiteral("SH000001")] = {{.day = QStringLiteral("2017-04-10")}};
    history.stocks[QStringLiteral("SH600000")] = {{.day = QStringLiteral("2017-04-10")}};
    history.members << qMakePair(QStringLiteral("题"), QStringLiteral("SH600000"));
    writeHistory(history, first_, second_, true);
    const auto ofOneWindow = shared_.shelf();
    {
        const auto ofAnother = shared_.shelf();
        HistoryLoan other(ofAnother);
        HistoryLoan one(ofOneWindow);
        EXPECT_NE(&one.columns(), &other.columns());
        read(one);
    }
    {
        // Though the empty ones were laid back last.
        HistoryLoan again(shared_.shelf());
        EXPECT_TRUE(again.columns().stocks().contains(QStringLiteral("SH600000")));
    }
}

TEST_F(HistoryShelfTest, WhatWasReadGoesWithTheLastWindow) {
    std::weak_ptr<HistoryShelf> shelf = shared_.shelf();
    EXPECT_TRUE(shelf.expired());
}

}  // namespace guanchao
