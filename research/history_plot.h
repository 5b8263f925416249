// The plot of a theme against the market: the running sums of both and their difference over the
// days, in percent. The day under the pointer, or the one that the arrow keys choose, shows its
// values.
#pragma once

#include <QChartView>
#include <QDateTimeAxis>
#include <QLineSeries>
#include <QValueAxis>

#include "research/theme_history.h"

namespace guanchao {

class HistoryPlot : public QChartView {
    Q_OBJECT

public:
    explicit HistoryPlot(QWidget* parent = nullptr);

    // Without a theme only the market's line shows.
    void showPoints(const QList<HistoryPoint>& points, bool hasTheme);

    // The words of the chosen day, empty if none is.
    QString chosenText() const;

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void drawForeground(QPainter* painter, const QRectF& rect) override;

private:
    void buildAxes();
    QLineSeries* addLine(const QString& name, const QColor& colour);
    void fitAxes();
    void choose(qsizetype point);

    QDateTimeAxis* days_;
    QValueAxis* percents_;
    QLineSeries* theme_;
    QLineSeries* index_;
    QLineSeries* difference_;
    QList<HistoryPoint> points_;
    bool hasTheme_ = false;
    qsizetype chosen_ = -1;
};

}  // namespace guanchao
