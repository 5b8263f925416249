#include "research/gain_histogram.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <numeric>

#include "frame/sheets.h"
#include "frame/told_role.h"
#include "grid/colours.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr size_t ranges = 2 * histogramEnd / histogramStep + 2;

// Of the range from 0 on.
constexpr size_t firstRise = ranges / 2;

QString percent(int value) {
    return QString::number(value) + u'%';
}

}  // namespace

std::vector<int> histogramOf(const std::vector<double>& gains) {
    std::vector<int> counts(ranges);
    for (const double gain : gains) {
        const double range = std::floor((gain + histogramEnd) / histogramStep) + 1;
        ++counts[static_cast<size_t>(std::clamp(range, 0.0, double{ranges - 1}))];
    }
    return counts;
}

QString rangeWords(size_t range) {
    const int first = static_cast<int>(range - 1) * histogramStep - histogramEnd;
    if (range == 0) {
        return percent(-histogramEnd) + u" 以下"_s;
    }
    if (range == ranges - 1) {
        return percent(histogramEnd) + u" 以上"_s;
    }
    return percent(first) + u'～' + percent(first + histogramStep);
}

GainHistogram::GainHistogram(QString title, QWidget* parent)
    : QWidget(parent), title_(std::move(title)), counts_(ranges) {
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(title_ + u"分布"_s);
    tellRole(*this, QAccessible::Chart);
    showGains({});
}

void GainHistogram::showGains(const std::vector<double>& gains) {
    counts_ = histogramOf(gains);
    choose(-1);
}

QString GainHistogram::words() const {
    if (chosen_ >= 0) {
        const auto range = static_cast<size_t>(chosen_);
        return rangeWords(range) + u"："_s + QString::number(counts_[range]) + u" 次"_s;
    }
    const int all = std::accumulate(counts_.begin(), counts_.end(), 0);
    return all > 0 ? u"共 "_s + QString::number(all) + u" 次"_s : u"还没有搜索"_s;
}

void GainHistogram::choose(int range) {
    chosen_ = range;
    setAccessibleDescription(words());
    setToolTip(chosen_ >= 0 ? words() : QString());
    update();
}

QRect GainHistogram::bars() const {
    const int line = fontMetrics().height();
    return rect().adjusted(4, line + 4, -4, -line - 4);
}

QRect GainHistogram::barOf(size_t range) const {
    const QRect room = bars();
    const int most = std::max(*std::max_element(counts_.begin(), counts_.end()), 1);
    const int left = room.left() + static_cast<int>(range) * room.width() / int{ranges};
    const int right = room.left() + static_cast<int>(range + 1) * room.width() / int{ranges};
    const int height = static_cast<int>(std::ceil(1.0 * counts_[range] / most * room.height()));
    return {left, room.bottom() + 1 - height, right - left - 1, height};
}

void GainHistogram::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor ground = palette().color(QPalette::Base);
    painter.fillRect(rect(), ground);
    painter.setPen(palette().color(QPalette::Text));
    const int line = fontMetrics().height();
    painter.drawText(rect().adjusted(4, 2, -4, 0), Qt::AlignTop | Qt::AlignLeft,
                     title_ + u"　"_s + words());
    const QRect labels(bars().left(), bars().bottom() + 2, bars().width(), line);
    painter.drawText(labels, Qt::AlignLeft, percent(-histogramEnd));
    painter.drawText(labels, Qt::AlignHCenter, u"0"_s);
    painter.drawText(labels, Qt::AlignRight, percent(histogramEnd));
    for (size_t range = 0; range < ranges; ++range) {
        const bool rises = range >= firstRise;
        const QColor colour =
            readableColour(QColor::fromRgb(rises ? riseColour : fallColour), ground);
        const bool isChosen = static_cast<int>(range) == chosen_;
        painter.fillRect(barOf(range), isChosen ? palette().color(QPalette::Highlight) : colour);
    }
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void GainHistogram::mouseMoveEvent(QMouseEvent* event) {
    const QRect room = bars();
    const int x = event->position().toPoint().x() - room.left();
    const bool inside = x >= 0 && x < room.width();
    choose(inside ? x * int{ranges} / room.width() : -1);
}

void GainHistogram::leaveEvent(QEvent*) {
    choose(-1);
}

void GainHistogram::keyPressEvent(QKeyEvent* event) {
    const int step = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
    if (step == 0) {
        QWidget::keyPressEvent(event);
        return;
    }
    const int from = chosen_ >= 0 ? chosen_ : static_cast<int>(firstRise) - (step > 0 ? 1 : 0);
    choose(std::clamp(from + step, 0, int{ranges} - 1));
}

}  // namespace guanchao
