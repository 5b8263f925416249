// 分时图: the prices of one stock in the course of a day with their mean and volume, the former
// close in the middle. The arrow keys go from one price to the next.
#pragma once

#include "base/day_line.h"
#include "frame/price_chart.h"

namespace guanchao {

class DayLineChart : public PriceChart {
    Q_OBJECT

public:
    explicit DayLineChart(QWidget* parent = nullptr);

    // The chosen minute stays the chosen one where points are added.
    void showLine(const DayLine& line);

protected:
    qsizetype points() const override { return line_.points.size(); }
    QList<Figure> figuresOf(qsizetype point) const override;
    qsizetype pointAt(qreal x) const override;
    qreal xOf(qsizetype point) const override;
    double priceOf(qsizetype point) const override { return line_.points[point].price; }
    PriceScale scale() const override;
    QString priceWords(double price) const override;
    QString widestPrice() const override;
    void paintPlot(QPainter& painter) override;

private:
    qreal xOfMinute(int tradingMinute) const;
    double gainOf(double price) const;
    QColor colourOfGain(double gain) const;
    void paintHours(QPainter& painter) const;
    void paintLines(QPainter& painter, const PriceScale& prices) const;
    void paintVolumes(QPainter& painter) const;

    DayLine line_;
};

}  // namespace guanchao
