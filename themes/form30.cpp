#include "themes/form30.h"

#include "articles/form27.h"
#include "base/values.h"
#include "grid/row_menu.h"
#include "market/form11.h"
#include "market/form21.h"
#include "monitor/form7.h"
#include "store/patience.h"
#include "themes/watch_order.h"
#include "themes/watch_tables.h"
#include "ui_form30.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Form30::Form30(Environment& environment, Windows& windows)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      windows_(windows),
      ui_(std::make_unique<Ui::Form30>()),
      watchlist_(environment.stores, environment.dialogs, environment.removals),
      lists_(environment.stores, environment.dialogs, environment.removals),
      feed_(environment.stores, environment.globals, environment.clock,
            QuoteSource(environment.client, environment.clock, environment.services)),
      quotes_(environment.stores, environment.globals, environment.clock, feed_),
      runs_(environment.failures),
      refreshRuns_(environment.failures),
      quoteRuns_(environment.failures) {
    ui_->setupUi(this);
    setUpGrid();
    buildRowMenu();
    connectRows();
    setUpLists();
    ui_->undo->setShortcut(QKeySequence::Undo);
    undoLine_ = std::make_unique<UndoLine>(*ui_->removedWords, *ui_->undo, environment_,
                                           watchlistPlace, [this] { showList(list_); });
    setUpQuotes();
    ui_->MSHFlexGrid1->setFocus();
}

Form30::~Form30() = default;

void Form30::setUpGrid() {
    GridView& view = *ui_->MSHFlexGrid1;
    grid_.setEditableColumn(WatchColumn::note);
    view.setGrid(grid_);
    view.allowExport(environment_.dialogs, environment_.failures);
    view.setSortable();
    drag_ = new RowDrag(view);
    connect(drag_, &RowDrag::dropped, this,
            [this](int row, int before) { move({codeIn(row)}, codeIn(before)); });
    connect(&grid_, &ResultGrid::written, this,
            [this](int row, int, const QString& note) { writeNote(row, note); });
    // What has come meanwhile.
    connect(view.itemDelegate(), &QAbstractItemDelegate::closeEditor, this, &Form30::refresh,
            Qt::QueuedConnection);
}

void Form30::buildRowMenu() {
    kuaimenu_.setObjectName(u"kuaimenu"_s);
    kuaimenu_.setTitle(u"快捷菜单"_s);
    fillRowMenu(kuaimenu_,
                {ui_->当前行情, ui_->F10资料, ui_->添加个股监控, ui_->修改个股监控,
                 ui_->操作个股文章, ui_->从自选股删除, ui_->添加自选股},
                {ui_->从自选股删除});
    kuaimenu_.addActions({ui_->编辑备注, ui_->上移, ui_->下移});
    targets_.setTitle(u"复制、移动到列表"_s);
    kuaimenu_.addMenu(&targets_);
    ui_->MSHFlexGrid1->setRowMenu(kuaimenu_);
    addKey(ui_->编辑备注, Qt::Key_F2);
    addKey(ui_->上移, Qt::ALT | Qt::Key_Up);
    addKey(ui_->下移, Qt::ALT | Qt::Key_Down);
    addKey(ui_->从自选股删除, QKeySequence::Delete);
}

void Form30::addKey(QAction* entry, const QKeySequence& key) {
    entry->setShortcut(key);
    entry->setShortcutContext(Qt::WidgetShortcut);
    entry->setShortcutVisibleInContextMenu(true);
    ui_->MSHFlexGrid1->addAction(entry);
}

void Form30::command(const QAction* entry, void (Form30::*run)()) {
    connect(entry, &QAction::triggered, this, run);
}

void Form30::connectRows() {
    GridView& view = *ui_->MSHFlexGrid1;
    connect(&view, &GridView::rowChosen, this, &Form30::MSHFlexGrid1_RowChosen);
    connect(&view, &GridView::rowDoubleClicked, this, &Form30::openQuotes);
    connect(&view, &GridView::enterPressed, this, &Form30::openQuotes);
    connect(&kuaimenu_, &QMenu::aboutToShow, this, &Form30::kuaimenu_Opens);
    command(ui_->当前行情, &Form30::openQuotes);
    connect(ui_->F10资料, &QAction::triggered, this, [this] { windows_.openAnew<Form11>(); });
    command(ui_->添加个股监控, &Form30::添加个股监控_Click);
    command(ui_->修改个股监控, &Form30::修改个股监控_Click);
    command(ui_->添加自选股, &Form30::添加自选股_Click);
    command(ui_->从自选股删除, &Form30::从自选股删除_Click);
    command(ui_->操作个股文章, &Form30::操作个股文章_Click);
    command(ui_->编辑备注, &Form30::编辑备注_Click);
    command(ui_->上移, &Form30::上移_Click);
    command(ui_->下移, &Form30::下移_Click);
}

// Its windows may have set a monitor or a note.
bool Form30::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate) {
        refresh();
    }
    return QDialog::event(event);
}

