// The model behind every list of the program: a table of values with a header row, a current cell,
// widths, alignments and colours. Row 0 is the header, column 0 the row number. Widths are in
// twips, 1440 to the inch. A position outside the table raises std::out_of_range.
#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

#include "grid/colours.h"

namespace guanchao {

// How the text lies in its cell.
enum class CellAlignment : std::uint8_t { general, centre, right };  // general: numbers right

// The font of a column's data cells; 0 points stand for the font of the whole grid. Where the
// family is missing, the grid's own takes its place.
struct ColumnFont {
    QString family;
    int points = 0;

    bool operator==(const ColumnFont&) const = default;
};

class ResultGrid : public QAbstractTableModel {
    Q_OBJECT

public:
    // The cell's Colour of text and of ground, none where it has no own.
    enum Role { ColourRole = Qt::UserRole, BackColourRole };

    explicit ResultGrid(QObject* parent = nullptr);

    int rows() const { return rows_; }
    int cols() const { return cols_; }
    // The cells that stay keep their content.
    void setRows(int rows);
    void setCols(int cols);

    int row() const { return row_; }
    int col() const { return col_; }
    int rowSel() const { return rowSel_; }
    int colSel() const { return colSel_; }
    // Setting the current cell ends the selection there too.
    void setRow(int row);
    void setCol(int col);

    QString text() const { return textMatrix(row_, col_); }
    void setText(const QString& text) { setTextMatrix(row_, col_, text); }
    QString textMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, const QString& text);
    void setInteger(int row, int col, qint64 value);
    // Shown with two decimals, at the right; the cell holds the number that it shows.
    void setReal(int row, int col, double value);

    // There are at least so many: shown as "≥300". Until the cell is set anew.
    void setLowerBound(int row, int col);

    // What the cell shows if it reads as a number; of a lower bound the number.
    std::optional<double> number(int row, int col) const;
    // The length of the cell's text; for a number it is told without writing it.
    qsizetype textLength(int row, int col) const;

    void setAlignment(int row, int col, CellAlignment alignment);
    Colour cellForeColor(int row, int col) const;
    void setCellForeColor(int row, int col, Colour colour);
    void setCellBackColor(int row, int col, Colour colour);
    void clearCellBackColor(int row, int col);

    static constexpr int standardWidth = 960;
    int colWidth(int col) const;
    void setColWidth(int col, int twips);
    // Of the first columns, in their order.
    void setColWidths(const QList<int>& twips);

    const ColumnFont& colFont(int col) const { return fonts_.at(static_cast<size_t>(col)); }
    void setColFont(int col, const ColumnFont& font);

    // Empties all cells and takes their looks away; counts, widths and column fonts stay.
    void clear();

    // The first rows of another grid, the header among them, with its widths, in the place of this
    // table.
    void copyRows(const ResultGrid& other, int rows);
    // Changes places with the whole table of another grid, which may have been made in a worker.
    void swapTable(ResultGrid& other);

    // Puts the data rows into this order and numbers them anew; the marked row moves with its
    // cells. `rows` has each of them once.
    void orderRows(const std::vector<int>& rows);

    // 标记: marks the whole row, from its first to its last cell, as the chosen one.
    void biaoji(int row);
    // The row that is marked as a whole, 0 if none is.
    int markedRow() const;
    void unmark();
    // The columns that tell which item a row is about: after a fill its row is marked again.
    void setKeyColumns(const QList<int>& cols) { keyColumns_ = cols; }

    // What is told of an item beside its cells, by the text of its first key column: under the
    // pointer there and to assistive tools. Fills leave it as it is.
    void setItemNotes(QHash<QString, QString> notes) { itemNotes_ = std::move(notes); }

    // Which item the row is about, by its key columns; empty if it is about none.
    QStringList keyOf(int row) const { return keyIn(*this, row); }
    // The one column into whose cells the user writes; none at first.
    void setEditableColumn(int col) { editableColumn_ = col; }

    // True in and after a fill that shows a list anew that the grid held before.
    bool isRefill() const { return refill_; }

    const QString& toolTipText() const { return toolTipText_; }
    void setToolTipText(const QString& text);

