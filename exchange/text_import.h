// 从txt文本文件导入: preview of a theme text file and its import into dzhzhuti. Failed statements
// of an import are passed over; a file that can't be read and a store that can't be opened or
// committed raise OperationError or StoreError, and nothing is then imported. A stamp that can't be
// written raises StoreError after the import.
#pragma once

#include "exchange/exchange_run.h"
#include "exchange/theme_text.h"
#include "grid/result_grid.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/stores.h"

namespace guanchao {

struct ImportedText {
    int count = 0;        // of new pairs
    QString encoding;     // that the file was taken for, as of TextFile
    QString brokenLines;  // the words that name them; empty if there are none
};

ImportedText mergeText(const Stores& stores, const TextSource& source, const QString& date,
                       ExchangeWork& work);

class TextImport {
public:
    TextImport(const Stores& stores, const Clock& clock, Dialogs& dialogs, ExchangeRun& run);

    // Shows in the grid what the first line would bring, and then tells what is wrong with it.
    // Gives words that name the encoding taken.
    QString preview(const TextSource& source, ResultGrid& grid);

    // Adds the pairs of theme and code that are missing and tells their number, or that the user
    // has stopped it. Lines with broken bytes are left out and named.
    QCoro::Task<> importText(TextSource source, std::stop_token stop);

private:
    bool isUsable(const TextSource& source);

    const Stores& stores_;
    const Clock& clock_;
    Dialogs& dialogs_;
    ExchangeRun& run_;
};

}  // namespace guanchao
