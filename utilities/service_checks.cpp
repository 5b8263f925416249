#include "utilities/service_checks.h"

#include <QRegularExpression>
#include <optional>

#include "base/activity.h"
#include "base/short_amounts.h"
#include "base/values.h"
#include "formats/text_file.h"
#include "market/stored_quote.h"
#include "services/boards.h"
#include "services/chart_picture.h"
#include "services/day_bars.h"
#include "services/factors.h"
#include "services/fundamentals.h"
#include "services/quote_source.h"
#include "services/stock_code.h"
#include "services/stock_list.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// 招商银行 has paid a dividend each year; 中芯国际 has paid none.
const QString stock = u"SH600036"_s;
const QString stockWithoutDividend = u"SH688981"_s;
const QDate longAgo(2010, 1, 4);
constexpr int daysBack = 60;

// Raises OperationError for a row that the program would not store.
QString quoteWords(const QuoteRow& row) {
    storedQuote(row);
    return u"%1 %2（%3 %4）"_s.arg(row.text(field::name), row.numberAsSent(field::latest),
                                   row.text(field::day), row.text(field::time));
}

// A stock and an index are asked for.
Finding tellQuotes(const QString& lines) {
    QStringList found;
    try {
        for (const QuoteRow& row : quoteRows(lines)) {
            if (hasQuote(row)) {
                found << quoteWords(row);
            }
        }
    } catch (const OperationError& fault) {
        return {false, fault.reason()};
    }
    return {found.size() == 2, u"%1 行："_s.arg(found.size()) + found.join(u"，"_s)};
}

QCoro::Task<Finding> askQuotes(CheckDesk desk, Service service, std::stop_token stop) {
    QuoteSource source(desk.http, desk.clock, {service});
    const QString codes = (stock + u',' + leadingIndex + u',').toLower();
    const QuotesReply reply = co_await source.fetch(codes, stop);
    co_return reply.lack.isEmpty() ? tellQuotes(reply.lines) : Finding{false, reply.lack};
}

Finding tellBars(const BarsReply& reply) {
    if (!reply.days) {
        return {false, reply.lacks.value(0).section(u'：', 1)};
    }
    if (reply.days->isEmpty()) {
        return {false, u"应答里一天也没有"_s};
    }
    const DayBar& last = reply.days->last();
    return {true, u"%1 天，%2 至 %3，最后一天收盘 %4，成交 %5 股"_s.arg(reply.days->size())
                      .arg(dateText(reply.days->first().day), dateText(last.day), last.closeText,
                           QString::number(last.volume, 'f', 0))};
}

QCoro::Task<Finding> askHistory(CheckDesk desk, Service service, QString dm, std::stop_token stop) {
    const DayBars bars(desk.http, desk.clock, {service});
    const QDate today = desk.clock.now().date();
    const BarsReply reply = co_await bars.fetch(dm, today.addDays(-daysBack), today, stop);
    co_return tellBars(reply);
}

Finding tellFactors(const FactorList& factors, const QDate& today, bool hasDividends) {
    const double now = factors.on(today);
    if (hasDividends && now == 1) {
        return {false, u"没有除权的记录，这只股票应当有"_s};
    }
    return {true, u"今天的因子 %1，%2 的 %3"_s.arg(numberText(now), dateText(longAgo),
                                                   numberText(factors.on(longAgo)))};
}

QCoro::Task<Finding> askFactors(CheckDesk desk, Service service, QString dm, bool hasDividends,
                                std::stop_token stop) {
    const Factors factors(desk.http, {service});
    const std::optional<FactorList> found = co_await factors.fetch(dm, stop);
    if (!found) {
        const QString lack = failureWords(desk.http.last());
        co_return Finding{false, lack.isEmpty() ? u"应答里没有复权因子"_s : lack};
    }
    co_return tellFactors(*found, desk.clock.now().date(), hasDividends);
}

Finding tellFundamentals(const FundamentalsReply& reply) {
    const Fundamentals& it = reply.fundamentals;
    if (it.mgsy.isEmpty()) {
        return {false, reply.lack.isEmpty() ? u"应答里没有每股收益"_s : reply.lack};
    }
    return {true, u"每股收益 %1，每股净资产 %2，流通 %3 亿股"_s.arg(it.mgsy, it.mgjzc, it.mqlt)};
}

QCoro::Task<Finding> askFundamentals(CheckDesk desk, Service service, std::stop_token stop) {
    const QList<Service> alone = {service};
    const FundamentalsReply reply = co_await fetchFundamentals(desk.http, alone, stock, stop);
    co_return tellFundamentals(reply);
}

// The first page alone: the whole list takes several.
QCoro::Task<Finding> askBoards(CheckDesk desk, Service service, std::stop_token stop) {
    const std::shared_ptr<BoardKind> kind = boardKind(service.kind);
    const QString path = kind->boardsPath(BoardSort::concepts, 1);
    const HttpReply reply = co_await desk.http.get(service, path, stop);
    if (!reply.answered()) {
        co_return Finding{false, failureWords(reply)};
    }
    const ListPage<Board> page = kind->readBoards(reply.body);
    if (page.rows.isEmpty()) {
        const QString lack = page.fault.isEmpty() ? u"应答里没有板块"_s : page.fault;
        desk.http.complain(service, lack);
        co_return Finding{false, lack};
    }
    co_return Finding{true,
                      u"%1 个概念板块，第一个是%2"_s.arg(page.total.value_or(page.rows.size()))
                          .arg(page.rows.first().name)};
}

