#include "services/node_list.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

#include "base/values.h"
#include "formats/text_file.h"
#include "services/loose_json.h"
#include "services/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

ListedStock readStock(const QJsonObject& row) {
    return {row[u"symbol"_s].toString().toUpper(), row[u"name"_s].toString().trimmed()};
}

}  // namespace

QString listedStockFault(const ListedStock& stock) {
    const QString exchange = stock.dm.left(2);
    const bool isOurs = exchange == u"SH"_s || exchange == u"SZ"_s || exchange == u"BJ"_s;
    if (!isOurs || !isWholeCode(stock.dm)) {
        return u"应答里的代码不对：%1"_s.arg(shortened(stock.dm, codeLength));
    }
    const bool hasName = !stock.name.isEmpty() && !isBroken(stock.name);
    return hasName ? QString() : u"应答里 %1 的名称不对"_s.arg(stock.dm);
}

QString nodePath(const QString& node, int page) {
    return u"/quotes_service/api/json_v2.php/Market_Center.getHQNodeData?page=%1&num=%2"
           u"&sort=symbol&asc=1&node=%3&symbol=&_s_r_a=page"_s.arg(page)
               .arg(stocksOnANodePage)
               .arg(node);
}

QString nodeCountPath(const QString& node) {
    return u"/quotes_service/api/json_v2.php/Market_Center.getHQNodeStockCount?node="_s + node;
}

std::optional<qsizetype> readNodeCount(const QByteArray& body) {
    static const QRegularExpression number(u"\\A\\s*\"?(\\d{1,6})\"?\\s*\\z"_s);
    const QRegularExpressionMatch match = number.match(QString::fromLatin1(body));
    return match.hasMatch() ? std::optional(match.captured(1).toLongLong()) : std::nullopt;
}

ListPage<ListedStock> readNodePage(const QByteArray& body) {
    const QJsonDocument reply = readLooseJson(body);
    if (!reply.isArray()) {
        return {{}, u"应答里没有股票"_s};
    }
    ListPage<ListedStock> page;
    for (const auto& row : reply.array()) {
        if (!takeRow(page, readStock(row.toObject()), listedStockFault)) {
            break;
        }
    }
    return page;
}

}  // namespace guanchao
