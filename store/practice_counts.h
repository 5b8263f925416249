// Some days of internet counts for a practice folder, so that its rankings have something to show
// before a collector has run.
#pragma once

#include <QDateTime>
#include <QString>

namespace guanchao {

// Fills the heat store of `folder` from the lists in `dataFolder`, the last day being today's;
// nothing if the store has counts already. Raises StoreError or std::runtime_error.
void fillPracticeCounts(const QString& folder, const QString& dataFolder, const QDateTime& now);

}  // namespace guanchao
