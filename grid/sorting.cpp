#include "grid/sorting.h"

#include <QCollator>
#include <algorithm>
#include <numeric>
#include <optional>

#include "base/values.h"
#include "grid/trapped.h"

namespace guanchao {

namespace {

// A cell parsed once: a number, or else a text with its place in the collation.
struct GenericKey {
    bool isNumber = false;
    double number = 0;
    std::optional<QCollatorSortKey> text;
};

std::vector<GenericKey> genericKeys(const std::vector<QStringView>& keys) {
    const QCollator collator(QLocale(QLocale::Chinese, QLocale::China));
    std::vector<GenericKey> parsed;
    parsed.reserve(keys.size());
    for (const QStringView key : keys) {
        if (readsAsNumber(key)) {
            parsed.push_back({true, numericPrefix(key), std::nullopt});
        } else {
            parsed.push_back({false, 0, collator.sortKey(key.toString())});
        }
    }
    return parsed;
}

bool before(const GenericKey& left, const GenericKey& right) {
    if (left.isNumber != right.isNumber) {
        return left.isNumber;
    }
    return left.isNumber ? left.number < right.number : left.text->compare(*right.text) < 0;
}

template <typename Before>
void sortIndexes(std::vector<int>& order, bool ascending, Before isBefore) {
    std::stable_sort(order.begin(), order.end(), [&](int left, int right) {
        const auto a = static_cast<size_t>(left);
        const auto b = static_cast<size_t>(right);
        return ascending ? isBefore(a, b) : isBefore(b, a);
    });
}

}  // namespace

std::vector<int> sortedOrder(const std::vector<QStringView>& keys, SortCode code) {
    std::vector<int> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    if (code == SortCode::genericAscending || code == SortCode::genericDescending) {
        const std::vector<GenericKey> parsed = genericKeys(keys);
        sortIndexes(order, code == SortCode::genericAscending,
                    [&](size_t a, size_t b) { return before(parsed[a], parsed[b]); });
    } else if (code != SortCode::none) {
        sortIndexes(order, code == SortCode::textAscending, [&](size_t a, size_t b) {
            return keys[a].compare(keys[b], Qt::CaseInsensitive) < 0;
        });
    }
    return order;
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
    grid.setRedraw(false);
    grid.setCol(col);
    grid.sortRows(last);
    writeRowNumbers(grid);
    grid.setRedraw(true);
}

void sortOnHeaderClick(ResultGrid& grid, int row, int col, const QStringList& dateWords,
                       SortCode& last) {
    trapped([&] {
        if (row == 0) {
            sortByHeader(grid, col, dateWords, last);
        }
    });
}

void writeRowNumbers(ResultGrid& grid) {
    for (int row = 1; row < grid.rows(); ++row) {
        grid.setTextMatrix(row, 0, QString::number(row));
    }
}

}  // namespace guanchao
