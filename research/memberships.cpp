#include "research/memberships.h"

#include <algorithm>
#include <numeric>

#include "store/row_cursor.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// What stands for the name of a null: no text of a store holds it.
constexpr std::string_view nullName("\0", 1);

void add(std::vector<std::vector<std::int32_t>>& lists, std::int32_t of, std::int32_t number) {
    const auto place = static_cast<size_t>(of);
    if (place >= lists.size()) {
        lists.resize(place + 1);
    }
    lists[place].push_back(number);
}

std::span<const std::int32_t> listOf(const std::vector<std::vector<std::int32_t>>& lists,
                                     std::int32_t of) {
    const auto place = static_cast<size_t>(of);
    return of >= 0 && place < lists.size() ? std::span(lists[place])
                                           : std::span<const std::int32_t>();
}

size_t bytesOf(const std::vector<std::vector<std::int32_t>>& lists) {
    size_t sum = lists.capacity() * sizeof(std::vector<std::int32_t>);
    for (const auto& list : lists) {
        sum += list.capacity() * sizeof(std::int32_t);
    }
    return sum;
}

}  // namespace

std::int32_t NumberedTexts::numberOf(std::string_view text) {
    if (const std::int32_t known = find(text); known >= 0) {
        return known;
    }
    const auto number = static_cast<std::int32_t>(texts_.size());
    texts_.emplace_back(text);
    numbers_.emplace(texts_.back(), number);
    return number;
}

std::int32_t NumberedTexts::find(std::string_view text) const {
    const auto known = numbers_.find(text);
    return known == numbers_.end() ? -1 : known->second;
}

Memberships::Memberships(Connection& firstHistory) {
    RowCursor row(firstHistory, u"select zhutiname,dm from dzhzhuti order by rowid"_s);
    while (row.next()) {
        if (!row.isNull(1)) {
            const std::int32_t theme = themes_.numberOf(row.isNull(0) ? nullName : row.text(0));
            const std::int32_t stock = stocks_.numberOf(row.text(1));
            add(stocksOfThemes_, theme, stock);
            add(themesOfStocks_, stock, theme);
        }
    }
    std::vector<std::int32_t> themes(themes_.size());
    std::iota(themes.begin(), themes.end(), 0);
    const std::int32_t nameless = themes_.find(nullName);
    std::ranges::sort(themes, {}, [&](std::int32_t theme) {
        return std::pair(theme != nameless, std::string_view(themes_.text(theme)));
    });
    places_.resize(themes.size());
    for (size_t place = 0; place < themes.size(); ++place) {
        places_[static_cast<size_t>(themes[place])] = static_cast<std::int32_t>(place);
    }
}

QString Memberships::dm(std::int32_t stock) const {
    return QString::fromStdString(stocks_.text(stock));
}

QString Memberships::zhutiname(std::int32_t theme) const {
    const std::string& name = themes_.text(theme);
    return name == nullName ? QString() : QString::fromStdString(name);
}

std::span<const std::int32_t> Memberships::stocksOf(const QString& zhutiname) const {
    return stocksOf(themes_.find(zhutiname.toStdString()));
}

std::span<const std::int32_t> Memberships::stocksOf(std::int32_t theme) const {
    return listOf(stocksOfThemes_, theme);
}

std::span<const std::int32_t> Memberships::themesOf(std::int32_t stock) const {
    return listOf(themesOfStocks_, stock);
}

size_t Memberships::bytes() const {
    return bytesOf(stocksOfThemes_) + bytesOf(themesOfStocks_);
}

}  // namespace guanchao
