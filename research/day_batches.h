// Days in any order on their way into both history databases: held for some hundred thousand at a
// time, written by code and day. Failures raise StoreError.
#pragma once

#include <QList>
#include <QMap>

#include "research/day_tables.h"

namespace guanchao {

struct AddedDays {
    qint64 rows = 0;   // that were taken
    qint64 added = 0;  // to the first database
    // The oldest of a code in a source that doesn't tell the former close: there is none.
    qint64 withoutFormerClose = 0;
    int refactored = 0;  // codes whose stored factors have been put in
};

class DayBatches {
public:
    // Connections in a transaction each.
    DayBatches(Connection& first, Connection& second);

    // A former close that isn't told is the close of the day before, in the measure of the day's
    // factor; so is that of a stored day behind new ones, unless it was told.
    void take(const DayRow& row);

    // Writes the rest, and the indexes that are cheaper to make now.
    AddedDays finish();

private:
    void write();
    void findFormerCloses(QList<DayRow>& rows, const QList<DayRow>& stored);
    void joinStored(const QList<DayRow>& stored, const QList<DayRow>& rows);

    DayTables first_;
    DayTables second_;
    QMap<QString, QList<DayRow>> codes_;
    QString lastCode_;
    QList<DayRow>* ofLastCode_ = nullptr;
    qint64 held_ = 0;
    AddedDays count_;
};

}  // namespace guanchao
