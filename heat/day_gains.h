// What the news of a day stands against: the gain of each theme or stock on that day, from what the
// stores hold. Gains in percent. Nothing is asked for or written. Raises StoreError.
#pragma once

#include <QDate>
#include <QHash>
#include <QString>

#include "heat/heat_days.h"
#include "store/stores.h"

namespace guanchao {

struct DayGains {
    QHash<QString, double> gains;  // by item
    QString source;                // in words; empty: no store has the day
};

// Of stocks, or as the mean of their members' of themes: from the quotes of the stock table where
// they are of the day, else from the days that comparisons have downloaded or from the history,
// whichever has more.
DayGains gainsOfDay(const Stores& stores, bool ofThemes, const QDate& day);

struct NewsAndGain {
    QString item;
    QString name;
    DayFigure news;
    double gain = 0;
};

struct DayOfNews {
    QDate day;
    QList<NewsAndGain> items;
    QString line;  // what it rests on and what is missing
};

// The items of the day that have both.
DayOfNews newsAgainstGain(const Stores& stores, const HeatSubject& subject, const DayField& field,
                          const HeatDays& days, const QDate& day);

}  // namespace guanchao
