#include "frame/scatter_plot.h"

#include <QChart>
#include <QGraphicsLayout>
#include <QKeyEvent>
#include <QLegend>
#include <QLineF>
#include <QLogValueAxis>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <numeric>

#include "frame/sheets.h"
#include "frame/told_role.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qreal dotSize = 8;
constexpr qreal ringRadius = 7;
constexpr qreal reach = 12;  // of the pointer
constexpr int margin = 4;
constexpr int rightMargin = 12;
constexpr int boxPadding = 4;
constexpr int ticks = 9;
constexpr qreal leastCount = 0.5;  // where those of 0 stand

}  // namespace

ScatterPlot::ScatterPlot(QColor above, QColor below, QWidget* parent)
    : QChartView(parent), up_(new QValueAxis(this)), above_(above), below_(below) {
    up_->setLabelFormat(u"%.1f"_s);
    chart()->addAxis(up_, Qt::AlignLeft);
    chart()->setBackgroundRoundness(0);
    chart()->layout()->setContentsMargins(0, 0, 0, 0);
    chart()->setMargins(
        {margin, margin + fontMetrics().height() + 2 * boxPadding, rightMargin, margin});
    chart()->legend()->hide();
    rising_ = addSeries();
    falling_ = addSeries();
    setRenderHint(QPainter::Antialiasing);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    tellRole(*this, QAccessible::Chart);
    setAxes({}, Scale::linear, {});
}

QScatterSeries* ScatterPlot::addSeries() {
    auto* series = new QScatterSeries(this);
    series->setMarkerSize(dotSize);
    chart()->addSeries(series);
    series->attachAxis(up_);
    return series;
}

void ScatterPlot::showColours() {
    const QColor ground = palette().color(QPalette::Base);
    chart()->setBackgroundBrush(ground);
    for (QAbstractAxis* axis : chart()->axes()) {
        axis->setLabelsColor(palette().color(QPalette::Text));
        axis->setTitleBrush(palette().text());
        axis->setGridLineColor(palette().color(QPalette::Mid));
        axis->setLinePenColor(palette().color(QPalette::Mid));
    }
    rising_->setColor(readableColour(above_, ground));
    falling_->setColor(readableColour(below_, ground));
    for (QScatterSeries* series : {rising_, falling_}) {
        series->setBorderColor(ground);
    }
}

void ScatterPlot::changeEvent(QEvent* event) {
    QChartView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        showColours();
    }
}

void ScatterPlot::setAxes(const QString& across, Scale scale, const QString& up) {
    showThings({});
    if (across_) {
        chart()->removeAxis(across_);
        delete across_;
    }
    scale_ = scale;
    if (scale == Scale::ofCounts) {
        auto* axis = new QLogValueAxis(this);
        axis->setLabelFormat(u"%.0f"_s);
        axis->setBase(10);
        across_ = axis;
    } else {
        auto* axis = new QValueAxis(this);
        axis->setLabelFormat(u"%.0f"_s);
        across_ = axis;
    }
    across_->setTitleText(across);
    up_->setTitleText(up);
    chart()->addAxis(across_, Qt::AlignBottom);
    for (QScatterSeries* series : {rising_, falling_}) {
        series->attachAxis(across_);
    }
    showColours();
    showThings({});
}

void ScatterPlot::showThings(QList<PlottedThing> things) {
    const QString words = chosenText();
    given_.resize(things.size());
    std::iota(given_.begin(), given_.end(), 0);
    std::ranges::stable_sort(given_, {}, [&](qsizetype at) { return things[at].place.x(); });
    things_.clear();
    QList<QPointF> rising;
    QList<QPointF> falling;
    for (const qsizetype at : given_) {
        things_ << things[at];
        (things[at].place.y() < 0 ? falling : rising) << drawn(things[at]);
    }
    rising_->replace(rising);
    falling_->replace(falling);
    for (QAbstractAxis* axis : chart()->axes()) {
        axis->setVisible(!things_.isEmpty());
    }
    if (scale_ == Scale::ofCounts) {
        fitCounts();
    } else if (auto* axis = qobject_cast<QValueAxis*>(across_)) {
        fit(*axis, &QPointF::x);
    }
    fit(*up_, &QPointF::y);
    const auto chosen = std::ranges::find(things_, words, &PlottedThing::words);
    choose(chosen == things_.end() ? -1 : chosen - things_.begin());
}

QPointF ScatterPlot::drawn(const PlottedThing& thing) const {
    return scale_ == Scale::ofCounts
               ? QPointF(std::max(thing.place.x(), leastCount), thing.place.y())
               : thing.place;
}

QPointF ScatterPlot::positionOf(const PlottedThing& thing) const {
    return chart()->mapToPosition(drawn(thing), rising_);
}