void Form30::refresh() {
    if (!ui_->MSHFlexGrid1->isEditing()) {
        refreshRuns_.stop();
        refreshRuns_.start([this](std::stop_token stop) { return showStored(stop); });
    }
}

QCoro::Task<> Form30::showStored(std::stop_token stop) {
    const auto step = [this] { watchlist_.list(grid_, list_); };
    co_await patiently(step, stop);
    showOrder();
    showAge();
}

void Form30::say(const QString& words) {
    lacks_ = false;
    ui_->words->setText(words);
}

QString Form30::codeIn(int row) const {
    return row > 0 ? trimBlanks(grid_.textMatrix(row, WatchColumn::dm)) : QString();
}

QStringList Form30::codesIn(const QList<int>& rows) const {
    QStringList dms;
    for (const int row : rows) {
        dms << codeIn(row);
    }
    return dms;
}

QList<int> Form30::allRows() const {
    QList<int> rows;
    for (int row = 1; row < grid_.rows(); ++row) {
        rows << row;
    }
    return rows;
}

void Form30::MSHFlexGrid1_RowChosen(int row) {
    if (row > 0) {
        environment_.globals.dangqiandm = codeIn(row);
        environment_.globals.dangqianjc = trimBlanks(grid_.textMatrix(row, WatchColumn::jc));
    }
}

void Form30::kuaimenu_Opens() {
    const int row = grid_.markedRow();
    ui_->修改个股监控->setEnabled(row > 0 &&
                                  !grid_.textMatrix(row, WatchColumn::monitor).isEmpty());
    fillTargets();
}

void Form30::openQuotes() {
    windows_.openAnew<Form21>();
}

void Form30::addMonitor(qint16 mode) {
    environment_.globals.bianjimoshi = mode;
    windows_.openAnew<Form7>();
}

void Form30::添加自选股_Click() {
    runs_.start([this, list = list_](std::stop_token stop) -> QCoro::Task<> {
        const bool added = co_await watchlist_.addTyped(stop, list);
        if (added) {
            refresh();
        }
    });
}

void Form30::从自选股删除_Click() {
    const QStringList dms = codesIn(ui_->MSHFlexGrid1->selectedRows());
    if (dms.isEmpty()) {
        return;
    }
    if (dms.size() == 1) {
        watchlist_.remove(environment_.globals.dangqiandm, environment_.globals.dangqianjc, list_);
    } else {
        watchlist_.removeAll(dms, list_);
    }
    undoLine_->showLast();
    refresh();
}

void Form30::操作个股文章_Click() {
    Globals& globals = environment_.globals;
    globals.wenzhangdalei = u"个股"_s;
    globals.wenzhangxiaolei = globals.dangqiandm + globals.dangqianjc;
    windows_.openAnew<Form27>();
}

void Form30::编辑备注_Click() {
    GridView& view = *ui_->MSHFlexGrid1;
    if (view.isColumnHidden(WatchColumn::note)) {
        say(u"“备注”一列没有显示：右击列标头，在“选择列”里打开它。"_s);
    } else if (grid_.markedRow() > 0) {
        view.editCell(grid_.markedRow(), WatchColumn::note);
    }
}

void Form30::writeNote(int row, const QString& note) {
    const auto write = [this, dm = codeIn(row), note] {
        const Activity activity(u"写备注"_s, u"没有写入的备注："_s + note);
        Connection store = environment_.stores.main.open();
        Transaction transaction(store);
        guanchao::writeNote(store, dm, note);
        transaction.commit();
    };
    runs_.start([this, write](std::stop_token stop) -> QCoro::Task<> {
        co_await patiently(write, stop);
        refresh();
    });
}

void Form30::上移_Click() {
    const QList<int> rows = ui_->MSHFlexGrid1->selectedRows();
    if (!rows.isEmpty() && rows.first() > 1) {
        move(codesIn(rows), codeIn(rows.first() - 1));
    }
}

void Form30::下移_Click() {
    const QList<int> rows = ui_->MSHFlexGrid1->selectedRows();
    const int next = rows.isEmpty() ? grid_.rows() : rows.last() + 1;
    if (next < grid_.rows()) {
        move(codesIn(rows), next + 1 < grid_.rows() ? codeIn(next + 1) : QString());
    }
}

// A sorted list shows no place that a stock could be moved to.
void Form30::move(const QStringList& dms, const QString& before) {
    const QString header = ui_->MSHFlexGrid1->sortedBy();
    if (!header.isEmpty()) {
        say(u"现在按“%1”排序：先按“自定义顺序”，再移动。"_s.arg(header));
        return;
    }
    say({});
    const auto step = [=, this, list = list_, shown = codesIn(allRows())] {
        moveInList(environment_.stores, list, shown, dms, before);
    };
    runs_.start([this, step](std::stop_token stop) -> QCoro::Task<> {
        co_await patiently(step, stop);
        refresh();
    });
}

}  // namespace guanchao
