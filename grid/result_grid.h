// The model behind every list of the program: a table of texts with a header row, a current cell,
// widths, alignments and colours. Row 0 is the header, column 0 the row number. Widths are in
// twips, 1440 to the inch. A position outside the table raises std::out_of_range.
#pragma once

#include <QAbstractTableModel>
#include <QString>
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
};

// Sorting by the column of the current cell.
enum class SortCode : std::uint8_t {
    none = 0,
    genericAscending = 1,
    genericDescending = 2,
    textAscending = 5,
    textDescending = 6
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
    void setRowSel(int row) { rowSel_ = row; }
    void setColSel(int col) { colSel_ = col; }

    const QString& text() const { return textMatrix(row_, col_); }
    void setText(const QString& text) { setTextMatrix(row_, col_, text); }
    const QString& textMatrix(int row, int col) const { return cell(row, col).text; }
    void setTextMatrix(int row, int col, const QString& text);

    CellAlignment cellAlignment() const { return cell(row_, col_).alignment; }
    void setCellAlignment(CellAlignment alignment) { setAlignment(row_, col_, alignment); }
    void setAlignment(int row, int col, CellAlignment alignment);
    Colour cellForeColor(int row, int col) const;
    void setCellForeColor(int row, int col, Colour colour);
    void setCellBackColor(int row, int col, Colour colour);

    static constexpr int standardWidth = 960;
    int colWidth(int col) const;
    void setColWidth(int col, int twips);
    // Of the first columns, in their order.
    void setColWidths(const QList<int>& twips);

    const ColumnFont& colFont(int col) const { return fonts_.at(static_cast<size_t>(col)); }
    void setColFont(int col, const ColumnFont& font);

    bool redraw() const { return redraw_; }
    // While off, views keep what they show; switching it on shows all changes at once.
    void setRedraw(bool on);

    // Makes the row the selection, from its first to its last cell.
    void selectRow(int row);

    // Empties all cells and takes their looks away; counts, widths and column fonts stay.
    void clear();

    // Sorts the data rows by the current column; rows that compare equal keep their order.
    void sortRows(SortCode code);

    const QString& toolTipText() const { return toolTipText_; }
    void setToolTipText(const QString& text);

    // True if the grid holds a table and `row` is one of its rows below the header.
    bool isDataRow(int row) const { return row > 0 && cols_ > 2 && rows_ > 1; }

    // The row that is marked as a whole, 0 if none is.
    int markedRow() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void colWidthsChanged();
    void rowSelected(int row);
    void toolTipTextChanged(const QString& text);

private:
    // Packed: large results have millions of them.
    struct Cell {
        QString text;
        Colour colour : 24 = 0;
        bool coloured : 1 = false;
        CellAlignment alignment : 2 = CellAlignment::general;
        Colour backColour : 24 = 0;
        bool backColoured : 1 = false;
    };

    const Cell& cell(int row, int col) const { return cells_[position(row, col)]; }
    Cell& cell(int row, int col) { return cells_[position(row, col)]; }
    size_t position(int row, int col) const;
    void resize(int rows, int cols);
    void settleOrder();
    void widthsChanged();
    void changed();
    void publish();

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
    bool redraw_ = true;
    bool stale_ = false;  // a change that views have not seen yet
    int shownRows_ = 1;
    int shownCols_ = 1;
    QString toolTipText_;
};

// 标记: marks the whole row as the selected one.
void biaoji(ResultGrid& grid, int row);

}  // namespace guanchao
