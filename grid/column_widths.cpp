#include "grid/column_widths.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <algorithm>

#include "grid/amounts.h"
#include "grid/twips.h"

namespace guanchao {

namespace {

constexpr int cellPadding = 8;

// yyyy-MM-dd hh:mm:ss
bool isMoment(const QString& text) {
    return text.size() == 19 && text[4] == u'-' && text[10] == u' ' && text[16] == u':';
}

// A number, a code or a moment of which the end is missing reads as another one. Columns with a
// font of their own hold codes.
bool isKey(const ResultGrid& grid, int row, int col) {
    return grid.colFont(col).points > 0 || grid.number(row, col) ||
           isMoment(grid.textMatrix(row, col));
}

template <typename Counts>
QString longest(const ResultGrid& grid, int col, Counts counts) {
    int longest = 0;
    qsizetype length = 0;
    for (int row = 1; row < grid.rows(); ++row) {
        if (grid.textLength(row, col) > length && counts(row)) {
            longest = row;
            length = grid.textLength(row, col);
        }
    }
    return longest > 0 ? grid.textMatrix(longest, col) : QString();
}

QString longestKey(const ResultGrid& grid, int col) {
    return longest(grid, col, [&](int row) { return isKey(grid, row, col); });
}

// Of the column's amounts, those that are painted as they are.
QString longestSmallAmount(const ResultGrid& grid, int col) {
    return longest(grid, col, [&](int row) {
        const std::optional<double> number = grid.number(row, col);
        return number && !hasShortForm(*number);
    });
}

QString longestText(const ResultGrid& grid, int col) {
    return longest(grid, col, [](int) { return true; });
}

}  // namespace

QFont fontOf(const ResultGrid& grid, int col, QFont font) {
    const ColumnFont& own = grid.colFont(col);
    if (own.points > 0) {
        font.setFamilies(QStringList{own.family} + font.families());
        font.setPointSize(own.points);
    }
    return font;
}

void ColumnWidths::apply(const ResultGrid& grid) {
    const QScopedValueRollback applying(applying_, true);
    const int last = lastShown(grid);
    for (int col = 0; col < grid.cols(); ++col) {
        if (col != last) {
            view_.setColumnWidth(col, widthOf(grid, col));
        }
    }
    textsOfLast_ = isAmount(grid.textMatrix(0, last))
                       ? widthOfKeys(grid, last)
                       : widthOfText(grid, last, longestText(grid, last));
    widenLast(grid);
}

// A text is cut at the edge of the view, not before it.
void ColumnWidths::widenLast(const ResultGrid& grid) {
    const QScopedValueRollback applying(applying_, true);
    const int last = lastShown(grid);
    if (drawn_.contains(grid.textMatrix(0, last))) {
        return;
    }
    const int others = view_.horizontalHeader()->length() - view_.columnWidth(last);
    const int room = view_.viewport()->width() - others;
    const int wanted = fillsView_ && last > 0 ? room : std::min(textsOfLast_, room);
    view_.setColumnWidth(last, std::max(widthOf(grid, last), wanted));
}

int ColumnWidths::lastShown(const ResultGrid& grid) const {
    int last = grid.cols() - 1;
    while (last > 0 && view_.isColumnHidden(last)) {
        --last;
    }
    return last;
}

void ColumnWidths::sectionResized(const ResultGrid& grid, int col, int width) {
    if (!applying_) {
        drawn_[grid.textMatrix(0, col)] = width;
        widenLast(grid);
    }
}

QStringList ColumnWidths::kept() const {
    QStringList widths;
    for (auto it = drawn_.begin(); it != drawn_.end(); ++it) {
        widths << it.key() + u'=' + QString::number(it.value());
    }
    widths.sort();
    return widths;
}

void ColumnWidths::setKept(const QStringList& widths) {
    for (const QString& it : widths) {
        const qsizetype sign = it.lastIndexOf(u'=');
        const int width = it.mid(sign + 1).toInt();
        if (sign >= 0 && width > 0) {
            drawn_[it.left(sign)] = width;
        }
    }
}

int ColumnWidths::widthOf(const ResultGrid& grid, int col) const {
    const auto drawn = drawn_.find(grid.textMatrix(0, col));
    if (drawn != drawn_.end()) {
        return *drawn;
    }
    return std::max(pixelsOf(grid.colWidth(col), view_), widthOfKeys(grid, col));
}

int ColumnWidths::widthOfKeys(const ResultGrid& grid, int col) const {
    if (isAmount(grid.textMatrix(0, col))) {
        return std::max(widthOfText(grid, col, widestShortAmount),
                        widthOfText(grid, col, longestSmallAmount(grid, col)));
    }
    return widthOfText(grid, col, longestKey(grid, col));
}

int ColumnWidths::widthOfText(const ResultGrid& grid, int col, const QString& text) const {
    const QFontMetrics metrics(fontOf(grid, col, view_.font()));
    const int digits = static_cast<int>(text.size()) * metrics.horizontalAdvance(u'0');
    return std::max(digits, metrics.horizontalAdvance(text)) + cellPadding;
}

}  // namespace guanchao
