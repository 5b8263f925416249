#include "services/boards_eastmoney.h"

#include <QJsonArray>
#include <QJsonObject>

#include "services/loose_json.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype rowsOnAPage = 100;

QString pathFor(const QString& rows, const QString& fields, int page) {
    return u"/api/qt/clist/get?pn=%1&pz=%2&po=0&np=1&fltt=2&invt=2&fid=f12&fs=%3&fields=%4"_s
        .arg(page)
        .arg(rowsOnAPage)
        .arg(rows, fields);
}

QString wordOf(BoardSort sort) {
    switch (sort) {
        case BoardSort::industries:
            return u"m:90+t:2"_s;
        case BoardSort::regions:
            return u"m:90+t:1"_s;
        case BoardSort::concepts:
            break;
    }
    return u"m:90+t:3"_s;
}

// Beijing shares its market number with Shenzhen.
QString exchangeOf(const QString& number, const QString& market) {
    if (market == u"1"_s) {
        return u"SH"_s;
    }
    const bool isOfShenzhen =
        number.startsWith(u'0') || number.startsWith(u'2') || number.startsWith(u'3');
    return isOfShenzhen ? u"SZ"_s : u"BJ"_s;
}

template <typename Row>
ListPage<Row> readPage(const QByteArray& body, Row (*readRow)(const QJsonObject&),
                       QString (*faultOf)(const Row&)) {
    const QJsonObject reply = readLooseJson(body).object();
    const QJsonValue data = reply[u"data"_s];
    if (reply.contains(u"data"_s) && data.isNull()) {
        return {};
    }
    ListPage<Row> page;
    page.total = data[u"total"_s].toInteger(-1);
    if (*page.total < 0 || !data[u"diff"_s].isArray()) {
        return {{}, u"应答里没有列表"_s};
    }
    for (const auto& row : data[u"diff"_s].toArray()) {
        if (!takeRow(page, readRow(row.toObject()), faultOf)) {
            break;
        }
    }
    return page;
}

Board readBoard(const QJsonObject& row) {
    return {row[u"f12"_s].toString(), row[u"f14"_s].toString().trimmed()};
}

ListedStock readStock(const QJsonObject& row) {
    const QString number = row[u"f12"_s].toString();
    return {exchangeOf(number, numberWords(row[u"f13"_s])) + number,
            row[u"f14"_s].toString().trimmed()};
}

}  // namespace

QString EastmoneyBoards::boardsPath(BoardSort sort, int page) const {
    return pathFor(wordOf(sort), u"f12,f14"_s, page);
}

ListPage<Board> EastmoneyBoards::readBoards(const QByteArray& body) const {
    return readPage<Board>(body, readBoard, boardFault);
}

QString eastmoneyStocksPath(const QString& markets, int page) {
    return pathFor(markets, u"f12,f13,f14"_s, page);
}

QString EastmoneyBoards::stocksPath(const QString& node, int page) const {
    return eastmoneyStocksPath(u"b:"_s + node, page);
}

ListPage<ListedStock> EastmoneyBoards::readStocks(const QByteArray& body) const {
    return readPage<ListedStock>(body, readStock, listedStockFault);
}

qsizetype EastmoneyBoards::stocksOnAPage() const {
    return rowsOnAPage;
}

}  // namespace guanchao
