#include <random>

#include "base/values.h"
#include "research/laboratory/laboratory.h"
#include "research/laboratory/period_table.h"
#include "tests/support/store_test.h"
#include "tests/support/test_history.h"

namespace guanchao {

using Prices = std::array<int, 4>;  // open, high, low, close

static constexpr Prices flat(int price) {
    return {price, price, price, price};
}
static constexpr Prices still = flat(1000);

class BacktestTest : public StoreTest {
protected:
    BacktestTest() {
        for (const QString& day : days_) {
            history_.stocks[u"SH000001"_s] << HistoryRow{.day = day};
        }
        rule_.atLimit = 2;
        rule_.holdDays = 2;
        rule_.commission = rule_.stampTax = rule_.slippage = 0;
    }

    // The theme has so many stocks at their limit on the day.
    void addTheme(const QString& name, int atLimit, int day = signalDay) {
        for (int at = 0; at < atLimit; ++at) {
            const QString dm = u"SH601%1"_s.arg(100 + history_.members.size());
            history_.members << qMakePair(name, dm);
            history_.stocks[dm] << HistoryRow{.day = days_[day], .zg = 1100, .sp = 1100};
        }
    }
    // A stock that closes at 10 yuan up to the signal and moves then; a day of zeros is left out.
    // Behind the last day it stands still.
    void addStock(const QString& theme, const QString& dm, const QList<Prices>& moves,
                  int closeOfSignal = 1000) {
        history_.members << qMakePair(theme, dm);
        QList<HistoryRow>& rows = history_.stocks[dm];
        for (int at = 0; at <= signalDay; ++at) {
            rows << HistoryRow{.day = days_[at]};
        }
        rows.last().sp = closeOfSignal;
        for (qsizetype at = 0; at < moves.size(); ++at) {
            const auto& [kp, zg, zd, sp] = moves[at];
            if (kp > 0) {
                rows << HistoryRow{
                    .day = days_[signalDay + 1 + at], .kp = kp, .zg = zg, .zd = zd, .sp = sp};
            }
        }
    }

    BacktestResult run() {
        writeHistory(history_, store_.stores.firstHistory, store_.stores.secondHistory, true);
        return runAgain();
    }
    BacktestResult runAgain() {
        ResearchRun run([](const ResearchProgress&) {});
        Laboratory laboratory(store_.stores, run, std::make_shared<HistoryShelf>());
        return endOf(laboratory.test(rule_, {})).value();
    }

    // The days by their distance from the signal: "SH600000 1@10 3@10.5 持有到期 5".
    QString wordsOf(const Trade& trade) const {
        const auto place = [this](DayNumber day) -> QString {
            return QString::number(days_.indexOf(dayText(day)) - signalDay) + u'@';
        };
        const QString reason = trade.reason ? guanchao::wordsOf(*trade.reason) : u"持有"_s;
        return trade.dm + u' ' + place(trade.buyDay) + numberText(roundTo(trade.buyPrice, 3)) +
               u' ' + place(trade.sellDay) + numberText(roundTo(trade.sellPrice, 3)) + u' ' +
               reason + u' ' + numberText(roundTo(trade.gain, 2));
    }
    QStringList trades(const BacktestResult& result) const {
        return textsOf(result.trades, [this](const Trade& it) { return wordsOf(it); });
    }

