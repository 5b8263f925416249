#include "research/theme_history.h"

#include <QUrlQuery>
#include <cmath>

#include "base/values.h"
#include "tests/support/store_test.h"

namespace guanchao {

// The service lists the days from 1 to 20 November 2026 with closes of 100, 101, ... 119.
class ThemeHistoryTest : public StoreTest {
protected:
    ThemeHistoryTest() {
        store_.addMember(u"银行"_s, u"SH600000"_s);
        http_.answer = listedDays;
    }

    static QDate day(int number) { return {2026, 11, number}; }

    static QString parameter(const QString& path, const QString& name) {
        return QUrlQuery(path.section(u'?', 1)).queryItemValue(name);
    }

    static QByteArray listedDays(const QString& path) {
        QString lines = u"Date,Open,High,Low,Close,Volume,Adj Close\n"_s;
        for (int at = parameter(path, u"e"_s).toInt(); at >= parameter(path, u"b"_s).toInt();
             --at) {
            lines += u"2026-11-%1,1,1,1,%2,7,1\n"_s.arg(at, 2, 10, QChar(u'0')).arg(99 + at);
        }
        return lines.toUtf8();
    }

    // The requests since the last call, each as code, first and last day of the month.
    QStringList asked() {
        return textsOf(std::exchange(http_.paths, {}), [](const QString& path) -> QString {
            return parameter(path, u"s"_s) + u' ' + parameter(path, u"b"_s) + u'-' +
                   parameter(path, u"e"_s);
        });
    }

    void addCached(const QString& dm, const QList<int>& days, double gain = 1) {
        for (const int number : days) {
            store_.run({u"insert into geguhq(dm,riqi,zhangfu,sp) values('%1','%2 00:00:00',%3,9)"_s
                            .arg(dm, dateText(day(number)))
                            .arg(gain)});
        }
    }

    std::optional<ThemeHistoryResult> compare(int first, int last,
                                              const QString& theme = u" 银行 "_s) {
        return endOf(history_.compare(dateTexts(day(first)), dateTexts(day(last)), theme,
                                      window_.get_token()));
    }

