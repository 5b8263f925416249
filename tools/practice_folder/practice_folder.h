// What a practice folder has beside its stores: pages that lead to the practice market, and some
// days of internet counts, so that the rankings have something to show before a collector has run.
#pragma once

#include <QDateTime>
#include <QString>

namespace guanchao {

// Leads the F10 pages and the search pages of `folder` to `host`, unless its user has chosen an
// address. Raises StoreError.
void leadPagesTo(const QString& folder, const QString& host);

// Fills the heat store of `folder` from the lists in `dataFolder`, the last day being today's;
// nothing if the store has counts already. Raises StoreError or std::runtime_error.
void fillPracticeCounts(const QString& folder, const QString& dataFolder, const QDateTime& now);

}  // namespace guanchao
