#include "services/boards.h"

#include "formats/gbk.h"
#include "tests/support/fakes.h"

namespace guanchao {

static QString words(const Board& it) {
    const QString count = it.stocks ? QString::number(*it.stocks) : u"?"_s;
    return it.node + u' ' + it.name + u' ' + count;
}
static QString words(const ListedStock& it) {
    return it.dm + u' ' + it.name;
}
// The rows, then the total if one is told; or the fault.
template <typename Row>
static QString words(const ListPage<Row>& page) {
    QStringList texts = textsOf(page.rows, [](const Row& it) { return words(it); });
    if (page.total) {
        texts << QString::number(*page.total);
    }
    return page.fault.isEmpty() ? texts.join(u'|') : page.fault;
}

TEST(BoardsTest, ReadsTheBoardsOfEachKind) {
    const QString sina = u"sina"_s, eastmoney = u"eastmoney"_s;
    const QString none = u"应答里没有板块"_s;
    const QString two =
        u"var S_Finance_bankuai_class = {\"gn_hwqc\":\"gn_hwqc,华为汽车,125,20.0,0.6,3.2\","
        u"\"gn_x\":\"gn_x,新 股,,1\"};\n"_s;
    const auto one = [](const QString& row) -> QString {
        return u"var S = {\"gn_a\":\""_s + row + u"\"}"_s;
    };
    const QString uncounted =
        u"{\"rc\":0,\"data\":{\"total\":504,\"diff\":[{\"f12\":\"BK0493\",\"f14\":\"新能源\"}]}}"_s;
    const std::tuple<const char*, QString, QString, QString> cases[] = {
        {"two", sina, two, u"gn_hwqc 华为汽车 125|gn_x 新 股 ?|2"_s},
        {"no boards", sina, u"var S_Finance_bankuai_class = {}"_s, u"0"_s},
        {"a node that would change the request", sina, one(u"a&num=9,名,1"_s),
         u"应答里的板块代号不对：a&num=9"_s},
        {"no name", sina, one(u"gn_a, ,1"_s), u"应答里板块 gn_a 的名称不对"_s},
        {"cut off", sina, one(u"gn_a,名"_s).chopped(2), none},
        {"a page", sina, u"<style>p{color:red}</style>"_s, none},
        {"nothing", sina, QString(), none},
        {"without numbers of stocks", eastmoney, uncounted, u"BK0493 新能源 ?|504"_s},
        {"behind the last page", eastmoney, u"{\"rc\":0,\"data\":null}"_s, QString()},
        {"no list", eastmoney, u"{\"rc\":102}"_s, u"应答里没有列表"_s},
    };
    for (const auto& [name, kind, reply, expected] : cases) {
        const QByteArray body = kind == sina ? gbkFromText(reply) : reply.toUtf8();
        EXPECT_EQ(words(boardKind(kind)->readBoards(body)), expected) << name;
    }
}

TEST(BoardsTest, ReadsTheStocksOfEachKind) {
    const QString sina = u"sina"_s, eastmoney = u"eastmoney"_s;
    const QString strict =
        u"[{\"symbol\":\"sh600519\",\"code\":\"600519\",\"name\":\"贵州茅台\",\"trade\":\"1.0\"}]"_s;
    const QString loose =
        u"[{symbol:\"bj830799\",code:\"830799\",name:\"艾融软件\",ticktime:\"15:00:00\"}]"_s;
    const auto one = [](const QString& row) -> QString {
        return u"[{symbol:\""_s + row + u"\"}]"_s;
    };
    const QString exchanges =
        u"{\"data\":{\"total\":3,\"diff\":[{\"f12\":\"600519\",\"f13\":1,\"f14\":\"甲\"},"
        u"{\"f12\":\"300750\",\"f13\":0,\"f14\":\"乙\"},"
        u"{\"f12\":\"920799\",\"f13\":0,\"f14\":\"丙\"}]}}"_s;
    const QString dash =
        u"{\"data\":{\"total\":1,\"diff\":[{\"f12\":\"-\",\"f13\":1,\"f14\":\"-\"}]}}"_s;
    const std::tuple<const char*, QString, QString, QString> cases[] = {
        {"strict", sina, strict, u"SH600519 贵州茅台"_s},
        {"keys of JavaScript, Beijing", sina, loose, u"BJ830799 艾融软件"_s},
        {"behind the last page", sina, u"null"_s, QString()},
        {"a word on the asker", sina, u"{\"__ERROR\":1}"_s, u"应答里没有股票"_s},
        {"a code cut off", sina, one(u"sh60051\",name:\"x"_s), u"应答里的代码不对：SH60051"_s},
        {"another exchange", sina, one(u"hk600519\",name:\"x"_s), u"应答里的代码不对：HK600519"_s},
        {"no name", sina, one(u"sh600519"_s), u"应答里 SH600519 的名称不对"_s},
        {"one market number of two", eastmoney, exchanges,
         u"SH600519 甲|SZ300750 乙|BJ920799 丙|3"_s},
        {"a number that is none", eastmoney, dash, u"应答里的代码不对：SH-"_s},
    };
    for (const auto& [name, kind, reply, expected] : cases) {
        const QByteArray body = kind == sina ? gbkFromText(reply) : reply.toUtf8();
        EXPECT_EQ(words(boardKind(kind)->readStocks(body)), expected) << name;
    }
}

// Rows of a board of Sina, from that number on.
static QByteArray rowsFrom(int first, int count) {
    QStringList rows;
    for (int it = first; it < first + count; ++it) {
        rows << u"{symbol:\"sh6%1\",name:\"x\"}"_s.arg(it, 5, 10, QChar(u'0'));
    }
    return '[' + rows.join(u',').toUtf8() + ']';
}

TEST(BoardsTest, PagesComeToTheirEnd) {
    using Pages = std::function<std::optional<QByteArray>(int page)>;
    const std::optional<qsizetype> untold;
    const auto upTo = [](int last, const std::optional<QByteArray>& behind,
                         int rows = 80) -> Pages {
        return [=](int page) { return page <= last ? rowsFrom(page * rows, rows) : behind; };
    };
    const struct {
        const char* name;
        std::optional<qsizetype> told;
        Pages page;
        QString outcome;  // the number of stocks, or why there are none
        qsizetype requests;
    } cases[] = {
        {"as many as told", 3, upTo(1, "[]", 3), u"3"_s, 1},
        {"the number of stocks isn't known", untold, upTo(1, "null", 3), u"3"_s, 2},
        {"more than told", 70, upTo(2, rowsFrom(0, 7)), u"167"_s, 3},
        {"fewer than told, and pages of another size", 200, upTo(3, "[]", 40), u"120"_s, 4},
        {"a page that comes again", 200, upTo(0, rowsFrom(0, 80)), u"第 2 页和前一页一样"_s, 2},
        {"no end", untold, upTo(1000, "[]"), u"超过 100 页"_s, 100},
        {"a bad page in the middle", 200, upTo(1, "<html>"), u"应答里没有股票"_s, 2},
        {"silence in the middle", 200, upTo(1, std::nullopt), u"没有应答"_s, 2},
        {"none at all", 5, upTo(0, "[]"), u"应答里没有股票"_s, 1},
        {"an empty board", 0, upTo(0, "[]"), u"0"_s, 1},
    };
    for (const auto& it : cases) {
        FakeHttp http;
        http.answer = [&](const QString& path) {
            return it.page(path.section(u"page="_s, 1, 1).section(u'&', 0, 0).toInt());
        };
        const Boards boards(http, {});
        const auto reply = outcomeOf(boards.stocks({}, {u"gn"_s, u"x"_s, it.told}, {}));
        EXPECT_EQ(reply.rows ? QString::number(reply.rows->size()) : reply.lack, it.outcome)
            << it.name;
        EXPECT_EQ(http.paths.size(), it.requests) << it.name;
    }
}

}  // namespace guanchao
