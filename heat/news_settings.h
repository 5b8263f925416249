// The settings of the news rankings, which the collector reads: table canshu of the heat store, one
// row. A change is written at once. Failed statements raise StoreError.
#pragma once

#include <QString>
#include <optional>

#include "store/stores.h"

namespace guanchao {

// The custom days where the typed ones are refused.
constexpr int defaultCustomDays = 7;

// The days of the custom period as typed; nothing if they are not within 2 to 1000.
std::optional<int> customDays(const QString& typed);

class NewsSettings {
public:
    struct Stored {
        bool customOn = false;
        QString days;
        QString searchTemplate;  // the search page, with tihuandm where the words go
    };

    explicit NewsSettings(const Stores& stores) : stores_(stores) {}

    // Nothing if the store has no row.
    std::optional<Stored> read() const;

    void writeCustom(bool on, int days) const;
    // Only themes or companies of more attention are collected; a text without a number is 0.
    void writeAttention(const QString& typed) const;

private:
    const Stores& stores_;
};

}  // namespace guanchao
