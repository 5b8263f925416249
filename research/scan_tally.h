// What a scan has done so far, and what it has passed over because a number is missing.
#pragma once

#include "research/market_columns.h"

namespace guanchao {

class ScanTally {
public:
    int days = 0;
    int themes = 0;  // theme-days
    int stocks = 0;  // stock rows

    // A row of a history database, by the path of its file.
    void passOver(const QString& path, const QString& dm, const QString& day);

    // Rows of all stocks that no theme could count.
    void leaveOut(const QString& path, const UnusableRows& rows);

    // "500 天，244 个题材，9571 行股票", and the number and the first few of what was passed over.
    QString words() const;

private:
    int passedOver_ = 0;
    QStringList first_;
    QString leftOut_;
};

}  // namespace guanchao
