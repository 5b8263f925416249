// 导入文章: merges an exported article store into the program's own. An article is present if
// category, subcategory and title agree. Raises StoreError; nothing of the run then remains.
#pragma once

#include "exchange/exchange_run.h"
#include "platform/dialogs.h"
#include "store/stores.h"

namespace guanchao {

class ArticleImport {
public:
    ArticleImport(const Stores& stores, Dialogs& dialogs, ExchangeRun& run);

    // Asks for the file, merges it and tells how many articles are new.
    void importArticles();

private:
    const Stores& stores_;
    Dialogs& dialogs_;
    ExchangeRun& run_;
};

}  // namespace guanchao
