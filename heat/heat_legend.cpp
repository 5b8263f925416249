#include "heat/heat_legend.h"

#include <QPainter>

#include "frame/told_role.h"
#include "grid/heat_colour.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int parts = 12;
constexpr int partWidth = 12;
constexpr int gap = 6;

}  // namespace

HeatLegend::HeatLegend(QWidget* parent) : QWidget(parent) {
    setAccessibleName(u"颜色的意思"_s);
    tellRole(*this, QAccessible::Graphic);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void HeatLegend::setScale(bool hasFalls, const QString& least, const QString& most) {
    hasFalls_ = hasFalls;
    least_ = least;
    most_ = most;
    setAccessibleDescription((hasFalls ? u"绿色："_s : u"灰色："_s) + least + u"；红色："_s + most);
    updateGeometry();
    update();
}

QSize HeatLegend::sizeHint() const {
    return {fontMetrics().horizontalAdvance(least_ + most_) + parts * partWidth + 2 * gap,
            fontMetrics().height() + 4};
}

void HeatLegend::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, least_);
    painter.drawText(rect(), Qt::AlignRight | Qt::AlignVCenter, most_);
    const int left = fontMetrics().horizontalAdvance(least_) + gap;
    for (int part = 0; part < parts; ++part) {
        const double share = static_cast<double>(part) / (parts - 1);
        const double value = hasFalls_ ? 2 * share - 1 : share;
        painter.fillRect(left + part * partWidth, 2, partWidth, height() - 4,
                         QColor::fromRgb(heatColour(value, 1)));
    }
}

}  // namespace guanchao
