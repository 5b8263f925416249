// 日期三框: the rule of three boxes for year, month and day in which a date is picked or typed. A
// text is read by its leading number; a number or a date far beyond any raises OperationError.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

namespace guanchao {

struct DateTexts {
    QString year;
    QString month;
    QString day;

    bool operator==(const DateTexts&) const = default;
};

QStringList listedYears();   // 2007 to 2030
QStringList listedMonths();  // 1 to 12

// The list of the day box. February has 28 days in every year; a month that is none has no days.
QStringList daysOfMonth(const QString& month);

// The day box after a month was picked: a day that the shorter months lack becomes their last.
QString dayAfterMonth(const QString& month, const QString& day);

// The date of the three texts; months and days beyond their end roll on.
QDate packDate(const DateTexts& texts);

// The texts of a date; empty if it is none.
DateTexts dateTexts(QDate date);

}  // namespace guanchao