    // True if the grid holds a table and `row` is one of its rows below the header.
    bool isDataRow(int row) const { return row > 0 && cols_ > 2 && rows_ > 1; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

signals:
    // The user has written another text into a cell, which holds what it held until a fill.
    void written(int row, int col, const QString& text);
    void colWidthsChanged();
    // A fill of the same list begins.
    void refillBegins();
    // All cells of a fill stand; its rows can still be put into another order.
    void fillEnds();
    // Views show what a fill has changed.
    void filled();
    void rowMarked();
    void toolTipTextChanged(const QString& text);

private:
    friend class GridFill;

    enum class Content : std::uint8_t { text, integer, real };

    // Packed: large results have millions of them.
    struct Cell {
        QString text;
        double number = 0;
        Colour colour : 24 = 0;
        bool coloured : 1 = false;
        CellAlignment alignment : 2 = CellAlignment::general;
        Content content : 2 = Content::text;
        Colour backColour : 24 = 0;
        bool backColoured : 1 = false;
        bool isLowerBound : 1 = false;

        bool operator==(const Cell&) const = default;
    };

    // What a list that is filled anew held before, as it was displayed.
    struct Former {
        int rows;
        int cols;
        std::vector<Cell> cells;
        std::vector<int> order;
        std::vector<ColumnFont> fonts;

        const Cell& cell(int row, int col) const;
    };

    static QString textOf(const Cell& cell);
    const Cell& cell(int row, int col) const { return cells_[position(row, col)]; }
    Cell& cell(int row, int col) { return cells_[position(row, col)]; }
    size_t position(int row, int col) const;
    void resize(int rows, int cols);
    void settleOrder();
    void cellChanged(int row, int col);
    QString spokenText(int row, int col) const;
    void widthsChanged();
    void movePersistentIndexes(const std::vector<int>& newRows);
    void beginFill(bool isRefill);
    void endFill();
    void showFill();
    bool hasLooksOf(const Former& former) const;
    bool hasItemsOf(const Former& former) const;
    std::vector<int> newRowsOf(const Former& former) const;
    void showChangedCells(const Former& former);
    template <typename Table>
    QStringList keyIn(const Table& table, int row) const;
    QString itemNote(int row, int col) const;
    QVariant toolTip(int row, int col) const;
    void mark(int row);
    void markKey();

    int rows_ = 1;
    int cols_ = 1;
    std::vector<Cell> cells_;
    std::vector<int> order_;  // display row -> row of cells_
    std::vector<int> widths_;
    std::vector<ColumnFont> fonts_;
    int row_ = 0;
    int col_ = 0;
    int rowSel_ = 0;
    int colSel_ = 0;
    int fills_ = 0;  // one within the other
    bool refill_ = false;
    std::optional<Former> former_;
    QList<int> keyColumns_ = {1};
    QStringList markedKey_;  // as a fill began
    QHash<QString, QString> itemNotes_;
    int editableColumn_ = -1;
    QString toolTipText_;
};

// A fill of a grid: while it lives, views keep what they show, and no events may happen; in its end
// they show all changes at once. The item whose row was marked is marked where it stands then. Of a
// list that holds the same items as before only the cells that have changed are painted. In the
// same list rows that are selected stay so wherever they have moved.
class GridFill {
public:
    // What it puts there: another list, whose rows stand as they were found, or the one that is
    // there as it is now, whose rows keep the order that the user has chosen.
    enum class Rows : std::uint8_t { ofAnotherList, ofTheSameList };

    explicit GridFill(ResultGrid& grid, Rows rows = Rows::ofAnotherList) : grid_(grid) {
        grid_.beginFill(rows == Rows::ofTheSameList);
    }
    // A view that can't show its rows ends the program: there is no half of a fill.
    ~GridFill() { grid_.endFill(); }  // NOLINT(bugprone-exception-escape)
    Q_DISABLE_COPY_MOVE(GridFill)

private:
    ResultGrid& grid_;
};

// Red or green by the sign of the number in the cell.
Colour signColour(const ResultGrid& grid, int row, int col);

}  // namespace guanchao
