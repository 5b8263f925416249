// What the charts of prices share: the figures of the chosen point above the plot, the cross-hair
// that the pointer and the arrow keys move, the hint while there is nothing, and what assistive
// tools are told. While no point is chosen, the last one is told.
#pragma once

#include <QWidget>

#include "base/candles.h"

namespace guanchao {

class PriceChart : public QWidget {
    Q_OBJECT

public:
    // What stands in the middle while there are no points.
    void setHint(const QString& hint);
    const QString& hint() const { return hint_; }

    // The words of the chosen point, empty if none is.
    QString chosenText() const;

    QSize sizeHint() const override { return minimumSize(); }

protected:
    // A part of the words of a point; without a colour of its own in that of texts.
    struct Figure {
        QString text;
        QColor colour = {};
    };

    // Where the prices lie on the screen.
    struct PriceScale {
        PriceRange range;
        QRectF area;

        qreal y(double price) const;
        double price(qreal y) const;
    };

    explicit PriceChart(QWidget* parent);

    virtual qsizetype points() const = 0;
    virtual QList<Figure> figuresOf(qsizetype point) const = 0;
    // The nearest one.
    virtual qsizetype pointAt(qreal x) const = 0;
    virtual qreal xOf(qsizetype point) const = 0;
    // Where the cross lies while no pointer tells it.
    virtual double priceOf(qsizetype point) const = 0;
    virtual PriceScale scale() const = 0;
    // As the axis words it.
    virtual QString priceWords(double price) const;
    virtual QString widestPrice() const = 0;
    virtual void paintPlot(QPainter& painter) = 0;

    qsizetype chosen() const { return chosen_; }
    virtual void choose(qsizetype point);
    // After other points have come; the same points with other figures keep the choice.
    void forgetChosen();
    void showChosenAgain();

    // Beneath the figures: prices, and under them the volume; the words of both axes lie outside.
    QRectF priceArea() const;
    QRectF volumeArea() const;
    QColor riseOrFall(bool rises) const;
    // In the colour of the sheet, as it can be read on the ground.
    QColor lineColour(const QColor& colour) const;
    void paintPriceLines(QPainter& painter, const QList<double>& prices) const;
    // What the highest bar of the volume stands for, beside its top.
    void paintMostVolume(QPainter& painter, double volume) const;
    // Below the plot, with their middle at x as far as the plot reaches.
    void paintBottomWords(QPainter& painter, qreal x, const QString& words) const;

    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void layOut();
    qreal layFigures(const QList<Figure>& figures, QPainter* painter) const;
    void paintHint(QPainter& painter);
    void paintCross(QPainter& painter);
    void tellChosen();
    QString wordsOf(qsizetype point) const;

    QString hint_;
    qsizetype chosen_ = -1;
    std::optional<qreal> pointerY_;
    QRectF plotArea_;
};

}  // namespace guanchao
