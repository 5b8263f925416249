// A treemap: a rectangle that is cut into one for each value, with areas in proportion to them and
// sides as even as they get (squarified, after Bruls, Huizing and van Wijk).
#pragma once

#include <QList>
#include <QRect>
#include <QRectF>

namespace guanchao {

// In the order of the values: the greatest lies at the upper left, equals in their order. A value
// that is not above 0, or no number, has an empty rectangle.
QList<QRectF> treemapOf(const QList<double>& values, const QRectF& room);

// Side by side as before, none over another; what is thinner than half a pixel may vanish.
QList<QRect> inPixels(const QList<QRectF>& places);

enum class MapWay : std::uint8_t { left, right, up, down };

// The place that the way from the middle of that one leads to; -1 at the edge.
qsizetype neighbourOf(const QList<QRect>& places, qsizetype from, MapWay way);

}  // namespace guanchao
