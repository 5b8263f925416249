#include "grid/grid_view.h"

#include <QContextMenuEvent>
#include <QEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <utility>

#include "base/values.h"
#include "grid/twips.h"

namespace guanchao {

namespace {

constexpr int rowPadding = 6;
constexpr int cellPadding = 8;

QColor toColor(Colour colour) {
    return QColor::fromRgb(colour);
}

QFont fontOf(const ResultGrid& grid, int col, QFont font) {
    const ColumnFont& own = grid.colFont(col);
    if (own.points > 0) {
        font.setFamilies(QStringList{own.family} + font.families());
        font.setPointSize(own.points);
    }
    return font;
}

// yyyy-MM-dd hh:mm:ss
bool isMoment(const QString& text) {
    return text.size() == 19 && text[4] == u'-' && text[10] == u' ' && text[16] == u':';
}

// Puts the cell's own colour and font under the text, on a marked row too.
class CellDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const auto& grid = static_cast<const ResultGrid&>(*index.model());
        option->font = fontOf(grid, index.column(), option->font);
        const QVariant own = index.data(ResultGrid::ColourRole);
        const QColor colour = toColor(own.isValid() ? own.toUInt() : textColour);
        option->palette.setColor(QPalette::Text, colour);
        option->palette.setColor(QPalette::HighlightedText, colour);
        const QVariant ground = index.data(ResultGrid::BackColourRole);
        if (ground.isValid()) {
            // A marked row shows its mark, and the colour moves from the ground into the text.
            option->backgroundBrush = toColor(ground.toUInt());
            option->palette.setColor(QPalette::Text,
                                     own.isValid() ? colour : toColor(darkTextColour));
            option->palette.setColor(QPalette::HighlightedText, toColor(ground.toUInt()));
        }
    }
};

}  // namespace

GridView::GridView(QWidget* parent) : QTableView(parent) {
    setItemDelegate(new CellDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
    horizontalHeader()->setMinimumSectionSize(10);
    horizontalHeader()->setHighlightSections(false);
    watchHeader();
}

void GridView::watchHeader() {
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->viewport()->installEventFilter(this);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int col) { emit gridClicked(0, col); });
}

void GridView::setGrid(ResultGrid& grid) {
    grid_ = &grid;
    setModel(&grid);
    connect(&grid, &ResultGrid::colWidthsChanged, this, &GridView::applyWidths);
    connect(&grid, &ResultGrid::rowSelected, this, &GridView::showMark);
    connect(&grid, &ResultGrid::modelReset, this, [this] {
        applyWidths();
        showMark();
    });
    connect(&grid, &ResultGrid::toolTipTextChanged, this, &GridView::setToolTip);
    applyWidths();
}

int GridView::pixels(int twips) const {
    return pixelsOf(twips, *this);
}

void GridView::scrollToTop(int row) {
    scrollTo(model()->index(row - 1, 0), PositionAtTop);
}

void GridView::applyWidths() {
    horizontalHeader()->setVisible(!isEmpty());
    const int shown = std::min(grid_->cols(), horizontalHeader()->count());
    for (int col = 0; col < shown; ++col) {
        setColumnWidth(col, widthOf(col));
    }
    widenLastColumn();
}

int GridView::widthOf(int col) const {
    return std::max(pixels(grid_->colWidth(col)), widthOfKeys(col));
}

// Bare ground beside the last column looks like a column that lacks its data.
void GridView::widenLastColumn() {
    const int last = horizontalHeader()->count() - 1;
    if (!grid_ || last < 0 || last >= grid_->cols()) {
        return;
    }
    const int others = horizontalHeader()->length() - columnWidth(last);
    setColumnWidth(last, std::max(widthOf(last), viewport()->width() - others));
}

void GridView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    widenLastColumn();
}

// A number, a code or a moment of which the end is missing reads as another one: such a column
// grows beyond its width. Columns with a font of their own hold codes.
int GridView::widthOfKeys(int col) const {
    const bool ownFont = grid_->colFont(col).points > 0;
    QString longest;
    for (int row = 1; row < grid_->rows(); ++row) {
        const QString& text = grid_->textMatrix(row, col);
        if (text.size() > longest.size() && (ownFont || readsAsNumber(text) || isMoment(text))) {
            longest = text;
        }
    }
    const QFontMetrics metrics(fontOf(*grid_, col, font()));
    const int digits = static_cast<int>(longest.size()) * metrics.horizontalAdvance(u'0');
    return std::max(digits, metrics.horizontalAdvance(longest)) + cellPadding;
}

void GridView::showMark() {
    const int row = grid_->markedRow();
    if (row > 0) {
        selectRow(row - 1);
    } else if (!currentIndex().isValid()) {
        // Keys need a current cell; the first in sight doesn't move the view.
        selectionModel()->setCurrentIndex(model()->index(std::max(rowAt(0), 0), 0),
                                          QItemSelectionModel::NoUpdate);
    }
}

// What stands as chosen in the view is what commands on the current row take.
void GridView::markChosen() {
    const QModelIndexList chosen = selectionModel()->selectedRows();
    if (!chosen.isEmpty() && chosen.first().row() + 1 != grid_->markedRow()) {
        grid_->selectRow(chosen.first().row() + 1);
    }
}

// The header's own signals tell of the left button only.
bool GridView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == horizontalHeader()->viewport() && event->type() == QEvent::MouseButtonPress) {
        const auto* press = static_cast<QMouseEvent*>(event);
        const int col = horizontalHeader()->logicalIndexAt(press->position().toPoint());
        emit gridPressed(0, col, press->button());
    }
    return QTableView::eventFilter(watched, event);
}

void GridView::mousePressEvent(QMouseEvent* event) {
    pressPosition_ = event->globalPosition().toPoint();
    const QModelIndex index = indexAt(event->position().toPoint());
    pressedIndex_ = index;
    QTableView::mousePressEvent(event);
    emit gridPressed(index.isValid() ? index.row() + 1 : -1, index.column(), event->button());
}

// The row that was pressed stays the chosen one, wherever the mouse is drawn.
void GridView::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
}

void GridView::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    const QModelIndex pressed = std::exchange(pressedIndex_, QModelIndex());
    if (event->button() == Qt::LeftButton && index.isValid() && index == pressed) {
        emit gridClicked(index.row() + 1, index.column());
    }
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid()) {
        emit gridDoubleClicked(index.row() + 1, index.column());
    }
}

// Enter does to the current row what a click does.
void GridView::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || !currentIndex().isValid()) {
        QTableView::keyPressEvent(event);
        markChosen();
        return;
    }
    const int row = currentIndex().row() + 1;
    const int col = currentIndex().column();
    emit gridPressed(row, col, Qt::LeftButton);
    emit gridClicked(row, col);
}

// The menu key stands for a press of the right button; the mouse has had its press already.
void GridView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard) {
        const QModelIndex index = currentIndex();
        pressPosition_ = viewport()->mapToGlobal(visualRect(index).bottomLeft());
        emit gridPressed(index.isValid() ? index.row() + 1 : -1, index.column(), Qt::RightButton);
    }
    event->accept();
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
        applyWidths();
    }
}

}  // namespace guanchao
