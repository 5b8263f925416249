// What the map shows: all themes, or the members of one, with what their areas and colours tell.
// Tables dzhzhuti and dmb of the main store; what a store has no value of is no number. Raises
// StoreError.
#pragma once

#include <QList>
#include <QString>
#include <limits>
#include <optional>

#include "store/stores.h"

namespace guanchao {

enum class MapArea : std::uint8_t { members, turnover, attention };

struct MapBox {
    QString key;   // the theme's name, or the stock's code
    QString name;  // that is shown
    double gain = std::numeric_limits<double>::quiet_NaN();  // in %
    int members = 1;
    double turnover = 0;   // 成交金额 of the day, of a theme the sum
    double attention = 0;  // 关注度 of a theme, 相关度 of a stock

    double area(MapArea by) const;
};

// All of them, whatever their attention, in the order of their names; the gain of each is the mean
// that the main window shows.
QList<MapBox> readThemeBoxes(const Stores& stores);

// One of them; nothing if none of its members is in the code table.
std::optional<MapBox> readThemeBox(const Stores& stores, const QString& theme);

// The members of the theme, in the order of their codes.
QList<MapBox> readStockBoxes(const Stores& stores, const QString& theme);

// "+1.20%　12 只　成交额 1.234亿　关注度 3"; of a stock "+1.20%　成交额 1.234亿　相关度 5".
QString themeWords(const MapBox& theme);
QString stockWords(const MapBox& stock);

}  // namespace guanchao
