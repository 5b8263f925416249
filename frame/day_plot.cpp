#include "frame/day_plot.h"

#include <QChart>
#include <QGraphicsLayout>
#include <QKeyEvent>
#include <QLegend>
#include <QLegendMarker>
#include <QMouseEvent>
#include <QPainter>
#include <QtMath>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "frame/sheets.h"
#include "frame/told_role.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double thickness = 2;
constexpr int dotRadius = 4;
constexpr int boxPadding = 4;
constexpr int margin = 4;
constexpr int rightMargin = 12;
constexpr int mostTicks = 8;   // of the days
constexpr int usualTicks = 5;  // of the values
const QString dayFormat = u"yyyy-MM-dd"_s;

qreal moment(const QDate& day) {
    return static_cast<qreal>(day.startOfDay().toMSecsSinceEpoch());
}

// Labels without decimals would show small steps as 0 0 1 1 2.
void putTicksAtWholeNumbers(QValueAxis& axis) {
    if (axis.max() - axis.min() < axis.tickCount() - 1) {
        axis.setRange(std::floor(axis.min()), std::ceil(axis.max()));
        axis.setTickCount(static_cast<int>(axis.max() - axis.min()) + 1);
    }
}

}  // namespace

DayPlot::DayPlot(const QList<PlotLine>& lines, const QString& labelFormat, QWidget* parent)
    : QChartView(parent), labelFormat_(labelFormat), dayAxis_(new QDateTimeAxis(this)) {
    buildChart();
    for (const PlotLine& line : lines) {
        addLine(line);
    }
    connect(chart(), &QChart::plotAreaChanged, this, [this] {
        if (!days_.isEmpty()) {
            fitDays();
        }
    });
    setRenderHint(QPainter::Antialiasing);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumHeight(160);
    showColours();
    tellRole(*this, QAccessible::Chart);
    showDays({});
}

void DayPlot::buildChart() {
    dayAxis_->setFormat(dayFormat);
    chart()->addAxis(dayAxis_, Qt::AlignBottom);
    chart()->setBackgroundRoundness(0);
    chart()->layout()->setContentsMargins(0, 0, 0, 0);
    chart()->setMargins({margin, margin, rightMargin, margin});
    chart()->legend()->setAlignment(Qt::AlignTop);
}

void DayPlot::addLine(const PlotLine& line) {
    auto* series = new QLineSeries(this);
    series->setName(line.name);
    chart()->addSeries(series);
    series->attachAxis(dayAxis_);
    series->attachAxis(axisOf(line.axis));
    lines_ << series;
    colours_ << line.colour;
    setLineColour(lines_.size() - 1, line.colour);
}

void DayPlot::replaceLines(qsizetype first, const QList<PlotLine>& lines) {
    showDays({});
    while (lines_.size() > first) {
        QLineSeries* line = lines_.takeLast();
        chart()->removeSeries(line);
        delete line;
    }
    colours_.resize(first);
    for (const PlotLine& line : lines) {
        addLine(line);
    }
}

QValueAxis* DayPlot::axisOf(PlotAxis side) {
    QValueAxis*& axis = side == PlotAxis::left ? left_ : right_;
    if (!axis) {
        axis = new QValueAxis(this);
        axis->setLabelFormat(labelFormat_);
        axis->setGridLineVisible(side == PlotAxis::left);
        chart()->addAxis(axis, side == PlotAxis::left ? Qt::AlignLeft : Qt::AlignRight);
    }
    return axis;
}

void DayPlot::setLineColour(qsizetype line, const QColor& colour) {
    colours_[line] = colour;
    lines_[line]->setPen(QPen(readableColour(colour, palette().color(QPalette::Base)), thickness));
}

void DayPlot::showColours() {
    chart()->setBackgroundBrush(palette().base());
    chart()->legend()->setLabelColor(palette().color(QPalette::Text));
    for (QAbstractAxis* axis : chart()->axes()) {
        axis->setLabelsColor(palette().color(QPalette::Text));
        axis->setGridLineColor(palette().color(QPalette::Mid));
        axis->setLinePenColor(palette().color(QPalette::Mid));
    }
    for (qsizetype line = 0; line < lines_.size(); ++line) {
        setLineColour(line, colours_[line]);
    }
}

