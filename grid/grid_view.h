// The one view of result grids. Rows and columns in its signals count as in the grid: row 0 is the
// header, -1 the empty ground beside the cells. The grid's own colours, widths and tool tip show;
// keys make the row that they choose the grid's current one.
#pragma once

#include <QPointer>
#include <QTableView>

#include "grid/result_grid.h"

namespace guanchao {

class GridView : public QTableView {
    Q_OBJECT

public:
    explicit GridView(QWidget* parent = nullptr);

    // A view whose grid is gone shows nothing.
    void setGrid(ResultGrid& grid);

    // What stands in the middle of the view while the grid holds no rows.
    void setHint(const QString& hint) {
        hint_ = hint;
        viewport()->update();
    }

    // Twips in pixels of this view, wider where the font is larger than the 9 points for which the
    // widths were chosen.
    int pixels(int twips) const;

    // Makes the grid's row the first one in sight, as far as the rows under it reach.
    void scrollToTop(int row);

    // Where on the screen the last press was: the place for a popup.
    QPoint pressPosition() const { return pressPosition_; }

signals:
    void gridPressed(int row, int col, Qt::MouseButton button);
    void gridClicked(int row, int col);
    void gridDoubleClicked(int row, int col);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool isEmpty() const { return grid_ && grid_->cols() == 1 && grid_->rows() == 1; }
    void applyWidths();
    int widthOf(int col) const;
    void widenLastColumn();
    int widthOfKeys(int col) const;
    void showMark();
    void markChosen();
    void watchHeader();

    QPointer<ResultGrid> grid_;
    QString hint_;
    QModelIndex pressedIndex_;
    QPoint pressPosition_;
};

}  // namespace guanchao
