// What the rankings of the internet figures are about.
#pragma once

#include <functional>

#include "base/globals.h"
#include "heat/heat_grid.h"

namespace guanchao {

// A figure of the table of days.
struct DayField {
    QString words;
    QString column;           // or an expression; the table of days is called d
    QString lowerBound = {};  // its column in the notes, where they tell one
    bool isGrowth = false;
};

struct HeatSubject {
    QString rankingActivity;
    QString historyActivity;
    QString collectWord;                  // the argument word of the collector
    QString Globals::*current = nullptr;  // the item that was chosen last
    QString dayTable;                     // the latest day in it is the ranking's
    QString key;                          // its column of items
    QString name = {};                    // its column of their names, where the items are codes
    bool ranksToday = false;              // while no day is collected, the ranking is today's

    // The statements of the ranking of a day, of all items, and of the history of one. `first`: an
    // order that goes before the subject's own, followed by a comma, or nothing.
    std::function<QString(const QString& day, const QString& first)> ofDay;
    QString ofAll;
    std::function<QString(const QString& item)> ofItem;

    QList<int> rankingWidths;
    QList<int> historyWidths;
    DressRow dressRanking;
    DressRow dressHistory;
    QList<CountLine> lines;                                   // of the plot of a history
    QList<DayField> fields;                                   // the first is the one of the ranking
    QString kind;                                             // 主题, 公司 or 商品
    bool lastColumnIsTip = false;                             // of the row that is chosen
    std::function<QString(const QString& item)> searchWords;  // without marks
};

// By how much news there is about a theme or a company: tables xinwenshul and gongsixinwen, items
// by their growth, which is a signed number, 1000 where there was nothing to compare with.
HeatSubject themeNews();
HeatSubject companyNews();

// The prices of commodities by rising and falling words: tables shopname and shophq, items by their
// total.
HeatSubject commodityPrices();

}  // namespace guanchao