void ScatterPlot::fitCounts() {
    constexpr qreal room = 1.3;
    qreal least = 1;
    qreal most = 10;
    if (!things_.isEmpty()) {
        least = drawn(things_.first()).x();
        most = std::max(drawn(things_.last()).x(), 10 * least);
    }
    across_->setRange(least / room, most * room);
}

// With room around, so that no dot is cut off.
void ScatterPlot::fit(QValueAxis& axis, qreal (QPointF::*coordinate)() const) {
    qreal least = 0;
    qreal most = 0;
    for (const PlottedThing& it : things_) {
        least = std::min(least, (it.place.*coordinate)());
        most = std::max(most, (it.place.*coordinate)());
    }
    const qreal room = std::max((most - least) / 40, 0.1);
    axis.setRange(least - room, most + room);
    axis.setTickCount(ticks);
    axis.applyNiceNumbers();
}

void ScatterPlot::setHint(const QString& hint) {
    hint_ = hint;
    tellChosen();
}

QString ScatterPlot::chosenText() const {
    return chosen_ < 0 ? QString() : things_[chosen_].words;
}

QPointF ScatterPlot::placeOf(qsizetype thing) const {
    return positionOf(things_[given_.indexOf(thing)]);
}

// The nearest within reach of the pointer, -1 if there is none.
qsizetype ScatterPlot::thingAt(const QPointF& place) const {
    qsizetype nearest = -1;
    qreal least = reach;
    for (qsizetype at = 0; at < things_.size(); ++at) {
        const qreal far = QLineF(place, positionOf(things_[at])).length();
        if (far <= least) {
            nearest = at;
            least = far;
        }
    }
    return nearest;
}

void ScatterPlot::choose(qsizetype thing) {
    chosen_ = thing;
    tellChosen();
}

void ScatterPlot::tellChosen() {
    setAccessibleDescription(things_.isEmpty() ? hint_
                             : chosen_ < 0 ? u"共 %1 个，按左右键逐个读"_s.arg(things_.size())
                                           : chosenText());
    viewport()->update();
}

void ScatterPlot::mouseMoveEvent(QMouseEvent* event) {
    QChartView::mouseMoveEvent(event);
    choose(thingAt(mapToScene(event->position().toPoint())));
}

void ScatterPlot::mouseDoubleClickEvent(QMouseEvent* event) {
    const qsizetype thing = thingAt(mapToScene(event->position().toPoint()));
    if (thing >= 0) {
        emit opened(given_[thing]);
    }
}

void ScatterPlot::leaveEvent(QEvent* event) {
    QChartView::leaveEvent(event);
    choose(-1);
}

void ScatterPlot::keyPressEvent(QKeyEvent* event) {
    const int step = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (step != 0 && !things_.isEmpty()) {
        const qsizetype from = chosen_ < 0 && step < 0 ? things_.size() : chosen_;
        choose(std::clamp<qsizetype>(from + step, 0, things_.size() - 1));
    } else if (isEnter && chosen_ >= 0) {
        emit opened(given_[chosen_]);
    } else {
        QChartView::keyPressEvent(event);
    }
}

void ScatterPlot::drawForeground(QPainter* painter, const QRectF& rect) {
    QChartView::drawForeground(painter, rect);
    if (things_.isEmpty()) {
        painter->setPen(palette().color(QPalette::PlaceholderText));
        painter->drawText(sceneRect(), Qt::AlignCenter | Qt::TextWordWrap, hint_);
        return;
    }
    const qreal zero = chart()->mapToPosition({1, 0}, rising_).y();
    const QRectF area = chart()->plotArea();
    painter->setPen(QPen(palette().color(QPalette::Text), 1, Qt::DashLine));
    painter->drawLine(QPointF(area.left(), zero), QPointF(area.right(), zero));
    if (chosen_ >= 0) {
        painter->setPen(QPen(palette().color(QPalette::Text), 2));
        painter->setBrush(Qt::NoBrush);
        painter->drawEllipse(positionOf(things_[chosen_]), ringRadius, ringRadius);
        drawWords(*painter);
    }
}

void ScatterPlot::drawWords(QPainter& painter) {
    const QRectF strip(margin, margin, width() - margin - rightMargin,
                       fontMetrics().height() + 2 * boxPadding);
    const qreal needed = fontMetrics().horizontalAdvance(chosenText()) + 2 * boxPadding;
    const qreal wide = std::min(needed, strip.width());
    const qreal x = positionOf(things_[chosen_]).x();
    const QRectF box(std::clamp(x, strip.left(), strip.right() - wide), strip.top(), wide,
                     strip.height());
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().button());
    painter.drawRoundedRect(box, 3, 3);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(box, Qt::AlignCenter,
                     fontMetrics().elidedText(chosenText(), Qt::ElideRight,
                                              static_cast<int>(box.width()) - boxPadding));
}

}  // namespace guanchao
