// Rows of a grid's view that the mouse draws to another place. A line shows where the row would go;
// Esc lets it stay. What a drop does is the owner's.
#pragma once

#include <QFrame>
#include <QObject>
#include <QPoint>
#include <QTimer>
#include <optional>

#include "grid/grid_view.h"

namespace guanchao {

class RowDrag : public QObject {
    Q_OBJECT

public:
    explicit RowDrag(GridView& view);

signals:
    // The row is to stand before another one, behind all where that is 0. Counted as in the grid.
    void dropped(int row, int before);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isDrawing() const { return line_.isVisible(); }
    bool takeEscape(QEvent& event);
    void press(const QPoint& place);
    void draw(const QPoint& place);
    void scrollAtEdge();
    void showPlace();
    void end();

    GridView& view_;
    QFrame& line_;
    std::optional<QPoint> pressedAt_;
    QPoint place_;
    int row_ = 0;
    int before_ = 0;
    QTimer scrolling_;  // while the mouse rests at an edge
};

}  // namespace guanchao
