// What a kind of service for boards (板块) is: which requests bring the boards of the day and the
// stocks of one, and how the replies are read.
#pragma once

#include <memory>

#include "services/node_list.h"

namespace guanchao {

enum class BoardSort { concepts, industries, regions };  // 概念, 行业, 地区

struct Board {
    QString node;  // by which its stocks are asked for: letters, digits and underscores
    QString name;
    std::optional<qsizetype> stocks = {};  // how many, where the service tells it

    bool operator==(const Board&) const = default;
};

// The fault of a board that can't be asked for or has no name.
QString boardFault(const Board& board);

class BoardKind {
public:
    virtual ~BoardKind() = default;

    virtual QString boardsPath(BoardSort sort, int page) const = 0;
    virtual ListPage<Board> readBoards(const QByteArray& body) const = 0;

    virtual QString stocksPath(const QString& node, int page) const = 0;
    virtual ListPage<ListedStock> readStocks(const QByteArray& body) const = 0;
    virtual qsizetype stocksOnAPage() const = 0;
};

// By the name that services.ini gives it; sina for one that it doesn't name.
std::unique_ptr<BoardKind> boardKind(const QString& name);

}  // namespace guanchao
