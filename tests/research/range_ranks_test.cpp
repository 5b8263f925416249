#include "research/range_ranks.h"

#include <cmath>

#include "base/pause.h"
#include "base/values.h"
#include "grid/heat_colour.h"
#include "research/history_state.h"
#include "research/rank_tables.h"
#include "services/stock_code.h"
#include "tests/support/store_test.h"
#include "tests/support/test_history.h"

namespace guanchao {

// The index trades from Monday the 28th of December 2026 to Tuesday the 5th of January, without the
// Friday of new year, 1 % each day.
class RangeRanksTest : public StoreTest {
protected:
    RangeRanksTest() {
        for (const QDate& day : {monday_, monday_.addDays(1), monday_.addDays(2),
                                 monday_.addDays(3), monday_.addDays(7), monday_.addDays(8)}) {
            addDay(u"SH000001"_s, day, u"1"_s);
        }
    }

    void addDay(const QString& dm, const QDate& day, const QString& gain) {
        store_.run({u"insert into geguhq values('"_s + dm + u"','"_s + timeText(day) + u"',"_s +
                    gain + u",9)"_s});
    }

    RangeRanks ranks(const QDate& last = QDate(2027, 1, 31)) {
        return rankThemes(store_.stores, {RangeSource::downloaded, monday_, last}, [] {});
    }

    static QString words(const RankedTheme& theme) {
        const QStringList weeks = textsOf(
            theme.weeks, [](double week) { return std::isnan(week) ? u"-"_s : numberText(week); });
        QString words;
        QTextStream(&words) << theme.name << ' ' << theme.gain << ' ' << theme.market << ' '
                            << theme.days << ' ' << theme.membersWithRows << '/' << theme.members
                            << ' ' << weeks.join(u' ');
        return words;
    }

    const QDate monday_{2026, 12, 28};
};

TEST_F(RangeRanksTest, AThemeIsTheMeanOfItsMembersThatHaveARowOnTheDaysOfTheIndex) {
    for (const QString& dm : {u"SH600001"_s, u"SH600002"_s, u"SH600009"_s}) {
        store_.addMember(u"乙"_s, dm);
    }
    store_.addMember(u"甲"_s, u"SH600001"_s);
    store_.addMember(u"空"_s, u"SH600009"_s);
    store_.addMember(u"丁"_s, u"SH600003"_s);
    addDay(u"SH600001"_s, monday_, u"4"_s);
    addDay(u"SH600002"_s, monday_, u"2"_s);
    addDay(u"SH600002"_s, monday_.addDays(1), u"null"_s);
    addDay(u"SH600001"_s, monday_.addDays(4), u"50"_s);   // not a day of the index
    addDay(u"SH600001"_s, monday_.addDays(-3), u"50"_s);  // before the range
    addDay(u"SH600001"_s, monday_.addDays(7), u"-1"_s);
    addDay(u"SH600003"_s, monday_.addDays(3), u"1"_s);
    addDay(u"SH600003"_s, monday_.addDays(2), u"1"_s);
    const RangeRanks all = ranks();
    EXPECT_EQ(all.days, 6);
    EXPECT_EQ(all.weeks, QList<QDate>({monday_, monday_.addDays(7)})) << "a week over new year";
    EXPECT_EQ(all.withoutRows, 1);
    EXPECT_EQ(textsOf(all.themes, words),
              QStringList({u"甲 3 2 2 1/1 4 -1"_s, u"丁 2 2 2 1/1 2 -"_s, u"乙 2 2 2 2/3 3 -1"_s}))
        << "equals by name";
    EXPECT_EQ(words(ranks(monday_).themes.first()), u"甲 4 1 1 1/1 4"_s);
}

TEST_F(RangeRanksTest, TheHistoryDatabaseHasItsOwnIndexAndGainsOverTheFormerClose) {
    Stores& stores = store_.stores;
    const QString first = dateText(monday_), second = dateText(monday_.addDays(7));
    MarketHistory history;
    history.stocks[leadingIndex] = {{.day = first}, {.day = second, .zg = 1010, .sp = 1010}};
    history.stocks[u"SH600001"_s] = {{.day = first, .zg = 1100, .sp = 1100}};
    history.members << qMakePair(u"别处的"_s, u"SH600001"_s);
    writeHistory(history, stores.firstHistory, stores.secondHistory, true);
    store_.addMember(u"甲"_s, u"SH600001"_s);
    const RangeQuestion question = {RangeSource::history, monday_, monday_.addDays(8)};
    const RangeRanks ranks = rankThemes(stores, question, [] {});
    EXPECT_EQ(ranks.days, 2);
    ASSERT_EQ(ranks.themes.size(), 1) << "the themes are those of the main store";
    EXPECT_EQ(words(ranks.themes[0]), u"甲 10 0 1 1/1 10 -"_s);
}

TEST_F(RangeRanksTest, AStopEndsTheRankingAndWithoutTheIndexThereIsNone) {
    store_.addMember(u"甲"_s, u"SH600001"_s);
    addDay(u"SH600001"_s, monday_, u"4"_s);
    const RangeQuestion question = {RangeSource::downloaded, monday_, monday_};
    EXPECT_THROW(rankThemes(store_.stores, question, [] { throw Cancelled(); }), Cancelled);
    store_.run({u"delete from geguhq where dm='SH000001'"_s});
    const RangeRanks none = ranks();
    EXPECT_EQ(none.themes.size(), 0);
    EXPECT_TRUE(ranksLine(none, question).contains(u"没有这段日期的大盘行情"_s));
    fillRanks(none, grid_);
    EXPECT_EQ(grid_.rows() + grid_.cols(), 2) << "the hint of the view shows";
}

}  // namespace guanchao
