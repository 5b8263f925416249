// 导入新闻和商品: merges an exported heat store into the program's own. Raises StoreError; the
// tables before the failure stay merged.
#pragma once

#include "exchange/table_merge.h"

namespace guanchao {

QCoro::Task<> importNews(const Stores& stores, Dialogs& dialogs, ExchangeRun& run,
                         std::stop_token stop);

}  // namespace guanchao
