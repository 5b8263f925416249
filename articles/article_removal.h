// How an article goes: from the table wenzhang of the article store, in a transaction of its own.
// Failed statements raise StoreError.
#pragma once

#include "base/globals.h"
#include "store/connection.h"

namespace guanchao {

// If it was the current article, none is afterwards.
void removeArticle(Connection& store, qint32 id, Globals& globals);

}  // namespace guanchao
