// Boards of Eastmoney: clist/get, at most 100 rows a page, for the boards (fs=m:90+t:3 concepts,
// t:2 industries, t:1 regions) and for the stocks of one (fs=b:BK0493).
//   {"rc":0,"data":{"total":504,"diff":[{"f12":"BK0493","f14":"新能源"},…]}}
//   {"rc":0,"data":{"total":171,"diff":[{"f12":"600519","f13":1,"f14":"贵州茅台"},…]}}
// f12 number, f13 1 for Shanghai and 0 for Shenzhen and Beijing, f14 name. `"data":null` for an
// unknown board and behind the last page. In the order of numbers, which no trade changes while
// pages are asked for. How many stocks a board has is told by its own pages alone.
#pragma once

#include "services/board_kind.h"

namespace guanchao {

// The path of a page of the stocks of markets: m:0+t:6,m:1+t:2.
QString eastmoneyStocksPath(const QString& markets, int page);

class EastmoneyBoards : public BoardKind {
public:
    QString boardsPath(BoardSort sort, int page) const override;
    ListPage<Board> readBoards(const QByteArray& body) const override;
    QString stocksPath(const QString& node, int page) const override;
    ListPage<ListedStock> readStocks(const QByteArray& body) const override;
    qsizetype stocksOnAPage() const override;
};

}  // namespace guanchao
