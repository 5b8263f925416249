// K线图: the days of one stock as candles with their volume and their means of 5, 10, 20 and 60
// days. The wheel and + and - zoom, drawing moves the days, the arrow keys, Home and End move the
// cross-hair.
#pragma once

#include <QMultiMap>
#include <array>

#include "frame/price_chart.h"

namespace guanchao {

enum class TradeMark : std::uint8_t { buy, sell };

class CandleChart : public PriceChart {
    Q_OBJECT

public:
    explicit CandleChart(QWidget* parent = nullptr);

    // Oldest first, unadjusted, with their factors; the last ones are in sight. Takes the marks
    // away.
    void showBars(const QList<Candle>& bars);
    // As many of the last days as there are.
    void showLast(qsizetype days);
    void setAdjustment(Adjustment adjustment);

    // A trade on that day; a day that is not shown has none.
    void mark(QDate day, TradeMark kind);
    // In the middle, with the cross-hair on it; the nearest day for one that is not there.
    void showDay(QDate day);

    const VisibleDays& sight() const { return sight_; }

protected:
    qsizetype points() const override { return days_.size(); }
    QList<Figure> figuresOf(qsizetype day) const override;
    qsizetype pointAt(qreal x) const override;
    qreal xOf(qsizetype day) const override;
    double priceOf(qsizetype day) const override { return days_[day].close; }
    PriceScale scale() const override;
    QString widestPrice() const override;
    void paintPlot(QPainter& painter) override;
    void choose(qsizetype day) override;

    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    static constexpr std::array meanLengths = {5, 10, 20, 60};

    void adjust();
    void zoom(double factor, double part);
    double partOf(qreal x) const;
    qsizetype indexOf(QDate day) const;
    qreal slot() const;
    bool rises(qsizetype day) const;
    void paintDays(QPainter& painter) const;
    void paintCandles(QPainter& painter, const PriceScale& prices) const;
    void paintVolumes(QPainter& painter) const;
    void paintMeans(QPainter& painter, const PriceScale& prices) const;
    void paintMarks(QPainter& painter, const PriceScale& prices) const;

    QList<Candle> bars_;
    QList<Candle> days_;  // the bars, adjusted
    std::array<QList<double>, meanLengths.size()> means_;
    Adjustment adjustment_ = Adjustment::forward;
    QMultiMap<QDate, TradeMark> marks_;
    VisibleDays sight_;
    std::optional<qsizetype> held_;  // the day that the pointer draws along
};

}  // namespace guanchao
