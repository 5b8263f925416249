// 从本软件导出库导入: adds what an exported library has and dzhzhuti and dmb have not; and the one
// command that empties dzhzhuti. Raises StoreError or OperationError; nothing of the run remains.
#pragma once

#include "app/globals.h"
#include "exchange/exchange_run.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/recordset.h"
#include "store/stores.h"

namespace guanchao {

class ThemeImport {
public:
    ThemeImport(const Stores& stores, Globals& globals, const Clock& clock, Dialogs& dialogs,
                ExchangeRun& run);

    // Tells how many memberships are new; codes are not counted.
    void importLibrary(const QString& path);

    // Asks first. Only the themes go.
    void deleteAll();

private:
    int mergeLibrary(const QString& path);
    int mergeThemes(Recordset rows, Connection& main, const QString& date);
    void mergeCodes(Recordset rows, Connection& main, const QString& date);

    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    Dialogs& dialogs_;
    ExchangeRun& run_;
};

}  // namespace guanchao
