#include "research/history_plot.h"

#include <QChart>
#include <QLegend>
#include <cmath>
#include <limits>

#include "base/values.h"
#include "frame/sheets.h"
#include "grid/colours.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The lines by their position.
constexpr int marketLine = 1;
constexpr int differenceLine = 2;
constexpr int firstMember = 3;

constexpr int mostTold = 8;  // members in the words of a day

QList<PlotLine> plotLines() {
    return {{u"主题累计涨幅"_s, QColor::fromRgb(themeColour)},
            {u"大盘累计涨幅"_s, QColor::fromRgb(stockColour)},
            {u"涨幅差"_s, QColor::fromRgb(riseColour)}};
}

QColor differenceColour(const ThemeHistoryResult& history) {
    const bool fell = !history.points.isEmpty() && history.points.last().difference() < 0;
    return QColor::fromRgb(fell ? fallColour : riseColour);
}

// Neighbours in the list lie far from each other; between green and red, where the theme, the
// market and their difference have their colours, is no member.
QColor memberColour(qsizetype member) {
    constexpr int firstHue = 175;
    constexpr int hues = 150;
    constexpr int step = 61;
    return QColor::fromHsv(static_cast<int>(firstHue + member * step % hues), 150, 240);
}

QString nameOf(const MemberSums& member) {
    return member.jc.isEmpty() ? member.dm : member.jc;
}

QList<PlotLine> linesOf(const QList<MemberSums>& members) {
    QList<PlotLine> lines;
    for (const MemberSums& member : members) {
        lines << PlotLine{nameOf(member), memberColour(lines.size())};
    }
    return lines;
}

}  // namespace

// The list of its lines is its legend.
HistoryPlot::HistoryPlot(QWidget* parent) : DayPlot(plotLines(), u"%.1f%%"_s, parent) {
    chart()->legend()->hide();
}

void HistoryPlot::showHistory(const ThemeHistoryResult& history) {
    history_ = history;
    replaceLines(firstMember, linesOf(history_.members));
    setLineColour(differenceLine, differenceColour(history_));
    showSwitched();
}

QList<HistoryPlot::Line> HistoryPlot::lines() const {
    const QColor ground = palette().color(QPalette::Base);
    QList<PlotLine> all = plotLines() + linesOf(history_.members);
    all[differenceLine].colour = differenceColour(history_);
    QList<Line> lines;
    for (qsizetype line = 0; line < all.size(); ++line) {
        lines << Line{all[line].name, readableColour(all[line].colour, ground), hasDays(line),
                      isOn(line)};
    }
    return lines;
}

void HistoryPlot::switchLine(qsizetype line, bool on) {
    if (isOn(line) != on) {
        const QString key = keyOf(line);
        if (!switched_.remove(key)) {
            switched_.insert(key);
        }
        showSwitched();
    }
}

QString HistoryPlot::keyOf(qsizetype line) const {
    return line < firstMember ? QString::number(line) : history_.members[line - firstMember].dm;
}

bool HistoryPlot::hasDays(qsizetype line) const {
    if (line >= firstMember) {
        return history_.members[line - firstMember].hasRows;
    }
    return line == marketLine ? !history_.points.isEmpty() : history_.hasTheme;
}

bool HistoryPlot::isOn(qsizetype line) const {
    const bool atFirst = line < firstMember;
    return hasDays(line) && switched_.contains(keyOf(line)) != atFirst;
}

void HistoryPlot::showSwitched() {
    for (qsizetype line = 0; line < firstMember + history_.members.size(); ++line) {
        setLineVisible(line, isOn(line));
    }
    QList<DayValues> days;
    for (qsizetype day = 0; day < history_.points.size(); ++day) {
        days << valuesOf(day);
    }
    showDays(days);
}

DayValues HistoryPlot::valuesOf(qsizetype day) const {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const HistoryPoint& point = history_.points[day];
    DayValues values = {
        point.day,
        {point.isGap ? none : point.theme, point.index, point.isGap ? none : point.difference()},
        pointText(point, history_.hasTheme)};
    int told = 0;
    for (qsizetype at = 0; at < history_.members.size(); ++at) {
        const MemberSums& member = history_.members[at];
        const double sum = member.sums[day];
        values.values << sum;
        if (isOn(firstMember + at) && ++told <= mostTold) {
            values.words += u"  "_s + nameOf(member) + u' ' +
                            (std::isnan(sum) ? u"没有行情"_s : twoDecimals(sum) + u"%"_s);
        }
    }
    values.words += told > mostTold ? u"  …"_s : QString();
    return values;
}

}  // namespace guanchao
