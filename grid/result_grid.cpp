#include "grid/result_grid.h"

#include <cmath>
#include <numeric>
#include <stdexcept>

#include "base/values.h"

namespace guanchao {

namespace {

// Whole numbers up to here are exact as a double.
constexpr qint64 largestExact = qint64(1) << 53;

size_t cellCount(int rows, int cols) {
    return static_cast<size_t>(rows) * static_cast<size_t>(cols);
}

qsizetype digitsOf(double number) {
    qsizetype digits = 1;
    double bound = 10;
    while (number >= bound) {
        bound *= 10;
        ++digits;
    }
    return digits;
}

}  // namespace

ResultGrid::ResultGrid(QObject* parent)
    : QAbstractTableModel(parent), cells_(1), order_(1), widths_(1, standardWidth), fonts_(1) {}

void ResultGrid::setRows(int rows) {
    resize(rows, cols_);
}

void ResultGrid::setCols(int cols) {
    resize(rows_, cols);
}

void ResultGrid::resize(int rows, int cols) {
    if (rows < 1 || cols < 1) {
        throw std::out_of_range("a grid has at least one row and one column");
    }
    if (rows == rows_ && cols == cols_) {
        return;
    }
    const GridFill fill(*this);
    settleOrder();
    if (cols != cols_) {
        std::vector<Cell> cells(cellCount(rows, cols));
        for (int row = 0; row < std::min(rows, rows_); ++row) {
            for (int col = 0; col < std::min(cols, cols_); ++col) {
                cells[cellCount(row, cols) + static_cast<size_t>(col)] = std::move(cell(row, col));
            }
        }
        cells_ = std::move(cells);
        widths_.resize(static_cast<size_t>(cols), standardWidth);
        fonts_.resize(static_cast<size_t>(cols));
    }
    rows_ = rows;
    cols_ = cols;
    cells_.resize(cellCount(rows, cols));
    order_.resize(static_cast<size_t>(rows));
    std::iota(order_.begin(), order_.end(), 0);
    row_ = rowSel_ = std::min(row_, rows - 1);
    col_ = colSel_ = std::min(col_, cols - 1);
}

// Lays the rows in memory as they are displayed, so that rows can be cut off or added at the end.
void ResultGrid::settleOrder() {
    if (std::is_sorted(order_.begin(), order_.end())) {
        return;
    }
    std::vector<Cell> cells;
    cells.reserve(cells_.size());
    for (int row = 0; row < rows_; ++row) {
        for (int col = 0; col < cols_; ++col) {
            cells.push_back(std::move(cell(row, col)));
        }
    }
    cells_ = std::move(cells);
    std::iota(order_.begin(), order_.end(), 0);
}

size_t ResultGrid::position(int row, int col) const {
    if (row < 0 || row >= rows_ || col < 0 || col >= cols_) {
        throw std::out_of_range("no such cell in the grid");
    }
    return cellCount(order_[static_cast<size_t>(row)], cols_) + static_cast<size_t>(col);
}

void ResultGrid::setRow(int row) {
    position(row, col_);
    row_ = rowSel_ = row;
    colSel_ = col_;
}

void ResultGrid::setCol(int col) {
    position(row_, col);
    col_ = colSel_ = col;
    rowSel_ = row_;
}

QString ResultGrid::textMatrix(int row, int col) const {
    return textOf(cell(row, col));
}

QString ResultGrid::textOf(const Cell& cell) {
    switch (cell.content) {
        case Content::integer:
            return (cell.isLowerBound ? QStringLiteral("≥") : QString()) +
                   QString::number(static_cast<qint64>(cell.number));
        case Content::real:
            return twoDecimals(cell.number);
        case Content::text:
            return cell.text;
    }
    return {};
}

void ResultGrid::setTextMatrix(int row, int col, const QString& text) {
    Cell& it = cell(row, col);
    it.content = Content::text;
    it.text = text;
    cellChanged(row, col);
}

void ResultGrid::setInteger(int row, int col, qint64 value) {
    if (value < -largestExact || value > largestExact) {
        setTextMatrix(row, col, QString::number(value));
        return;
    }
    Cell& it = cell(row, col);
    it.content = Content::integer;
    it.number = static_cast<double>(value);
    it.isLowerBound = false;
    cellChanged(row, col);
}

void ResultGrid::setLowerBound(int row, int col) {
    cell(row, col).isLowerBound = true;
    cellChanged(row, col);
}

void ResultGrid::setReal(int row, int col, double value) {
    Cell& it = cell(row, col);
    it.content = Content::real;
    it.number = toTwoDecimals(value);
    it.alignment = CellAlignment::right;
    cellChanged(row, col);
}

std::optional<double> ResultGrid::number(int row, int col) const {
    const Cell& it = cell(row, col);
    if (it.content != Content::text) {
        return it.number;
    }
    return readsAsNumber(it.text) ? std::optional(numericPrefix(it.text)) : std::nullopt;
}

qsizetype ResultGrid::textLength(int row, int col) const {
    const Cell& it = cell(row, col);
    if (it.content == Content::text) {
        return it.text.size();
    }
    constexpr qsizetype decimals = 3;  // with their point
    return digitsOf(std::abs(it.number)) + (it.number < 0 ? 1 : 0) + (it.isLowerBound ? 1 : 0) +
           (it.content == Content::real ? decimals : 0);
}

void ResultGrid::setAlignment(int row, int col, CellAlignment alignment) {
    cell(row, col).alignment = alignment;
    cellChanged(row, col);
}

Colour ResultGrid::cellForeColor(int row, int col) const {
    const Cell& it = cell(row, col);
    return it.coloured ? it.colour : textColour;
}

void ResultGrid::setCellForeColor(int row, int col, Colour colour) {
    Cell& it = cell(row, col);
    it.coloured = true;
    it.colour = colour & 0xFFFFFF;
    cellChanged(row, col);
}

void ResultGrid::setCellBackColor(int row, int col, Colour colour) {
    Cell& it = cell(row, col);
    it.backColoured = true;
    it.backColour = colour & 0xFFFFFF;
    cellChanged(row, col);
}

void ResultGrid::clearCellBackColor(int row, int col) {
    cell(row, col).backColoured = false;
    cellChanged(row, col);
}

// A fill shows everything in its end.
void ResultGrid::cellChanged(int row, int col) {
    if (fills_ > 0) {
        return;
    }
    if (row == 0) {
        emit headerDataChanged(Qt::Horizontal, col, col);
    } else {
        emit dataChanged(index(row - 1, col), index(row - 1, col));
    }
}

int ResultGrid::colWidth(int col) const {
    return widths_.at(static_cast<size_t>(col));
}

void ResultGrid::setColWidth(int col, int twips) {
    widths_.at(static_cast<size_t>(col)) = twips;
    widthsChanged();
}

void ResultGrid::setColWidths(const QList<int>& twips) {
    size_t col = 0;
    for (const int width : twips) {
        widths_.at(col++) = width;
    }
    widthsChanged();
}

void ResultGrid::widthsChanged() {
    if (fills_ == 0) {
        emit colWidthsChanged();
    }
}

void ResultGrid::setColFont(int col, const ColumnFont& font) {
    const GridFill fill(*this);
    fonts_.at(static_cast<size_t>(col)) = font;
}

void ResultGrid::clear() {
    const GridFill fill(*this);
    std::fill(cells_.begin(), cells_.end(), Cell());
}

void ResultGrid::copyRows(const ResultGrid& other, int rows) {
    const GridFill fill(*this);
    setCols(other.cols_);
    setRows(rows);
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols_; ++col) {
            cell(row, col) = other.cell(row, col);
        }
    }
    widths_ = other.widths_;
    fonts_ = other.fonts_;
}

