// Boards of Sina: newFLJK.php, all in one reply in GBK.
//   var S_Finance_bankuai_class = {"gn_hwqc":"gn_hwqc,华为汽车,125,20.0,0.6,3.2,…",…}
// A value is node, name, number of stocks, mean price, and what else the board's quote has;
// `param` is class for concepts, industry and area. The stocks of a board: services/node_list.
#pragma once

#include "services/board_kind.h"

namespace guanchao {

class SinaBoards : public BoardKind {
public:
    QString boardsPath(BoardSort sort, int page) const override;
    ListPage<Board> readBoards(const QByteArray& body) const override;
    QString stocksPath(const QString& node, int page) const override;
    ListPage<ListedStock> readStocks(const QByteArray& body) const override;
    qsizetype stocksOnAPage() const override { return stocksOnANodePage; }
};

}  // namespace guanchao
