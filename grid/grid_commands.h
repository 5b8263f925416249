// What a grid's view does with its rows by commands: it copies and exports them, finds texts in
// them, lets columns be chosen, and opens the charts of the stocks that they hold. The commands are
// actions of the view, with their keys, and stand in a menu of their own.
#pragma once

#include <QMenu>
#include <QObject>
#include <QTableView>
#include <functional>
#include <optional>

#include "grid/column_choice.h"
#include "grid/column_widths.h"
#include "grid/find_line.h"
#include "grid/grid_export.h"
#include "grid/stock_rows.h"

namespace guanchao {

class GridCommands : public QObject {
    Q_OBJECT

public:
    // Of the view of a result grid; the parts of the view outlive it.
    GridCommands(QTableView& view, ColumnChoice& columns, ColumnWidths& widths, FindLine& findLine);

    QMenu& menu() { return menu_; }

    // Told of the stocks of all rows in their order, and which of them is the chosen one.
    using OpenChart = std::function<void(const QList<StockOfRow>& stocks, qsizetype chosen)>;
    void offerCharts(OpenChart open);
    void allowExport(Dialogs& dialogs, Failures& failures);

    // Those that go with the rows that the grid holds now, which are of one kind.
    void showThose();

    void copyRows();
    void openColumnMenu(const QPoint& place);

signals:
    // The user has chosen others, or widths are as they were made.
    void columnsChosen();

private:
    QAction* add(const QString& words, const QList<QKeySequence>& keys);
    void exportRows();
    void openChart();
    void find(SearchWay way);
    // Null once the grid is gone.
    ResultGrid* grid() const { return qobject_cast<ResultGrid*>(view_.model()); }

    QTableView& view_;
    ColumnChoice& columns_;
    ColumnWidths& widths_;
    FindLine& findLine_;
    QMenu menu_;
    QAction* exports_;
    QAction* chart_;
    OpenChart openChart_;
    std::optional<GridExport> export_;
};

}  // namespace guanchao
