// The key data of a stock, read from its public news page: the inputs of the valuation in the stock
// quote window. A page without them gives empty values; nothing is raised.
#pragma once

#include <QString>

namespace guanchao {

// As the page words them; empty where it doesn't.
struct Fundamentals {
    QString jzrq;   // 截止日期: the date of the report, as time text
    QString mqlt;   // 目前流通: free float in 亿 shares
    QString mgsy;   // 每股收益: earnings per share in yuan
    QString mgjzc;  // 每股净资产: net assets per share in yuan

    // Free float in units of ten thousand shares; 0 if it isn't known.
    double floatInTenThousands() const;
    double netAssets() const;
};

// 取基本面: from the text of the page.
Fundamentals readFundamentals(const QString& page);

// The path of the page for a code.
QString fundamentalsPath(const QString& dm);

// With their units, as the window shows them.
struct FundamentalTexts {
    QString jzrq;
    QString mqlt;
    QString mgsy;
    QString mgjzc;
};

FundamentalTexts fundamentalTexts(const Fundamentals& fundamentals);

}  // namespace guanchao