    AskedHistory askedHistory_;
    std::stop_source window_;
    PastPrices prices_{{http_, clock_, {Service()}}, {http_, {}}};
    ThemeHistory history_{store_.stores, globals_,      clock_, dialogs_,
                          prices_,       askedHistory_, grid_,  [](const ThemeHistoryStep&) {}};
};

TEST_F(ThemeHistoryTest, TheCacheAsksForWhatItLacks) {
    const std::tuple<const char*, QList<int>, int, int, QStringList> cases[] = {
        {"nothing there", {}, 5, 10, {u"600000.ss 5-10"_s}},
        {"all there", {5, 10}, 5, 10, {}},
        {"both are missing", {7, 8}, 5, 10, {u"600000.ss 5-6"_s, u"600000.ss 8-10"_s}},
        {"wholly before: up to the cache", {9, 10}, 3, 5, {u"600000.ss 3-8"_s}},
        {"wholly behind: from the cache on", {3, 4}, 8, 10, {u"600000.ss 4-10"_s}},
    };
    for (const auto& [name, cached, first, last, wanted] : cases) {
        store_.run({u"delete from geguhq"_s});
        addCached(u"SH600000"_s, cached);
        Connection store = store_.stores.main.open();
        AskedHistory fresh;
        DayCache cache(store_.stores, globals_, clock_, prices_, fresh);
        outcomeOf(cache.update({cachedDays(store, u"SH600000"_s)}, day(first), day(last),
                               [](const QString&, int, int) {}, {}));
        EXPECT_EQ(asked(), wanted) << name;
        EXPECT_EQ(store_.rows(u"select count(*)-count(distinct riqi) from geguhq"_s),
                  QStringList{u"0"_s})
            << name << ": no day twice";
    }
}

TEST_F(ThemeHistoryTest, ASecondRunAsksNothingThatWasAnswered) {
    const QStringList both = {u"000001.ss 3-6"_s, u"600000.ss 3-6"_s};
    const struct {
        const char* name;
        int first, last;
        int lastListed;
        QStringList again;
    } cases[] = {
        {"all days listed", 3, 6, 20, {}},
        {"the last ones are quiet", 3, 8, 6, {}},
        {"one day, which stores nothing", 5, 5, 20, {}},
        {"quiet throughout", 7, 8, 6, {}},
        {"dead", 3, 6, -1, both},
        {"a page", 3, 6, 0, both},
    };
    for (const auto& it : cases) {
        store_.run({u"delete from geguhq"_s});
        askedHistory_ = {};
        http_.answer = [&](const QString& path) -> std::optional<QByteArray> {
            if (it.lastListed <= 0) {
                return it.lastListed < 0 ? std::nullopt : std::optional<QByteArray>("<p>a,b,c,d,e");
            }
            return listedDays(u"?b=%1&e=%2"_s.arg(parameter(path, u"b"_s))
                                  .arg(std::min(parameter(path, u"e"_s).toInt(), it.lastListed)));
        };
        compare(it.first, it.last);
        EXPECT_EQ(asked().size(), 2) << it.name;
        const QStringList rows = store_.rows(u"select * from geguhq"_s);
        compare(it.first, it.last);
        EXPECT_EQ(asked(), it.again) << it.name;
        EXPECT_EQ(store_.rows(u"select * from geguhq"_s), rows) << it.name;
    }
}

// The rows of the day of the asking and of those behind it are still to come.
TEST_F(ThemeHistoryTest, WhatWasStillToComeIsAskedForAgainAfterTheCloseAndOnAnotherDay) {
    http_.answer = [](const QString&) { return listedDays(u"?b=1&e=4"_s); };
    const auto askedOn = [this](int today, int hour) {
        clock_.moment = QDateTime(day(today), QTime(hour, 0));
        compare(2, 6, QString());
        return asked();
    };
    EXPECT_EQ(askedOn(5, 10), QStringList{u"000001.ss 2-6"_s});
    EXPECT_EQ(askedOn(5, 14), QStringList());
    EXPECT_EQ(askedOn(5, 15), QStringList{u"000001.ss 4-6"_s});
    EXPECT_EQ(askedOn(5, 23), QStringList());
    EXPECT_EQ(askedOn(6, 10), QStringList{u"000001.ss 4-6"_s});
    EXPECT_EQ(askedOn(7, 10), QStringList{u"000001.ss 4-6"_s});
    EXPECT_EQ(askedOn(9, 10), QStringList());
}

TEST_F(ThemeHistoryTest, GainsAreOfAdjustedPricesWhereTheFactorsBelongToThem) {
    const QByteArray factors =
        "var sh600000hfq={\"data\":[{\"d\":\"2026-11-03\",\"f\":\"2\"},"
        "{\"d\":\"1900-01-01\",\"f\":\"1\"}]}";
    const QByteArray bars =
        R"([{"day":"2026-11-02","open":"8","high":"8","low":"8","close":"8","volume":"1"},)"
        R"({"day":"2026-11-03","open":"5","high":"5","low":"5","close":"5.00","volume":"1"}])";
    const QByteArray table =
        "Date,Open,High,Low,Close,Volume\n2026-11-03,5,5,5,5.00,1\n2026-11-02,8,8,8,8,1\n";
    const struct {
        const char* name;
        QString kind;
        QString dm;
        std::optional<QByteArray> factors;
        QString row;
        int requests;
    } cases[] = {
        {"adjusted", u"sina"_s, u"SH600000"_s, factors, u"25|5"_s, 2},
        {"they can't be had", u"sina"_s, u"SH600000"_s, std::nullopt, {}, 2},
        {"a page", u"sina"_s, u"SH600000"_s, "<html>", {}, 2},
        {"an index has none", u"sina"_s, u"SH000001"_s, factors, u"-37.5|5"_s, 1},
        {"prices of another kind", u"csv"_s, u"SH600000"_s, factors, u"-37.5|5"_s, 1},
    };
    for (const auto& it : cases) {
        store_.run({u"delete from geguhq"_s});
        http_.paths.clear();
        http_.answer = [&](const QString& path) -> std::optional<QByteArray> {
            return path.contains(u"hfq.js"_s) ? it.factors : it.kind == u"csv"_s ? table : bars;
        };
        AskedHistory fresh;
        const QList<Service> service = {Service{u"http://s"_s, {}, 0, 1, 0, it.kind}};
        DayCache cache(store_.stores, globals_, clock_,
                       {{http_, clock_, service}, {http_, service}}, fresh);
        outcomeOf(
            cache.update({{it.dm, {}, {}}}, day(2), day(3), [](const QString&, int, int) {}, {}));
        EXPECT_EQ(store_.rows(u"select zhangfu,sp from geguhq"_s).value(0), it.row) << it.name;
        EXPECT_EQ(http_.paths.size(), it.requests) << it.name;
    }
}

TEST_F(ThemeHistoryTest, RepliesWithoutGainsStoreNothing) {
    const QByteArray replies[] = {
        listedDays(u"?b=5&e=5"_s),
        "Date\n2026-11-03,1,1,1,1e308,1\n2026-11-02,1,1,1,1e-300,1\n\n",  // an endless gain
        "Date\n2026-11-03,1,1,1,7,1\n2026-11-02,1,1,1,0,1\n\n"};          // 0 is no base
    for (const QByteArray& reply : replies) {
        http_.answer = [&](const QString&) { return reply; };
        EXPECT_EQ(compare(5, 5)->line, u"主题总涨幅(无)-大盘总涨幅(无)=涨幅差(无)"_s);
        EXPECT_EQ(store_.rows(u"select * from geguhq"_s), QStringList()) << reply.toStdString();
    }
}

TEST_F(ThemeHistoryTest, EachIndexDayGetsTheMeanOfTheMembersThatHaveARow) {
    store_.addMember(u"银行"_s, u"SZ000001"_s);
    store_.addMember(u"白酒"_s, u"SH600519"_s);
    store_.run({u"insert into zhutidapanhq(riqi) values('2020-01-01 00:00:00')"_s});
    addCached(u"SH000001"_s, {2, 3, 4}, 0.5);
    addCached(u"SH600000"_s, {1, 2, 4}, 2.25);
    addCached(u"SZ000001"_s, {1, 2, 4}, -1);
    addCached(u"SH600519"_s, {1, 3, 4}, 9);
    http_.answer = {};
    const auto result = compare(2, 4);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->line, u"主题总涨幅(1.25)-大盘总涨幅(1.5)=涨幅差(-0.25)"_s);
    const auto text = [&](const HistoryPoint& it) { return pointText(it, result->hasTheme); };
    EXPECT_EQ(textsOf(result->points, text),
              QStringList({u"2026-11-02  主题 0.63%  大盘 0.50%  差 0.13%"_s,
                           u"2026-11-03  主题没有行情  大盘 1.00%"_s,
                           u"2026-11-04  主题 1.25%  大盘 1.50%  差 -0.25%"_s}));
    EXPECT_TRUE(
        result->missed.endsWith(u"主题有 1 天没有行情，图里断开，主题总涨幅不含这些天。"_s));
    ASSERT_EQ(result->members.size(), 2);
    const MemberSums& best = result->members.first();
    EXPECT_EQ(best.dm, u"SH600000"_s);
    EXPECT_EQ(best.sums[0], 2.25);
    EXPECT_TRUE(std::isnan(best.sums[1])) << "a gap and not 0";
    EXPECT_EQ(best.sums[2], 4.5);
    EXPECT_EQ(store_.rows(u"select * from zhutidapanhq"_s),
              QStringList({u"2026-11-02 00:00:00|银行|0.625|0.5|9"_s,
                           u"2026-11-03 00:00:00|null|null|0.5|9"_s,
                           u"2026-11-04 00:00:00|银行|0.625|0.5|9"_s}));
    ASSERT_EQ(grid_.rows(), 4);
    EXPECT_EQ(grid_.textMatrix(1, 1), u"2026-11-04 00:00:00"_s) << "the newest day first";
    EXPECT_EQ(grid_.textMatrix(1, 5), u"0.13"_s);
    EXPECT_EQ(grid_.textMatrix(2, 2) + grid_.textMatrix(2, 3) + grid_.textMatrix(2, 5), QString());
}

