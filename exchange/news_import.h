// 导入新闻和商品: merges an exported heat store into the program's own. Raises StoreError; the
// tables before the failure stay merged.
#pragma once

#include "exchange/table_merge.h"

namespace guanchao {

void importNews(const Stores& stores, Dialogs& dialogs, ExchangeRun& run);

}  // namespace guanchao
