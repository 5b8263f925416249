#include "grid/grid_commands.h"

#include <QClipboard>
#include <QGuiApplication>
#include <algorithm>
#include <utility>

#include "grid/selected_rows.h"
#include "grid/table_text.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

GridCommands::GridCommands(QTableView& view, ColumnChoice& columns, ColumnWidths& widths,
                           FindLine& findLine)
    : view_(view), columns_(columns), widths_(widths), findLine_(findLine) {
    connect(add(u"复制"_s, {QKeySequence::Copy}), &QAction::triggered, this,
            &GridCommands::copyRows);
    exports_ = add(u"导出表格…"_s, {});
    exports_->setVisible(false);
    connect(exports_, &QAction::triggered, this, &GridCommands::exportRows);
    connect(add(u"在表中查找"_s, {Qt::Key_F3, Qt::Key_Slash}), &QAction::triggered, this,
            [this] { find(SearchWay::forward); });
    connect(add(u"选择列…"_s, {}), &QAction::triggered, this, [this] {
        openColumnMenu(view_.viewport()->mapToGlobal(view_.viewport()->rect().topLeft()));
    });
    chart_ = add(u"K线图"_s, {Qt::Key_F6});
    chart_->setVisible(false);
    connect(chart_, &QAction::triggered, this, &GridCommands::openChart);
    auto* previous = new QAction(&view_);
    previous->setShortcut(Qt::SHIFT | Qt::Key_F3);
    previous->setShortcutContext(Qt::WidgetShortcut);
    view_.addAction(previous);
    connect(previous, &QAction::triggered, this, [this] { find(SearchWay::backward); });
}

QAction* GridCommands::add(const QString& words, const QList<QKeySequence>& keys) {
    auto* command = new QAction(words, &view_);
    command->setShortcuts(keys);
    command->setShortcutContext(Qt::WidgetShortcut);
    command->setShortcutVisibleInContextMenu(true);
    view_.addAction(command);
    menu_.addAction(command);
    return command;
}

void GridCommands::offerCharts(OpenChart open) {
    openChart_ = std::move(open);
    showThose();
}

void GridCommands::allowExport(Dialogs& dialogs, Failures& failures) {
    export_.emplace(dialogs, failures);
    exports_->setVisible(true);
}

void GridCommands::showThose() {
    chart_->setVisible(openChart_ && grid() && tellsStocks(*grid()));
}

void GridCommands::copyRows() {
    const QList<int> rows = selectedRows(view_);
    if (!rows.isEmpty()) {
        QGuiApplication::clipboard()->setText(copiedText(*grid(), rows, columns_.shown(*grid())));
    }
}

void GridCommands::exportRows() {
    if (grid()) {
        const QString name = view_.accessibleName().replace(u'/', u'-') + u".csv"_s;
        export_->start(*grid(), name, [this] { return columns_.shown(*grid()); });
    }
}

void GridCommands::openChart() {
    const QList<StockOfRow> stocks = stocksOf(*grid());
    const auto chosen = std::ranges::find(stocks, grid()->markedRow(), &StockOfRow::row);
    if (chosen != stocks.end()) {
        openChart_(stocks, chosen - stocks.begin());
    }
}

void GridCommands::find(SearchWay way) {
    if (grid()) {
        findLine_.find(way);
    }
}

void GridCommands::openColumnMenu(const QPoint& place) {
    if (!grid()) {
        return;
    }
    auto* menu = new QMenu(&view_);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    columns_.fillMenu(*menu, *grid(), [this] { emit columnsChosen(); });
    connect(menu->addAction(u"恢复列宽"_s), &QAction::triggered, this, [this] {
        widths_.forgetDrawn();
        emit columnsChosen();
    });
    menu->popup(place);
}

}  // namespace guanchao
