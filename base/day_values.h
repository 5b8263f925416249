// What a plot over the days shows of one day: a value for each of its lines and the day in words.
#pragma once

#include <QDate>
#include <QList>
#include <QString>

namespace guanchao {

struct DayValues {
    QDate day;
    QList<double> values;
    QString words;
    QString source = {};  // who counted them: a line joins days of one source only
};

}  // namespace guanchao
