// 导出数据: writes the themes and codes of the main store into a keyed library, and copies the
// article store and the heat store beside it. Source stores are only read. Raises StoreError or
// OperationError; the files that were not yet whole stay as they were in the folder.
#pragma once

#include "exchange/exchange_run.h"
#include "platform/dialogs.h"
#include "store/stores.h"

namespace guanchao {

// Writes the three files into the folder, which ends in a separator. A row that the library refuses
// is named in the failure.
void writeBackup(const Stores& stores, const QString& folder, ExchangeWork& work);

class BackupExport {
public:
    BackupExport(const Stores& stores, Dialogs& dialogs, ExchangeRun& run);

    // Asks for the folder, writes the files and tells where they are, or that the user has stopped
    // it.
    QCoro::Task<> exportData(std::stop_token stop);

private:
    const Stores& stores_;
    Dialogs& dialogs_;
    ExchangeRun& run_;
};

}  // namespace guanchao
