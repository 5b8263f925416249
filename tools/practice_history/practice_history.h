// The history of the practice market: the walk behind its quotes, with days on which a theme surges
// (members at their limit of 10 %, some at one price all day), stocks that pause, and a few report
// dates and forecasts. All follows from the codes and the day alone.
#pragma once

#include <QDate>
#include <QList>

#include "store/connection.h"
#include "tools/history_builder/day_rows.h"
#include "tools/practice_market/practice_quotes.h"

namespace guanchao {

struct PracticeHistory {
    QList<DayRow> days;
    QList<ThemeMember> themes;
};

// The 400 trading days before `today` for the Shanghai index and for the stocks of the first themes
// of the list, some 250. The last 30 days are without surges, so that prices run into the quotes.
PracticeHistory practiceHistory(const PracticeQuotes& quotes, const QList<ThemeMember>& library,
                                const QDate& today);

// Some rows for yejiyuyuejinqi and yejiyugao of a main store, unless rows are there.
void addPracticeForecasts(Connection& store, const QList<ThemeMember>& library, const QDate& today);

}  // namespace guanchao
