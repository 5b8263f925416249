// The one view of result grids. Rows in its signals count as in the grid: row 0 is the header. The
// grid's own colours, widths and tool tip show. The row that keys or mouse choose last is the
// grid's marked one, on which commands act; more rows can be selected beside it, which stand out
// less.
#pragma once

#include <QMenu>
#include <QPointer>
#include <QTableView>
#include <QTimer>
#include <optional>
#include <utility>

#include "frame/kept_control.h"
#include "grid/column_choice.h"
#include "grid/column_widths.h"
#include "grid/find_line.h"
#include "grid/grid_commands.h"
#include "grid/header_sort.h"
#include "grid/result_grid.h"
#include "grid/selected_rows.h"

namespace guanchao {

class GridView : public QTableView, public KeptControl {
    Q_OBJECT

public:
    explicit GridView(QWidget* parent = nullptr);

    // A view whose grid is gone shows nothing.
    void setGrid(ResultGrid& grid);

    // What stands in the middle of the view while the grid holds no rows.
    void setHint(const QString& hint);
    const QString& hint() const { return hint_; }

    // The last column takes the room that the others leave.
    void fillWithLastColumn() { widths_.fillView(); }

    // A click on a header sorts; headers that hold one of the words are sorted as texts.
    void setSortable(const QStringList& dateWords = {}) { sort_.enable(dateWords); }
    // The header by which the rows stand; empty: as the list was found, as it is from the next fill
    // on once the sort is forgotten.
    QString sortedBy() const { return sort_.header(); }
    void forgetSort();
    void shareSortOrder(const GridView& other) { sort_.shareOrder(other.sort_); }

    // 导出表格: without this the view has no such command.
    void allowExport(Dialogs& dialogs, Failures& failures) {
        commands_.allowExport(dialogs, failures);
    }

    // K线图: without this, and on rows that hold no stock, the view has no such command.
    void offerCharts(GridCommands::OpenChart open) { commands_.offerCharts(std::move(open)); }

    // The menu that the right button or the menu key opens on a row, after the row was chosen. The
    // view's own commands are put at its end; they are the menu of a view that is given none.
    enum class MenuArea : std::uint8_t { rows, rowsAndGround };
    void setRowMenu(QMenu& menu, MenuArea area = MenuArea::rows);

    // In their order, the marked one among them.
    QList<int> selectedRows() const { return guanchao::selectedRows(*this); }

    // Into a cell of the grid's editable column the user writes, as after a double click on it. No
    // list may be filled meanwhile.
    void editCell(int row, int col);
    bool isEditing() const { return state() == EditingState; }

    // Twips in pixels of this view, wider where the font is larger than the 9 points for which the
    // widths were chosen.
    int pixels(int twips) const;

    // The widths that the user has drawn, the columns that are hidden, and the order of the rows.
    QVariantMap kept() const override;
    void showKept(const QVariantMap& kept) override;

    enum class By : std::uint8_t { mouse, keys };

    // Makes the grid's row the first one in sight, as far as the rows under it reach.
    void scrollToTop(int row);
    // To the cell's row, if its column is hidden or the mouse has chosen it.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

signals:
    // Keys or mouse have chosen the row, though it may have been the chosen one before; 0 for a
    // press on the header or the empty ground, which chooses none.
    void rowChosen(int row, GridView::By by);
    // Keys have moved the choice to the row and rest there, or the right button has pressed it.
    void rowReached(int row);
    // A click of the left button on a row that is then the marked one, or Enter on that.
    void rowClicked(int row);
    // Enter alone.
    void enterPressed(int row);
    void rowDoubleClicked(int row, int col);
    // The rows stand in another order, or no longer in one.
    void sortChanged();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void updateGeometries() override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

private:
    bool isEmpty() const { return grid_ && grid_->cols() == 1 && grid_->rows() == 1; }
    int rowAtIndex(const QModelIndex& index) const { return index.isValid() ? index.row() + 1 : 0; }
    QModelIndex indexInRow(int row) const;
    int selectedInsteadOf(int row) const;
    void connectHeader();
    void showColumns();
    void goTo(CellPlace place);
    void showFill();
    void tellHint();
    void showMark();
    void choose(int row, By by, const std::optional<QPoint>& menuPlace = std::nullopt);

    QPointer<ResultGrid> grid_;
    ColumnChoice columns_;
    FindLine* findLine_;
    MenuArea menuArea_ = MenuArea::rows;
    HeaderSort sort_;
    ColumnWidths widths_;
    KeptSelection selection_;
    QString hint_;
    QModelIndex pressedIndex_;
    const QEvent* press_ = nullptr;  // of a key or button, while it is carried out
    By chosenBy_ = By::keys;
    QTimer keysRest_;  // up when no further key waits
    GridCommands commands_{*this, columns_, widths_, *findLine_};
    QPointer<QMenu> menu_ = &commands_.menu();
};

}  // namespace guanchao
