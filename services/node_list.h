// The stocks of a node of Sina, page by page: Market_Center.getHQNodeData with `num` rows a page.
//   [{"symbol":"sh600519","code":"600519","name":"贵州茅台",…},…]
// A node is a board (gn_hwqc) or a market (hs_a, all A shares). In GBK, now and then with keys of
// JavaScript; `[]` or `null` behind the last page and for an unknown node; no total.
#pragma once

#include "services/paged_list.h"

namespace guanchao {

struct ListedStock {
    QString dm;    // with its exchange: SH600519, SZ000001, BJ830799
    QString name;  // as the service writes it

    bool operator==(const ListedStock&) const = default;
};

inline constexpr qsizetype stocksOnANodePage = 80;

// The fault of a stock whose code or name can't be.
QString listedStockFault(const ListedStock& stock);

QString nodePath(const QString& node, int page);
ListPage<ListedStock> readNodePage(const QByteArray& body);

// How many stocks a node has: a number in quotes. Nothing where the reply is none.
QString nodeCountPath(const QString& node);
std::optional<qsizetype> readNodeCount(const QByteArray& body);

}  // namespace guanchao