TEST_F(ThemeHistoryTest, SumsThatRestOnNoPricesAreToldAsSuch) {
    const QString noMarket = u"这段日期里没有大盘的历史行情，没有可比的日子。"_s;
    const QString noTheme = u"这段日期里主题的股票都没有历史行情。"_s;
    const std::tuple<const char*, QList<int>, QList<int>, QString, QString> cases[] = {
        {"nothing", {}, {}, u"银行"_s, noMarket},  {"no market", {}, {3}, u"银行"_s, noMarket},
        {"no theme", {3}, {}, u"银行"_s, noTheme}, {"the market alone is wanted", {3}, {}, {}, {}},
        {"all there", {3}, {3}, u"银行"_s, {}},
    };
    for (const auto& [name, index, stock, theme, words] : cases) {
        store_.run({u"delete from geguhq"_s});
        addCached(u"SH000001"_s, index);
        addCached(u"SH600000"_s, stock);
        const auto result = endOf(history_.compareStored(dateTexts(day(2)), dateTexts(day(4)),
                                                         theme, window_.get_token()));
        ASSERT_TRUE(result);
        EXPECT_EQ(result->missed.section(u'\n', 0, 0),
                  u"按库里已有的行情对比，没有下载；要补全就点“开始对比”。"_s);
        EXPECT_EQ(result->missed.section(u'\n', 1), words) << name;
        EXPECT_EQ(asked(), QStringList()) << name;
    }
}

