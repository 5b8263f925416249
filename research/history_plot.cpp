#include "research/history_plot.h"

#include <QChart>
#include <QGraphicsLayout>
#include <QKeyEvent>
#include <QLegend>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "grid/colours.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QColor ground(20, 21, 24);
const QColor lines(58, 62, 69);
const QColor words(192, 192, 192);
const QColor box(48, 52, 58, 235);
constexpr double thickness = 2;
constexpr int dotRadius = 4;
constexpr int boxPadding = 6;
constexpr int mostTicks = 8;

qreal moment(const QDate& day) {
    return static_cast<qreal>(day.startOfDay().toMSecsSinceEpoch());
}

void styleAxis(QAbstractAxis& axis) {
    axis.setLabelsColor(words);
    axis.setGridLineColor(lines);
    axis.setLinePenColor(lines);
}

}  // namespace

HistoryPlot::HistoryPlot(QWidget* parent)
    : QChartView(parent), days_(new QDateTimeAxis(this)), percents_(new QValueAxis(this)) {
    buildAxes();
    theme_ = addLine(u"主题累计涨幅"_s, QColor::fromRgb(themeColour));
    index_ = addLine(u"大盘累计涨幅"_s, QColor::fromRgb(stockColour));
    difference_ = addLine(u"涨幅差"_s, QColor::fromRgb(riseColour));
    chart()->setBackgroundBrush(ground);
    chart()->setBackgroundRoundness(0);
    chart()->layout()->setContentsMargins(0, 0, 0, 0);
    chart()->setMargins({4, 4, 12, 4});
    chart()->legend()->setLabelColor(words);
    chart()->legend()->setAlignment(Qt::AlignTop);
    setRenderHint(QPainter::Antialiasing);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumHeight(160);
    showPoints({}, true);
}

void HistoryPlot::buildAxes() {
    days_->setFormat(u"yyyy-MM-dd"_s);
    percents_->setLabelFormat(u"%.1f%%"_s);
    styleAxis(*days_);
    styleAxis(*percents_);
    chart()->addAxis(days_, Qt::AlignBottom);
    chart()->addAxis(percents_, Qt::AlignLeft);
}

QLineSeries* HistoryPlot::addLine(const QString& name, const QColor& colour) {
    auto* line = new QLineSeries(this);
    line->setName(name);
    line->setPen(QPen(colour, thickness));
    chart()->addSeries(line);
    line->attachAxis(days_);
    line->attachAxis(percents_);
    return line;
}

void HistoryPlot::showPoints(const QList<HistoryPoint>& points, bool hasTheme) {
    points_ = points;
    hasTheme_ = hasTheme;
    chosen_ = -1;
    QList<QPointF> themes;
    QList<QPointF> indexes;
    QList<QPointF> differences;
    for (const HistoryPoint& point : points) {
        themes << QPointF(moment(point.day), point.theme);
        indexes << QPointF(moment(point.day), point.index);
        differences << QPointF(moment(point.day), point.difference());
    }
    theme_->replace(themes);
    index_->replace(indexes);
    difference_->replace(differences);
    theme_->setVisible(hasTheme);
    difference_->setVisible(hasTheme);
    const bool fell = !points.isEmpty() && points.last().difference() < 0;
    difference_->setPen(QPen(QColor::fromRgb(fell ? fallColour : riseColour), thickness));
    for (QAbstractAxis* axis :
         {static_cast<QAbstractAxis*>(days_), static_cast<QAbstractAxis*>(percents_)}) {
        axis->setVisible(!points.isEmpty());
    }
    fitAxes();
    viewport()->update();
}

void HistoryPlot::fitAxes() {
    if (points_.isEmpty()) {
        return;
    }
    double lowest = 0;
    double highest = 0;
    for (const HistoryPoint& point : points_) {
        const double theme = hasTheme_ ? point.theme : 0;
        const double difference = hasTheme_ ? point.difference() : 0;
        lowest = std::min({lowest, theme, point.index, difference});
        highest = std::max({highest, theme, point.index, difference});
    }
    percents_->setRange(lowest, std::max(highest, lowest + 1));
    percents_->applyNiceNumbers();
    const QDate first = points_.first().day;
    const QDate last = std::max(points_.last().day, first.addDays(1));
    days_->setRange(first.startOfDay(), last.startOfDay());
    days_->setTickCount(static_cast<int>(std::clamp<qint64>(first.daysTo(last) + 1, 2, mostTicks)));
}

QString HistoryPlot::chosenText() const {
    return chosen_ < 0 ? QString() : pointText(points_[chosen_], hasTheme_);
}

void HistoryPlot::choose(qsizetype point) {
    chosen_ = points_.isEmpty() ? -1 : std::clamp<qsizetype>(point, 0, points_.size() - 1);
    setAccessibleDescription(chosenText());
    viewport()->update();
}

void HistoryPlot::mouseMoveEvent(QMouseEvent* event) {
    QChartView::mouseMoveEvent(event);
    const qreal pointed = chart()->mapToValue(mapToScene(event->position().toPoint()), index_).x();
    const auto nearest =
        std::min_element(points_.cbegin(), points_.cend(), [&](const auto& a, const auto& b) {
            return std::abs(moment(a.day) - pointed) < std::abs(moment(b.day) - pointed);
        });
    choose(nearest - points_.cbegin());
}

void HistoryPlot::leaveEvent(QEvent* event) {
    QChartView::leaveEvent(event);
    chosen_ = -1;
    viewport()->update();
}

void HistoryPlot::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Left) {
        choose(chosen_ < 0 ? points_.size() - 1 : chosen_ - 1);
    } else if (event->key() == Qt::Key_Right) {
        choose(chosen_ + 1);
    } else {
        QChartView::keyPressEvent(event);
    }
}

void HistoryPlot::drawForeground(QPainter* painter, const QRectF& rect) {
    QChartView::drawForeground(painter, rect);
    if (chosen_ < 0) {
        return;
    }
    const HistoryPoint& point = points_[chosen_];
    const QRectF area = chart()->plotArea();
    const auto at = [&](double value) {
        return chart()->mapToPosition({moment(point.day), value}, index_);
    };
    const qreal x = at(0).x();
    painter->setPen(QPen(words, 1, Qt::DashLine));
    painter->drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    const auto dot = [&](const QLineSeries& line, double value) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(line.pen().color());
        painter->drawEllipse(at(value), dotRadius, dotRadius);
    };
    dot(*index_, point.index);
    if (hasTheme_) {
        dot(*theme_, point.theme);
        dot(*difference_, point.difference());
    }
    const QString text = chosenText();
    QRectF label = QRectF(painter->fontMetrics().boundingRect(text))
                       .adjusted(-boxPadding, -boxPadding, boxPadding, boxPadding);
    label.moveTop(area.top() + boxPadding);
    label.moveLeft(std::clamp(x + boxPadding, area.left(),
                              std::max(area.left(), area.right() - label.width())));
    painter->setPen(lines);
    painter->setBrush(box);
    painter->drawRoundedRect(label, 3, 3);
    painter->setPen(words);
    painter->drawText(label, Qt::AlignCenter, text);
}

}  // namespace guanchao