void DayPlot::changeEvent(QEvent* event) {
    QChartView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        showColours();
        showDays(QList<DayValues>(days_));
    }
}

void DayPlot::showDays(const QList<DayValues>& days) {
    days_ = days;
    chosen_ = -1;
    removeFurtherParts();
    for (qsizetype line = 0; line < lines_.size(); ++line) {
        showLine(line);
    }
    for (QAbstractAxis* axis : chart()->axes()) {
        axis->setVisible(!days.isEmpty());
    }
    makeRoomForWords();
    if (!days.isEmpty()) {
        fitDays();
        for (QValueAxis* axis : {left_, right_}) {
            if (axis) {
                fitValues(*axis, axis == left_);
            }
        }
    }
    showChosen();
}

void DayPlot::showLine(qsizetype line) {
    QLineSeries* part = lines_[line];
    part->clear();
    if (!part->isVisible()) {
        return;
    }
    bool joinsFormer = false;
    for (qsizetype at = 0; at < days_.size(); ++at) {
        const double value = days_[at].values[line];
        if (std::isnan(value)) {
            joinsFormer = false;
            continue;
        }
        joinsFormer = joinsFormer && days_[at].source == days_[at - 1].source;
        if (!joinsFormer && part->count() > 0) {
            part = furtherPart(*lines_[line]);
        }
        part->append(moment(days_[at].day), value);
        joinsFormer = true;
    }
}

void DayPlot::removeFurtherParts() {
    for (QLineSeries* part : std::exchange(furtherParts_, {})) {
        chart()->removeSeries(part);
        delete part;
    }
}

QLineSeries* DayPlot::furtherPart(QLineSeries& line) {
    auto* part = new QLineSeries(this);
    part->setPen(line.pen());
    chart()->addSeries(part);
    for (QAbstractAxis* axis : line.attachedAxes()) {
        part->attachAxis(axis);
    }
    chart()->legend()->markers(part).first()->setVisible(false);
    furtherParts_ << part;
    return part;
}

// A day alone stands in the middle.
void DayPlot::fitDays() {
    const bool isAlone = days_.first().day == days_.last().day;
    const QDate first = days_.first().day.addDays(isAlone ? -1 : 0);
    const QDate last = days_.last().day.addDays(isAlone ? 1 : 0);
    dayAxis_->setRange(first.startOfDay(), last.startOfDay());
    const int room = static_cast<int>(chart()->plotArea().width()) /
                     (fontMetrics().horizontalAdvance(dayFormat) * 5 / 4);
    const int days = static_cast<int>(std::min<qint64>(first.daysTo(last) + 1, mostTicks));
    dayAxis_->setTickCount(std::max(2, std::min(days, room)));
}

void DayPlot::fitValues(QValueAxis& axis, bool withZero) {
    double lowest = withZero ? 0 : std::numeric_limits<double>::max();
    double highest = withZero ? 0 : std::numeric_limits<double>::lowest();
    for (qsizetype line = 0; line < lines_.size(); ++line) {
        if (!lines_[line]->isVisible() || !lines_[line]->attachedAxes().contains(&axis)) {
            continue;
        }
        for (const DayValues& day : days_) {
            lowest = std::fmin(lowest, day.values[line]);
            highest = std::fmax(highest, day.values[line]);
        }
    }
    axis.setRange(lowest, std::max(highest, lowest + 1));
    axis.setTickCount(usualTicks);
    axis.applyNiceNumbers();
    if (axis.labelFormat() == wholeNumbers) {
        putTicksAtWholeNumbers(axis);
    }
}

void DayPlot::setHint(const QString& hint) {
    hint_ = hint;
    viewport()->update();
}

QString DayPlot::chosenText() const {
    return chosen_ < 0 ? QString() : days_[chosen_].words;
}

void DayPlot::choose(qsizetype day) {
    chosen_ = days_.isEmpty() ? -1 : std::clamp<qsizetype>(day, 0, days_.size() - 1);
    showChosen();
}

// While no day is chosen, the last one is told.
void DayPlot::showChosen() {
    setAccessibleDescription(days_.isEmpty() ? u"没有数据"_s
                             : chosen_ < 0   ? days_.last().words
                                             : chosenText());
    viewport()->update();
}

