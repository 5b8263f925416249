#include "grid/cell_search.h"

#include <algorithm>

namespace guanchao {

namespace {

// False for what no number's text has in it.
bool canBeOfNumber(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) {
        return c.isDigit() || c.isSpace() || QStringView(u"+-.eE≥").contains(c);
    });
}

}  // namespace

std::optional<CellPlace> findCell(const ResultGrid& grid, const QList<int>& cols,
                                  const QString& text, CellPlace from, SearchWay way) {
    const qint64 width = cols.size();
    const qint64 count = (grid.rows() - 1) * width;
    if (text.isEmpty() || count == 0) {
        return std::nullopt;
    }
    const bool isOfText = !canBeOfNumber(text);
    // The cells are numbered in the order of the search.
    const qint64 step = way == SearchWay::forward ? 1 : count - 1;
    qint64 at = std::max(from.row - 1, 0) * width + std::max(cols.indexOf(from.col), qsizetype(0));
    for (qint64 seen = 0; seen < count; ++seen) {
        at = (at + step) % count;
        const CellPlace place{static_cast<int>(at / width) + 1, cols[at % width]};
        // Numbers are written out only where they can hold the text.
        if (grid.textLength(place.row, place.col) >= text.size() &&
            !(isOfText && grid.number(place.row, place.col)) &&
            grid.textMatrix(place.row, place.col).contains(text, Qt::CaseInsensitive)) {
            return place;
        }
    }
    return std::nullopt;
}

}  // namespace guanchao
