#include "services/stock_list.h"

#include "services/service_watch.h"
#include "tests/support/fakes.h"

namespace guanchao {

static const StockListFault noFault = [](const QList<ListedStock>&) { return QString(); };
static const StockListProgress unheard = [](qsizetype, std::optional<qsizetype>) {};

static QString codes(const StockListReply& reply) {
    return textsOf(reply.stocks, &ListedStock::dm).join(u' ');
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

TEST(StockListTest, AListThatIsRefusedIsNoAnswerAndTheNextOneIsAsked) {
    FakeHttp http;
    http.answer = [](const QString& path) -> std::optional<QByteArray> {
        return path.contains(u"StockCount"_s) ? "\"1\""
               : path.contains(u"page=1&"_s)  ? "[{symbol:\"sh600001\",name:\"a\"}]"
                                              : "[]";
    };
    const FakeClock clock;
    ServiceWatch watch(http, clock);
    const Service first = {u"http://a"_s, {}, 0, 1, 0, u"sina"_s};
    const StockList list(watch, {first, {u"http://b"_s, {}, 0, 1, 0, u"sina"_s}});
    int looked = 0;
    const auto firstIsShort = [&](const QList<ListedStock>&) {
        return ++looked == 1 ? u"太短"_s : QString();
    };
    const auto reply = endOf(list.fetch(false, firstIsShort, unheard, {}));
    EXPECT_EQ(codes(reply), u"SH600001"_s);
    EXPECT_EQ(reply.service.host, u"http://b"_s);
    EXPECT_EQ(reply.lacks.filter(u"：太短"_s).size(), 1);
    EXPECT_EQ(watch.stateOf(first).reason, u"太短"_s) << "which is no answer for its watch either";
}

}  // namespace guanchao
