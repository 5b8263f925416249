#include "tools/live_check/live_checks.h"

#include <QRegularExpression>
#include <optional>

#include "base/activity.h"
#include "base/values.h"
#include "collector/news_search.h"
#include "collector/search_page.h"
#include "formats/text_file.h"
#include "market/stored_quote.h"
#include "services/day_bars.h"
#include "services/factors.h"
#include "services/fundamentals.h"
#include "services/quote_source.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// 招商银行 has paid a dividend each year; 中芯国际 has paid none.
const QString stock = u"SH600036"_s;
const QString stockWithoutDividend = u"SH688981"_s;
const QString index = u"SH000001"_s;
const QDate longAgo(2010, 1, 4);
constexpr int daysBack = 60;

QString sizeWords(const QByteArray& body) {
    return QString::number(body.size()) + u" 字节"_s;
}

QString quoteWords(const QuoteRow& row) {
    storedQuote(row);
    return u"%1 %2（%3 %4）"_s.arg(row.text(field::name), row.numberAsSent(field::latest),
                                   row.text(field::day), row.text(field::time));
}

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

QCoro::Task<Finding> askQuotes(CheckDesk desk, Service service) {
    QuoteSource source(desk.http, desk.clock, {service});
    const QString codes = (stock + u',' + index + u',').toLower();
    const QuotesReply reply = co_await source.fetch(codes, std::stop_token());
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

QCoro::Task<Finding> askHistory(CheckDesk desk, Service service, QString dm) {
    const DayBars bars(desk.http, desk.clock, {service});
    const QDate today = desk.clock.now().date();
    const BarsReply reply =
        co_await bars.fetch(dm, today.addDays(-daysBack), today, std::stop_token());
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

QCoro::Task<Finding> askFactors(CheckDesk desk, Service service, QString dm, bool hasDividends) {
    const Factors factors(desk.http, {service});
    const std::optional<FactorList> found = co_await factors.fetch(dm, std::stop_token());
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

QCoro::Task<Finding> askFundamentals(CheckDesk desk, Service service) {
    const QList<Service> alone = {service};
    const FundamentalsReply reply =
        co_await fetchFundamentals(desk.http, alone, stock, std::stop_token());
    co_return tellFundamentals(reply);
}

using TellBody = std::function<Finding(const QByteArray& body)>;

QCoro::Task<Finding> askPage(CheckDesk desk, Service service, QString path, TellBody tell) {
    const HttpReply reply = co_await desk.http.get(service, path, std::stop_token());
    co_return reply.answered() ? tell(reply.body) : Finding{false, failureWords(reply)};
}

Finding tellChart(const QByteArray& body) {
    const bool isPicture = body.startsWith("GIF8") || body.startsWith("\x89PNG");
    return {isPicture, isPicture ? u"图片，"_s + sizeWords(body) : u"应答不是图片"_s};
}

Finding tellStockPage(const QByteArray& body) {
    const bool isOfStock = body.contains(stock.right(codeDigits).toLatin1());
    return {isOfStock, isOfStock ? u"网页，"_s + sizeWords(body) : u"网页里没有这只股票"_s};
}

Finding tellVersion(const QByteArray& body) {
    static const QRegularExpression version(u"banben\\s*=\\s*(\\S+)"_s);
    const QRegularExpressionMatch match = version.match(readText(body).text);
    return {match.hasMatch(),
            match.hasMatch() ? u"版本 "_s + match.captured(1) : u"应答里没有版本"_s};
}

Check pageCheck(const QString& purpose, const Service& service, const QString& path,
                const TellBody& tell) {
    return {purpose, {service}, [=](CheckDesk desk, Service it) {
                return askPage(desk, it, path, tell);
            }};
}

Check historyCheck(const QString& purpose, const Services& services, const QString& dm) {
    return {purpose, services.history,
            [=](CheckDesk desk, Service it) { return askHistory(desk, it, dm); }};
}

Check factorsCheck(const QString& purpose, const Services& services, const QString& dm,
                   bool hasDividends) {
    return {purpose, services.factors,
            [=](CheckDesk desk, Service it) { return askFactors(desk, it, dm, hasDividends); }};
}

Check searchCheck(const Services& services, const QString& pages,
                  const CollectorSettings& settings) {
    const RunOrder order = {.day = {}, .yinqingurl = pages};
    const NewsSearch search(order, settings, services.search);
    const auto tell = [settings](const QByteArray& body) {
        const std::optional<qint64> results = SearchPage(body).results(settings);
        return results ? Finding{true, u"相关结果 %1 个"_s.arg(*results)}
                       : Finding{false, u"网页里没有结果的数目"_s};
    };
    return pageCheck(u"搜索网页"_s, search.service(), search.paths(u"白酒"_s).first(), tell);
}

}  // namespace

QList<Check> liveChecks(const Services& services, const QString& searchPages,
                        const CollectorSettings& settings) {
    const QString code = stock.toLower();
    const QString digits = stock.right(codeDigits);
    return {
        {u"行情"_s, services.quote, askQuotes},
        historyCheck(u"历史行情（股票）"_s, services, stock),
        historyCheck(u"历史行情（指数）"_s, services, index),
        factorsCheck(u"复权因子（有分红）"_s, services, stock, true),
        factorsCheck(u"复权因子（没有分红）"_s, services, stockWithoutDividend, false),
        {u"基本面"_s, services.fundamentals, askFundamentals},
        pageCheck(u"走势图"_s, services.chart, u"/newchart/min/n/%1.gif"_s.arg(code), tellChart),
        pageCheck(u"个股页面"_s, services.stockpage, u"/realstock/company/%1/nc.shtml"_s.arg(code),
                  tellStockPage),
        pageCheck(u"个股行情网页"_s, services.sitepage, u"/%1.html"_s.arg(code), tellStockPage),
        pageCheck(u"个股资讯"_s, services.newspage, u"/news/stock/%1/cpbd.shtml"_s.arg(digits),
                  tellStockPage),
        searchCheck(services, searchPages, settings),
        pageCheck(u"软件网站"_s, services.vendor, u"/chaoxin/banbenupdate.txt"_s, tellVersion),
    };
}

}  // namespace guanchao