void ResultGrid::swapTable(ResultGrid& other) {
    const GridFill fill(*this);
    std::swap(rows_, other.rows_);
    std::swap(cols_, other.cols_);
    std::swap(cells_, other.cells_);
    std::swap(order_, other.order_);
    std::swap(widths_, other.widths_);
    std::swap(fonts_, other.fonts_);
    std::swap(row_, other.row_);
    std::swap(col_, other.col_);
    std::swap(rowSel_, other.rowSel_);
    std::swap(colSel_, other.colSel_);
}

void ResultGrid::orderRows(const std::vector<int>& rows) {
    const bool shows = fills_ == 0;
    if (shows) {
        emit layoutAboutToBeChanged({}, VerticalSortHint);
    }
    std::vector<int> order = {0};
    order.reserve(order_.size());
    std::vector<int> newRows(order_.size());
    for (const int row : rows) {
        newRows[static_cast<size_t>(row)] = static_cast<int>(order.size());
        order.push_back(order_[static_cast<size_t>(row)]);
    }
    order_ = std::move(order);
    row_ = newRows[static_cast<size_t>(row_)];
    rowSel_ = newRows[static_cast<size_t>(rowSel_)];
    for (int row = 1; row < rows_; ++row) {
        Cell& number = cell(row, 0);
        number.content = Content::integer;
        number.number = row;
    }
    if (shows) {
        movePersistentIndexes(newRows);
        emit layoutChanged({}, VerticalSortHint);
    }
}

void ResultGrid::movePersistentIndexes(const std::vector<int>& newRows) {
    const QModelIndexList former = persistentIndexList();
    QModelIndexList moved;
    for (const QModelIndex& it : former) {
        moved << index(newRows[static_cast<size_t>(it.row()) + 1] - 1, it.column());
    }
    changePersistentIndexList(former, moved);
}

void ResultGrid::biaoji(int row) {
    mark(row);
    emit rowMarked();
}

void ResultGrid::mark(int row) {
    setRow(row);
    col_ = 0;
    colSel_ = cols_ - 1;
}

int ResultGrid::markedRow() const {
    const bool whole = row_ == rowSel_ && col_ == 0 && colSel_ == cols_ - 1 && cols_ > 1;
    return whole ? row_ : 0;
}

void ResultGrid::unmark() {
    setRow(0);
    emit rowMarked();
}

void ResultGrid::setToolTipText(const QString& text) {
    toolTipText_ = text;
    emit toolTipTextChanged(text);
}

Colour signColour(const ResultGrid& grid, int row, int col) {
    const std::optional<double> number = grid.number(row, col);
    if (number) {
        return *number < 0 ? fallColour : riseColour;
    }
    return signColour(grid.textMatrix(row, col));
}

}  // namespace guanchao
