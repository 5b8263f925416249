// Whether stores are whole, and how much is in them.
#pragma once

#include <QString>

#include "store/stores.h"

namespace guanchao {

struct StoreCounts {
    qint64 themes = 0;
    qint64 memberships = 0;
    qint64 stocks = 0;
    qint64 articles = 0;
    qint64 monitors = 0;

    // 600 个主题，40000 条，5400 只股票，120 篇文章，3 个监控
    QString words() const;
};

// Raises StoreError if the store can't be opened by its key, or is damaged.
void requireWhole(const StoreFile& store);

// Of the main and the article store. Raises StoreError.
StoreCounts readCounts(const Stores& stores);

}  // namespace guanchao
