// The map: a box for each theme or stock, with an area by what is chosen and the heat colour of its
// gain. A box that is too small for its name has none; the pointer tells it. Arrows lead to the
// neighbouring box, Home and End to the greatest and the smallest, letters and characters to the
// box whose name or initials begin with them.
#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QPoint>
#include <QWidget>

#include "frame/kept_control.h"
#include "themes/map_names.h"
#include "themes/theme_map.h"
#include "themes/treemap.h"

namespace guanchao {

class MapView : public QWidget, public KeptControl {
    Q_OBJECT

public:
    explicit MapView(QWidget* parent = nullptr);

    // What boxes stand for, and how they are told.
    struct Kind {
        double fullGain = 3;  // in %, from which on the colour is the full one
        QString (*words)(const MapBox& box) = themeWords;
    };

    // The box that was chosen stays so if it is there; else the greatest is, without a signal.
    void showBoxes(const QList<MapBox>& boxes, const Kind& kind);
    const QList<MapBox>& boxes() const { return boxes_; }
    // Without an area it is not drawn.
    const QList<QRect>& places() const { return places_; }
    // Of the names that are drawn; empty for a box without one.
    QRect namePlace(qsizetype box) const { return names_.place(box); }

    void setArea(MapArea area);
    MapArea area() const { return area_; }

    // What stands in the middle while there is no box.
    void setHint(const QString& hint);

    qsizetype chosen() const { return chosen_; }
    const MapBox* chosenBox() const { return chosen_ < 0 ? nullptr : &boxes_[chosen_]; }
    void choose(qsizetype box);
    void chooseKey(const QString& key);
    void open(qsizetype box);
    QString wordsOf(qsizetype box) const { return kind_.words(boxes_[box]); }

    QVariantMap kept() const override;
    void showKept(const QVariantMap& kept) override;

    QSize sizeHint() const override { return {900, 560}; }
    QSize minimumSizeHint() const override { return {320, 240}; }

signals:
    void boxChosen();
    // By a double click or Enter; it is the chosen one.
    void boxOpened();
    // Backspace.
    void goesBack();
    void menuAsked(const QPoint& place);  // on the screen
    void areaChanged(MapArea area);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void layOut();
    void paintBox(QPainter& painter, qsizetype box) const;
    void paintFrame(QPainter& painter, qsizetype box, int width) const;
    qsizetype boxAt(const QPoint& point) const;
    qsizetype end(bool greatest) const;
    bool step(int key);
    void find(const QString& typed);
    void tellChosen();

    QList<MapBox> boxes_;
    Kind kind_;
    MapArea area_ = MapArea::members;
    QList<QRect> places_;
    MapNames names_;
    QString hint_;
    qsizetype chosen_ = -1;
    qsizetype pointed_ = -1;
    QString typed_;
    QElapsedTimer sinceTyped_;
};

}  // namespace guanchao
