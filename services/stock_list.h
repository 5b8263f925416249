// The list of all stocks (代码表的来源), from the services of services.ini in their order: the next
// one is asked where one refuses, is silent, or sends what can't stand. Nothing is raised but
// Cancelled.
//   sina: the nodes hs_a (Shanghai and Shenzhen, now and then Beijing too) and hs_bjs (Beijing),
//   pages of 80; how many a node has: /quotes_service/…/Market_Center.getHQNodeStockCount?node=hs_a
//   answers "5423".
//   eastmoney: clist with the markets in `fs`, pages of 100, each with the total.
#pragma once

#include "platform/http_client.h"
#include "services/node_list.h"

namespace guanchao {

struct StockListReply {
    QList<ListedStock> stocks;  // each code once; none if no service's list can stand
    bool isWhole = false;       // as many as the service says that there are
    Service service;            // that has told them
    QStringList lacks;          // why the others have not, in Chinese
    QString reason;             // the last of these, without whose it is
};

// How far a list is, in stocks; the total where the service has told it.
using StockListProgress = std::function<void(qsizetype stocks, std::optional<qsizetype> total)>;
// Why a list can't be that of all stocks, in Chinese; empty if it can.
using StockListFault = std::function<QString(const QList<ListedStock>& stocks)>;

// The path of a page of Shanghai and Shenzhen; it is read as the stocks of a board of that kind.
QString stockListPath(const QString& kind, int page);

class StockList {
public:
    StockList(HttpClient& http, QList<Service> services);

    // Stocks of Shanghai and Shenzhen, and of Beijing if wanted; no B shares, no funds.
    QCoro::Task<StockListReply> fetch(bool withBeijing, StockListFault faultOf,
                                      StockListProgress progress, std::stop_token stop) const;

private:
    HttpClient& http_;
    QList<Service> services_;
};

}  // namespace guanchao
