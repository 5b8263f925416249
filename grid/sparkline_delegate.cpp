#include "grid/sparkline_delegate.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "frame/sheets.h"
#include "grid/twips.h"

namespace guanchao {

namespace {

constexpr double thickness = 1.2;
constexpr double dotRadius = 1.8;

// Of the figures, the newest at the right; days without one are passed over.
QList<QPointF> pointsOf(const QList<double>& figures, const QRectF& area) {
    double least = HUGE_VAL;
    double most = -HUGE_VAL;
    for (const double it : figures) {
        least = std::fmin(least, it);
        most = std::fmax(most, it);
    }
    const double range = most - least;
    const double last = static_cast<double>(figures.size()) - 1;
    QList<QPointF> points;
    for (qsizetype day = 0; day < figures.size(); ++day) {
        if (!std::isnan(figures[day])) {
            const double height = range > 0 ? (figures[day] - least) / range : 0.5;
            const double before = (last - static_cast<double>(day)) / std::max(last, 1.0);
            points << QPointF(area.right() - area.width() * before,
                              area.bottom() - area.height() * height);
        }
    }
    return points;
}

void drawLine(QPainter& painter, const QList<QPointF>& points, const QColor& colour) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, thickness));
    painter.drawPolyline(points.constData(), static_cast<int>(points.size()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(points.last(), dotRadius, dotRadius);
    painter.restore();
}

}  // namespace

// In a column that has been drawn too narrow the words need all there is.
void SparklineDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
    const auto line = lines_.constFind(index.data().toString());
    const int room = pixelsOf(twips_, *option.widget);
    if (line == lines_.cend() || option.rect.width() < room * 3 / 2) {
        CellDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem words = option;
    words.rect.setWidth(option.rect.width() - room);
    CellDelegate::paint(painter, words, index);

    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    ground.rect.setLeft(words.rect.right() + 1);
    ground.text.clear();
    ground.state &= ~QStyle::State_HasFocus;
    option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &ground, painter, option.widget);
    const bool isSelected = option.state & QStyle::State_Selected;
    const QColor behind = ground.palette.color(isSelected ? QPalette::Highlight : QPalette::Base);
    const QList<QPointF> points = pointsOf(*line, QRectF(ground.rect).adjusted(4, 4, -6, -4));
    if (!points.isEmpty()) {
        drawLine(*painter, points, readableColour(QColor::fromRgb(colour_), behind));
    }
}

}  // namespace guanchao
