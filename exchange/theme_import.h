// 从本软件导出库导入: adds what an exported library has and dzhzhuti and dmb have not; and the one
// command that empties dzhzhuti. Raises StoreError or OperationError; nothing of the run remains.
#pragma once

#include "exchange/exchange_run.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/stores.h"

namespace guanchao {

// Gives how many memberships are new; codes are not counted.
int mergeLibrary(const Stores& stores, const QString& path, const QString& date,
                 ExchangeWork& work);

class ThemeImport {
public:
    ThemeImport(const Stores& stores, const Clock& clock, Dialogs& dialogs, ExchangeRun& run);

    // Tells how many memberships are new, or that the user has stopped it.
    QCoro::Task<> importLibrary(QString path, std::stop_token stop);

    // Asks first. Only the themes go.
    QCoro::Task<> deleteAll(std::stop_token stop);

private:
    const Stores& stores_;
    const Clock& clock_;
    Dialogs& dialogs_;
    ExchangeRun& run_;
};

}  // namespace guanchao
