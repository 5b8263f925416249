// What a click on a header of a grid's view does: it sorts the rows, and an arrow tells by which
// column and which way they stand.
#pragma once

#include <QHeaderView>
#include <QStringList>
#include <memory>
#include <optional>

#include "grid/sorting.h"

namespace guanchao {

class HeaderSort {
public:
    explicit HeaderSort(QHeaderView& header) : header_(header) {}

    // Headers that hold one of the words are sorted as texts.
    void enable(const QStringList& dateWords);
    // The last order is one for all grids of a window.
    void shareOrder(const HeaderSort& other) { last_ = other.last_; }

    // Nothing where sorting isn't enabled.
    void sort(ResultGrid& grid, int col);
    // In the end of a fill: the rows of the same list are put into the order of the last sort
    // again, those of another stand as they were found.
    void followFill(ResultGrid& grid);

    // The header by which the rows stand; empty: as they were found.
    QString header() const { return shown_ ? shown_->header : QString(); }
    // The next fill stands as it is found.
    void forget();

    // How the rows stand, as "header code", for the next run; empty: as they were found.
    QString kept() const;
    // The first fill with this header is put into that order.
    void setKept(const QString& order) { kept_ = order; }

private:
    struct Sort {
        QString header;
        int col;
        SortCode code;
    };

    bool isSameList(const ResultGrid& grid) const;
    std::optional<Sort> keptIn(const ResultGrid& grid) const;
    void showArrow();

    QHeaderView& header_;
    bool enabled_ = false;
    QStringList dateWords_;

    QString kept_;               // of the last run
    std::optional<Sort> shown_;  // how the rows stand; nothing: as they were found
    std::shared_ptr<SortCode> last_ = std::make_shared<SortCode>(SortCode::none);
};

}  // namespace guanchao
