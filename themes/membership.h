// Single memberships of stocks in themes, as they are joined and left one by one: table dzhzhuti,
// names from the code table dmb. Failed statements raise StoreError.
#pragma once

#include <QDate>
#include <QString>
#include <optional>

#include "store/connection.h"

namespace guanchao {

bool isMember(Connection& mainStore, const QString& dm, const QString& zhutiname);

// The short name of the code table; nothing if the code is not in it.
std::optional<QString> shortName(Connection& mainStore, const QString& dm);

// Attention and relevance are the store's defaults; the time of joining is the day at 00:00:00.
void joinTheme(Connection& mainStore, const QString& zhutiname, const QString& dm,
               const QString& jc, QDate day);

void leaveTheme(Connection& mainStore, const QString& zhutiname, const QString& dm);

}  // namespace guanchao
