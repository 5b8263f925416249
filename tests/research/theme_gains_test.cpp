#include "research/theme_gains.h"

#include <cmath>

#include "base/values.h"
#include "research/history_state.h"
#include "services/stock_code.h"
#include "tests/support/store_test.h"
#include "tests/support/test_history.h"

namespace guanchao {

// Week-ends count as days here: the index has them.
class ThemeGainsTest : public StoreTest {
protected:
    ThemeGainsTest() {
        store_.addMember(u"甲"_s, u"SH600001"_s);
        store_.addMember(u"甲"_s, u"SH600002"_s);
    }

    // The last days up to the 30th of June, each of that gain.
    void download(const QString& dm, int days, double gain, int without = -1) {
        for (int back = 0; back < days; ++back) {
            if (back != without) {
                store_.run({u"insert into geguhq values('%1','%2',%3,9)"_s.arg(
                    dm, timeText(last_.addDays(-back)), numberText(gain))});
            }
        }
    }
    // Days of that close after a former one of 10.00.
    void writeHistoryOf(const QMap<QString, int>& closes) {
        MarketHistory history;
        for (auto it = closes.begin(); it != closes.end(); ++it) {
            for (int back = 69; back >= 0; --back) {
                history.stocks[it.key()] << HistoryRow{.day = dateText(last_.addDays(-back)),
                                                       .zg = std::max(1000, it.value()),
                                                       .sp = it.value()};
            }
        }
        writeHistory(history, store_.stores.firstHistory, store_.stores.secondHistory, true);
    }
    QString gains() {
        const ThemeGains read = readThemeGains(store_.stores, u"甲"_s);
        const QStringList words = textsOf(read.spans, [](const SpanGain& it) {
            return std::isnan(it.gain) ? u"-"_s : numberText(roundTo(it.gain, 6));
        });
        return words.join(u' ') + u"："_s + sourceWords(read, last_.addDays(1));
    }

    const QDate last_{2027, 6, 30};
};

TEST_F(ThemeGainsTest, WhatIsNotStoredIsNoNumberAndTold) {
    const QString none =
        u"- - -：没有存下它的历史行情：在“工具 / 历史行情”里补全，或在“历史涨幅”里点“开始对比”"_s;
    EXPECT_EQ(gains(), none);
    download(leadingIndex, 20, 1);
    EXPECT_EQ(gains(), none) << "days of the market alone";
    download(u"SH600001"_s, 20, 3, 2);
    download(u"SH600009"_s, 20, 50);
    EXPECT_EQ(gains(),
              u"12 57 -：历史按对比时下载的行情算，到 2027-06-30，只存了 20 个交易日，2 只里有 1"
              u" 只没有历史行情，近 5 日里有 1 天没有成员的行情"_s);
    download(u"SH600002"_s, 20, -1);
    EXPECT_EQ(gains(), u"3 18 -：历史按对比时下载的行情算，到 2027-06-30，只存了 20 个交易日"_s)
        << "the mean of each day; on one day of one member";
}

TEST_F(ThemeGainsTest, TheHistoryDatabaseGoesBeforeWhatWasDownloaded) {
    download(leadingIndex, 5, 0);
    download(u"SH600001"_s, 5, 9);
    writeHistoryOf({{leadingIndex, 1000}, {u"SH600009"_s, 1100}});
    EXPECT_EQ(gains().section(u'，', 0, 0), u"45 - -：历史按对比时下载的行情算"_s)
        << "without a row of a member";
    writeHistoryOf({{leadingIndex, 1000}, {u"SH600001"_s, 1010}, {u"SH600002"_s, 1030}});
    EXPECT_EQ(gains(), u"10 40 120：历史按历史行情库算，到 2027-06-30"_s);
    const ThemeGains read = readThemeGains(store_.stores, u"甲"_s);
    EXPECT_TRUE(sourceWords(read, last_.addDays(40)).contains(u"已是 40 天前"_s));
}

}  // namespace guanchao
