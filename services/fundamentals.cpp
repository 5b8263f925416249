#include "services/fundamentals.h"

#include <QStringList>

#include "base/values.h"
#include "formats/gbk.h"
#include "services/quote_reply.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype fewestItems = 3;
const QString beginOfBlock = u"var stockF10ZxzbJson ="_s;

// The positions in the line of Sina.
namespace line {
constexpr qsizetype earningsOfFourQuarters = 3;
constexpr qsizetype netAssets = 5;
constexpr qsizetype floatOfAShares = 9;
}  // namespace line

bool isLine(const Service& service) {
    return service.kind == u"sina"_s;
}

QString lineOf(const QString& dm) {
    return u"hq_str_"_s + dm.toLower() + u"_i=\""_s;
}

QString pathOf(const Service& service, const QString& dm) {
    return isLine(service)
               ? u"/list="_s + dm.toLower() + u"_i"_s
               : u"/news/stock/600000.shtml"_s.replace(u"600000"_s, dm.right(codeDigits));
}

// Whether it is a word on the stock at all, be it that there is nothing to tell.
bool isOf(const Service& service, const QString& text, const QString& dm) {
    return text.contains(isLine(service) ? lineOf(dm) : beginOfBlock);
}

// An empty reply is as good as none.
QString lackOf(const HttpReply& reply) {
    if (!reply.answered()) {
        return failureWords(reply);
    }
    return reply.body.isEmpty() ? u"应答是空的"_s : QString();
}

// What stands between the braces of the block, without its double quotes; empty if a mark or a
// brace is missing.
QString blockOf(const QString& page) {
    const qsizetype begin = page.indexOf(beginOfBlock);
    const qsizetype end = begin < 0 ? -1 : page.indexOf(u"var stockDstx ="_s, begin);
    if (end < 0) {
        return {};
    }
    QString block = page.sliced(begin, end - begin);
    block.remove(u'"');
    const qsizetype open = block.indexOf(u'{');
    const qsizetype close = open < 0 ? -1 : block.indexOf(u'}', open);
    return close < 0 ? QString() : block.sliced(open + 1, close - open - 1);
}

}  // namespace

double Fundamentals::floatInTenThousands() const {
    return marketFigure(mqlt).value_or(0) * 10000;
}

double Fundamentals::netAssets() const {
    return marketFigure(mgjzc).value_or(0);
}

Fundamentals readFundamentals(const QString& page) {
    Fundamentals fundamentals;
    const QStringList items = blockOf(page).split(u',');
    if (items.size() < fewestItems) {
        return fundamentals;
    }
    for (const QString& item : items) {
        const QStringList words = item.split(u':');
        if (words.size() < 2) {
            continue;
        }
        if (words[0] == u"jzrq") {
            fundamentals.jzrq = dayAsTimeText(words[1]);
        } else if (words[0] == u"mqlt") {
            fundamentals.mqlt = words[1];
        } else if (words[0] == u"mgsy") {
            fundamentals.mgsy = words[1];
        } else if (words[0] == u"mgjzc") {
            fundamentals.mgjzc = words[1];
        }
    }
    return fundamentals;
}

Fundamentals readFundamentalsLine(const QString& lines, const QString& dm) {
    const QString begin = lineOf(dm);
    const qsizetype at = lines.indexOf(begin);
    const QStringList fields =
        at < 0 ? QStringList() : lines.sliced(at + begin.size()).section(u'"', 0, 0).split(u',');
    if (fields.size() <= line::floatOfAShares) {
        return {};
    }
    const auto figure = [&](qsizetype position) {
        return marketFigure(fields[position]) ? fields[position].trimmed() : QString();
    };
    Fundamentals fundamentals;
    fundamentals.mgsy = figure(line::earningsOfFourQuarters);
    fundamentals.mgjzc = figure(line::netAssets);
    fundamentals.isOfAYear = true;
    if (const auto tenThousands = marketFigure(fields[line::floatOfAShares])) {
        fundamentals.mqlt = numberText(roundTo(*tenThousands / 10000, 4));
    }
    return fundamentals;
}

QCoro::Task<FundamentalsReply> fetchFundamentals(HttpClient& http, QList<Service> services,
                                                 QString dm, std::stop_token stop) {
    services.removeIf([](const Service& it) { return it.host.isEmpty(); });
    FundamentalsReply found;
    found.isNamed = !services.isEmpty();
    for (const Service& service : services) {
        const QString path = pathOf(service, dm);
        const HttpReply reply = co_await http.get(service, path, stop);
        const QString text = reply.answered() ? textFromGbk(reply.body) : QString();
        found.fundamentals =
            isLine(service) ? readFundamentalsLine(text, dm) : readFundamentals(text);
        found.lack = lackOf(reply);
        if (!found.fundamentals.mgsy.isEmpty()) {
            break;
        }
        if (reply.answered() && !isOf(service, text, dm)) {
            http.complain(service, u"应答里没有基本面"_s);
        }
    }
    co_return FundamentalsReply(found);
}

}  // namespace guanchao
