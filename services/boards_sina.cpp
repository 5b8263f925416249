#include "services/boards_sina.h"

#include <QJsonObject>

#include "base/values.h"
#include "services/loose_json.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString wordOf(BoardSort sort) {
    switch (sort) {
        case BoardSort::industries:
            return u"industry"_s;
        case BoardSort::regions:
            return u"area"_s;
        case BoardSort::concepts:
            break;
    }
    return u"class"_s;
}

// What is assigned, between its braces.
QByteArray objectIn(const QByteArray& body) {
    const qsizetype begin = body.indexOf('{');
    const qsizetype end = body.lastIndexOf('}');
    return begin < 0 || end < begin ? QByteArray() : body.sliced(begin, end - begin + 1);
}

Board readBoard(const QString& text) {
    const QStringList fields = text.split(u',');
    Board board = {fields[0], fields.value(1).trimmed()};
    if (readsAsNumber(fields.value(2))) {
        board.stocks = wholeNumber32(fields[2]);
    }
    return board;
}

}  // namespace

QString SinaBoards::boardsPath(BoardSort sort, int /*page*/) const {
    return u"/q/view/newFLJK.php?param="_s + wordOf(sort);
}

ListPage<Board> SinaBoards::readBoards(const QByteArray& body) const {
    const QJsonDocument reply = readLooseJson(objectIn(body));
    if (!body.trimmed().startsWith("var ") || !reply.isObject()) {
        return {{}, u"应答里没有板块"_s};
    }
    ListPage<Board> page;
    const QJsonObject boards = reply.object();
    for (const auto& value : boards) {
        if (!takeRow(page, readBoard(value.toString()), boardFault)) {
            break;
        }
    }
    page.total = page.rows.size();
    return page;
}

QString SinaBoards::stocksPath(const QString& node, int page) const {
    return nodePath(node, page);
}

ListPage<ListedStock> SinaBoards::readStocks(const QByteArray& body) const {
    return readNodePage(body);
}

}  // namespace guanchao
