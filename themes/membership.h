// Single memberships of stocks in themes, as they are joined and left one by one: table dzhzhuti.
// Failed statements raise StoreError.
#pragma once

#include <QDate>
#include <QString>

#include "store/connection.h"
#include "store/row_images.h"

namespace guanchao {

bool isMember(Connection& mainStore, const QString& dm, const QString& zhutiname);

// Attention and relevance are the store's defaults; the time of joining is the day at 00:00:00.
void joinTheme(Connection& mainStore, const QString& zhutiname, const QString& dm,
               const QString& jc, QDate day);

void leaveTheme(Connection& mainStore, const QString& zhutiname, const QString& dm);

// For an edit of it.
RowScope membershipOf(const QString& zhutiname, const QString& dm);

}  // namespace guanchao
