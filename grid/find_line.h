// 在表中查找: the line over the lower edge of a grid's view, in which a text is typed that its
// cells may hold. It finds while it is typed and goes on at the other end of the grid. No key that
// is pressed in it reaches the grid.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

#include "grid/cell_search.h"
#include "grid/column_choice.h"

namespace guanchao {

class FindLine : public QFrame {
    Q_OBJECT

public:
    // In the shown columns of the view of a result grid, from its current cell on.
    FindLine(QTableView& view, const ColumnChoice& columns);

    bool isOpen() const { return !isHidden(); }
    void leave();

    // Opens the line first if it isn't, or is empty.
    void find(SearchWay way);

    // After the view has counted how far it scrolls: its last rows are to come up from under the
    // line. `top` is where it was scrolled to.
    void place(int top);
    // Brings the cell up from under the line.
    void uncover(const QModelIndex& index);

signals:
    void found(CellPlace place);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void addButton(Qt::ArrowType arrow, const QString& name, const QString& key, SearchWay way);
    void open();
    void findTyped();
    void scrollBy(QTableView::ScrollMode mode);
    // Null once the grid is gone.
    const ResultGrid* grid() const { return qobject_cast<const ResultGrid*>(view_.model()); }
    CellPlace current() const;

    QTableView& view_;
    const ColumnChoice& columns_;
    QLineEdit* text_;
    QLabel* answer_;
};

}  // namespace guanchao
