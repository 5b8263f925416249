// The key data of a stock: the inputs of the valuation in the stock quote window, from the services
// of services.ini in their order. Kinds:
// - sina, on the quote host, /list=sh600000_i, GBK:
//     var hq_str_sh600000_i="A,pfyh,2.1940,2.4606,1.8660,12.4020,11145.9783,1865347.1415,…";
//   by position 3 earnings per share of the last four quarters, 5 net assets per share, 9 float of
//   A shares in units of ten thousand;
// - page, the public news page of a stock, /news/stock/600000.shtml.
#pragma once

#include <QCoro/QCoroTask>
#include <QList>
#include <QString>
#include <stop_token>

#include "platform/http_client.h"

namespace guanchao {

// As the service words them; empty where it doesn't.
struct Fundamentals {
    QString jzrq;            // 截止日期: the date of the report, as time text
    QString mqlt;            // 目前流通: free float in 亿 shares
    QString mgsy;            // 每股收益: earnings per share in yuan
    QString mgjzc;           // 每股净资产: net assets per share in yuan
    bool isOfAYear = false;  // that the earnings are those of four quarters, whatever the date

    // Free float in units of ten thousand shares; 0 if it isn't known.
    double floatInTenThousands() const;
    double netAssets() const;
};

// 取基本面: from the text of the page; all empty for a page without them.
Fundamentals readFundamentals(const QString& page);
// From the line of the stock's code; likewise.
Fundamentals readFundamentalsLine(const QString& lines, const QString& dm);

struct FundamentalsReply {
    Fundamentals fundamentals;
    bool isNamed = true;  // that services.ini has a service for them
    QString lack;         // why no service answered, in Chinese
};

// `dm` with its exchange. A service that doesn't have them gives the next one the word. Raises
// nothing but Cancelled.
QCoro::Task<FundamentalsReply> fetchFundamentals(HttpClient& http, QList<Service> services,
                                                 QString dm, std::stop_token stop);

}  // namespace guanchao
