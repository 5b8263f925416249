// 导入新闻和商品: merges an exported heat store into the program's own. Rows that are missing are
// added, rows that are there never change. Raises StoreError; the tables before the failure stay
// merged.
#pragma once

#include "exchange/exchange_run.h"
#include "platform/dialogs.h"
#include "store/stores.h"

namespace guanchao {

class NewsImport {
public:
    NewsImport(const Stores& stores, Dialogs& dialogs, ExchangeRun& run);

    // Asks for the file, merges it and tells how many rows are new.
    void importNews();

private:
    const Stores& stores_;
    Dialogs& dialogs_;
    ExchangeRun& run_;
};

}  // namespace guanchao