TEST_F(ThemeHistoryTest, RefusesWrongDatesAndABusyStore) {
    EXPECT_FALSE(compare(6, 5));
    EXPECT_FALSE(
        outcomeOf(history_.compare({u"2026"_s, u"x"_s, u"1"_s}, dateTexts(day(5)), QString(), {})));
    globals_.hqmang = 1;
    EXPECT_FALSE(compare(5, 6));
    EXPECT_EQ(dialogs_.shown.size(), 3);
    EXPECT_EQ(asked(), QStringList());
    globals_.hqmang = 0;
    http_.onGet = [this] { EXPECT_EQ(globals_.hqmang, 0) << "nothing is held while it asks"; };
    EXPECT_TRUE(compare(5, 5));
}

TEST_F(ThemeHistoryTest, AFailedStatementRollsItsDownloadBack) {
    store_.run(
        {u"create trigger refuse before insert on geguhq when new.dm='SH600000' and"
         u" new.zhangfu=0.98 begin select raise(abort,'no'); end"_s});
    EXPECT_THROW(compare(1, 4), StoreError);
    EXPECT_EQ(globals_.hqmang, 0);
    EXPECT_EQ(store_.rows(u"select dm,count(*) from geguhq group by dm"_s),
              QStringList{u"SH000001|3"_s});
    store_.run({u"drop trigger refuse"_s, u"insert into zhutidapanhq(dapansp) values('former')"_s,
                u"create trigger refuse before update on zhutidapanhq begin select"
                u" raise(abort,'no'); end"_s});
    EXPECT_THROW(compare(1, 4), StoreError);
    EXPECT_EQ(store_.rows(u"select dapansp from zhutidapanhq"_s), QStringList{u"former"_s});
}

}  // namespace guanchao
