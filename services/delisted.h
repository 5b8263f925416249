// 退市: the codes of the code table that are no longer listed. They stay in it, are asked for no
// quotes, and show 已退市. Table tuishi of the main store; a store of an earlier program gets it
// with the first mark. Failed statements raise StoreError.
#pragma once

#include <QString>

#include "store/connection.h"

namespace guanchao {

inline const QString delistedWord = QStringLiteral("已退市");

// For `dm in …` and `dm not in …`: a list of the marked codes as they stand in dmb.
QString delistedCodes(Connection& mainStore);

// What the tables of stocks show for the time of the quote, from dmb under the name dmb1.
QString quoteTimeOrDelisted(Connection& mainStore);

// The stock has no gain from then on, so that its last one doesn't move its themes for ever.
void markDelisted(Connection& mainStore, const QString& dm, const QString& now);
void unmarkDelisted(Connection& mainStore, const QString& dm);

}  // namespace guanchao
