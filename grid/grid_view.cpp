#include "grid/grid_view.h"

#include <QContextMenuEvent>
#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "base/values.h"
#include "grid/cell_delegate.h"
#include "grid/twips.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

static constexpr int rowPadding = 6;

GridView::GridView(QWidget* parent)
    : QTableView(parent),
      columns_(*this),
      findLine_(new FindLine(*this, columns_)),
      sort_(*horizontalHeader()),
      widths_(*this) {
    setItemDelegate(new CellDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
    horizontalHeader()->setMinimumSectionSize(10);
    horizontalHeader()->setHighlightSections(false);
    keysRest_.setSingleShot(true);
    connect(&keysRest_, &QTimer::timeout, this, [this] {
        if (grid_ && grid_->markedRow() > 0) {
            emit rowReached(grid_->markedRow());
        }
    });
    connectHeader();
    connect(findLine_, &FindLine::found, this, &GridView::goTo);
    connect(&commands_, &GridCommands::columnsChosen, this, &GridView::showColumns);
}

void GridView::connectHeader() {
    QHeaderView* header = horizontalHeader();
    header->viewport()->installEventFilter(this);
    connect(header, &QHeaderView::sectionClicked, this, [this](int col) {
        sort_.sort(*grid_, col);
        emit sortChanged();
    });
    connect(header, &QHeaderView::sectionResized, this, [this](int col, int former, int width) {
        const bool appearsOrGoes = former == 0 || width == 0;
        if (grid_ && !appearsOrGoes) {
            widths_.sectionResized(*grid_, col, width);
        }
    });
}

void GridView::setGrid(ResultGrid& grid) {
    grid_ = &grid;
    setModel(&grid);
    connect(&grid, &ResultGrid::colWidthsChanged, this, [this] { widths_.apply(*grid_); });
    connect(&grid, &ResultGrid::rowMarked, this, [this] {
        showMark();
        viewport()->update();  // the row that was marked before is one of the others now
    });
    connect(&grid, &ResultGrid::refillBegins, this, [this] { selection_.note(*this, *grid_); });
    connect(&grid, &ResultGrid::fillEnds, this, [this] { sort_.followFill(*grid_); });
    connect(&grid, &ResultGrid::filled, this, &GridView::showFill);
    connect(&grid, &ResultGrid::toolTipTextChanged, this,
            [this](const QString& text) { setToolTip(shortened(text, longestShownMessage)); });
    sort_.followFill(grid);
    showFill();
}

void GridView::setRowMenu(QMenu& menu, MenuArea area) {
    menu_ = &menu;
    menuArea_ = area;
    menu.addSeparator();
    menu.addActions(commands_.menu().actions());
}

void GridView::setHint(const QString& hint) {
    hint_ = hint;
    tellHint();
    viewport()->update();
}

// What is painted only is told to assistive tools as the description.
void GridView::tellHint() {
    setAccessibleDescription(grid_ && grid_->rows() > 1 ? QString() : hint_);
}

int GridView::pixels(int twips) const {
    return pixelsOf(twips, *this);
}

QVariantMap GridView::kept() const {
    return {{u"列"_s, widths_.kept()}, {u"隐藏"_s, columns_.kept()}, {u"排序"_s, sort_.kept()}};
}

void GridView::showKept(const QVariantMap& kept) {
    widths_.setKept(kept.value(u"列"_s).toStringList());
    columns_.setKept(kept.value(u"隐藏"_s).toStringList());
    sort_.setKept(kept.value(u"排序"_s).toString());
    if (grid_) {
        showColumns();
        sort_.followFill(*grid_);
        emit sortChanged();
    }
}

void GridView::forgetSort() {
    sort_.forget();
    emit sortChanged();
}

void GridView::scrollToTop(int row) {
    scrollTo(model()->index(row - 1, 0), PositionAtTop);
}

void GridView::showFill() {
    horizontalHeader()->setVisible(!isEmpty());
    showColumns();
    tellHint();
    showMark();
    selection_.selectAgain(*this, *grid_);
    commands_.showThose();
}

// Keys go on in a column that is shown.
void GridView::showColumns() {
    columns_.apply(*grid_);
    widths_.apply(*grid_);
    if (currentIndex().isValid() && isColumnHidden(currentIndex().column())) {
        selectionModel()->setCurrentIndex(indexInRow(rowAtIndex(currentIndex())),
                                          QItemSelectionModel::NoUpdate);
    }
}

// A fill leaves the view where the user has scrolled it. Rows that are selected beside the marked
// one stay so.
void GridView::showMark() {
    setAutoScroll(false);
    const int marked = grid_->markedRow();
    if (marked == 0) {
        clearSelection();
        if (!currentIndex().isValid()) {
            // Keys need a current cell.
            selectionModel()->setCurrentIndex(indexInRow(std::max(rowAt(0), 0) + 1),
                                              QItemSelectionModel::NoUpdate);
        }
    } else if (!isSelected(*this, marked)) {
        setCurrentIndex(indexInRow(marked));
    } else if (rowAtIndex(currentIndex()) != marked) {
        selectionModel()->setCurrentIndex(indexInRow(marked), QItemSelectionModel::NoUpdate);
    }
    setAutoScroll(true);
}

// In the first column that is in sight.
QModelIndex GridView::indexInRow(int row) const {
    return model()->index(row - 1, std::max(columnAt(0), 0));
}

// A row that the user takes out of the selection is the chosen one no longer, unless none is left.
int GridView::selectedInsteadOf(int row) const {
    if (row == 0 || isSelected(*this, row) || !selectionModel()->hasSelection()) {
        return row;
    }
    const int marked = grid_->markedRow();
    return marked > 0 && isSelected(*this, marked)
               ? marked
               : selectionModel()->selection().last().bottom() + 1;
}

// A key chooses the row that it reaches, with Ctrl too, and with Shift all on the way; the program
// itself chooses one row, whatever keys are held. Newer toolkits ask again without the event while
// they carry out a press.
QItemSelectionModel::SelectionFlags GridView::selectionCommand(const QModelIndex& index,
                                                               const QEvent* event) const {
    const QEvent* cause = event ? event : press_;
    const auto* key =
        cause && cause->type() == QEvent::KeyPress ? static_cast<const QKeyEvent*>(cause) : nullptr;
    if (key && key->modifiers() & Qt::ShiftModifier) {
        return QItemSelectionModel::SelectCurrent | QItemSelectionModel::Rows;
    }
    return !cause || key ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                         : QTableView::selectionCommand(index, cause);
}

// The menu opens on the row that is chosen, though a part of what that brings may fail.
void GridView::choose(int row, By by, const std::optional<QPoint>& menuPlace) {
    const auto openMenu = qScopeGuard([&] {
        if (menu_ && menuPlace && (row > 0 || menuArea_ == MenuArea::rowsAndGround)) {
            menu_->popup(*menuPlace);
        }
    });
    chosenBy_ = by;
    if (row > 0) {
        grid_->biaoji(row);
    }
    emit rowChosen(row, by);
}

void GridView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    if (grid_) {
        widths_.widenLast(*grid_);
    }
}

