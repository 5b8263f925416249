// 从txt文本文件导入: preview of a theme text file and its import into dzhzhuti. Failed statements
// of an import are passed over; a file that can't be read and a store that can't be opened or
// committed raise OperationError or StoreError, and nothing is then imported. A stamp that can't be
// written raises StoreError after the import.
#pragma once

#include "base/globals.h"
#include "exchange/exchange_run.h"
#include "exchange/theme_text.h"
#include "grid/result_grid.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/stores.h"

namespace guanchao {

class TextImport {
public:
    TextImport(const Stores& stores, Globals& globals, const Clock& clock, Dialogs& dialogs,
               ExchangeRun& run);

    // Shows in the grid what the first line would bring, and then tells what is wrong with it.
    void preview(const TextSource& source, ResultGrid& grid);

    // Adds the pairs of theme and code that are missing and tells their number, or that the run was
    // cancelled. Lines with broken bytes are left out and named.
    void importText(const TextSource& source);

private:
    bool isUsable(const TextSource& source);
    int importLines(const TextSource& source, const QStringList& lines);

    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    Dialogs& dialogs_;
    ExchangeRun& run_;
};

}  // namespace guanchao
