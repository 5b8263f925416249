// A plot of things by two of their figures, in the look of the program: of one colour from 0 on and
// of another below it. The one under the pointer, or that the arrow keys choose, is ringed and
// tells its words in a strip above the plot; assistive tools are told them too.
#pragma once

#include <QChartView>
#include <QList>
#include <QScatterSeries>
#include <QValueAxis>

namespace guanchao {

struct PlottedThing {
    QPointF place;
    QString words;
};

class ScatterPlot : public QChartView {
    Q_OBJECT

public:
    // Colours for a dark ground.
    ScatterPlot(QColor above, QColor below, QWidget* parent);

    // Counts are spread over orders of magnitude: theirs is a logarithmic scale, on which those of
    // 0 stand left of 1.
    enum class Scale : std::uint8_t { linear, ofCounts };
    void setAxes(const QString& across, Scale scale, const QString& up);
    // The chosen one stays so if it is there with the same words.
    void showThings(QList<PlottedThing> things);

    // What stands in the middle of the plot while it holds nothing.
    void setHint(const QString& hint);

    // The words of the chosen thing, empty if none is.
    QString chosenText() const;
    // Where the thing stands, in pixels of the plot.
    QPointF placeOf(qsizetype thing) const;

signals:
    // A double click on a thing, or Enter.
    void opened(qsizetype thing);

protected:
    void changeEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void drawForeground(QPainter* painter, const QRectF& rect) override;

private:
    QScatterSeries* addSeries();
    void showColours();
    QPointF drawn(const PlottedThing& thing) const;
    QPointF positionOf(const PlottedThing& thing) const;
    void fitCounts();
    void fit(QValueAxis& axis, qreal (QPointF::*coordinate)() const);
    qsizetype thingAt(const QPointF& place) const;
    void choose(qsizetype thing);
    void tellChosen();
    void drawWords(QPainter& painter);

    Scale scale_ = Scale::linear;
    QAbstractAxis* across_ = nullptr;
    QValueAxis* up_;
    QColor above_;
    QColor below_;
    QScatterSeries* rising_;
    QScatterSeries* falling_;
    QList<PlottedThing> things_;  // from left to right
    QList<qsizetype> given_;      // the place of each in what was given
    QString hint_;
    qsizetype chosen_ = -1;
};

}  // namespace guanchao
