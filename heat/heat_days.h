// The figures of all items of a ranking over its last days: for the small lines of the ranking and
// for the heat map. Failed statements raise StoreError.
#pragma once

#include <QDate>
#include <QList>
#include <limits>

#include "heat/heat_subjects.h"
#include "store/connection.h"

namespace guanchao {

// Those that a small line shows.
inline constexpr int sparklineDays = 30;

struct DayFigure {
    double value = std::numeric_limits<double>::quiet_NaN();  // NaN: not collected
    bool isLowerBound = false;
    QString source = {};  // who counted: see NewsNote
};

struct ItemDays {
    QString item;
    QString name;              // where the items are codes
    QList<DayFigure> figures;  // one for each day
};

struct HeatDays {
    QList<QDate> days;  // that have a row, oldest first
    QList<ItemDays> items;
};

// Of the calendar days up to the latest one that was collected. Of two rows of an item and day the
// one written last counts.
HeatDays readHeatDays(Connection& heat, const HeatSubject& subject, const DayField& field,
                      int calendarDays);

// What a small line is about, in words: "近30天 一日数量：采集 3 天，最少 2，最多 9，最近 5".
QString sparklineWords(const DayField& field, const ItemDays& item);

// The figures that compare with the newest: those that the same kind of service has counted.
QList<double> comparableFigures(const ItemDays& item);

}  // namespace guanchao
