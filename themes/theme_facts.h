// What the page of a theme shows beside its history: its members, news counts, articles and
// monitors, each read by itself, so that a store that can't be read keeps nothing else away. Raises
// StoreError.
#pragma once

#include <QDate>
#include <QList>
#include <QStringList>
#include <optional>

#include "base/day_values.h"
#include "grid/result_grid.h"
#include "store/stores.h"
#include "themes/theme_map.h"

namespace guanchao {

// Tables dzhzhuti and dmb of the main store.
struct ThemeMembers {
    bool exists = false;          // a row names it
    std::optional<MapBox> theme;  // nothing if no member is in the code table
    QList<MapBox> stocks;         // the best gain first, those without quotes last
    QStringList heirs;            // where it has gone: the themes that hold all former members
};

ThemeMembers readThemeMembers(const Stores& stores, const QString& theme,
                              const QStringList& formerCodes);

// 一日数量 of each of the last 30 days that was counted, oldest first. Table xinwenshul of the heat
// store.
inline constexpr int newsDays = 30;
QList<DayValues> readThemeNews(const Stores& stores, const QString& theme, const QDate& today);

struct ThemeArticle {
    qint32 id = 0;
    QString day;  // date text
    QString author;
    QString title;
};

// Those of the theme's own category, newest first. Table wenzhang of the article store.
inline constexpr int mostArticles = 200;
QList<ThemeArticle> readThemeArticles(const Stores& stores, const QString& theme);

struct ThemeMonitor {
    QString dm;    // empty: a monitor on the theme itself
    QString name;  // of the theme or the stock
    QString condition;
    double latest = 0;  // what was compared at the last poll
    QString alarm;      // time text of the last one, empty without any
};

// On the theme, then on its members. Tables zhutijiankong and gegujiankong of the main store.
QList<ThemeMonitor> readThemeMonitors(const Stores& stores, const QString& theme);

inline constexpr int memberCodeColumn = 1;
inline constexpr int memberNameColumn = 2;
inline constexpr int memberBarColumn = 4;
inline constexpr int articleIdColumn = 4;
void fillMembers(ResultGrid& grid, const QList<MapBox>& stocks);
void fillArticles(ResultGrid& grid, const QList<ThemeArticle>& articles);
void fillMonitors(ResultGrid& grid, const QList<ThemeMonitor>& monitors);

}  // namespace guanchao