using TellBody = std::function<Finding(const QByteArray& body)>;

QCoro::Task<Finding> askPage(CheckDesk desk, Service service, QString path, TellBody tell,
                             std::stop_token stop) {
    const HttpReply reply = co_await desk.http.get(service, path, stop);
    if (!reply.answered()) {
        co_return Finding{false, failureWords(reply)};
    }
    const Finding finding = tell(reply.body);
    if (!finding.answers) {
        desk.http.complain(service, finding.words);
    }
    co_return Finding(finding);
}

// The first page is enough to see whether a list is told.
Finding tellStocks(const ListPage<ListedStock>& page) {
    if (!page.fault.isEmpty() || page.rows.isEmpty()) {
        return {false, page.fault.isEmpty() ? u"应答里没有股票"_s : page.fault};
    }
    const ListedStock& first = page.rows.first();
    return {true, u"第一页 %1 只，%2 %3"_s.arg(page.rows.size()).arg(first.dm, first.name)};
}

QCoro::Task<Finding> askStockList(CheckDesk desk, Service service, std::stop_token stop) {
    const std::shared_ptr<BoardKind> kind = boardKind(service.kind);
    const QString path = stockListPath(service.kind, 1);
    const HttpReply reply = co_await desk.http.get(service, path, stop);
    if (!reply.answered()) {
        co_return Finding{false, failureWords(reply)};
    }
    const Finding finding = tellStocks(kind->readStocks(reply.body));
    if (!finding.answers) {
        desk.http.complain(service, finding.words);
    }
    co_return Finding(finding);
}

Finding tellChart(const QByteArray& body) {
    const bool isChart = isPicture(body);
    return {isChart, isChart ? u"图片，"_s + sizeWords(body.size()) : notAPicture};
}

Finding tellStockPage(const QByteArray& body) {
    const bool isOfStock = body.contains(stock.right(codeDigits).toLatin1());
    return {isOfStock, isOfStock ? u"网页，"_s + sizeWords(body.size()) : u"网页里没有这只股票"_s};
}

Finding tellVersion(const QByteArray& body) {
    static const QRegularExpression version(u"banben\\s*=\\s*(\\S+)"_s);
    const QRegularExpressionMatch match = version.match(readText(body).text);
    return {match.hasMatch(),
            match.hasMatch() ? u"版本 "_s + match.captured(1) : u"应答里没有版本"_s};
}

Check historyCheck(const QString& what, const Services& services, const QString& dm) {
    return {u"history"_s, what, services.history,
            [=](CheckDesk desk, Service it, std::stop_token stop) {
                return askHistory(desk, it, dm, stop);
            }};
}

Check factorsCheck(const QString& what, const Services& services, const QString& dm,
                   bool hasDividends) {
    return {u"factors"_s, what, services.factors,
            [=](CheckDesk desk, Service it, std::stop_token stop) {
                return askFactors(desk, it, dm, hasDividends, stop);
            }};
}

Check pageCheck(const QString& purpose, const Service& service, const QString& path,
                const TellBody& tell) {
    return {purpose, {}, {service}, [=](CheckDesk desk, Service it, std::stop_token stop) {
                return askPage(desk, it, path, tell, stop);
            }};
}

}  // namespace

QList<Check> serviceChecks(const Services& services) {
    const QString code = stock.toLower();
    const QString digits = stock.right(codeDigits);
    return {
        {u"quote"_s, {}, services.quote, askQuotes},
        historyCheck(u"股票"_s, services, stock),
        historyCheck(u"指数"_s, services, leadingIndex),
        factorsCheck(u"有分红"_s, services, stock, true),
        factorsCheck(u"没有分红"_s, services, stockWithoutDividend, false),
        {u"fundamentals"_s, {}, services.fundamentals, askFundamentals},
        {u"boards"_s, {}, services.boards, askBoards},
        {u"stocklist"_s, {}, services.stockList, askStockList},
        pageCheck(u"chart"_s, services.chart, u"/newchart/min/n/%1.gif"_s.arg(code), tellChart),
        pageCheck(u"stockpage"_s, services.stockpage, u"/realstock/company/%1/nc.shtml"_s.arg(code),
                  tellStockPage),
        pageCheck(u"sitepage"_s, services.sitepage, u"/%1.html"_s.arg(code), tellStockPage),
        pageCheck(u"newspage"_s, services.newspage, u"/news/stock/%1/cpbd.shtml"_s.arg(digits),
                  tellStockPage),
        pageCheck(u"vendor"_s, services.vendor, u"/chaoxin/banbenupdate.txt"_s, tellVersion),
    };
}

}  // namespace guanchao
