// The boards (板块) of the day and their stocks, from the services of services.ini: for the list
// the next one is asked where one refuses, is silent or sends what can't stand. Kinds name their
// boards differently, so that the stocks come from the service that has told the list. Nothing is
// raised but Cancelled.
#pragma once

#include "services/board_kind.h"

namespace guanchao {

struct BoardList {
    QList<Board> boards;  // none if no service answered
    Service service;      // the one that did
    QStringList lacks;    // why the others did not, in Chinese
};

class Boards {
public:
    Boards(HttpClient& http, QList<Service> services);

    QCoro::Task<BoardList> list(BoardSort sort, std::stop_token stop) const;

    // All stocks of a board, of all exchanges. `service` is that of its list.
    QCoro::Task<ListReply<ListedStock>> stocks(Service service, Board board,
                                               std::stop_token stop) const;

private:
    HttpClient& http_;
    QList<Service> services_;
};

}  // namespace guanchao
