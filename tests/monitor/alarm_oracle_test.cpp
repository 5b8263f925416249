// The engine's alarms over random days, against a reading of the rule in whole numbers that shares
// nothing with it. Gains are in hundredths of a percent, means in hundredths of that: every price
// is a whole number of 0.001 yuan over a former close of 10, so that each is exact.
#include <gtest/gtest.h>

#include <QMap>
#include <random>

#include "base/values.h"
#include "tests/support/monitor_fixture.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Quote {
    int price = 0;  // in 0.001 yuan
    int gain = 0;
};

struct Theme {
    QString name, bijiaofu;
    int baojinzhi = 0;
    int mean = 0;
    QStringList members;
};

struct Stock {
    QString dm, leixin, bijiaofu;
    int baojinzhi = 0;  // of a gain in hundredths of a percent, of a price in 0.01 yuan
    Quote old;
};

bool above(int left, int right, const QString& sign) {
    return sign == u">"_s ? left > right : left < right;
}

// Nearest whole number; with at most seven members no half can come up.
int nearest(int numerator, int denominator) {
    const int twice = 2 * numerator + (numerator < 0 ? -denominator : denominator);
    return twice / (2 * denominator);
}

}  // namespace

class AlarmOracleTest : public ::testing::TestWithParam<unsigned>, protected MonitorFixture {
protected:
    int drawn(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
    QString drawnSign() { return drawn(0, 1) == 0 ? u">"_s : u"<"_s; }

    void drawDay() {
        setFrequency(0);
        const int listed = drawn(2, 12);
        QStringList codes;
        for (int at = 0; at < 15; ++at) {
            codes << u"SH%1"_s.arg(600000 + at);
        }
        watch(codes.first(listed));
        for (const QString& dm : codes.first(listed)) {
            list_.insert(dm, Quote());
        }
        for (int at = drawn(0, 5); at > 0; --at) {
            std::shuffle(codes.begin(), codes.end(), random_);
            Theme theme{u"主题%1"_s.arg(at), drawnSign(), drawn(-40, 40) * 10, 0,
                        codes.first(drawn(1, 7))};
            for (const QString& dm : theme.members) {
                store_.addMember(theme.name, dm);
            }
            addThemeMonitor(theme.name, theme.bijiaofu, theme.baojinzhi / 100.0, theme.name);
            themes_ << theme;
        }
        std::shuffle(codes.begin(), codes.end(), random_);
        for (const QString& dm : codes.first(drawn(1, 6))) {
            const bool isGain = drawn(0, 1) == 0;
            Stock stock{dm,
                        isGain ? u"涨幅"_s : u"股价"_s,
                        drawnSign(),
                        isGain ? drawn(-40, 40) * 10 : 1000 + drawn(-40, 40),
                        {}};
            addStockMonitor(dm, stock.leixin, stock.bijiaofu, stock.baojinzhi / 100.0, dm);
            stocks_ << stock;
        }
    }

    // Prices on a coarse lattice, so that thresholds are often met exactly; some stocks are
    // suspended or unknown to the service, some requests fail.
    void drawReplies() {
        replies_ = drawn(0, 9) > 0;
        feedPrices_.clear();
        for (auto it = list_.begin(); it != list_.end(); ++it) {
            const int kind = drawn(0, 11);
            if (kind == 0) {
                continue;
            }
            const int price = kind == 1 ? 0 : 10000 + drawn(-45, 45) * 10;
            feedPrices_.insert(it.key().toLower(), price / 1000.0);
            if (replies_) {
                *it = {price, price > 0 ? price - 10000 : 0};
            }
        }
    }

    QStringList expectedAlarms() {
        QStringList fired;
        for (Theme& theme : themes_) {
            int sum = 0;
            int count = 0;
            for (const QString& dm : theme.members) {
                sum += list_.value(dm).gain;
                count += list_.contains(dm) ? 1 : 0;
            }
            if (count == 0) {
                continue;
            }
            const int mean = nearest(sum * 100, count);
            const int threshold = theme.baojinzhi * 100;
            if (above(mean, threshold, theme.bijiaofu) &&
                above(threshold, theme.mean, theme.bijiaofu)) {
                fired << theme.name;
            }
            theme.mean = mean;
        }
        Quote quote;
        for (Stock& stock : stocks_) {
            quote = list_.value(stock.dm, quote);
            if (quote.price == 0) {
                continue;
            }
            const bool isGain = stock.leixin == u"涨幅"_s;
            const int threshold = isGain ? stock.baojinzhi : stock.baojinzhi * 10;
            const int now = isGain ? quote.gain : quote.price;
            const int before = isGain ? stock.old.gain : stock.old.price;
            if (above(now, threshold, stock.bijiaofu) && above(threshold, before, stock.bijiaofu)) {
                fired << stock.dm;
            }
            stock.old = quote;
        }
        return fired;
    }

    std::mt19937 random_{GetParam()};
    QMap<QString, Quote> list_;
    QList<Theme> themes_;
    QList<Stock> stocks_;
};

TEST_P(AlarmOracleTest, TheSameMonitorsFireInEveryPoll) {
    drawDay();
    qsizetype alarms = 0;
    for (int poll = 0; poll < 200; ++poll) {
        drawReplies();
        rung_.clear();
        engine_.tick();
        ASSERT_EQ(rung_, expectedAlarms()) << "seed " << GetParam() << ", poll " << poll;
        alarms += rung_.size();
    }
    for (const Stock& stock : stocks_) {
        EXPECT_EQ(
            store_.rows(u"select sp,zhangfu from gegujiankong where dm='"_s + stock.dm + u"'"_s),
            QStringList{numberText(stock.old.price / 1000.0) + u'|' +
                        numberText(stock.old.gain / 100.0)})
            << "seed " << GetParam() << ": the memory of the crossings";
    }
    EXPECT_GT(alarms, 0) << "seed " << GetParam() << " tests nothing";
}

INSTANTIATE_TEST_SUITE_P(RandomDays, AlarmOracleTest, ::testing::Range(1U, 9U));

}  // namespace guanchao
