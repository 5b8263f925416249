#include "themes/map_names.h"

#include <QFontMetrics>
#include <algorithm>

#include "base/short_amounts.h"
#include "grid/heat_colour.h"

namespace guanchao {

namespace {

constexpr int padding = 3;
// Larger names stand in boxes with room to spare.
constexpr double largerFonts[] = {2.2, 1.8, 1.5, 1.25};
constexpr double airOfLarger = 1.6;

QString halves(const QString& name, bool second) {
    const qsizetype middle = (name.size() + 1) / 2;
    return second ? name.sliced(middle) : name.first(middle);
}

}  // namespace

void MapNames::layOut(const QList<MapBox>& boxes, const QList<QRect>& places, const QFont& font) {
    fonts_.clear();
    for (const double times : largerFonts) {
        QFont larger = font;
        larger.setPointSizeF(larger.pointSizeF() * times);
        fonts_ << larger;
    }
    fonts_ << font;
    names_.clear();
    for (qsizetype at = 0; at < boxes.size(); ++at) {
        names_ << nameOf(boxes[at], places[at]);
    }
}

MapNames::Name MapNames::nameOf(const MapBox& box, const QRect& place) const {
    const int last = static_cast<int>(fonts_.size()) - 1;
    const QStringList both = {box.name, gainWords(box.gain)};
    Name name;
    for (int it = 0; it <= last && name.lines.isEmpty(); ++it) {
        name = nameOfLines(both, it, place, it == last ? 1 : airOfLarger);
    }
    if (name.lines.isEmpty()) {
        name = nameOfLines({box.name}, last, place, 1);
    }
    if (name.lines.isEmpty() && box.name.size() > 1) {
        name = nameOfLines({halves(box.name, false), halves(box.name, true)}, last, place, 1);
    }
    return name;
}

// Without lines where they don't fit.
MapNames::Name MapNames::nameOfLines(const QStringList& lines, int font, const QRect& place,
                                     double air) const {
    const QFontMetrics metrics(fonts_[font]);
    const QSize room = place.size() - QSize(2 * padding, 2 * padding);
    const int height = metrics.height() * static_cast<int>(lines.size());
    if (height * air > room.height()) {
        return {};
    }
    int width = 0;
    for (const QString& line : lines) {
        width = std::max(width, metrics.horizontalAdvance(line));
    }
    if (width * air > room.width()) {
        return {};
    }
    QRect words(0, 0, width, height);
    words.moveCenter(place.center());
    return {font, lines, words};
}

void MapNames::paint(QPainter& painter) const {
    painter.setPen(QColor::fromRgb(heatWords));
    for (int font = 0; font < fonts_.size(); ++font) {
        painter.setFont(fonts_[font]);
        const QFontMetrics metrics(fonts_[font]);
        for (const Name& name : names_) {
            QRect line(name.place.topLeft(), QSize(name.place.width(), metrics.height()));
            for (int at = 0; name.font == font && at < name.lines.size(); ++at) {
                painter.drawText(line, Qt::AlignCenter, name.lines[at]);
                line.translate(0, metrics.height());
            }
        }
    }
}

}  // namespace guanchao
