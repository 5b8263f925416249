// 从本软件导出库导入: adds what an exported library has and dzhzhuti and dmb have not; and the one
// command that empties dzhzhuti. Raises StoreError or OperationError; nothing of the run remains.
#pragma once

#include "base/globals.h"
#include "exchange/exchange_run.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/stores.h"

namespace guanchao {

class ThemeImport {
public:
    ThemeImport(const Stores& stores, Globals& globals, const Clock& clock, Dialogs& dialogs,
                ExchangeRun& run);

    // Tells how many memberships are new, codes not counted, or that the run was cancelled.
    void importLibrary(const QString& path);

    // Asks first. Only the themes go.
    QCoro::Task<> deleteAll(std::stop_token stop);

private:
    int mergeLibrary(const QString& path);
    void requireIdle() const;

    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    Dialogs& dialogs_;
    ExchangeRun& run_;
};

}  // namespace guanchao
