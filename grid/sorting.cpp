#include "grid/sorting.h"

#include <QCollator>
#include <algorithm>
#include <numeric>
#include <optional>

namespace guanchao {

namespace {

// A number, or else a text with its place in the collation.
struct GenericKey {
    std::optional<double> number;
    std::optional<QCollatorSortKey> text;
};

// Row 0, the header, has a key too, so that keys are found by their row.
std::vector<GenericKey> genericKeys(const ResultGrid& grid, int col) {
    const QCollator collator(QLocale(QLocale::Chinese, QLocale::China));
    std::vector<GenericKey> keys(static_cast<size_t>(grid.rows()));
    for (int row = 1; row < grid.rows(); ++row) {
        GenericKey& key = keys[static_cast<size_t>(row)];
        key.number = grid.number(row, col);
        if (!key.number) {
            key.text = collator.sortKey(grid.textMatrix(row, col));
        }
    }
    return keys;
}

bool before(const GenericKey& left, const GenericKey& right) {
    if (left.number.has_value() != right.number.has_value()) {
        return left.number.has_value();
    }
    return left.number ? *left.number < *right.number : left.text->compare(*right.text) < 0;
}

QStringList textKeys(const ResultGrid& grid, int col) {
    QStringList keys;
    keys.reserve(grid.rows());
    for (int row = 0; row < grid.rows(); ++row) {
        keys << grid.textMatrix(row, col);
    }
    return keys;
}

template <typename Keys, typename Before>
void sortByKeys(std::vector<int>& rows, bool ascending, const Keys& keys, Before isBefore) {
    std::stable_sort(rows.begin(), rows.end(), [&](int left, int right) {
        const auto& first = keys[static_cast<size_t>(ascending ? left : right)];
        const auto& second = keys[static_cast<size_t>(ascending ? right : left)];
        return isBefore(first, second);
    });
}

}  // namespace

bool isAscending(SortCode code) {
    return code == SortCode::genericAscending || code == SortCode::textAscending;
}

std::vector<int> sortedRows(const ResultGrid& grid, int col, SortCode code) {
    std::vector<int> rows(static_cast<size_t>(grid.rows()) - 1);
    std::iota(rows.begin(), rows.end(), 1);
    if (code == SortCode::genericAscending || code == SortCode::genericDescending) {
        sortByKeys(rows, isAscending(code), genericKeys(grid, col), before);
    } else if (code != SortCode::none) {
        sortByKeys(rows, isAscending(code), textKeys(grid, col),
                   [](const QString& left, const QString& right) {
                       return left.compare(right, Qt::CaseInsensitive) < 0;
                   });
    }
    return rows;
}

SortCode nextSortCode(const QString& header, const QStringList& dateWords, SortCode last) {
    if (std::any_of(dateWords.begin(), dateWords.end(),
                    [&](const QString& word) { return header.contains(word); })) {
        return last == SortCode::textAscending ? SortCode::textDescending : SortCode::textAscending;
    }
    return last == SortCode::genericAscending ? SortCode::genericDescending
                                              : SortCode::genericAscending;
}

void sortByHeader(ResultGrid& grid, int col, const QStringList& dateWords, SortCode& last) {
    last = nextSortCode(grid.textMatrix(0, col), dateWords, last);
    grid.orderRows(sortedRows(grid, col, last));
}

}  // namespace guanchao
