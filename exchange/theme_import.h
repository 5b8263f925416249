// 从本软件导出库导入: adds what an exported library has and dzhzhuti and dmb have not; and the one
// command that empties dzhzhuti. Raises StoreError or OperationError; nothing of the run remains.
#pragma once

#include "exchange/exchange_run.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/edits.h"
#include "store/stores.h"

namespace guanchao {

// Of what the window of imports can take back.
inline const QString importWindowPlace = QStringLiteral("导入主题");

// Gives how many memberships are new; codes are not counted.
int mergeLibrary(const Stores& stores, const QString& path, const QString& date,
                 ExchangeWork& work);

class ThemeImport {
public:
    ThemeImport(const Stores& stores, const Clock& clock, Dialogs& dialogs, ExchangeRun& run,
                Removals& removals, Edits& edits);

    // Tells how many memberships are new, or that the user has stopped it.
    QCoro::Task<> importLibrary(QString path, std::stop_token stop);

    // Asks first. Only the themes go, and they can be taken back.
    QCoro::Task<> deleteAll(std::stop_token stop);

private:
    const Stores& stores_;
    const Clock& clock_;
    Dialogs& dialogs_;
    ExchangeRun& run_;
    Removals& removals_;
    Edits& edits_;
};

}  // namespace guanchao