bool GridView::eventFilter(QObject* watched, QEvent* event) {
    if (grid_ && watched == horizontalHeader()->viewport()) {
        if (event->type() == QEvent::MouseButtonPress) {
            choose(0, By::mouse);
        } else if (event->type() == QEvent::ContextMenu) {
            commands_.openColumnMenu(static_cast<const QContextMenuEvent*>(event)->globalPos());
            return true;
        }
    }
    return QTableView::eventFilter(watched, event);
}

// The table's own way tells assistive tools that its cell has the focus, which a fill doesn't give
// it.
void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    if (hasFocus()) {
        QTableView::currentChanged(current, previous);
    } else {
        // NOLINTNEXTLINE(bugprone-parent-virtual-call): passes the table's own way by
        QAbstractItemView::currentChanged(current, previous);
    }
}

void GridView::mousePressEvent(QMouseEvent* event) {
    pressedIndex_ = indexAt(event->position().toPoint());
    const int row = rowAtIndex(pressedIndex_);
    {
        const QScopedValueRollback<const QEvent*> carriedOut(press_, event);
        QTableView::mousePressEvent(event);
    }
    const bool opensMenu = event->button() == Qt::RightButton;
    choose(selectedInsteadOf(row), By::mouse,
           opensMenu ? std::optional(event->globalPosition().toPoint()) : std::nullopt);
    if (opensMenu && row > 0) {
        emit rowReached(row);
    }
}

