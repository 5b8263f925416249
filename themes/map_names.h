// The names in the boxes of a map: whole or not at all, with the gain in the largest font that
// leaves air, alone, or in two lines.
#pragma once

#include <QFont>
#include <QList>
#include <QPainter>
#include <QRect>
#include <QStringList>

#include "themes/theme_map.h"

namespace guanchao {

class MapNames {
public:
    // Of the boxes at these places, in that font and larger ones.
    void layOut(const QList<MapBox>& boxes, const QList<QRect>& places, const QFont& font);

    // Empty for a box without a name.
    QRect place(qsizetype box) const { return names_[box].place; }

    void paint(QPainter& painter) const;

private:
    struct Name {
        int font = 0;
        QStringList lines;
        QRect place;
    };

    Name nameOf(const MapBox& box, const QRect& place) const;
    Name nameOfLines(const QStringList& lines, int font, const QRect& place, double air) const;

    QList<Name> names_;
    QList<QFont> fonts_;  // the largest first
};

}  // namespace guanchao
