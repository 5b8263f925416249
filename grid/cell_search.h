// 在表中查找: the next cell of a grid that holds a text.
#pragma once

#include <QList>
#include <QString>
#include <optional>

#include "grid/result_grid.h"

namespace guanchao {

struct CellPlace {
    int row = 0;
    int col = 0;

    friend bool operator==(const CellPlace&, const CellPlace&) = default;
};

enum class SearchWay : std::uint8_t { forward, backward };

// Goes over the rows, and in each over `cols` in their order, from behind `from` on, round the end
// of the grid, up to `from` itself. Large and small letters are the same. Nothing if no cell holds
// the text, or it is empty.
std::optional<CellPlace> findCell(const ResultGrid& grid, const QList<int>& cols,
                                  const QString& text, CellPlace from, SearchWay way);

}  // namespace guanchao