void DayPlot::mouseMoveEvent(QMouseEvent* event) {
    QChartView::mouseMoveEvent(event);
    const qreal pointed =
        chart()->mapToValue(mapToScene(event->position().toPoint()), lines_.first()).x();
    const auto nearest =
        std::min_element(days_.cbegin(), days_.cend(), [&](const auto& a, const auto& b) {
            return std::abs(moment(a.day) - pointed) < std::abs(moment(b.day) - pointed);
        });
    choose(nearest - days_.cbegin());
}

void DayPlot::leaveEvent(QEvent* event) {
    QChartView::leaveEvent(event);
    chosen_ = -1;
    showChosen();
}

void DayPlot::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Left) {
        choose(chosen_ < 0 ? days_.size() - 1 : chosen_ - 1);
    } else if (event->key() == Qt::Key_Right) {
        choose(chosen_ + 1);
    } else {
        QChartView::keyPressEvent(event);
    }
}

void DayPlot::drawForeground(QPainter* painter, const QRectF& rect) {
    QChartView::drawForeground(painter, rect);
    if (days_.isEmpty()) {
        painter->setPen(palette().color(QPalette::PlaceholderText));
        painter->drawText(sceneRect(), Qt::AlignCenter | Qt::TextWordWrap, hint_);
    }
    drawLoneDays(*painter);
    if (chosen_ < 0) {
        return;
    }
    const QRectF area = chart()->plotArea();
    const qreal x = chart()->mapToPosition({moment(days_[chosen_].day), 0}, lines_.first()).x();
    painter->setPen(QPen(palette().color(QPalette::Text), 1, Qt::DashLine));
    painter->drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    drawDots(*painter);
    drawWords(*painter, x);
}

void DayPlot::drawDots(QPainter& painter) {
    const DayValues& day = days_[chosen_];
    for (qsizetype line = 0; line < lines_.size(); ++line) {
        if (lines_[line]->isVisible() && !std::isnan(day.values[line])) {
            drawDot(painter, *lines_[line], {moment(day.day), day.values[line]});
        }
    }
}

// One day makes no line. The series' own dots are cut off at the edges of the plot.
void DayPlot::drawLoneDays(QPainter& painter) {
    for (QLineSeries* part : lines_ + furtherParts_) {
        if (part->isVisible() && part->count() == 1) {
            drawDot(painter, *part, part->at(0));
        }
    }
}

void DayPlot::drawDot(QPainter& painter, QLineSeries& line, const QPointF& value) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(line.pen().color());
    painter.drawEllipse(chart()->mapToPosition(value, &line), dotRadius, dotRadius);
}

QRectF DayPlot::wordsBox(const QString& words, qreal x) const {
    const QRect strip = QRect(QPoint(), size()).adjusted(margin, margin, -rightMargin, 0);
    const QRect room = strip.adjusted(boxPadding, boxPadding, -boxPadding, 0);
    QRectF box = QRectF(fontMetrics().boundingRect(room, Qt::TextWordWrap, words))
                     .adjusted(-boxPadding, -boxPadding, boxPadding, boxPadding);
    box.moveLeft(std::clamp(x + boxPadding, static_cast<qreal>(strip.left()),
                            std::max<qreal>(strip.left(), strip.right() - box.width())));
    return box;
}

// For the longest.
void DayPlot::makeRoomForWords() {
    QMargins margins(margin, margin, rightMargin, margin);
    if (!days_.isEmpty()) {
        const auto longest = std::ranges::max_element(
            days_, {}, [](const DayValues& day) { return day.words.size(); });
        margins.setTop(qCeil(wordsBox(longest->words, 0).bottom()));
    }
    if (margins != chart()->margins()) {
        chart()->setMargins(margins);
    }
}

void DayPlot::resizeEvent(QResizeEvent* event) {
    QChartView::resizeEvent(event);
    makeRoomForWords();
}

void DayPlot::drawWords(QPainter& painter, qreal x) {
    const QRectF box = wordsBox(chosenText(), x);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().button());
    painter.drawRoundedRect(box, 3, 3);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(box.adjusted(boxPadding, boxPadding, -boxPadding, -boxPadding),
                     Qt::AlignCenter | Qt::TextWordWrap, chosenText());
}

}  // namespace guanchao
