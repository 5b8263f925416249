// Which stocks belong to which themes, from dzhzhuti of the first history database, both numbered
// from 0. A pair that stands there twice counts twice, as in a statement that joins the table.
#pragma once

#include <QString>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "store/connection.h"

namespace guanchao {

// Texts with the numbers 0, 1, … in the order of their coming.
class NumberedTexts {
public:
    // A new one for a new text.
    std::int32_t numberOf(std::string_view text);
    // -1 for one that has not come.
    std::int32_t find(std::string_view text) const;
    const std::string& text(std::int32_t number) const {
        return texts_[static_cast<size_t>(number)];
    }
    size_t size() const { return texts_.size(); }

private:
    struct Hash {
        using is_transparent = void;
        size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };
    std::unordered_map<std::string, std::int32_t, Hash, std::equal_to<>> numbers_;
    std::vector<std::string> texts_;
};

class Memberships {
public:
    // Raises StoreError. A row without a code is left out.
    explicit Memberships(Connection& firstHistory);

    size_t stockCount() const { return stocks_.size(); }
    // Also of a stock without a theme, which gets a number here.
    std::int32_t stockOf(std::string_view dm) { return stocks_.numberOf(dm); }
    QString dm(std::int32_t stock) const;

    size_t themeCount() const { return themes_.size(); }
    QString zhutiname(std::int32_t theme) const;
    // Where the theme stands among all by the bytes of their names, a null in front.
    std::int32_t placeByName(std::int32_t theme) const {
        return places_[static_cast<size_t>(theme)];
    }

    // In the order of the table; empty for what has none.
    std::span<const std::int32_t> stocksOf(const QString& zhutiname) const;
    std::span<const std::int32_t> stocksOf(std::int32_t theme) const;
    std::span<const std::int32_t> themesOf(std::int32_t stock) const;

    size_t bytes() const;

private:
    NumberedTexts themes_;
    NumberedTexts stocks_;
    std::vector<std::vector<std::int32_t>> stocksOfThemes_;
    std::vector<std::vector<std::int32_t>> themesOfStocks_;
    std::vector<std::int32_t> places_;
};

}  // namespace guanchao
