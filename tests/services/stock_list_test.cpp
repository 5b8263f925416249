#include "services/stock_list.h"

#include "platform/qt_http_client.h"
#include "services/service_watch.h"
#include "tests/support/fakes.h"
#include "tests/support/outcome_of.h"
#include "tests/support/qt_printers.h"
#include "tests/support/raw_service.h"
#include "tools/practice_market/practice_market.h"

namespace guanchao {

static const StockListFault noFault = [](const QList<ListedStock>&) { return QString(); };
static const StockListProgress unheard = [](qsizetype, std::optional<qsizetype>) {};

static QString codes(const StockListReply& reply) {
    QStringList codes;
    for (const ListedStock& it : reply.stocks) {
        codes << it.dm;
    }
    return codes.join(u' ');
}

// What stands at the nodes of Sina, and what it says of their number.
TEST(StockListTest, AListIsWholeOnlyIfItsNumberSaysSo) {
    const QByteArray both = "[{symbol:\"sh600001\",name:\"a\"},{symbol:\"sz000001\",name:\"b\"}]";
    const QByteArray beijing = "[{symbol:\"bj920001\",name:\"c\"}]";
    const QByteArray others =
        "[{symbol:\"bj920002\",name:\"x\"},{symbol:\"sh600001\",name:\"a\"},"
        "{symbol:\"sh900901\",name:\"B\"},{symbol:\"sh600001\",name:\"a\"}]";
    const QByteArray none;
    const QString two = u"SH600001 SZ000001"_s, three = u"BJ920001 SH600001 SZ000001"_s;
    const struct {
        const char* name;
        QByteArray page, count, beijing, beijingCount;
        bool wantsBeijing;
        QString codes;
        bool isWhole;
        qsizetype requests;
    } cases[] = {
        {"as many as told", both, "\"2\"", none, none, false, two, true, 2},
        {"fewer than told", both, "\"3\"", none, none, false, two, false, 3},
        {"no number", both, "<html>", none, none, false, two, false, 3},
        {"others, one twice", others, "\"3\"", none, none, false, u"SH600001"_s, true, 2},
        {"Beijing among them", others, "\"3\"", none, none, true, u"BJ920002 SH600001"_s, true, 2},
        {"Beijing apart", both, "\"2\"", beijing, "\"1\"", true, three, true, 4},
        {"Beijing not whole", both, "\"2\"", beijing, "\"9\"", true, three, false, 5},
        {"Beijing is a page", both, "\"2\"", "<html>", "\"9\"", true, QString(), false, 4},
    };
    for (const auto& it : cases) {
        FakeHttp http;
        http.answer = [&](const QString& path) -> std::optional<QByteArray> {
            const bool isBeijing = path.contains(u"hs_bjs"_s);
            if (path.contains(u"StockCount"_s)) {
                return isBeijing ? it.beijingCount : it.count;
            }
            const bool isFirst = path.contains(u"page=1&"_s);
            return !isFirst ? "[]" : isBeijing ? it.beijing : it.page;
        };
        const StockList list(http, {{{}, {}, 0, 1, 0, u"sina"_s}});
        const auto reply = outcomeOf(list.fetch(it.wantsBeijing, noFault, unheard, {}));
        EXPECT_EQ(codes(reply), it.codes) << it.name;
        EXPECT_EQ(reply.isWhole, it.isWhole) << it.name;
        EXPECT_EQ(http.paths.size(), it.requests) << it.name;
    }
}

TEST(StockListTest, TheNextOneIsAskedWhereOneBringsNoWholeList) {
    std::vector<PracticeStock> stocks = {
        {u"SH000001"_s, u"上证指数"_s}, {u"SH600001"_s, u"某股"_s}, {u"BJ920001"_s, u"京股"_s}};
    for (int it = 0; it < 170; ++it) {
        stocks.push_back({u"SZ300%1"_s.arg(it, 3, 10, QChar(u'0')), u"某股"_s});
    }
    PracticeMarket market(PracticeQuotes(stocks), &QDateTime::currentDateTime,
                          PracticeBoards(stocks));
    market.start();
    RawService refusing;
    refusing.answer = hangingUp[3].answer;
    const Service first = {refusing.service(10).host, {}, 10, 1, 0, u"sina"_s};
    QtHttpClient client;
    QStringList heard;
    const StockListProgress hear = [&](qsizetype come, std::optional<qsizetype> total) {
        heard << u"%1/%2"_s.arg(come).arg(total.value_or(-1));
    };
    const StockList list(client, {first, {market.host(), {}, 10, 1, 0, u"eastmoney"_s}});
    const auto whole = endOf(list.fetch(true, noFault, hear, {}));
    EXPECT_EQ(whole.stocks.size(), 172) << "all but the index";
    EXPECT_TRUE(codes(whole).contains(u"BJ920001"_s));
    EXPECT_TRUE(whole.isWhole);
    EXPECT_EQ(whole.service.kind, u"eastmoney"_s);
    EXPECT_EQ(whole.lacks.join(u' '), u"新浪（%1）：被拒绝（403）"_s.arg(first.host));
    EXPECT_EQ(heard.value(0), u"100/172"_s);
    const Service sina = {market.host(), {}, 10, 1, 0, u"sina"_s};
    const FakeClock clock;
    ServiceWatch watch(client, clock);
    const StockList judged(watch, {sina, {market.host(), {}, 10, 1, 0, u"eastmoney"_s}});
    const auto never = [](const QList<ListedStock>&) { return u"太短"_s; };
    const auto reply = endOf(judged.fetch(false, never, unheard, {}));
    EXPECT_TRUE(reply.stocks.isEmpty());
    EXPECT_EQ(reply.lacks.filter(u"：太短"_s).size(), 2) << "the next one is asked";
    EXPECT_EQ(watch.stateOf(sina).reason, u"太短"_s) << "which is no answer for its watch either";
}

}  // namespace guanchao
