// 导入文章: merges an exported article store into the program's own. An article is present if
// category, subcategory and title agree. Raises StoreError; nothing of the run then remains.
#pragma once

#include "exchange/table_merge.h"

namespace guanchao {

QCoro::Task<> importArticles(const Stores& stores, Dialogs& dialogs, ExchangeRun& run,
                             std::stop_token stop);

}  // namespace guanchao