    static constexpr int signalDay = 12;
    const QStringList days_ = tradingDays(24);
    MarketHistory history_;
    BacktestRule rule_;
};

TEST_F(BacktestTest, ABuyAndItsSale) {
    const Prices dip = {1000, 1000, 900, 1000}, up = {1010, 1030, 1010, 1020};
    const Prices end = flat(1050), atLimit = {1100, 1100, 1000, 1000};
    const auto none = [](BacktestRule&) {};
    const auto stop = [](BacktestRule& it) { it.stopLoss = 5; };
    const auto profit = [](BacktestRule& it) { it.takeProfit = 10; };
    const auto both = [](BacktestRule& it) { it.stopLoss = 5, it.takeProfit = 10; };
    const auto fall = [](BacktestRule& it) { it.firstFall = 1, it.holdDays = 9; };
    const auto costs = [](BacktestRule& it) {
        it.commission = 1, it.stampTax = 2, it.slippage = 1;
    };
    const struct {
        const char* is;
        QList<Prices> moves;
        std::function<void(BacktestRule&)> change;
        QString trade;
        QString dm = u"SH600010"_s;
    } cases[] = {
        {"days", {still, still, up}, none, u"1@10 3@10.2 持有到期 2"_s},
        // 1.02*0.99*0.97/(1.01*1.01)
        {"costs", {still, still, up}, costs, u"1@10 3@10.2 持有到期 -3.98"_s},
        {"not on the first day", {dip, still, up}, stop, u"1@10 3@10.2 持有到期 2"_s},
        {"by the low", {still, {1000, 1000, 940, 990}}, stop, u"1@10 2@9.5 止损 -5"_s},
        {"above", {still, {1000, 1000, 951, 990}, still}, stop, u"1@10 3@10 持有到期 0"_s},
        {"opens under it", {still, {940, 990, 930, 990}}, stop, u"1@10 2@9.4 止损 -6"_s},
        {"by the high", {still, {1000, 1100, 1000, 1050}}, profit, u"1@10 2@11 止盈 10"_s},
        {"opens over it", {still, {1150, 1160, 1100, 1100}}, profit, u"1@10 2@11.5 止盈 15"_s},
        {"both on a day", {still, {1000, 1100, 950, 1000}}, both, u"1@10 2@9.5 止损 -5"_s},
        {"falls at once", {{1000, 1000, 990, 990}, up}, fall, u"1@10 2@10.1 首次下跌 1"_s},
        {"later", {still, up, {1020, 1030, 1015, 1019}, end}, fall, u"1@10 4@10.5 首次下跌 5"_s},
        {"opens at the limit", {atLimit, still, up}, none, {}},
        {"below", {{1099, 1100, 1000, 1000}, still, up}, none, u"1@10.99 3@10.2 持有到期 -7.19"_s},
        {"of STAR", {atLimit, still, up}, none, u"1@11 3@10.2 持有到期 -7.27"_s, u"SH688010"_s},
        {"one price, as under treatment", {end, still, up}, none, {}},
        {"halted on the day of the buy", {{}, still, up, up}, none, {}},
        {"halted while held", {still, {}, {}, still, up}, none, u"1@10 5@10.2 持有到期 2"_s},
        {"nobody buys", {still, flat(900), {920, 930, 910, 910}}, stop, u"1@10 3@9.2 止损 -8"_s},
        {"still held", {still, up}, none, u"1@10 2@10.2 持有 2"_s},
    };
    for (const auto& it : cases) {
        const BacktestRule usual = rule_;
        it.change(rule_);
        history_.members.clear();
        history_.stocks.removeIf([](const auto& stock) { return stock.key() != u"SH000001"_s; });
        addTheme(u"题"_s, 3);
        addStock(u"题"_s, it.dm, it.moves);
        EXPECT_EQ(trades(run()).join(u';'),
                  it.trade.isEmpty() ? QString() : it.dm + u' ' + it.trade)
            << it.is;
        rule_ = usual;
    }
}

TEST_F(BacktestTest, PricesAreAdjusted) {
    addTheme(u"题"_s, 3);
    addStock(u"题"_s, u"SH600010"_s, {still, flat(500), {510, 525, 510, 525}});
    QList<HistoryRow>& rows = history_.stocks[u"SH600010"_s];
    rows.last().fuquanyz = rows[rows.size() - 2].fuquanyz = 2;  // two shares for one
    rule_.stopLoss = 5;
    const BacktestResult result = run();
    EXPECT_EQ(trades(result), QStringList(u"SH600010 1@10 3@5.25 持有到期 5"_s));
    EXPECT_DOUBLE_EQ(result.days[signalDay + 2].capital, 1);
    EXPECT_DOUBLE_EQ(result.days[signalDay + 3].capital, 1.01) << "a fifth of it gained 5 %";
}

// 甲 has four stocks at their limit, 乙 and 丙 three; within a theme the higher gain comes first,
// equals by code. One stock belongs to two themes.
TEST_F(BacktestTest, SignalsFillTheFreePlacesInTheirOrder) {
    const QList<Prices> gains = {still, still, flat(1100)};
    const QList<Prices> loses = {still, still, {800, 900, 800, 900}};
    addTheme(u"乙"_s, 3);
    addTheme(u"丙"_s, 3);
    addTheme(u"甲"_s, 4);
    addStock(u"丙"_s, u"SH600001"_s, gains, 1050);
    addStock(u"乙"_s, u"SH600002"_s, gains, 1010);
    addStock(u"甲"_s, u"SH600004"_s, gains, 1010);
    addStock(u"甲"_s, u"SH600003"_s, loses, 1010);
    addStock(u"甲"_s, u"SH600005"_s, gains, 1020);
    history_.members << qMakePair(u"乙"_s, u"SH600005"_s);
    const QStringList order = {u"SH600005"_s, u"SH600003"_s, u"SH600004"_s, u"SH600001"_s,
                               u"SH600002"_s};
    const std::tuple<int, double, int> cases[] = {
        {1, 1.1, 4}, {2, 1.0, 3}, {4, 1.05, 1}, {5, 1.06, 0}, {10, 1.03, 0}};
    for (const auto& [positions, capital, withoutPlace] : cases) {
        rule_.positions = positions;
        const BacktestResult result = run();
        EXPECT_EQ(textsOf(result.trades, &Trade::dm), order.first(std::min(positions, 5)));
        EXPECT_NEAR(result.days.last().capital, capital, 1e-12) << positions;
        EXPECT_EQ(result.sum.withoutPlace, withoutPlace);
        EXPECT_EQ(result.sum.trades, result.trades.size());
        EXPECT_EQ(result.sum.wins, result.trades.size() - (positions > 1 ? 1 : 0));
    }
}

// What is sold at an open makes room at it, what is sold at the close for the next day.
TEST_F(BacktestTest, ASaleMakesRoom) {
    addTheme(u"甲"_s, 3);
    addTheme(u"乙"_s, 3, signalDay + 2);
    addStock(u"甲"_s, u"SH600001"_s, {still, {1000, 1000, 1000, 990}, {940, 940, 900, 900}});
    addStock(u"乙"_s, u"SH600002"_s, {still, still, still, still, still, still});
    rule_.positions = 1;
    rule_.holdDays = 2;
    EXPECT_EQ(trades(run()), QStringList(u"SH600001 1@10 3@9 持有到期 -10"_s));
    rule_.stopLoss = 5;
    EXPECT_EQ(trades(runAgain()),
              QStringList({u"SH600001 1@10 3@9.4 止损 -6"_s, u"SH600002 3@10 5@10 持有到期 0"_s}));
}

TEST_F(BacktestTest, ARuleTakesDaysThemesAndStocks) {
    addTheme(u"题"_s, 3);
    addStock(u"题"_s, u"SH600010"_s, {still, still}, 1020);
    HistoryRow& row = history_.stocks[u"SH600010"_s][signalDay];
    row.zg = 1040;
    row.chengjiaol = 300;  // 300 over (9 * 100 + 300) / 10 = 2.5
    history_.stocks[u"SH600010"_s].first().zd = 1000 - 40;
    history_.stocks[u"SH000001"_s][signalDay].sp = 1010;
    using R = BacktestRule;
    const struct {
        double R::*field;
        double takes, refuses;
    } cases[] = {
        {&R::limitUps, 3, 4},
        {&R::limitUpShare, 75, 75.1},
        {&R::themeGain, 8, 8.1},
        {&R::indexGainFrom, 0.9, 1.1},
        {&R::indexGainTo, 1.1, 0.9},
        {&R::indexMeanDays, 13, 14},
        {&R::gainFrom, 1.9, 2.1},
        {&R::gainTo, 2.1, 1.9},
        {&R::volumeRatioFrom, 2.5, 2.6},
        {&R::volumeRatioTo, 2.5, 2.4},
        {&R::positionFrom, 75, 76},
        {&R::positionTo, 75, 74},
        {&R::atLimit, 0, 1},
        {&R::lastYear, 2017, 2016},
    };
    run();
    for (const auto& it : cases) {
        const BacktestRule usual = rule_;
        for (const bool takes : {true, false}) {
            rule_.*it.field = takes ? it.takes : it.refuses;
            EXPECT_EQ(trades(runAgain()).filter(u"SH600010"_s).size(), takes ? 1 : 0)
                << &it - cases << takes;
        }
        rule_ = usual;
    }
}

TEST_F(BacktestTest, ReportDatesAreBoughtBehindTheirDayAndHeldUpToTheReport) {
    const Prices up = {1010, 1030, 1010, 1020};
    addStock(u"题"_s, u"SH600010"_s, {still, still, up, still, still});
    addStock(u"题"_s, u"SH600011"_s, {still, still, {}, still, up});
    addStock(u"题"_s, u"SH600012"_s, {still, still, up, still, still});
    rule_.source = 1;
    const auto report = [this](const QString& dm, int found, int due) {
        store_.run(
            {u"insert into yejiyuyuejinqi(dm,todayriqi,yuyuedate) values('%1','%2','%3')"_s.arg(
                dm, days_[signalDay + found], days_[signalDay + due])});
    };
    report(u"SH600010"_s, 0, 4);
    report(u"SH600011"_s, 0, 4);  // halted on the last day before it
    report(u"SH600012"_s, 0, 1);  // no day between
    report(u"SH600099"_s, 0, 4);  // without a history
    EXPECT_EQ(trades(run()), QStringList({u"SH600010 1@10 3@10.2 业绩预约日前 2"_s,
                                          u"SH600011 1@10 4@10 业绩预约日前 0"_s}));
}

// A market at random, whose days behind one are then made anew.
TEST_F(BacktestTest, TheFutureMovesNothingBeforeIt) {
    std::mt19937 random(5);
    const auto below = [&random](int bound) {
        return static_cast<int>(random() % static_cast<unsigned>(bound));
    };
    const auto makeDays = [&](QList<HistoryRow>& rows, qsizetype from) {
        rows.resize(std::min(rows.size(), from));
        for (qsizetype at = from; at < days_.size(); ++at) {
            const int former = at == 0 ? 1000 : rows.last().sp;
            const int kp = former * (95 + below(11)) / 100;
            const int sp = below(3) == 0 ? former * 11 / 10 : former * (92 + below(15)) / 100;
            rows << HistoryRow{.day = days_[at],
                               .kp = kp,
                               .zg = std::max(kp, sp),
                               .zd = std::min(kp, sp) - below(20),
                               .sp = sp,
                               .qiansp = former,
                               .chengjiaol = 100 + below(300)};
        }
    };
    for (int stock = 0; stock < 24; ++stock) {
        const QString dm = u"SZ0000%1"_s.arg(stock + 10);
        history_.members << qMakePair(u"题%1"_s.arg(stock % 4), dm);
        makeDays(history_.stocks[dm], 0);
    }
    rule_.limitUps = 2, rule_.positions = 3, rule_.atLimit = 0, rule_.indexGainFrom = -3;
    rule_.stopLoss = 4, rule_.takeProfit = 8, rule_.firstFall = 1, rule_.indexMeanDays = 3;
    makeDays(history_.stocks[u"SH000001"_s], 0);
    const BacktestResult former = run();
    ASSERT_GT(former.sum.trades, 5);
    for (const int last : {19, 15, 12}) {
        for (QList<HistoryRow>& rows : history_.stocks) {
            makeDays(rows, last + 1);
        }
        const BacktestResult now = run();
        for (int at = 0; at <= last; ++at) {
            EXPECT_EQ(now.days[at].capital, former.days[at].capital) << last << ' ' << at;
        }
        const auto sold = [&](BacktestResult result) {
            result.trades.removeIf(
                [&](const Trade& it) { return !it.reason || dayText(it.sellDay) > days_[last]; });
            return trades(result);
        };
        EXPECT_EQ(sold(now), sold(former)) << last;
        EXPECT_NE(trades(now), trades(former)) << "what came behind did move";
    }
}

TEST_F(BacktestTest, ASweepRefusesOneFieldTwiceAndARangeWithoutAnEnd) {
    writeHistory(history_, store_.stores.firstHistory, store_.stores.secondHistory, true);
    ResearchRun run([](const ResearchProgress&) {});
    Laboratory laboratory(store_.stores, run, std::make_shared<HistoryShelf>());
    const SweepAxis days{ruleField(u"持有天数"_s), 1, 3, 1};
    const SweepAxis costs{ruleField(u"印花税"_s), 0, 0.3, 0.1};
    EXPECT_EQ(costs.values(), QList<double>({0, 0.1, 0.2, 0.3}));
    const std::pair<SweepAxis, SweepAxis> refused[] = {
        {days, days},
        {{days.field, 3, 1, 1}, costs},
        {{days.field, 1, 3, 0}, costs},
        {{days.field, 1, 500, 1}, costs},
    };
    for (const auto& [across, down] : refused) {
        EXPECT_THROW(endOf(laboratory.sweep(rule_, across, down, {})), OperationError) << across.to;
    }
}

TEST(PeriodTable, GainsOfMonthsAndYearsFollowEachOther) {
    const QList<YearOfGains> years = yearsOf({{20161230, 1.1, 1, 0},
                                              {20170103, 1.32, 1.5, 0},
                                              {20170131, 0.99, 2, 0},
                                              {20170301, 1.98, 3, 0}});
    ASSERT_EQ(years.size(), 2);
    const YearOfGains& last = years[1];
    const QList<double> figures = {years[0].gain,          last.gain,
                                   last.indexGain,         last.drawdown,
                                   last.months[0].value(), last.months[2].value()};
    const auto text = [](double figure) { return numberText(roundTo(figure, 6)); };
    EXPECT_EQ(textsOf(figures, text).join(u' '), u"10 80 200 -25 -10 100"_s);
    EXPECT_FALSE(last.months[1].has_value());
}

}  // namespace guanchao