// The row that was pressed stays the chosen one, wherever the mouse is drawn.
void GridView::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
}

// The view's own way would take the mark away where the ground was pressed.
void GridView::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    showMark();
    const QModelIndex index = indexAt(event->position().toPoint());
    const QModelIndex pressed = std::exchange(pressedIndex_, QModelIndex());
    const bool chosen = rowAtIndex(index) == grid_->markedRow();
    if (event->button() == Qt::LeftButton && index.isValid() && index == pressed && chosen) {
        emit rowClicked(rowAtIndex(index));
    }
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.flags() & Qt::ItemIsEditable) {
        edit(index);
    } else if (event->button() == Qt::LeftButton && index.isValid()) {
        emit rowDoubleClicked(rowAtIndex(index), index.column());
    }
}

void GridView::editCell(int row, int col) {
    goTo({row, col});
    edit(model()->index(row - 1, col));
}

// As keys do.
void GridView::goTo(CellPlace place) {
    choose(place.row, By::keys);
    const QModelIndex index = model()->index(place.row - 1, place.col);
    selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
    keysRest_.start(0);
}

void GridView::updateGeometries() {
    const int top = verticalScrollBar()->value();
    QTableView::updateGeometries();
    findLine_->place(top);
}

void GridView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    const bool isShown = !isColumnHidden(index.column());
    const QModelIndex shown = isShown ? index : indexInRow(rowAtIndex(index));
    const int left = horizontalScrollBar()->value();
    QTableView::scrollTo(shown, hint);
    if (chosenBy_ == By::mouse) {
        horizontalScrollBar()->setValue(left);
    }
    findLine_->uncover(shown);
}

// Esc closes the find line, whatever else it means in the window.
bool GridView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && findLine_->isOpen() &&
        static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QTableView::event(event);
}

// Enter does to the current row what a click does. The view's own way would copy the current cell.
void GridView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        commands_.copyRows();
        return;
    }
    if (findLine_->isOpen() && event->key() == Qt::Key_Escape) {
        findLine_->leave();
        return;
    }
    // One that ends the writing in a cell comes on to here.
    const bool enter =
        !isEditing() && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter);
    if (enter && currentIndex().isValid()) {
        const int row = rowAtIndex(currentIndex());
        choose(row, By::keys);
        emit rowClicked(row);
        emit enterPressed(row);
        return;
    }
    {
        const QScopedValueRollback<const QEvent*> carriedOut(press_, event);
        QTableView::keyPressEvent(event);
    }
    const int row = rowAtIndex(currentIndex());
    if (row > 0 && row != grid_->markedRow() && isSelected(*this, row)) {
        choose(row, By::keys);
        keysRest_.start(0);
    }
}

// The menu key chooses the current row; the mouse has had its press already.
void GridView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        const QPoint place = viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft());
        choose(rowAtIndex(currentIndex()), By::keys, place);
    }
}

void GridView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (grid_ && grid_->rows() == 1) {
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, hint_);
    }
}

void GridView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (grid_ && event->type() == QEvent::FontChange) {
        verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
        widths_.apply(*grid_);
    }
}

}  // namespace guanchao
