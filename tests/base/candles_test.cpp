#include "base/candles.h"

#include <gtest/gtest.h>

#include "base/day_line.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

// A day whose four prices are the close.
static Candle day(int number, double close, double factor = 1) {
    return {QDate(2026, 11, number), close, close, close, close, 100, {}, factor};
}

// On the third day a dividend halves the price.
static const QList<Candle> halved = {day(2, 10), day(3, 20), day(4, 11, 2), day(5, 9.9, 2)};

TEST(CandlesTest, ADividendIsNoFallHoweverTheDaysAreAdjusted) {
    const std::pair<Adjustment, QList<double>> cases[] = {
        {Adjustment::none, {10, 20, 11, 9.9}},
        {Adjustment::forward, {5, 10, 11, 9.9}},
        {Adjustment::backward, {10, 20, 22, 19.8}}};
    for (const auto& [adjustment, closes] : cases) {
        const QList<Candle> days = adjusted(halved, adjustment);
        for (qsizetype at = 0; at < days.size(); ++at) {
            EXPECT_EQ(days[at].close, closes[at]);
            EXPECT_EQ(days[at].low, closes[at]);
        }
        EXPECT_EQ(gainOf(days, 0), std::nullopt);
        EXPECT_NEAR(gainOf(days, 1).value_or(0), 100, 1e-9);
        EXPECT_NEAR(gainOf(days, 2).value_or(0), 10, 1e-9);
        EXPECT_NEAR(gainOf(days, 3).value_or(0), -10, 1e-9);
    }
    EXPECT_EQ(adjusted({}, Adjustment::forward), QList<Candle>());
}

TEST(CandlesTest, TheAxisHasRoundValuesOfItsRange) {
    const std::pair<PriceRange, QList<double>> cases[] = {{{9.3, 11.2}, {9.5, 10, 10.5, 11}},
                                                          {{46.9, 62}, {50, 55, 60}},
                                                          {{1688, 1695}, {1688, 1690, 1692, 1694}},
                                                          {{5, 5}, {}}};
    for (const auto& [range, values] : cases) {
        EXPECT_EQ(roundValues(range), values) << range.low;
    }
}

// What a user holds under the pointer must not slip away, however often the wheel turns.
TEST(VisibleDaysTest, TheDayUnderThePointerStaysThereAtEveryZoom) {
    for (const double part : {0.0, 0.3, 0.5, 0.99, 1.0}) {
        VisibleDays sight;
        sight.setTotal(2500);
        sight.showLast(400);
        sight.moveTo(1000);
        const qsizetype pointed = sight.dayAt(part);
        for (const double factor : {0.8, 0.8, 0.8, 1.25, 1.25, 1.25, 0.5}) {
            sight.zoom(factor, part);
            EXPECT_EQ(sight.dayAt(part), pointed) << part << ' ' << factor;
        }
        sight.bringTo(pointed, 0.7);
        EXPECT_EQ(sight.dayAt(0.7), pointed) << part;
    }
}

TEST(VisibleDaysTest, StaysWithinTheDaysThereAre) {
    for (const qsizetype total : {0, 1, 7, 10, 119, 121, 2500}) {
        VisibleDays sight;
        sight.setTotal(total);
        EXPECT_EQ(sight.count(), std::min(total, VisibleDays::usual));
        EXPECT_EQ(sight.first() + sight.count(), total) << "the last days are in sight";
        const auto holds = [&] {
            return sight.first() >= 0 && sight.count() <= total &&
                   sight.count() >= std::min(total, VisibleDays::fewest) &&
                   sight.first() + sight.count() <= total;
        };
        for (int turn = 0; turn < 50; ++turn) {
            sight.zoom(turn < 20 ? 0.8 : 1.25, 0.2);
            EXPECT_TRUE(holds()) << total << ' ' << turn;
        }
        EXPECT_EQ(sight.count(), total) << "all of them at last";
        sight.zoom(0.5, 0.5);
        for (const qsizetype first : {qsizetype(-5), total, qsizetype(3)}) {
            sight.moveTo(first);
            EXPECT_TRUE(holds()) << total << ' ' << first;
        }
    }
}

TEST(DayLineTest, CountsTheMinutesOfTrading) {
    const std::pair<QTime, int> cases[] = {{{9, 15}, 0},    {{9, 30}, 0},    {{9, 31}, 1},
                                           {{11, 30}, 120}, {{12, 10}, 120}, {{13, 0}, 120},
                                           {{13, 1}, 121},  {{15, 0}, 240},  {{15, 30}, 240}};
    for (const auto& [time, minutes] : cases) {
        EXPECT_EQ(tradingMinute(time.hour() * 60 + time.minute()), minutes)
            << time.toString().toStdString();
    }
}

// An index tells its volume in lots and its price in points.
TEST(DayLineTest, AMeanThatIsNoPriceIsNone) {
    EXPECT_NEAR(meanPrice({600, 10, 1000, 10100}).value_or(0), 10.1, 1e-6);
    EXPECT_EQ(meanPrice({600, 4700, 250e6F, 303e9F}), std::nullopt);
    EXPECT_EQ(meanPrice({570, 10, 0, 0}), std::nullopt);
}

TEST(DayLineTest, TheFormerCloseLiesInTheMiddleAndVolumeIsToldByTheMinute) {
    const QList<DayPoint> points = {
        {580, 10.5, 1000, 0}, {690, 9, 3200, 0}, {781, 9.9F, 3300, 0}, {782, 9.9F, 3100, 0}};
    const DayLine line = {QDate(2026, 11, 24), 10, points};
    EXPECT_EQ(pricesOf(line).low, 9);
    EXPECT_EQ(pricesOf(line).high, 11);
    const QList<double> volumes = {100, 20, 100, 0};
    for (qsizetype point = 0; point < line.points.size(); ++point) {
        EXPECT_EQ(volumePerMinute(line, point), volumes[point]) << point;
    }
}

}  // namespace guanchao
