// A plot of lines over the days, in the look of the program. The day under the pointer, or the one
// that the arrow keys choose, shows a dot on each line, and its words in a strip above the lines,
// where they hide none; assistive tools are told its words, or those of the last day.
#pragma once

#include <QChartView>
#include <QDateTimeAxis>
#include <QLineSeries>
#include <QValueAxis>

#include "base/day_values.h"

namespace guanchao {

// The left axis always shows 0; the right one is for lines that keep far from it.
enum class PlotAxis { left, right };

// For counts.
inline const QString wholeNumbers = QStringLiteral("%.0f");

struct PlotLine {
    QString name;
    QColor colour;
    PlotAxis axis = PlotAxis::left;
};

class DayPlot : public QChartView {
    Q_OBJECT

public:
    // `labelFormat` is that of a printed number, "%.1f%%"; with `wholeNumbers` the labels stand at
    // whole numbers only. At most one axis on each side.
    DayPlot(const QList<PlotLine>& lines, const QString& labelFormat, QWidget* parent);

    // The days in their order, each with a value for every line, which breaks off at a day where it
    // has none, a NaN, and where the source of the values changes.
    void showDays(const QList<DayValues>& days);

    // What stands in the middle of the plot while it holds no days.
    void setHint(const QString& hint);

    // The words of the chosen day, empty if none is.
    QString chosenText() const;

protected:
    // Parts of the line behind a break follow with the next days.
    void setLineVisible(qsizetype line, bool visible) { lines_[line]->setVisible(visible); }
    // Those from `first` on go, and these come in their place.
    void replaceLines(qsizetype first, const QList<PlotLine>& lines);
    // A colour for a dark ground; parts behind a break take it with the next days.
    void setLineColour(qsizetype line, const QColor& colour);

    // Where these words would stand if they belonged to the day at `x`.
    QRectF wordsBox(const QString& words, qreal x) const;

    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void drawForeground(QPainter* painter, const QRectF& rect) override;

private:
    void buildChart();
    void showColours();
    void addLine(const PlotLine& line);
    QValueAxis* axisOf(PlotAxis side);
    void makeRoomForWords();
    void removeFurtherParts();
    void showLine(qsizetype line);
    QLineSeries* furtherPart(QLineSeries& line);
    void fitDays();
    void fitValues(QValueAxis& axis, bool withZero);
    void choose(qsizetype day);
    void showChosen();
    void drawDots(QPainter& painter);
    void drawLoneDays(QPainter& painter);
    void drawDot(QPainter& painter, QLineSeries& line, const QPointF& value);
    void drawWords(QPainter& painter, qreal x);

    QString labelFormat_;
    QDateTimeAxis* dayAxis_;
    QValueAxis* left_ = nullptr;
    QValueAxis* right_ = nullptr;
    QList<QLineSeries*> lines_;         // the first part of each
    QList<QColor> colours_;             // of the lines, on a dark ground
    QList<QLineSeries*> furtherParts_;  // behind a break
    QList<DayValues> days_;
    QString hint_;
    qsizetype chosen_ = -1;
};

}  // namespace guanchao
