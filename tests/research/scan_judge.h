// The rule of the three scans as it reads, a statement for each step and a row at a time: what the
// scans over columns must come to. Tables that lack a number are passed over as they are there.
#pragma once

#include "store/recordset.h"
#include "store/stores.h"

namespace guanchao {

class ScanJudge {
public:
    explicit ScanJudge(const Stores& stores)
        : first_(stores.firstHistory.open()),
          second_(stores.secondHistory.open()),
          main_(stores.main.open()) {}

    void chooseThemes();
    void addStocks(bool onlyFallen);
    int passedOver() const { return passedOver_; }

private:
    using Row = QMap<QString, Value>;

    void takeMembers(const QString& ticai, const QString& day, bool writesHigh, bool onlyFallen);
    QString dayAfterFall(const QString& dm, const QString& day);
    void takeStock(const QString& dm, const QString& D, Row row, bool writesHigh);
    Recordset days(const QString& dm, const QString& condition);

    Connection first_, second_, main_;
    int passedOver_ = 0;
};

}  // namespace guanchao
