#include "grid/result_grid.h"

#include <numeric>
#include <stdexcept>

#include "base/values.h"
#include "grid/sorting.h"

namespace guanchao {

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
    settleOrder();
    if (cols != cols_) {
        std::vector<Cell> cells(static_cast<size_t>(rows) * static_cast<size_t>(cols));
        for (int row = 0; row < std::min(rows, rows_); ++row) {
            for (int col = 0; col < std::min(cols, cols_); ++col) {
                cells[static_cast<size_t>(row) * static_cast<size_t>(cols) +
                      static_cast<size_t>(col)] = std::move(cell(row, col));
            }
        }
        cells_ = std::move(cells);
        widths_.resize(static_cast<size_t>(cols), standardWidth);
        fonts_.resize(static_cast<size_t>(cols));
    }
    rows_ = rows;
    cols_ = cols;
    cells_.resize(static_cast<size_t>(rows) * static_cast<size_t>(cols));
    order_.resize(static_cast<size_t>(rows));
    std::iota(order_.begin(), order_.end(), 0);
    row_ = rowSel_ = std::min(row_, rows - 1);
    col_ = colSel_ = std::min(col_, cols - 1);
    changed();
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
    return static_cast<size_t>(order_[static_cast<size_t>(row)]) * static_cast<size_t>(cols_) +
           static_cast<size_t>(col);
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

void ResultGrid::setTextMatrix(int row, int col, const QString& text) {
    cell(row, col).text = text;
    changed();
}

void ResultGrid::setAlignment(int row, int col, CellAlignment alignment) {
    cell(row, col).alignment = alignment;
    changed();
}

Colour ResultGrid::cellForeColor(int row, int col) const {
    const Cell& it = cell(row, col);
    return it.coloured ? it.colour : textColour;
}

void ResultGrid::setCellForeColor(int row, int col, Colour colour) {
    Cell& it = cell(row, col);
    it.coloured = true;
    it.colour = colour & 0xFFFFFF;
    changed();
}

void ResultGrid::setCellBackColor(int row, int col, Colour colour) {
    Cell& it = cell(row, col);
    it.backColoured = true;
    it.backColour = colour & 0xFFFFFF;
    changed();
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
    if (redraw_) {
        emit colWidthsChanged();
    } else {
        stale_ = true;
    }
}

void ResultGrid::setColFont(int col, const ColumnFont& font) {
    fonts_.at(static_cast<size_t>(col)) = font;
    changed();
}

void ResultGrid::setRedraw(bool on) {
    redraw_ = on;
    if (on && stale_) {
        publish();
    }
}

void ResultGrid::changed() {
    stale_ = true;
    if (redraw_) {
        publish();
    }
}

void ResultGrid::publish() {
    beginResetModel();
    shownRows_ = rows_;
    shownCols_ = cols_;
    stale_ = false;
    endResetModel();
}

void ResultGrid::clear() {
    std::fill(cells_.begin(), cells_.end(), Cell());
    changed();
}

void ResultGrid::sortRows(SortCode code) {
    std::vector<QStringView> keys;
    keys.reserve(static_cast<size_t>(rows_) - 1);
    for (int row = 1; row < rows_; ++row) {
        keys.emplace_back(textMatrix(row, col_));
    }
    std::vector<int> order = {0};
    order.reserve(order_.size());
    for (const int at : sortedOrder(keys, code)) {
        order.push_back(order_[static_cast<size_t>(at) + 1]);
    }
    order_ = std::move(order);
    changed();
}

void ResultGrid::setToolTipText(const QString& text) {
    toolTipText_ = text;
    emit toolTipTextChanged(text);
}

int ResultGrid::markedRow() const {
    const bool whole = row_ == rowSel_ && col_ == 0 && colSel_ == cols_ - 1 && cols_ > 1;
    return whole ? row_ : 0;
}

int ResultGrid::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shownRows_ - 1;
}

int ResultGrid::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shownCols_;
}

QVariant ResultGrid::data(const QModelIndex& index, int role) const {
    if (index.row() + 1 >= rows_ || index.column() >= cols_) {
        return {};
    }
    const Cell& it = cell(index.row() + 1, index.column());
    switch (role) {
        case Qt::DisplayRole:
            return it.text;
        case Qt::TextAlignmentRole:
            if (it.alignment == CellAlignment::centre) {
                return QVariant(Qt::AlignCenter);
            }
            return QVariant(Qt::AlignVCenter |
                            (it.alignment == CellAlignment::right || readsAsNumber(it.text)
                                 ? Qt::AlignRight
                                 : Qt::AlignLeft));
        case ColourRole:
            return it.coloured ? QVariant(Colour(it.colour)) : QVariant();
        case BackColourRole:
            return it.backColoured ? QVariant(Colour(it.backColour)) : QVariant();
        default:
            return {};
    }
}

QVariant ResultGrid::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= cols_) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return cell(0, section).text;
    }
    return role == Qt::TextAlignmentRole ? QVariant(Qt::AlignCenter) : QVariant();
}

void ResultGrid::selectRow(int row) {
    setRow(row);
    setCol(0);
    setColSel(cols_ - 1);
    setRowSel(row);
    emit rowSelected(row);
}

void biaoji(ResultGrid& grid, int row) {
    grid.selectRow(row);
}

}  // namespace guanchao
