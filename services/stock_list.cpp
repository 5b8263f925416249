#include "services/stock_list.h"

#include <QSet>
#include <algorithm>

#include "services/boards_eastmoney.h"
#include "services/service_names.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString allNode = u"hs_a"_s;
const QString beijingNode = u"hs_bjs"_s;
const QString allMarkets = u"m:0+t:6,m:0+t:80,m:1+t:2,m:1+t:23"_s;
const QString beijingMarket = u"m:0+t:81+s:2048"_s;

// What a service has told of a part of the list.
struct Part {
    ListReply<ListedStock> reply;
    bool isWhole = false;
};

bool reaches(qsizetype stocks, std::optional<qsizetype> total) {
    return total && stocks >= *total;
}

QList<ListedStock> eachOnce(const QList<ListedStock>& stocks) {
    QSet<QString> codes;
    QList<ListedStock> once;
    for (const ListedStock& stock : stocks) {
        if (!codes.contains(stock.dm)) {
            codes << stock.dm;
            once << stock;
        }
    }
    return once;
}

bool hasBeijing(const QList<ListedStock>& stocks) {
    return std::ranges::any_of(stocks, [](const ListedStock& it) { return isOfBeijing(it.dm); });
}

QList<ListedStock> wantedOf(const QList<ListedStock>& stocks, bool withBeijing) {
    QList<ListedStock> wanted;
    std::ranges::copy_if(stocks, std::back_inserter(wanted), [&](const ListedStock& it) {
        return isStockCode(it.dm) || (withBeijing && isOfBeijing(it.dm));
    });
    return wanted;
}

// Nothing where the reply is none: the list is then as long as its pages are.
QCoro::Task<std::optional<qsizetype>> askCount(HttpClient& http, Service service, QString node,
                                               std::stop_token stop) {
    const HttpReply reply = co_await http.get(service, nodeCountPath(node), stop);
    const std::optional<qsizetype> count =
        reply.answered() ? readNodeCount(reply.body) : std::nullopt;
    if (reply.answered() && !count) {
        http.complain(service, u"应答里没有股票的只数"_s);
    }
    co_return std::optional<qsizetype>(count);
}

QCoro::Task<Part> askNode(HttpClient& http, Service service, QString node, qsizetype before,
                          StockListProgress progress, std::stop_token stop) {
    const std::optional<qsizetype> count = co_await askCount(http, service, node, stop);
    ListQuestion<ListedStock> question;
    question.path = [node](int page) { return nodePath(node, page); };
    question.read = readNodePage;
    question.fullPage = stocksOnANodePage;
    question.expected = count;
    question.onPage = [=](qsizetype rows) {
        progress(before + rows, count ? std::optional(before + *count) : std::nullopt);
    };
    Part part;
    part.reply = co_await fetchPages(http, service, question, stop);
    if (part.reply.rows) {
        part.reply.rows = eachOnce(*part.reply.rows);
        part.isWhole = reaches(part.reply.rows->size(), count);
    }
    co_return Part(part);
}

QCoro::Task<Part> askSina(HttpClient& http, Service service, bool withBeijing,
                          StockListProgress progress, std::stop_token stop) {
    Part all = co_await askNode(http, service, allNode, 0, progress, stop);
    if (!all.reply.rows || !withBeijing || hasBeijing(*all.reply.rows)) {
        co_return Part(all);
    }
    const qsizetype before = all.reply.rows->size();
    Part beijing = co_await askNode(http, service, beijingNode, before, progress, stop);
    if (beijing.reply.rows) {
        *beijing.reply.rows << *all.reply.rows;
        beijing.isWhole = beijing.isWhole && all.isWhole;
    }
    co_return Part(beijing);
}

QCoro::Task<Part> askEastmoney(HttpClient& http, Service service, bool withBeijing,
                               StockListProgress progress, std::stop_token stop) {
    const QString markets = withBeijing ? allMarkets + u',' + beijingMarket : allMarkets;
    ListQuestion<ListedStock> question;
    question.path = [markets](int page) { return eastmoneyStocksPath(markets, page); };
    auto total = std::make_shared<std::optional<qsizetype>>();
    question.read = [total](const QByteArray& body) {
        ListPage<ListedStock> page = EastmoneyBoards().readStocks(body);
        *total = page.total;
        return page;
    };
    question.onPage = [=](qsizetype rows) { progress(rows, *total); };
    Part part;
    part.reply = co_await fetchPages(http, service, question, stop);
    if (part.reply.rows) {
        part.reply.rows = eachOnce(*part.reply.rows);
        part.isWhole = reaches(part.reply.rows->size(), *total);
    }
    co_return Part(part);
}

}  // namespace

QString stockListPath(const QString& kind, int page) {
    return kind == u"eastmoney"_s ? eastmoneyStocksPath(allMarkets, page) : nodePath(allNode, page);
}

StockList::StockList(HttpClient& http, QList<Service> services)
    : http_(http), services_(std::move(services)) {}

QCoro::Task<StockListReply> StockList::fetch(bool withBeijing, StockListFault faultOf,
                                             StockListProgress progress,
                                             std::stop_token stop) const {
    StockListReply list;
    for (const Service& service : services_) {
        const auto ask = service.kind == u"eastmoney"_s ? askEastmoney : askSina;
        const Part part = co_await ask(http_, service, withBeijing, progress, stop);
        const QList<ListedStock> stocks =
            wantedOf(part.reply.rows.value_or(QList<ListedStock>()), withBeijing);
        const QString lack = part.reply.rows ? faultOf(stocks) : part.reply.lack;
        if (lack.isEmpty()) {
            list.stocks = stocks;
            list.isWhole = part.isWhole;
            list.service = service;
            break;
        }
        http_.complain(service, lack);
        list.lacks << lineOn(service, lack);
        list.reason = lack;
    }
    if (services_.isEmpty()) {
        list.reason = allOffWords(u"stocklist"_s);
        list.lacks << list.reason;
    }
    co_return list;
}

}  // namespace guanchao
