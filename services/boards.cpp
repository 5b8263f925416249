#include "services/boards.h"

#include <QRegularExpression>

#include "base/run_note.h"
#include "base/values.h"
#include "formats/text_file.h"
#include "services/boards_eastmoney.h"
#include "services/boards_sina.h"
#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

std::unique_ptr<BoardKind> boardKind(const QString& name) {
    if (name == u"eastmoney"_s) {
        return std::make_unique<EastmoneyBoards>();
    }
    return std::make_unique<SinaBoards>();
}

QString boardFault(const Board& board) {
    static const QRegularExpression node(u"\\A[A-Za-z0-9_]{1,40}\\z"_s);
    if (!node.match(board.node).hasMatch()) {
        return u"应答里的板块代号不对：%1"_s.arg(shortened(board.node, longestShownName));
    }
    const bool hasName = !board.name.isEmpty() && !isBroken(board.name);
    return hasName ? QString() : u"应答里板块 %1 的名称不对"_s.arg(board.node);
}

Boards::Boards(HttpClient& http, QList<Service> services)
    : http_(http), services_(std::move(services)) {}

QCoro::Task<BoardList> Boards::list(BoardSort sort, std::stop_token stop) const {
    RunNote note(u"读板块列表"_s, stop);
    BoardList list;
    QString reason;
    for (const Service& service : services_) {
        const std::shared_ptr<BoardKind> kind = boardKind(service.kind);
        ListQuestion<Board> question;
        question.path = [kind, sort](int page) { return kind->boardsPath(sort, page); };
        question.read = [kind](const QByteArray& body) { return kind->readBoards(body); };
        const ListReply<Board> reply = co_await fetchPages(http_, service, question, stop);
        if (reply.rows && !reply.rows->isEmpty()) {
            list.boards = *reply.rows;
            list.service = service;
            break;
        }
        const QString lack = reply.rows ? u"应答里没有板块"_s : reply.lack;
        http_.complain(service, lack);
        list.lacks << lineOn(service, lack);
        reason = lack;
    }
    if (services_.isEmpty()) {
        reason = allOffWords(u"boards"_s);
        list.lacks << reason;
    }
    if (list.boards.isEmpty()) {
        note.failed(reason);
    } else {
        note.ended(u"%1 个"_s.arg(list.boards.size()));
    }
    co_return list;
}

QCoro::Task<ListReply<ListedStock>> Boards::stocks(Service service, Board board,
                                                   std::stop_token stop) const {
    const std::shared_ptr<BoardKind> kind = boardKind(service.kind);
    ListQuestion<ListedStock> question;
    question.path = [kind, node = board.node](int page) { return kind->stocksPath(node, page); };
    question.read = [kind](const QByteArray& body) { return kind->readStocks(body); };
    question.fullPage = kind->stocksOnAPage();
    question.expected = board.stocks;
    ListReply<ListedStock> reply = co_await fetchPages(http_, service, question, stop);
    if (reply.rows && reply.rows->isEmpty() && board.stocks.value_or(1) > 0) {
        reply = {std::nullopt, u"应答里没有股票"_s};
    }
    if (!reply.rows) {
        http_.complain(service, reply.lack);
    }
    co_return reply;
}

}  // namespace guanchao
